#include "app/base/window.h"

SDL_Window* gWindow = nullptr;
SDL_Renderer* gRenderer = nullptr;
bool gEngineClosed = false;
