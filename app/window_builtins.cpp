#include "app/window_builtins.h"

#include <SDL.h>

#include <cstdio>

#include "app/base/input.h"
#include "app/base/main_thread.h"
#include "app/base/window.h"
#include "app/engine.h"
#include "script/errors/recovery.h"
#include "script/host/arguments.h"
#include "script/run/waiting.h"

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

// On the main thread the close waits for the timer function that may be running, which moves what
// this call goes on with, and the tops of the stacks too: by then no other thread uses them.
int32_t builtinExitGame() {
    noArguments();
    const ScriptState state = saveScriptState();
    const int32_t localTop = gLocalTop;
    const int32_t callDepth = gCallDepth;
    postToMainThread(exitGame, nullptr);
    if (onMainThread()) {
        restoreScriptState(state);
        gLocalTop = localTop;
        gCallDepth = callDepth;
    }
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
