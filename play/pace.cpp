#include "play/pace.h"

#include <SDL.h>

#include <cstdint>

#include "app/base/window.h"
#include "play/level.h"

bool gStopped = false;

static double gSpeed = 0;  // 0: nothing is shown
static uint64_t gStartMs = 0;

void showWindow(double speed) {
    gSpeed = speed;
}

bool isWindowShown() {
    return gSpeed > 0;
}

void startPace() {
    gStartMs = SDL_GetTicks64();
}

// Real milliseconds that the level is ahead of the pace; negative if it is behind.
static double aheadMs() {
    const double due = static_cast<double>(levelTimeMs()) / gSpeed;
    return due - static_cast<double>(SDL_GetTicks64() - gStartMs);
}

bool isLate() {
    constexpr double kFrameMs = 17;
    return isWindowShown() && aheadMs() < -kFrameMs;
}

static void readRealEvents() {
    SDL_Event event;
    while (!gEngineClosed && SDL_PollEvent(&event) != 0) {
        if (event.type == SDL_QUIT) gStopped = true;
    }
}

void keepPace() {
    readRealEvents();
    if (!isWindowShown() || gStopped) return;
    const double ms = aheadMs();
    if (ms >= 1) SDL_Delay(static_cast<Uint32>(ms));
}
