#include "app/globals.h"

SDL_Window* gWindow = nullptr;
SDL_Renderer* gRenderer = nullptr;
bool gEngineClosed = false;
bool gLeftButtonDown = false;
bool gRightButtonDown = false;
SDL_Event gEvent;

const std::string gLevelDir = "levels/level1/";
const std::string gScriptPath = gLevelDir + "/script.txt";
const std::string gPicturesListPath = "PicturesPath.txt";

void* const gTimerParam = nullptr;
