#include "app/base/paths.h"

const std::string gLevelDir = "levels/level1/";
const std::string gScriptPath = gLevelDir + "/script.txt";
const std::string gPicturesListPath = "PicturesPath.txt";
