// The built-ins of the window and the mouse. Called on another thread than the main one, what
// touches the window is done by the main loop a moment later; the script goes on at once.
#pragma once

#include <cstdint>

// changewindowname("text"): titles the window "Zel - " and the text. Returns 0.
int32_t builtinChangeWindowName();

// fullscreen(mode): 0 window, 1 full screen in a video mode of its own, 4097 full screen over the
// desktop; any value goes to SDL as its window flags. Returns 0.
int32_t builtinFullscreen();

// exitgame(): back to a window, then shuts the engine down. The script goes on, the process stays.
// Returns 0.
int32_t builtinExitGame();

// getmousex(), getmousey(): the pointer's place in the window at the last event, if that was one of
// the mouse; after another event, what that one has in the same place.
int32_t builtinGetMouseX();
int32_t builtinGetMouseY();
