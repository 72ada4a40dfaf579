#include "app/frame.h"

#include <SDL.h>

#include "app/globals.h"

void drawFrame() {
    if (gEngineClosed) {
        constexpr Uint32 kFrameMs = 16;
        SDL_Delay(kFrameMs);
        return;
    }
    SDL_RenderClear(gRenderer);
    SDL_RenderPresent(gRenderer);
}
