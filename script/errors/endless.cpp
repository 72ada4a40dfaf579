#include "script/errors/endless.h"

#include <signal.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>

#include "script/source/symbols.h"
#include "script/source/tokens.h"

// Timers --------------------------------------------------------------------------------------

ThreadTimer::~ThreadTimer() {
    if (runs) timer_delete(id);
}

void startThreadTimer(ThreadTimer& timer, int signal, void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;  // what the signal interrupts goes on
    sigaction(signal, &action, nullptr);

    sigevent event = {};
    event.sigev_notify = SIGEV_THREAD_ID;
    event.sigev_signo = signal;
    event._sigev_un._tid = gettid();  // the C library has no name for it
    timer.runs = timer_create(CLOCK_THREAD_CPUTIME_ID, &event, &timer.id) == 0;
}

static timespec fromMs(int ms) {
    return {ms / 1000, ms % 1000 * 1000000L};
}

void setThreadTimer(const ThreadTimer& timer, int firstMs, int everyMs) {
    const itimerspec times = {fromMs(everyMs), fromMs(firstMs)};
    if (timer.runs) timer_settime(timer.id, 0, &times, nullptr);
}

// Where the script is -------------------------------------------------------------------------

static thread_local void (*volatile gAnswer)(const Place*) = nullptr;

void askForPlace(void (*answer)(const Place*)) {
    gAnswer = answer;
    for (Place* place = gPlaces; textAt(place) < gProgramEnd; place++) {
        if (place->state == PlaceState::Kept) place->state = PlaceState::Unread;
    }
}

void answerWithPlace(const Place* token) {
    void (*const answer)(const Place*) = gAnswer;
    if (answer == nullptr) return;
    gAnswer = nullptr;
    answer(token);
}

// Calls ---------------------------------------------------------------------------------------

static constexpr int kLookMs = 250;
static constexpr int kLooks = 8;  // after the first one

// Of this thread: the function that the engine has called, or null, and its calls so far. The
// handler reads them at any moment.
static thread_local const Symbol* volatile gCalled = nullptr;
static thread_local volatile uint64_t gCalls = 0;

// Of the handler: the call it saw last, and how often in a row.
static thread_local uint64_t gCallSeen = 0;
static thread_local int gTimesSeen = 0;

static volatile sig_atomic_t gHasTold = 0;

static void tellPlace(const Place* token) {
    const Symbol* function = gCalled;
    const bool hasEnded = function == nullptr || gCallSeen != gCalls;
    if (gHasTold != 0 || hasEnded) return;
    gHasTold = 1;
    const TextPlace place = textPlaceOf(textAt(token->back));
    std::fprintf(stderr,
                 "%s:%zu:%zu: %s() has used %d s of processor time: an endless loop? "
                 "Ctrl-C twice stops the game\n",
                 gProgramPath, place.line, place.column, function->text, kLooks * kLookMs / 1000);
}

// A signal handler.
static void lookAtCall(int) {
    if (gHasTold != 0 || gCalled == nullptr) return;
    if (gCallSeen != gCalls) {
        gCallSeen = gCalls;
        gTimesSeen = 0;
    } else if (++gTimesSeen == kLooks) {
        askForPlace(tellPlace);
    }
}

// SDL blocks the signals that are meant for timers on its threads, but not this one.
static void watchThread() {
    static thread_local ThreadTimer timer;
    startThreadTimer(timer, SIGRTMIN, lookAtCall);
    setThreadTimer(timer, kLookMs, kLookMs);
}

void beginCall(const Symbol* function) {
    const bool isFirst = gCalls == 0;
    gCalls = gCalls + 1;
    gCalled = function;
    if (isFirst) watchThread();
}

void endCall() {
    gCalled = nullptr;
}
