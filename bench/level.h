// What the measurements run on. All in the level folder that bench/CMakeLists.txt sets up, which
// must be the working directory.
#pragma once

#include <string>

// Makes `text` the level script and loads it. Lines in it end in "\n" and are stored with CR LF.
// Ends the process if the text does not load.
void loadLevelText(const std::string& text);

// A script of 9999 bytes, the longest that is read whole: `main` and as many functions as fit.
std::string longestLevelText();

// Starts SDL, the window and the renderer, once. Ends the process if that fails.
void requireEngine();
