// Timers: identifiers, what the calls do to a record, and each step of each tick.
#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "simulation/rules.h"
#include "simulation/script_errors.h"
#include "simulation/ticks_seen.h"
#include "simulation/wrap.h"
#include "timers/timers.h"

WRAP_FUNCTION("_Z11createTimerbiPKc", void, CreateTimer, (bool, int32_t, const char*));
WRAP_FUNCTION("_Z10pauseTimerib", void, PauseTimer, (int32_t, bool));
WRAP_FUNCTION("_Z11deleteTimeri", void, DeleteTimer, (int32_t));
WRAP_FUNCTION("_Z13stepAllTimersjPv", uint32_t, StepAllTimers, (uint32_t, void*));
WRAP_FUNCTION("_Z25callScriptFunctionGuardedPKc", void, CallGuarded, (const char*));

static constexpr uint32_t kCountPerTick = 10;

static int32_t gConstructions = 0;  // records made so far: each takes an identifier

// A timer as it was before the tick.
struct TimerBefore {
    int32_t key;
    const void* record;
    int32_t id;
    uint32_t counter;
    uint32_t interval;
    bool paused;
    bool oneShot;
    bool isDue;
};
static std::vector<TimerBefore> gBefore;
static std::set<int32_t> gTouched;       // keys that script functions dealt with in this tick
static std::vector<int32_t> gFiredKeys;  // in this tick
static std::set<int32_t> gMadeAbove;     // created in this tick above the walk's place
static bool gInTick = false;

// Calls ------------------------------------------------------------------------------------------

static void requireCounters() {
    requireRule(gNextTimerId == gConstructions, "each construction takes one timer id");
    requireRule(gLastTimerId == std::max(gConstructions - 1, 0), "the last id is the latest taken");
}

static bool timerExists(int32_t key) {
    return gTimers.count(key) != 0;
}

static uint32_t counterUnder(int32_t key) {
    const auto entry = gTimers.find(key);
    return entry == gTimers.end() ? 0 : counterOf(*entry);
}

// A look-up of an unknown key makes a record, which takes an identifier.
static void expectLookUp(int32_t key) {
    gTouched.insert(key);
    gMadeAbove.erase(key);
    if (!timerExists(key)) gConstructions++;
}

void wrapCreateTimer(bool oneShot, int32_t interval, const char* functionName) {
    const int32_t key = gNextTimerId;
    const bool existed = timerExists(key);
    const int32_t id = existed ? gTimers.at(key).id : key;
    const uint32_t counter = counterUnder(key);
    const size_t size = gTimers.size();
    const bool isAbove = !gFiredKeys.empty() && key > gFiredKeys.back() && gTouched.count(key) == 0;
    expectLookUp(key);
    realCreateTimer(oneShot, interval, functionName);
    requireCounters();
    requireRule(timerExists(key), "a timer is created under the next id");
    const ScriptTimer& timer = gTimers.at(key);
    requireRule(timer.id == id && timer.counter == counter, "a record keeps its id and counter");
    requireRule(timer.functionName == functionName && timer.oneShot == oneShot && !timer.paused &&
                    timer.interval == static_cast<uint32_t>(interval),
                "a created timer runs as it was asked for");
    requireRule(gTimers.size() == size + (existed ? 0 : 1), "a creation adds one timer at most");
    if (gInTick && !existed && isAbove) gMadeAbove.insert(key);
}

void wrapPauseTimer(int32_t key, bool paused) {
    const bool existed = timerExists(key);
    const uint32_t counter = counterUnder(key);
    const int32_t id = existed ? gTimers.at(key).id : gNextTimerId;
    expectLookUp(key);
    realPauseTimer(key, paused);
    requireCounters();
    requireRule(timerExists(key), "an unknown timer gets a record");
    const ScriptTimer& timer = gTimers.at(key);
    requireRule(timer.paused == paused, "a timer is paused or goes on as it was told");
    requireRule(timer.id == id && timer.counter == counter, "a pause keeps the id and the counter");
    requireRule(existed || (timer.functionName.empty() && timer.oneShot && timer.interval == 0),
                "a default record has no function");
}

void wrapDeleteTimer(int32_t key) {
    const size_t size = gTimers.size();
    const bool existed = timerExists(key);
    expectLookUp(key);
    realDeleteTimer(key);
    requireCounters();
    requireRule(!timerExists(key), "a deleted timer is gone");
    requireRule(gTimers.size() == size - (existed ? 1 : 0), "no other timer goes with it");
}

