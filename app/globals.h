// The ground floor: what every folder may read. This header includes nothing of ours.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <string>

constexpr int32_t SCREEN_WIDTH = 640;   // window width in pixels
constexpr int32_t SCREEN_HEIGHT = 480;  // window height in pixels

// The one window and the one renderer: null until initEngine creates them, released by closeEngine
// and not reset there. After the close (gEngineClosed) nobody may hand them to SDL. Main thread
// only; other threads go through app/main_thread.h.
extern SDL_Window* gWindow;
extern SDL_Renderer* gRenderer;

// True once closeEngine has released SDL and all it owned. Set on the main thread, never cleared.
extern bool gEngineClosed;

// The left and the right mouse button are held. Written by the main loop at every button event.
extern bool gLeftButtonDown;
extern bool gRightButtonDown;

// The last event that a poll delivered to the main loop, with zeros in all bytes that the event
// does not fill; all zeros before the first. Written by the main loop, read from wherever script
// code runs.
extern SDL_Event gEvent;

// Paths relative to the working directory. gLevelDir ends in a slash and is the prefix of what
// scripts name; gScriptPath follows it with a slash of its own.
extern const std::string gLevelDir;
extern const std::string gScriptPath;
extern const std::string gPicturesListPath;

// The parameter handed to both engine ticks; null.
extern void* const gTimerParam;
