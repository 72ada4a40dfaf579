#include "app/ticks.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/base/input.h"
#include "timers/timers.h"
#include "units/unit_movement.h"

static constexpr uint32_t kTimerTickMs = 1;
static constexpr uint32_t kUnitTickMs = 10;
static constexpr uint64_t kMaxBacklogMs = 250;
static constexpr uint64_t kMaxPassMs = 100;  // of real time, for the ticks before one frame

void* const gTimerParam = nullptr;

// The ticks on the main thread: when they started, and the time up to which they have run.
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
        runTicksOnMainThread(gInput.nowMs());
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

// Unit ticks that fall due from the start of the ticks up to `ms`.
static uint64_t unitTicksUpTo(uint64_t ms) {
    return (ms - gTicksStartMs) / kUnitTickMs;
}

// Runs the ticks of the next millisecond. Returns true if the unit tick was one of them. A timer
// function may close the engine: the units then stay as they are.
static bool runNextMillisecond() {
    gTickedMs++;
    stepAllTimers(kTimerTickMs, gTimerParam);
    const bool unitTickIsDue = unitTicksUpTo(gTickedMs) > unitTicksUpTo(gTickedMs - 1);
    if (!unitTickIsDue || !gTicksOnMainThread) return false;
    stepAllUnits(kUnitTickMs, gTimerParam);
    return true;
}

void runDueTicks(uint64_t nowMs) {
    if (!gTicksOnMainThread) return;
    const uint64_t startedMs = gInput.nowMs();
    const bool unitTickIsDue = unitTicksUpTo(nowMs) > unitTicksUpTo(gTickedMs);
    bool unitTickHasRun = false;
    if (nowMs - gTickedMs > kMaxBacklogMs) gTickedMs = nowMs - kMaxBacklogMs;
    while (gTickedMs < nowMs && gTicksOnMainThread) {
        if (runNextMillisecond()) unitTickHasRun = true;
        if (gInput.nowMs() - startedMs >= kMaxPassMs) break;
    }
    if (unitTickIsDue && !unitTickHasRun && gTicksOnMainThread) {
        stepAllUnits(kUnitTickMs, gTimerParam);
    }
}
