// A play from its first line to its last, read from a file or from a program.
#pragma once

#include <cstdio>
#include <string>

// Exit statuses of zelplay; 3, a hang, is given by the watch.
constexpr int kPlayed = 0;
constexpr int kFailed = 1;   // an expectation did not hold, or the level ended too early
constexpr int kBadPlay = 2;  // a bad command, or what was asked for does not exist

// Runs the lines of `file`. The first one that goes wrong is reported on standard error, with the
// place as path:line, and ends the play; a frame at that moment is saved. Returns the status.
int playFile(std::FILE* file, const std::string& path);

// Runs the lines of `input` as they come, and answers each on the real standard output with one
// line, and with the lines of records. Goes on after whatever goes wrong. Returns the worst status.
int playInput(std::FILE* input);
