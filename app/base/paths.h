// Where a game's files are, relative to the working directory. Ground: includes nothing of ours.
#pragma once

#include <string>

// The level folder, with a slash at its end: the prefix of what scripts name. gScriptPath follows
// it with a slash of its own.
extern const std::string gLevelDir;
extern const std::string gScriptPath;
extern const std::string gPicturesListPath;
