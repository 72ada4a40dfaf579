#include "app/base/main_thread.h"

#include <cstring>

enum class HandOver { Open, Closing, Closed };

static SDL_threadID gMainThread = 0;
static HandOver gHandOver = HandOver::Open;

// The types of our events: the awaited call, the posted operations, then one for each request.
static Uint32 gCallEvent = 0;
static Uint32 gPostEvent = 0;
static Uint32 gFirstRequestEvent = 0;
static constexpr int kRequests = static_cast<int>(MainThreadRequest::Count);

// The one call that may be waited for: set by the waiter, read by the main thread; the event that
// carries the call orders the two.
static MainThreadOperation gAwaitedOperation = nullptr;
static void* gAwaitedData = nullptr;
static bool gAwaitedHasRun = false;
static SDL_sem* gCallDone = nullptr;  // posted when the awaited call has run, or never will

// A posted operation. All that wait are one list, and one event carries it.
struct PostedOperation {
    MainThreadOperation operation;
    void* data;
    PostedOperation* next;
};

void initMainThread() {
    gMainThread = SDL_ThreadID();
    gCallEvent = SDL_RegisterEvents(2 + kRequests);
    gPostEvent = gCallEvent + 1;
    gFirstRequestEvent = gPostEvent + 1;
    gCallDone = SDL_CreateSemaphore(0);
}

bool onMainThread() {
    return gMainThread == 0 || SDL_ThreadID() == gMainThread;
}

static bool runsHere() {
    return onMainThread() || gHandOver != HandOver::Open;
}

// Events -------------------------------------------------------------------------------------

static SDL_Event makeEvent(Uint32 type, void* first, void* second) {
    SDL_Event event;
    SDL_zero(event);
    event.user.type = type;
    event.user.data1 = first;
    event.user.data2 = second;
    return event;
}

// Takes our event of this type back out of the queue. SDL locks the queue for it: either this
// thread gets the event or the main loop does.
static bool takeBack(Uint32 type, SDL_Event& event) {
    return SDL_PeepEvents(&event, 1, SDL_GETEVENT, type, type) == 1;
}

// Queues the event. A full queue is waited for; returns false if the engine closes first.
static bool push(SDL_Event event) {
    while (SDL_PushEvent(&event) != 1) {
        if (gHandOver != HandOver::Open) return false;
        SDL_Delay(1);
    }
    return true;
}

// Posted operations ---------------------------------------------------------------------------

static void runPosted(PostedOperation* list) {
    while (list != nullptr) {
        PostedOperation* posted = list;
        list = posted->next;
        posted->operation(posted->data);
        delete posted;
    }
}

// The list of the event grows at its end: its second pointer is the last entry.
void postToMainThread(MainThreadOperation operation, void* data) {
    if (runsHere()) return operation(data);
    PostedOperation* posted = new PostedOperation{operation, data, nullptr};
    SDL_Event event;
    if (takeBack(gPostEvent, event)) {
        static_cast<PostedOperation*>(event.user.data2)->next = posted;
        event.user.data2 = posted;
    } else {
        event = makeEvent(gPostEvent, posted, posted);
    }
    if (!push(event)) runPosted(static_cast<PostedOperation*>(event.user.data1));
}

// Requests ------------------------------------------------------------------------------------

static void runRequest(const SDL_Event& event) {
    reinterpret_cast<MainThreadOperation>(event.user.data1)(event.user.data2);
    SDL_free(event.user.data2);
}

// Also for a request of the main thread, which runs at once: an older one that ran after it would
// undo it.
static void dropEarlierRequest(Uint32 type) {
    SDL_Event earlier;
    if (takeBack(type, earlier)) SDL_free(earlier.user.data2);
}

void requestOnMainThread(MainThreadRequest kind, MainThreadOperation operation, void* data,
                         size_t size) {
    const Uint32 type = gFirstRequestEvent + static_cast<Uint32>(kind);
    if (gCallEvent != 0 && gHandOver == HandOver::Open) dropEarlierRequest(type);
    if (runsHere()) return operation(data);
    void* copy = SDL_malloc(size);
    if (copy == nullptr) return;
    std::memcpy(copy, data, size);
    const SDL_Event event = makeEvent(type, reinterpret_cast<void*>(operation), copy);
    if (!push(event)) runRequest(event);
}

// The awaited call ----------------------------------------------------------------------------

static bool waitForMainThread(MainThreadOperation operation, void* data) {
    gAwaitedOperation = operation;
    gAwaitedData = data;
    gAwaitedHasRun = false;
    if (push(makeEvent(gCallEvent, nullptr, nullptr))) SDL_SemWait(gCallDone);
    return gAwaitedHasRun;
}

void callOnMainThread(MainThreadOperation operation, void* data) {
    if (runsHere() || !waitForMainThread(operation, data)) operation(data);
}

static void runAwaitedCall() {
    gAwaitedOperation(gAwaitedData);
    gAwaitedHasRun = true;
    SDL_SemPost(gCallDone);
}

// The main thread's side ----------------------------------------------------------------------

bool runMainThreadEvent(const SDL_Event& event) {
    if (gCallEvent == 0 || event.type < gCallEvent) return false;
    if (event.type >= gFirstRequestEvent + kRequests) return false;
    if (event.type == gCallEvent) {
        runAwaitedCall();
    } else if (event.type == gPostEvent) {
        runPosted(static_cast<PostedOperation*>(event.user.data1));
    } else {
        runRequest(event);
    }
    return true;
}

void stopMainThreadCalls() {
    gHandOver = HandOver::Closing;
    if (gCallDone != nullptr) SDL_SemPost(gCallDone);
}

void endMainThreadCalls() {
    SDL_Event event;
    if (gCallEvent != 0) takeBack(gCallEvent, event);  // its waiter has run it itself
    for (int i = 0; i <= kRequests && gCallEvent != 0; i++) {
        if (takeBack(gPostEvent + static_cast<Uint32>(i), event)) runMainThreadEvent(event);
    }
    SDL_DestroySemaphore(gCallDone);
    gCallDone = nullptr;
    gHandOver = HandOver::Closed;
}

bool mainThreadIsClosing() {
    return gHandOver == HandOver::Closing;
}
