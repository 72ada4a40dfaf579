// Work that only the main thread may do, asked for on another thread.
//
// SDL wants its window, its renderer and all textures on the main thread, but a timer function runs
// on SDL's timer thread unless ZEL_TICKS=main. What it asks for travels through SDL's event queue
// to the main loop, which runs it before it dispatches anything else. At most one event of each
// kind below is in the queue, however much is asked for: the queue keeps its room for the player's
// events, the quit among them.
//
// On the main thread an operation runs at once, and so it does on any thread once the engine begins
// to close: an operation looks at gEngineClosed before it touches what SDL owns.
//
// One thread beside the main one may call these functions. Ground: includes nothing of ours, so
// every folder may call it.
#pragma once

#include <SDL.h>

#include <cstddef>

using MainThreadOperation = void (*)(void* data);

// Makes the calling thread the main thread and prepares the hand-over. Once, after SDL_Init.
void initMainThread();

// True on the main thread, and on every thread before initMainThread.
bool onMainThread();

// Runs operation(data) on the main thread soon, without waiting, after all that was posted before.
// `data` belongs to the operation.
void postToMainThread(MainThreadOperation operation, void* data);

// What is asked for again and again, and where only the newest request counts.
enum class MainThreadRequest { Title, Fullscreen, Count };

// Runs operation(copy of data) on the main thread soon, without waiting, in place of an earlier
// request of the same kind that has not run yet. Copies `size` bytes of `data`.
void requestOnMainThread(MainThreadRequest kind, MainThreadOperation operation, void* data,
                         size_t size);

// Runs operation(data) on the main thread and waits until it has run.
void callOnMainThread(MainThreadOperation operation, void* data);

// Runs what `event` carries. Returns false if it is an event of another kind. Main thread.
bool runMainThreadEvent(const SDL_Event& event);

// The close, in two steps around the end of the timer thread. Main thread.
// After the first, operations run where they are asked for, and so does one that a thread waits for
// in callOnMainThread. The second, when the other thread has ended, runs what is still in the
// queue.
void stopMainThreadCalls();
void endMainThreadCalls();

// True between the two, on any thread.
bool mainThreadIsClosing();
