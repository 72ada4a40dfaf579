// Where a game's files are, relative to the working directory. Ground: includes nothing of ours.
#pragma once

#include <string>

// Without these the engine does not start. In the working directory.
constexpr char kFirstFont[] = "arial.ttf";
constexpr char kSelectionPicture[] = "SysPics/select.bmp";

// The folder of the only level, and in it the picture of a unit.
constexpr char kLevelFolder[] = "levels/level1";
constexpr char kUnitPicture[] = "img/peon.bmp";

// The level folder, with a slash at its end: the prefix of what scripts name. gScriptPath follows
// it with a slash of its own.
extern const std::string gLevelDir;
extern const std::string gScriptPath;
extern const std::string gPicturesListPath;