// Ticks ------------------------------------------------------------------------------------------

static void rememberTimers() {
    gBefore.clear();
    gTouched.clear();
    gFiredKeys.clear();
    gMadeAbove.clear();
    for (const TimerEntry& entry : gTimers) {
        const auto& [key, timer] = entry;
        const uint32_t counter = counterOf(entry);
        const bool isDue = !timer.paused && counter >= timer.interval;
        gBefore.push_back(
            {key, &timer, timer.id, counter, timer.interval, timer.paused, timer.oneShot, isDue});
    }
}

// The key of the timer that fires: its name is handed over in place.
static int32_t keyOfName(const char* name) {
    for (const auto& [key, timer] : gTimers) {
        if (timer.functionName.c_str() == name) return key;
    }
    reportBrokenRule("what fires is a timer of the registry");
}

void wrapCallGuarded(const char* name) {
    const int32_t key = keyOfName(name);
    const ScriptTimer& timer = gTimers.at(key);
    requireRule(gFiredKeys.empty() || key > gFiredKeys.back(), "timers fire in ascending order");
    requireRule(!timer.paused, "a paused timer does not fire");
    requireRule(timer.counter == 0, "a timer that fires starts to count anew");
    requireRule(gCurrentTimerId == timer.id, "the current timer is the one that fires");
    gFiredKeys.push_back(key);
    // A one-shot, or one that its function makes a one-shot, removes the timer under its id: that
    // may be the key of another one.
    if (timer.id != key) gTouched.insert(timer.id);
    realCallGuarded(name);
}

static bool hasFired(int32_t key) {
    return std::binary_search(gFiredKeys.begin(), gFiredKeys.end(), key);
}

static void checkStep(const TimerBefore& before) {
    if (gTouched.count(before.key) != 0) return;
    requireRule(hasFired(before.key) == before.isDue,
                "a timer fires when it is due, and only then");
    const auto entry = gTimers.find(before.key);
    if (before.isDue && before.oneShot && before.id == before.key) {
        requireRule(entry == gTimers.end(), "a one-shot is gone after its firing");
        return;
    }
    requireRule(entry != gTimers.end(), "a timer stays until it is deleted");
    const ScriptTimer& timer = entry->second;
    requireRule(&timer == before.record && timer.id == before.id, "a timer keeps its id");
    requireRule(timer.interval == before.interval && timer.oneShot == before.oneShot,
                "a timer stays as it was created");
    if (before.isDue && before.oneShot) {
        return requireRule(timer.paused, "a one-shot rests after its firing");
    }
    requireRule(timer.paused == before.paused, "a timer is paused by the built-in only");
    const uint32_t start = before.isDue ? 0 : before.counter;
    requireRule(counterOf(*entry) == start + (before.paused ? 0 : kCountPerTick),
                before.paused ? "the counter of a paused timer keeps its value"
                              : "a tick counts a running timer on by ten");
}

// Timers made above the walk's place take their first step in the same tick.
static void checkMade(int32_t key) {
    const auto entry = gTimers.find(key);
    if (entry == gTimers.end() || entry->second.paused || hasFired(key)) return;
    requireRule(counterOf(*entry) == kCountPerTick, "a new timer is stepped in the same tick");
}

uint32_t wrapStepAllTimers(uint32_t interval, void* parameter) {
    noteTimerTick();
    rememberTimers();
    gInTick = true;
    const uint32_t result = realStepAllTimers(interval, parameter);
    gInTick = false;
    requireRule(result == interval, "the tick keeps its interval");
    for (const TimerBefore& before : gBefore)
        checkStep(before);
    for (const int32_t key : gMadeAbove)
        checkMade(key);
    return result;
}

// After a pass -----------------------------------------------------------------------------------

void checkTimerRules() {
    static std::set<int32_t> ids;
    ids.clear();
    requireCounters();
    for (const auto& [key, timer] : gTimers) {
        requireRule(timer.id >= 0 && timer.id < gNextTimerId, "every id has been handed out");
        requireRule(ids.insert(timer.id).second, "no two timers have one id");
    }
    requireRule(gCurrentTimerId == 0 || gCurrentTimerId < gNextTimerId,
                "the current timer's id has been handed out");
}

bool unknownNameIsTimed(bool (*isKnown)(const std::string&)) {
    for (const auto& [key, timer] : gTimers) {
        if (!timer.paused && !isKnown(timer.functionName)) return true;
    }
    return false;
}
