// What the level prints, caught.
//
// Standard output is led into a file in memory before the engine starts. After every pass the new
// bytes are taken from there: they are kept for the expectations of the play and, unless the real
// standard output carries answers, passed on as they came.
#pragma once

#include <cstddef>
#include <string>

// Everything that the level has printed so far; grows with takeOutput.
extern std::string gPrinted;

// Leads standard output into memory and gives the level an empty standard input. With `passOn` the
// level's bytes go on to the real standard output. Returns false, with the reason in errno. Once.
bool catchOutput(bool passOn);

// Takes what has been printed since the last call.
void takeOutput();

// Passes on what has been printed since. Makes system calls only, so that a signal handler may.
void passOnRest();

// Writes to the real standard output, at once.
void writeOut(const std::string& text);

// `text` in quotes on one line, as a play writes it: \n \r \t \" \\ and \xNN for other control
// characters.
std::string escaped(const std::string& text);
