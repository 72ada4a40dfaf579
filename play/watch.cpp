#include "play/watch.h"

#include <signal.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "play/output.h"
#include "script/host/arguments.h"
#include "script/source/text.h"
#include "script/source/tokens.h"

static constexpr int kPatienceSeconds = 10;
static constexpr int kHangStatus = 3;

static char gPlace[300] = "zelplay";

void setWatchPlace(const std::string& place) {
    std::snprintf(gPlace, sizeof gPlace, "%s", place.c_str());
}

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

static const Place* findLoop() {
    for (const Place* place = gPlaces; textAt(place) < gProgramEnd; place++) {
        if (place->state == PlaceState::Kept) return place;
    }
    return gProgramPos;
}

static void setTimer(int milliseconds) {
    const itimerval patience = {{0, 0}, {milliseconds / 1000, milliseconds % 1000 * 1000}};
    setitimer(ITIMER_PROF, &patience, nullptr);
}

[[noreturn]] static void reportHang() {
    char where[300] = "its start";
    char report[800];
    if (gProgramBuffer != nullptr) printPlace(where, sizeof where, findLoop());
    const int length = std::snprintf(report, sizeof report,
                                     "%s: the level hangs: %d s of processor time without the end "
                                     "of a pass; the script is at %s\n",
                                     gPlace, kPatienceSeconds, where);
    passOnRest();
    const ssize_t told = write(STDERR_FILENO, report, static_cast<size_t>(length));
    static_cast<void>(told);  // nobody is left to hear of a failure
    _exit(kHangStatus);
}

// A signal handler: what it calls allocates nothing.
static void onTimer(int) {
    constexpr int kLookMs = 100;
    static bool looks = false;
    if (looks || gProgramBuffer == nullptr) reportHang();
    looks = true;
    forgetTokens();
    setTimer(kLookMs);
}

void restartWatch() {
    signal(SIGPROF, onTimer);
    setTimer(kPatienceSeconds * 1000);
}
