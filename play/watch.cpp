#include "play/watch.h"

#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "play/output.h"
#include "script/host/arguments.h"
#include "script/source/text.h"
#include "script/source/tokens.h"

static constexpr int kPatienceSeconds = 10;
static constexpr int kHangStatus = 3;

static char gPlace[300] = "zelplay";
static bool gAnswers = false;
static timer_t gTimer = nullptr;

void setWatchPlace(const std::string& place, bool answers) {
    std::snprintf(gPlace, sizeof gPlace, "%s", place.c_str());
    gAnswers = answers;
}

// Writes "file:line:column" of a place in the text.
static void printPlace(char* text, size_t size, const Place* place) {
    const char* at = std::clamp<const char*>(textAt(place), gProgramBuffer, gProgramEnd);
    const char* lineStart = at;
    while (lineStart > gProgramBuffer && lineStart[-1] != '\n' && lineStart[-1] != '\r')
        lineStart--;
    const char* start = gProgramBuffer;
    const long line = 1 + std::count(start, lineStart, '\n');
    std::snprintf(text, size, "%s:%ld:%ld", gProgramPath, line, at - lineStart + 1);
}

std::string scriptPlace(const Place* place) {
    char text[300];
    printPlace(text, sizeof text, place);
    return text;
}

// Where the script is, is in the processor's registers alone. But a token that is not kept is read
// again when it is met: once all are forgotten, those that are kept a moment later are the loop.
static void forgetTokens() {
    for (Place* place = gPlaces; textAt(place) < gProgramEnd; place++) {
        if (place->state == PlaceState::Kept) place->state = PlaceState::Unread;
    }
}

static void printLoop(char* text, size_t size) {
    const Place* place = gPlaces;
    while (textAt(place) < gProgramEnd && place->state != PlaceState::Kept)
        place++;
    const bool isFound = textAt(place) < gProgramEnd;
    printPlace(text, size, isFound ? place : gProgramPos);
}

static void startTimer(long seconds, long milliseconds) {
    struct itimerspec patience = {};
    patience.it_value.tv_sec = seconds;
    patience.it_value.tv_nsec = milliseconds * 1000000;
    timer_settime(gTimer, 0, &patience, nullptr);
}

[[noreturn]] static void reportHang(const char* where) {
    char report[800];
    const int length = std::snprintf(report, sizeof report,
                                     "%s: the level hangs: %d s of processor time without the end "
                                     "of a pass; the script is at %s\n",
                                     gPlace, kPatienceSeconds, where);
    passOnRest();
    const auto size = static_cast<size_t>(length);
    if (gAnswers) writeBytes(report, size);
    const ssize_t told = gAnswers ? 0 : write(STDERR_FILENO, report, size);
    static_cast<void>(told);  // nobody is left to hear of a failure
    _exit(kHangStatus);
}

// A signal handler: what it calls allocates nothing.
static void onTimer(int) {
    constexpr long kLookMs = 100;
    static bool looks = false;
    if (gProgramBuffer == nullptr) reportHang("its start");
    if (!looks) {
        looks = true;
        forgetTokens();
        startTimer(0, kLookMs);
        return;
    }
    char where[300];
    printLoop(where, sizeof where);
    reportHang(where);
}

static timer_t newTimer() {
    struct sigaction action = {};
    action.sa_handler = onTimer;
    sigaction(SIGXCPU, &action, nullptr);
    struct sigevent event = {};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGXCPU;
    timer_t timer = nullptr;
    // The thread's own time: the drawing threads of the graphics driver do not count.
    if (timer_create(CLOCK_THREAD_CPUTIME_ID, &event, &timer) != 0) std::abort();
    return timer;
}

void restartWatch() {
    if (gTimer == nullptr) gTimer = newTimer();
    startTimer(kPatienceSeconds, 0);
}
