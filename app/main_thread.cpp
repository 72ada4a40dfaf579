#include "app/main_thread.h"

static SDL_threadID gMainThread = 0;
static Uint32 gCallEventType = 0;

// The one call that may be waited for: set by the waiter, read by the main thread; the event that
// carries the call orders the two.
static MainThreadOperation gAwaitedOperation = nullptr;
static void* gAwaitedData = nullptr;

static SDL_sem* gCallDone = nullptr;  // posted when the awaited call has run, or never will
static bool gCallsStopped = false;

void initMainThread() {
    gMainThread = SDL_ThreadID();
    gCallEventType = SDL_RegisterEvents(1);
    gCallDone = SDL_CreateSemaphore(0);
}

bool onMainThread() {
    return gMainThread == 0 || SDL_ThreadID() == gMainThread;
}

static bool pushCall(Sint32 isAwaited, MainThreadOperation operation, void* data) {
    SDL_Event event;
    SDL_zero(event);
    event.user.type = gCallEventType;
    event.user.code = isAwaited;
    event.user.data1 = reinterpret_cast<void*>(operation);
    event.user.data2 = data;
    return SDL_PushEvent(&event) == 1;
}

void postToMainThread(MainThreadOperation operation, void* data) {
    if (onMainThread()) {
        operation(data);
    } else if (!gCallsStopped) {
        pushCall(0, operation, data);
    }
}

bool callOnMainThread(MainThreadOperation operation, void* data) {
    if (onMainThread()) {
        operation(data);
        return true;
    }
    if (gCallsStopped || gCallDone == nullptr) return false;
    gAwaitedOperation = operation;
    gAwaitedData = data;
    if (!pushCall(1, nullptr, nullptr)) return false;
    SDL_SemWait(gCallDone);
    return !gCallsStopped;
}

bool runMainThreadEvent(const SDL_Event& event) {
    if (gCallEventType == 0 || event.type != gCallEventType) return false;
    if (event.user.code == 0) {
        reinterpret_cast<MainThreadOperation>(event.user.data1)(event.user.data2);
    } else {
        gAwaitedOperation(gAwaitedData);
        SDL_SemPost(gCallDone);
    }
    return true;
}

void stopMainThreadCalls() {
    gCallsStopped = true;
    if (gCallDone != nullptr) SDL_SemPost(gCallDone);
}
