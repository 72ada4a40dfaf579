// The engine's two ticks: 1 ms for the script timers, 10 ms for the units.
//
// By default SDL runs both on its timer thread, next to the main thread and without any lock. With
// the environment variable ZEL_TICKS set to "main" the main loop runs them, on the same schedule,
// between the events and the frame: then one thread touches the engine's state, and a level may use
// timers and keys together.
#pragma once

#include <cstdint>

// The parameter handed to both ticks: null, and nothing reads it. It is kept on purpose.
extern void* const gTimerParam;

// Starts both ticks, in the way ZEL_TICKS asks for. Main thread, once, after the script's main.
// A value of ZEL_TICKS that means nothing is named on standard error and ignored.
void startTicks();

// Runs what has fallen due up to `nowMs` (by the clock of gInput), in order of time; the unit tick
// comes after the timer tick of the same millisecond. At most 250 ms of backlog are made up, the
// rest is dropped. Once the ticks have taken 100 ms of real time the others wait for the next pass,
// so slow timer functions do not stop the picture; nor the units: if a unit tick fell due since the
// last pass, at least one runs. Does nothing when SDL runs the ticks, and after closeEngine. Main
// thread.
void runDueTicks(uint64_t nowMs);

// Makes the main loop run the ticks from `nowMs` on; startTicks does it for ZEL_TICKS=main.
void runTicksOnMainThread(uint64_t nowMs);

// Ends both ticks. Waits for the script function that the timer thread may be running.
void stopTicks();
