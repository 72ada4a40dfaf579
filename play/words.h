// A line of a play, taken apart into words.
//
// Words are separated by blanks; a text in quotes is one word and may hold \n \r \t \" \\ \xNN.
// Two slashes after a blank, or at the start, begin a comment.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <string>
#include <vector>

struct Word {
    std::string text;
    bool inQuotes = false;
    int column = 1;  // where it starts, counted from 1, in bytes
};

// The words of a line as a command reads them, one after the other. The first thing that is wrong
// is kept; what is read after it has no meaning.
struct Words {
    std::vector<Word> words;
    size_t next = 0;
    int endColumn = 1;  // behind the line
    std::string fault;  // empty if all is well
    int faultColumn = 1;
};

Words splitLine(const std::string& line);

// The next word is this bare word: then it is read.
bool takeWord(Words& words, const char* word);

// A whole number from low to high; a text in quotes; a bare or quoted file name; a colour #rrggbb;
// the name of a key as SDL has it, any number of bare words to the end of the line. `what` says in
// a fault what was expected.
int64_t readNumber(Words& words, const char* what, int64_t low, int64_t high);
std::string readQuoted(Words& words, const char* what);
std::string readPath(Words& words);
Uint32 readColour(Words& words);
SDL_Scancode readKey(Words& words);
Uint8 readButton(Words& words);

bool atEnd(const Words& words);

// All of the line has been read and nothing was wrong; else there is a fault.
bool isComplete(Words& words);

// Notes that something else was expected at the next word.
void expected(Words& words, const std::string& what);
