#include "app/window_builtins.h"

#include <SDL.h>

#include "app/engine.h"
#include "app/globals.h"
#include "app/main_thread.h"
#include "script/arguments.h"

// Operations for the main thread. They do nothing once the engine is closed.

static void setTitle(void* data) {
    char* title = static_cast<char*>(data);
    if (!gEngineClosed) SDL_SetWindowTitle(gWindow, title);
    SDL_free(title);
}

// The mode travels in the pointer itself.
static void setFullscreen(void* mode) {
    if (gEngineClosed) return;
    SDL_SetWindowFullscreen(gWindow, static_cast<Uint32>(reinterpret_cast<uintptr_t>(mode)));
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
    char* title = nullptr;
    if (SDL_asprintf(&title, "Zel - %s", text) >= 0) postToMainThread(setTitle, title);
    return 0;
}

int32_t builtinFullscreen() {
    const uintptr_t mode = static_cast<Uint32>(onlyInteger());
    postToMainThread(setFullscreen, reinterpret_cast<void*>(mode));
    return 0;
}

int32_t builtinExitGame() {
    noArguments();
    postToMainThread(exitGame, nullptr);
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
