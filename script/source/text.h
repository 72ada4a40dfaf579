// The program text: the level script as it was read from its file.
//
// There is one text for the whole run. It never changes after loading, so a position in it can be
// kept and returned to at any time; that is how loops and calls work. Nothing at or after
// gProgramEnd is ever read as text.
#pragma once

#include <cstddef>
#include <string_view>

// Bytes of text kept of a script file, its terminating zero included.
constexpr size_t kProgramCapacity = 10000;

// The text, zero-terminated. Owned by whoever set it, for as long as it is read: by loadScript,
// until the process ends.
extern const char* gProgramBuffer;

// The terminating zero of the text: the first zero byte in gProgramBuffer.
extern const char* gProgramEnd;

// The path the text came from, for messages. Borrowed from the caller of loadScript.
extern const char* gProgramPath;

// The file was longer than the buffer and has been cut.
extern bool gProgramCut;

// Reads the file at `path` into `buffer` (kProgramCapacity bytes) and ends it with a zero.
// A longer file is cut without a word; one DOS end-of-file mark (Ctrl-Z) at the end is dropped.
// Returns false if the file cannot be opened or is a folder.
bool readProgramFile(char* buffer, const char* path);

// Takes `buffer` as the program text of `path`.
void setProgramText(const char* buffer, const char* path);

// Where a position is for someone who reads the text in an editor: lines end at a line feed, at a
// carriage return, or at both together; columns are bytes. Both count from 1.
struct TextPlace {
    size_t line = 1;
    size_t column = 1;
};
TextPlace textPlaceIn(std::string_view text, size_t position);

// The same for a position in the program text.
TextPlace textPlaceOf(const char* position);

// The byte at `position`; zero at the end of the text and after it.
inline char byteAt(const char* position) {
    return position < gProgramEnd ? *position : '\0';
}
