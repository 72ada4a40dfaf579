// A script file, and the text that the engine makes of it.
//
// Positions are byte indexes into `text`; lines and columns are those of script/source/text.h.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "script/source/text.h"

struct Source {
    std::string path;   // as it is shown
    std::string bytes;  // the whole file
    std::string text;   // what the engine keeps of it: cut to size, up to the first zero byte

    TextPlace placeOf(size_t position) const { return textPlaceIn(text, position); }

    // The line at the position, without its line end.
    std::string_view lineAt(size_t position) const;
};

// Takes bytes as the content of a file.
Source makeSource(std::string path, std::string bytes);

// Reads a file. Returns false, with the reason in `reason`, if it cannot be read.
bool readFile(const std::string& path, std::string& bytes, std::string& reason);
