// The window and its renderer. Ground: includes nothing of ours.
#pragma once

#include <SDL.h>

#include <cstdint>

constexpr int32_t SCREEN_WIDTH = 640;   // window width in pixels
constexpr int32_t SCREEN_HEIGHT = 480;  // window height in pixels

// The one window and the one renderer: null until initEngine (app/engine) creates them, released by
// closeEngine and not reset there. After the close (gEngineClosed) nobody may hand them to SDL.
// Main thread only; other threads go through app/base/main_thread.h.
extern SDL_Window* gWindow;
extern SDL_Renderer* gRenderer;

// True once closeEngine (app/engine) has begun to release SDL and all it owns. Set on the main
// thread, never cleared.
extern bool gEngineClosed;
