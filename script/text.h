// The program text: the level script as it was read from its file, and the place where the
// interpreter stands in it.
//
// There is one text for the whole run. It never changes after loading, so a position (a pointer
// into it) can be kept and returned to at any time; that is how loops and calls work.
// Positions run from gProgramBuffer to one past gProgramEnd; nothing at or behind gProgramEnd is
// ever read as text.
#pragma once

#include <cstddef>

// Bytes of text kept of a script file, its terminating zero included.
constexpr size_t kProgramCapacity = 10000;

// The text, zero-terminated. Allocated by loadScript and owned by the process until it ends.
extern char* gProgramBuffer;

// The terminating zero of the text: the first zero byte in gProgramBuffer.
extern const char* gProgramEnd;

// Where the lexer reads next. Read and moved by whichever thread runs script code.
extern const char* gProgramPos;

// The path the text came from, for messages. Borrowed from the caller of loadScript.
extern const char* gProgramPath;

// Reads the file at `path` into `buffer` (kProgramCapacity bytes) and ends it with a zero.
// A longer file is cut without a word; one DOS end-of-file mark (Ctrl-Z) at the end is dropped.
// Returns false, changing nothing, if the file cannot be opened.
bool readProgramFile(char* buffer, const char* path);

// Takes `buffer` as the program text of `path` and stands at its start.
void setProgramText(char* buffer, const char* path);

// The byte at `position`; zero at the end of the text and behind it.
inline char byteAt(const char* position) {
    return position < gProgramEnd ? *position : '\0';
}

// Moves one character forward, but never further than one past the end.
inline void skipCharacter() {
    if (gProgramPos <= gProgramEnd) gProgramPos = gProgramPos + 1;
}

// Moves to just behind the first ")" at or after the position, or to the end of the text.
void skipPastCloseParen();
