#include "play/watch.h"

#include <signal.h>
#include <unistd.h>

#include <cstdio>

#include "play/output.h"
#include "script/errors/endless.h"
#include "script/source/text.h"
#include "script/source/tokens.h"

static constexpr int kPatienceSeconds = 10;
static constexpr int kHangStatus = 3;

static char gPlace[300] = "zelplay";
static ThreadTimer gTimer;
static volatile bool gAsked = false;  // where the script is, and not yet answered

void setWatchPlace(const std::string& place) {
    std::snprintf(gPlace, sizeof gPlace, "%s", place.c_str());
}

std::string scriptPlace(const Place* place) {
    const TextPlace at = textPlaceOf(textAt(place));
    return std::string(gProgramPath) + ":" + std::to_string(at.line) + ":" +
           std::to_string(at.column);
}

[[noreturn]] static void reportHang(const char* where) {
    char report[800];
    const int length = std::snprintf(report, sizeof report,
                                     "%s: the level hangs: %d s of processor time without the end "
                                     "of a pass; the script is at %s\n",
                                     gPlace, kPatienceSeconds, where);
    passOnRest();
    const ssize_t told = write(STDERR_FILENO, report, static_cast<size_t>(length));
    static_cast<void>(told);  // nobody is left to hear of a failure
    _exit(kHangStatus);
}

static void reportHangAt(const Place* token) {
    if (gAsked) reportHang(scriptPlace(token->back).c_str());
}

// A signal handler. A script that hangs reads its next token at once; the engine may hang too.
static void onTimer(int) {
    constexpr int kAnswerMs = 1000;
    if (gAsked) reportHang("a place that is not known");
    gAsked = true;
    askForPlace(reportHangAt);
    setThreadTimer(gTimer, kAnswerMs, 0);
}

void restartWatch() {
    gAsked = false;
    if (!gTimer.runs) startThreadTimer(gTimer, SIGPROF, onTimer);
    setThreadTimer(gTimer, kPatienceSeconds * 1000, 0);
}
