// The ticks: which run in a pass, and in which order.
#include <cstdint>

#include "app/base/input.h"
#include "app/base/window.h"
#include "simulation/rules.h"
#include "simulation/ticks_seen.h"
#include "simulation/wrap.h"
#include "timers/timers.h"
#include "units/unit_movement.h"

WRAP_FUNCTION("_Z11runDueTicksm", void, RunDueTicks, (uint64_t nowMs));

static constexpr uint64_t kUnitTickMs = 10;
static constexpr uint64_t kMaxBacklogMs = 250;
static constexpr uint64_t kMaxPassMs = 100;

// When the ticks started, the time up to which they have run, and what the pass has seen of them.
static uint64_t gStartMs = 0;
static uint64_t gTickedMs = 0;
static bool gUnitsAreDue = false;  // the timer tick of a millisecond with a unit tick has run
static int32_t gUnitTicks = 0;
static int32_t gPassesOfTicks = 0;  // calls of runDueTicks

void startTickRules(uint64_t nowMs) {
    gStartMs = gTickedMs = nowMs;
}

void beginPassOfTickRules() {
    gPassesOfTicks = 0;
}

static uint64_t unitTicksUpTo(uint64_t ms) {
    return (ms - gStartMs) / kUnitTickMs;
}

void noteTimerTick() {
    requireRule(!gEngineClosed, "no timer tick after the close");
    requireRule(!gUnitsAreDue, "the unit tick follows the timer tick of its millisecond");
    gTickedMs++;
    gUnitsAreDue = unitTicksUpTo(gTickedMs) > unitTicksUpTo(gTickedMs - 1);
}

void noteUnitTick() {
    requireRule(!gEngineClosed, "no unit tick after the close");
    // Off the schedule the units step once in a pass at most, so that slow timers never starve
    // them.
    requireRule(gUnitsAreDue || (gPassIsSlow && gUnitTicks == 0),
                "units step every ten milliseconds");
    gUnitsAreDue = false;
    gUnitTicks++;
}

// A backlog of ticks is made up, but for what is more than the longest one.
void wrapRunDueTicks(uint64_t nowMs) {
    const bool unitTickIsDue = unitTicksUpTo(nowMs) > unitTicksUpTo(gTickedMs);
    if (nowMs - gTickedMs > kMaxBacklogMs) gTickedMs = nowMs - kMaxBacklogMs;
    gUnitTicks = 0;
    gPassesOfTicks++;
    realRunDueTicks(nowMs);
    if (gEngineClosed) return;
    requireRule(gTickedMs <= nowMs, "no tick runs before its time");
    const bool tookLong = gPassIsSlow && gInput.nowMs() - nowMs >= kMaxPassMs;
    requireRule(gTickedMs == nowMs || tookLong, "every tick that is due runs");
    requireRule(!gUnitsAreDue, "the unit tick follows the timer tick of its millisecond");
    requireRule(gUnitTicks > 0 || !unitTickIsDue, "units are never starved");
}

void checkTickRules() {
    requireRule(gPassesOfTicks == 1, "each pass runs the due ticks once");
}
