// The built-ins of timers. The timer id that a script names is the key of the registry; an unknown
// one gets a default record, which takes an identifier.
#pragma once

#include <cstdint>

// createtimer(once, interval, "function"): calls the function every interval / 10 ms, or only once
// if the flag is not 0. Returns the id that the next timer will get; getlasttimer() tells this
// one's.
int32_t builtinCreateTimer();

// pausetimer(id, pause): stops the timer's count, or lets it go on if the flag is 0. Returns 0.
int32_t builtinPauseTimer();

// deletetimer(id): ends the timer. Returns 0.
int32_t builtinDeleteTimer();

// getlasttimer(): the id of the timer made latest.
int32_t builtinGetLastTimer();

// getcurrenttimer(): the id of the timer that fired latest; in a timer's function, of that timer.
int32_t builtinGetCurrentTimer();
