#include "app/ticks.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/globals.h"
#include "timers/timers.h"
#include "units/unit_movement.h"

static constexpr uint32_t kTimerTickMs = 1;
static constexpr uint32_t kUnitTickMs = 10;
static constexpr uint64_t kMaxBacklogMs = 250;
static constexpr uint64_t kMaxPassMs = 100;  // of real time, for the ticks before one frame

// Of the ticks on the main thread: when they started, and up to when they have run.
static bool gTicksOnMainThread = false;
static uint64_t gTicksStartMs = 0;
static uint64_t gTickedMs = 0;

void runTicksOnMainThread(uint64_t nowMs) {
    gTicksOnMainThread = true;
    gTicksStartMs = gTickedMs = nowMs;
}

void startTicks() {
    const char* place = std::getenv("ZEL_TICKS");
    if (place != nullptr && std::strcmp(place, "main") == 0) {
        runTicksOnMainThread(SDL_GetTicks64());
        return;
    }
    if (place != nullptr && place[0] != '\0') {
        std::fprintf(stderr, "ZEL_TICKS=%s means nothing, only \"main\" does\n", place);
    }
    SDL_AddTimer(kTimerTickMs, stepAllTimers, gTimerParam);
    SDL_AddTimer(kUnitTickMs, stepAllUnits, gTimerParam);
}

void stopTicks() {
    gTicksOnMainThread = false;
    SDL_QuitSubSystem(SDL_INIT_TIMER);
}

static void runTicksOfMillisecond(uint64_t ms) {
    stepAllTimers(kTimerTickMs, gTimerParam);
    if ((ms - gTicksStartMs) % kUnitTickMs == 0) stepAllUnits(kUnitTickMs, gTimerParam);
}

void runDueTicks(uint64_t nowMs) {
    if (!gTicksOnMainThread) return;
    if (nowMs - gTickedMs > kMaxBacklogMs) gTickedMs = nowMs - kMaxBacklogMs;
    const uint64_t started = SDL_GetTicks64();
    while (gTickedMs < nowMs && gTicksOnMainThread) {
        gTickedMs++;
        runTicksOfMillisecond(gTickedMs);
        if (SDL_GetTicks64() - started > kMaxPassMs) return;
    }
}
