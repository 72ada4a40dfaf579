// The engine's two ticks: 1 ms for the script timers, 10 ms for the units.
//
// By default SDL runs both on its timer thread, next to the main thread and without any lock. With
// the environment variable ZEL_TICKS set to "main" the main loop runs them, on the same schedule,
// between the events and the frame: then one thread touches the engine's state, and a level may use
// timers and keys together.
#pragma once

#include <cstdint>

// Starts both ticks, in the way ZEL_TICKS asks for. Main thread, once, after the script's main.
// A value of ZEL_TICKS that means nothing is named on standard error and ignored.
void startTicks();

// Runs what has fallen due up to `nowMs` (SDL_GetTicks64), in order of time; the unit tick comes
// after the timer tick of the same millisecond. At most 250 ms of backlog are made up, the rest is
// dropped. Timer functions that take long end a pass before that: a slow script does not stop the
// picture. Does nothing when SDL runs the ticks, and after
// closeEngine. Main thread.
void runDueTicks(uint64_t nowMs);

// Makes the main loop run the ticks from `nowMs` on; startTicks does it for ZEL_TICKS=main.
void runTicksOnMainThread(uint64_t nowMs);

// Ends both ticks. Waits for the script function that the timer thread may be running.
void stopTicks();
