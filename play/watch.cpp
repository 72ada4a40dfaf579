#include "play/watch.h"

#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "play/output.h"
#include "script/tokens.h"

static constexpr int kPatienceSeconds = 10;
static constexpr int kHangStatus = 3;

static char gPlace[300] = "zelplay";
static bool gAnswers = false;

void setWatchPlace(const std::string& place, bool answers) {
    std::snprintf(gPlace, sizeof gPlace, "%s", place.c_str());
    gAnswers = answers;
}

// Writes "file:line:column". The current token moves with every statement.
static void printScriptPlace(char* text, size_t size) {
    if (gProgramBuffer == nullptr) {
        std::snprintf(text, size, "its start");
        return;
    }
    const char* at = std::clamp<const char*>(textAt(gToken), gProgramBuffer, gProgramEnd);
    const char* lineStart = at;
    while (lineStart > gProgramBuffer && lineStart[-1] != '\n' && lineStart[-1] != '\r')
        lineStart--;
    const char* start = gProgramBuffer;
    const long line = 1 + std::count(start, lineStart, '\n');
    std::snprintf(text, size, "%s:%ld:%ld", gProgramPath, line, at - lineStart + 1);
}

std::string scriptPlace() {
    char text[300];
    printScriptPlace(text, sizeof text);
    return text;
}

// A signal handler: what it calls allocates nothing.
static void reportHang(int) {
    char where[300];
    char report[800];
    printScriptPlace(where, sizeof where);
    const int length = std::snprintf(report, sizeof report,
                                     "%s: the level hangs: %d s of processor time without the end "
                                     "of a pass; the script is at %s\n",
                                     gPlace, kPatienceSeconds, where);
    passOnRest();
    if (gAnswers)
        writeBytes(report, static_cast<size_t>(length));
    else if (write(STDERR_FILENO, report, static_cast<size_t>(length)) < 0)
        _exit(kHangStatus);
    _exit(kHangStatus);
}

static timer_t newTimer() {
    struct sigaction action = {};
    action.sa_handler = reportHang;
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
    static const timer_t timer = newTimer();
    struct itimerspec patience = {};
    patience.it_value.tv_sec = kPatienceSeconds;
    timer_settime(timer, 0, &patience, nullptr);
}
