// What the measurements run on. All in the level folder that bench/CMakeLists.txt sets up, which
// must be the working directory.
#pragma once

#include <string>

// Makes `text` the level script. Lines in it end in "\n" and are stored with CR LF.
void writeLevelText(const std::string& text);

// Does that and loads the script. Ends the process if it does not load.
void loadLevelText(const std::string& text);

// A script of 9999 bytes, the longest that is read whole: `main` and functions, then blanks.
std::string longestLevelText();

// What the process has used of the processor so far, on all its threads.
double processorSeconds();

// Ends the process with a message unless `succeeded`.
void require(bool succeeded, const char* what);

// Starts SDL, the window and the renderer, once. Ends the process if that fails.
void requireEngine();
