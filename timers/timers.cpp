#include "timers/timers.h"

#include <algorithm>
#include <utility>

#include "script/run/program.h"

std::map<int32_t, ScriptTimer> gTimers;
int32_t gNextTimerId = 0;
int32_t gLastTimerId = 0;
int32_t gCurrentTimerId = 0;

// The counter runs ten times as fast as the tick; levels are tuned to that pace.
static constexpr uint32_t kCountPerTick = 10;

ScriptTimer::ScriptTimer() : id(gNextTimerId) {
    gLastTimerId = id;
    gNextTimerId = id + 1;
}

// Groups ------------------------------------------------------------------------------------------
//
// Most timers of most ticks only wait. So the timers with neighbouring keys are a group, and a
// group in which none is due for some ticks skips them: its counters are brought up to date when
// it is walked again, or when anybody asks for one of its timers. That ends the rest too, for the
// timer may be changed.

struct TimerGroup {
    int32_t rest = 0;     // ticks that it still skips
    uint32_t missed = 0;  // ticks that it has skipped and that are not in its counters yet
};

// By the lowest key that a timer of the group can have. Taken out by the tick when it is empty.
static std::map<int32_t, TimerGroup> gTimerGroups;

static constexpr int32_t kKeysInGroup = 64;

// In ticks. Nothing is locked: a change that the main thread makes while a group is walked may end
// in a rest all the same, and this bounds how late the timer is then.
static constexpr uint32_t kLongestRest = 100;

static int32_t groupOf(int32_t key) {
    return key & ~(kKeysInGroup - 1);
}

static bool isInGroup(TimerPosition timer, int32_t groupKey) {
    return timer != gTimers.end() && groupOf(timer->first) == groupKey;
}

static void countMissedTicks(int32_t groupKey, TimerGroup& group) {
    const uint32_t count = std::exchange(group.missed, 0U) * kCountPerTick;
    if (count == 0) return;
    for (TimerPosition timer = gTimers.lower_bound(groupKey); isInGroup(timer, groupKey); ++timer) {
        if (!timer->second.paused) timer->second.counter += count;
    }
}

// Nothing is locked: the tick may take out an empty group while the main thread adds a timer to it.
// The walk finds such a timer, at the latest when the group before it is stepped.
static void ensureGroup(TimerPosition timer) {
    if (timer != gTimers.end()) gTimerGroups.try_emplace(groupOf(timer->first));
}

static void wakeGroup(int32_t groupKey) {
    TimerGroup& group = gTimerGroups[groupKey];
    countMissedTicks(groupKey, group);
    group.rest = 0;
}

uint32_t counterOf(const TimerEntry& entry) {
    const auto group = gTimerGroups.find(groupOf(entry.first));
    const bool hasMissed = group != gTimerGroups.end() && !entry.second.paused;
    return entry.second.counter + (hasMissed ? group->second.missed * kCountPerTick : 0);
}

// Registry ----------------------------------------------------------------------------------------

// The timer first: the tick on the other thread takes out a group that is empty.
ScriptTimer& findOrCreateTimer(int32_t key) {
    ScriptTimer& timer = gTimers[key];
    wakeGroup(groupOf(key));
    return timer;
}

void createTimer(bool oneShot, int32_t interval, const char* functionName) {
    ScriptTimer& timer = findOrCreateTimer(gNextTimerId);
    timer.functionName = functionName;
    timer.interval = static_cast<uint32_t>(interval);
    timer.oneShot = oneShot;
    timer.paused = false;
}

void pauseTimer(int32_t key, bool paused) {
    findOrCreateTimer(key).paused = paused;
}

void deleteTimer(int32_t key) {
    findOrCreateTimer(key).paused = true;
    removeTimer(key);
}

void removeTimer(int32_t id) {
    gTimers.erase(id);
}

// The tick ----------------------------------------------------------------------------------------

// Calls the timer's function and moves on to the next timer. Everything is looked up again by key:
// the script may have removed any entry, and even have put another record under the same key.
static void fireTimer(TimerPosition& timer) {
    const int32_t key = timer->first;
    const int32_t id = timer->second.id;
    timer->second.counter = 0;
    gCurrentTimerId = id;
    callScriptFunctionGuarded(timer->second.functionName.c_str());

    timer = gTimers.lower_bound(key);
    if (timer == gTimers.end() || timer->first != key) return;
    ScriptTimer& fired = timer->second;
    if (fired.id == id && fired.oneShot) {
        fired.paused = true;
        removeTimer(id);  // which may be the next timer
        timer = gTimers.upper_bound(key);
        return;
    }
    if (fired.id == id) fired.counter += kCountPerTick;
    ++timer;
}

bool stepTimer(TimerPosition& timer) {
    ScriptTimer& stepped = timer->second;
    const bool fires = !stepped.paused && stepped.counter >= stepped.interval;
    if (fires) {
        fireTimer(timer);
        return true;
    }
    if (!stepped.paused) stepped.counter += kCountPerTick;
    ++timer;
    return false;
}

// What a timer that did not fire lacks to its interval.
static uint32_t missingCount(const ScriptTimer& timer) {
    if (timer.paused) return UINT32_MAX;
    return timer.counter < timer.interval ? timer.interval - timer.counter : 0;
}

// Steps the timers of the group in order of keys, then lets it rest up to the tick at which the
// next one is due. Returns false if the group is empty.
static bool stepGroup(int32_t groupKey, TimerGroup& group) {
    countMissedTicks(groupKey, group);
    TimerPosition timer = gTimers.lower_bound(groupKey);
    if (!isInGroup(timer, groupKey)) return false;
    uint32_t missing = kLongestRest * kCountPerTick;
    while (isInGroup(timer, groupKey)) {
        const ScriptTimer& stepped = timer->second;
        const bool fired = stepTimer(timer);
        // After a firing there is no rest: the script may have changed any timer.
        missing = fired ? 0 : std::min(missing, missingCount(stepped));
    }
    group.rest = static_cast<int32_t>((missing + kCountPerTick - 1) / kCountPerTick);
    ensureGroup(timer);
    return true;
}

// A script function may add groups, but only this walk takes any out.
uint32_t stepAllTimers(uint32_t interval, void*) {
    ensureGroup(gTimers.begin());
    for (auto group = gTimerGroups.begin(); group != gTimerGroups.end();) {
        auto& [groupKey, state] = *group;
        if (state.rest > 0) {
            state.rest--;
            state.missed++;
        } else if (!stepGroup(groupKey, state)) {
            group = gTimerGroups.erase(group);
            continue;
        }
        ++group;
    }
    return interval;
}
