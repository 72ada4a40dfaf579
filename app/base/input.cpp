#include "app/base/input.h"

static uint64_t sdlNowMs() {
    return SDL_GetTicks64();
}

// A quit has been sent and not been delivered yet.
static bool gQuitIsDue = false;

static int SDLCALL noteQuit(void*, SDL_Event* event) {
    if (event->type == SDL_QUIT) gQuitIsDue = true;
    return 0;
}

// SDL drops events that its queue has no room for, but shows them to its watchers first.
void watchForQuit() {
    SDL_AddEventWatch(noteQuit, nullptr);
}

static void makeQuitEvent(SDL_Event* event) {
    SDL_zerop(event);
    event->type = SDL_QUIT;
}

static int sdlPollEvent(SDL_Event* event) {
    if (SDL_PollEvent(event) == 0) {
        const bool isClosed = SDL_WasInit(SDL_INIT_EVENTS) == 0;
        if (!gQuitIsDue || isClosed) return 0;
        makeQuitEvent(event);
    }
    if (event->type == SDL_QUIT) gQuitIsDue = false;
    return 1;
}

static const Uint8* sdlKeyStates() {
    return SDL_GetKeyboardState(nullptr);
}

Input gInput = {sdlNowMs, sdlPollEvent, sdlKeyStates};

bool gLeftButtonDown = false;
bool gRightButtonDown = false;
SDL_Event gEvent;
