#include "timers/timers.h"

#include <iterator>

#include "script/program.h"

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

ScriptTimer& findOrCreateTimer(int32_t key) {
    return gTimers[key];
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

// Finds the timer again after script code ran, which may have removed it and even have put another
// record under its key. Returns null if it is gone.
static ScriptTimer* findTimer(int32_t key, int32_t id) {
    const auto entry = gTimers.find(key);
    return entry != gTimers.end() && entry->second.id == id ? &entry->second : nullptr;
}

static void fireTimer(TimerEntry& entry) {
    const int32_t key = entry.first;
    const int32_t id = entry.second.id;
    entry.second.counter = 0;
    gCurrentTimerId = id;
    callScriptFunctionGuarded(entry.second.functionName.c_str());

    ScriptTimer* timer = findTimer(key, id);
    if (timer == nullptr) return;
    if (timer->oneShot) {
        timer->paused = true;
        removeTimer(id);
    } else {
        timer->counter += kCountPerTick;
    }
}

bool stepTimer(TimerEntry& entry) {
    ScriptTimer& timer = entry.second;
    if (timer.paused) return false;
    if (timer.counter >= timer.interval) {
        fireTimer(entry);
        return true;
    }
    timer.counter += kCountPerTick;
    return false;
}

uint32_t stepAllTimers(uint32_t interval, void*) {
    auto timer = gTimers.begin();
    while (timer != gTimers.end()) {
        const int32_t key = timer->first;
        const bool fired = stepTimer(*timer);
        // After a firing the key finds the way on: the script may have removed any entry.
        timer = fired ? gTimers.upper_bound(key) : std::next(timer);
    }
    return interval;
}
