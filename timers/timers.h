// Script timers: the engine calls a script function by name after a delay, once or again and again.
//
// The tick, every millisecond, adds 10 to the counter of each running timer and calls the functions
// of those whose counter has reached their interval: an interval of N means about N / 10 ms. Timers
// that only wait cost it next to nothing. Unlocked: script code on either thread and the tick share
// the registry.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

struct ScriptTimer {
    std::string functionName;  // "" in a default record
    uint32_t counter = 0;      // tenths of a tick since the last firing; see counterOf
    uint32_t interval = 0;     // fires on a tick that finds counter >= interval
    bool paused = true;        // the tick leaves it alone
    bool oneShot = true;       // removed after its first firing, when its function has ended
    int32_t id;

    // Takes an identifier: the only thing that ever does. Copies keep theirs.
    ScriptTimer();
};

// A live timer and the key it is found under. Key and `id` are equal for a timer that createTimer
// made in the ordinary way, but a record made by looking up an unknown key has an id of its own.
// The key rules the order of the walk. The id is what scripts are told and what a one-shot removes
// after its function has run: the timer under that key, which may be another one.
using TimerEntry = std::pair<const int32_t, ScriptTimer>;
using TimerPosition = std::map<int32_t, ScriptTimer>::iterator;

// Walked in ascending order of keys. Whoever changes a timer gets it from findOrCreateTimer.
extern std::map<int32_t, ScriptTimer> gTimers;
extern int32_t gNextTimerId;  // taken by the next construction; only grows. Texts are keyed by it
extern int32_t gLastTimerId;  // taken by the latest construction; 0 before any
extern int32_t gCurrentTimerId;  // id of the timer that fired latest; 0 before any

// The timer under `key`. An unknown key gets a default record (paused, one-shot, without function),
// which takes an identifier.
ScriptTimer& findOrCreateTimer(int32_t key);

// The timer's counter. The tick brings the field itself up to date only for timers of which one is
// due soon, and findOrCreateTimer does so for the timer that it returns.
uint32_t counterOf(const TimerEntry& entry);

// Starts a timer under the key gNextTimerId; a record that is there already is reconfigured and
// keeps its id and its counter. A negative interval is a huge one.
void createTimer(bool oneShot, int32_t interval, const char* functionName);

// Pauses the timer under `key`, or lets it go on with the counter that it had.
void pauseTimer(int32_t key, bool paused);

// Ends the timer under `key`. Both create an unknown one first, as findOrCreateTimer does.
void deleteTimer(int32_t key);

// Erases the entry under the key `id`, if there is one.
void removeTimer(int32_t id);

// Advances one timer by one tick, and `timer` to the next one in order of keys. Returns true if the
// timer fired: then it may be gone, for the function it called can remove any timer. A script error
// in that function is reported and ends the function only.
bool stepTimer(TimerPosition& timer);

// The tick: steps every timer in order of keys. Timers that the functions create above the walk's
// place are stepped in the same tick. Returns `interval` unchanged, as SDL_TimerCallback wants.
// Runs on SDL's timer thread, or on the main thread with ZEL_TICKS=main. A name that is no function
// of the script ends the process.
uint32_t stepAllTimers(uint32_t interval, void* parameter);
