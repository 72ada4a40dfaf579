// A script file, and the text that the engine makes of it.
//
// Positions are byte indexes into `text`. Lines end at a line feed, a carriage return or both, as
// in an editor; lines and columns are counted from 1, columns in bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct LineColumn {
    size_t line = 1;
    size_t column = 1;
};

struct Source {
    std::string path;   // as it is shown
    std::string bytes;  // the whole file
    std::string text;   // what the engine keeps of it: cut to size, up to the first zero byte
    std::vector<size_t> lineStarts;

    LineColumn placeOf(size_t position) const;

    // The line at the position, without its line end.
    std::string_view lineAt(size_t position) const;
};

// Takes bytes as the content of a file.
Source makeSource(std::string path, std::string bytes);

// Reads a file. Returns false, with the reason in `reason`, if it cannot be read.
bool readFile(const std::string& path, std::string& bytes, std::string& reason);
