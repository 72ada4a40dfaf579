// The commands of a play.
//
// A command does what it says at once, but what the hands do waits for the next pass. Commands that
// act want a level that goes on; those that only look work behind its end too.
#pragma once

#include <string>

#include "play/answers.h"

// The line holds no command, only blanks or a comment.
bool isEmptyLine(const std::string& line);

// Runs one line of a play. Everything that plays, a file, a program, a recording, comes through
// here.
Answer runCommand(const std::string& line);

// The level has ended and the play has not said that it should.
bool isEndUnexpected();
