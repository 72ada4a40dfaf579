#include "app/input.h"

static uint64_t sdlNowMs() {
    return SDL_GetTicks64();
}

static int sdlPollEvent(SDL_Event* event) {
    return SDL_PollEvent(event);
}

static const Uint8* sdlKeyStates() {
    return SDL_GetKeyboardState(nullptr);
}

Input gInput = {sdlNowMs, sdlPollEvent, sdlKeyStates};
