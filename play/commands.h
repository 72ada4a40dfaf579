// The commands of a play.
//
// A command does what it says at once, but what the hands do waits for the next pass. Commands that
// act want a level that goes on; those that only look work after its end too.
#pragma once

#include <string>
#include <vector>

struct Answer {
    enum class Kind { Ok, Failed, Error };
    Kind kind = Kind::Ok;
    std::string text;                  // of Ok: a value or nothing; else what is wrong
    std::vector<std::string> records;  // lines that follow
    int column = 1;                    // of Error: where in the line
};

// Folders with a slash at their end: where the names in a play lead, and where pictures are saved.
// Set by play/main.
extern std::string gPlayFolder;
extern std::string gOutputFolder;

// The line holds no command, only blanks or a comment.
bool isEmptyLine(const std::string& line);

// Runs one line of a play. Everything that plays, a file, a program, a recording, comes through
// here.
Answer runCommand(const std::string& line);

// The level has ended and the play has not said that it should.
bool isEndUnexpected();
