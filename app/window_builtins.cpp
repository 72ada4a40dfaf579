#include "app/window_builtins.h"

#include <SDL.h>

#include <cstdio>

#include "app/engine.h"
#include "app/globals.h"
#include "app/main_thread.h"
#include "script/arguments.h"
#include "script/waiting.h"

// Operations for the main thread. They do nothing once the engine is closed.

static void setTitle(void* title) {
    if (!gEngineClosed) SDL_SetWindowTitle(gWindow, static_cast<const char*>(title));
}

static void setFullscreen(void* mode) {
    if (!gEngineClosed) SDL_SetWindowFullscreen(gWindow, *static_cast<const Uint32*>(mode));
}

static void exitGame(void*) {
    if (gEngineClosed) return;
    SDL_SetWindowFullscreen(gWindow, 0);
    closeEngine();
}

int32_t builtinChangeWindowName() {
    openArguments();
    ArgumentText text;
    readText(text);
    expectCloseParen();
    static constexpr char kPrefix[] = "Zel - ";
    char title[sizeof kPrefix + sizeof text];
    std::snprintf(title, sizeof title, "%s%s", kPrefix, text);
    requestOnMainThread(MainThreadRequest::Title, setTitle, title, sizeof title);
    return 0;
}

int32_t builtinFullscreen() {
    Uint32 mode = static_cast<Uint32>(onlyInteger());
    requestOnMainThread(MainThreadRequest::Fullscreen, setFullscreen, &mode, sizeof mode);
    return 0;
}

int32_t builtinExitGame() {
    noArguments();
    const ScriptState state = saveScriptState();  // the close waits for a timer function
    postToMainThread(exitGame, nullptr);
    restoreScriptState(state);
    return 0;
}

int32_t builtinGetMouseX() {
    noArguments();
    return gEvent.motion.x;
}

int32_t builtinGetMouseY() {
    noArguments();
    return gEvent.motion.y;
}
