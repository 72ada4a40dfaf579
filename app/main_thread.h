// Work that only the main thread may do, asked for on another thread.
//
// SDL wants its window, its renderer and all textures on the main thread, but a timer function runs
// on SDL's timer thread unless ZEL_TICKS=main. What it asks for travels as an SDL user event to the
// main loop, which runs it before it dispatches anything else. Ground floor: includes nothing of
// ours, so every folder may call it.
#pragma once

#include <SDL.h>

using MainThreadOperation = void (*)(void* data);

// Makes the calling thread the main thread and prepares the hand-over. Once, after SDL_Init.
void initMainThread();

// True on the main thread, and on every thread before initMainThread.
bool onMainThread();

// Runs operation(data): at once on the main thread, else soon, without waiting. `data` belongs to
// the operation. If the engine closes meanwhile, or SDL's event queue is full, the operation never
// runs and `data` is left to the end of the process.
void postToMainThread(MainThreadOperation operation, void* data);

// Runs operation(data) and waits until it has run; at once on the main thread. Returns false when
// the engine is closing and the operation will not run: `data` may go away then. One thread beside
// the main one may wait at a time.
bool callOnMainThread(MainThreadOperation operation, void* data);

// Runs the operation that `event` carries. Returns false if it is an event of another kind.
bool runMainThreadEvent(const SDL_Event& event);

// Makes callOnMainThread return false from now on, on the thread that waits in it too. Main thread,
// before it stops to drain its events for good.
void stopMainThreadCalls();
