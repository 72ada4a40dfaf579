#include "play/level.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <iterator>

#include "app/base/input.h"
#include "app/base/paths.h"
#include "app/base/window.h"
#include "app/engine.h"
#include "app/frame.h"
#include "app/main_loop.h"
#include "app/ticks.h"
#include "play/hands.h"
#include "play/output.h"
#include "play/watch.h"
#include "script/errors/halt.h"
#include "script/run/program.h"

LevelEnd gLevelEnd = LevelEnd::None;
bool gStopped = false;
uint32_t gPassMs = 16;
int gDrawEvery = 10;
double gSpeed = 0;

void (*gOnRealEvent)(const SDL_Event& event) = [](const SDL_Event& event) {
    if (event.type == SDL_QUIT) gStopped = true;
};

static uint64_t gNowMs = 0;
static bool gDraws = false;   // the pass that is running does
static std::jmp_buf gWayOut;  // of the start or the pass that is running
static std::string gStuckReason;

// Ends --------------------------------------------------------------------------------------------

static constexpr struct {
    const char* word;
    const char* sentence;
} kEnds[] = {
    {"none", "it goes on"},
    {"closed", "its window was closed"},
    {"exitgame", "exitgame has shut the engine down"},
    {"0", "the script's end, status 0"},
    {"1", "status 1, a function that was called does not exist"},
    {"abort", "aborted, a name is too long"},
    {"division", "arithmetic fault, % by zero"},
    {"stuck", "reading the script never ends, "},
};
static_assert(std::size(kEnds) == static_cast<size_t>(LevelEnd::Count), "one text per end");

const char* endWord(LevelEnd end) {
    return kEnds[static_cast<size_t>(end)].word;
}

std::string endSentence() {
    return kEnds[static_cast<size_t>(gLevelEnd)].sentence + gStuckReason;
}

[[noreturn]] static void leaveLevel(LevelEnd end) {
    gLevelEnd = end;
    std::longjmp(gWayOut, 1);
}

// In place of those of script/errors/halt.cpp: a script that ends its process ends the level only,
// and the play goes on with what can be said of the level then.
void endProcess(int status) {
    leaveLevel(status == 0 ? LevelEnd::Ended : LevelEnd::Failed);
}

void abortProcess() {
    leaveLevel(LevelEnd::Aborted);
}

void raiseDivisionFault() {
    leaveLevel(LevelEnd::Divided);
}

void waitEndlessly(const char* reason, const Place* position) {
    gStuckReason = scriptPlace(position) + ": " + reason;
    leaveLevel(LevelEnd::Stuck);
}

// After exitgame the engine would run on without ticks, events and frames.
static void noticeEnd() {
    takeOutput();
    if (gEngineClosed && gLevelEnd == LevelEnd::None) gLevelEnd = LevelEnd::Exited;
}

// Start -------------------------------------------------------------------------------------------

uint64_t levelTimeMs() {
    return gNowMs;
}

// Nothing waits for a frame that no screen shows, and the driver would queue frames without bound:
// reading a pixel waits for the frame.
static void drawIfWanted() {
    if (!gDraws || gEngineClosed) return;
    drawFrame();
    const SDL_Rect corner = {0, 0, 1, 1};
    Uint32 pixel = 0;
    if (gSpeed == 0)
        SDL_RenderReadPixels(gRenderer, &corner, SDL_PIXELFORMAT_ARGB8888, &pixel, sizeof pixel);
}

static bool bringUp() {
    if (!initEngine()) {
        std::fputs("\nFailed to initialize!", stdout);
        return false;
    }
    if (!loadScript(gScriptPath.c_str())) {
        std::fputs("\nFailed to load script.txt", stdout);
        return false;
    }
    runMain();
    refreshKeyboardState();
    runTicksOnMainThread(0);
    return true;
}

bool startLevel() {
    gInput = {levelTimeMs, takeEvent, heldKeys};
    gPass.draw = drawIfWanted;
    restartWatch();
    const bool started = setjmp(gWayOut) != 0 || bringUp();
    noticeEnd();
    return started;
}

// Passes ------------------------------------------------------------------------------------------

void runLevelPass(uint32_t ms, bool draws) {
    if (gLevelEnd != LevelEnd::None) return;
    gNowMs += ms;
    gDraws = draws;
    restartWatch();
    if (setjmp(gWayOut) == 0 && runPass()) gLevelEnd = LevelEnd::Closed;
    noticeEnd();
}

// Real milliseconds that a shown level is ahead; negative if it is late. Counted from the first
// call on; after a long stop the level goes on from where it was.
static double aheadMs() {
    constexpr double kMostLateMs = 250;
    static double startMs = static_cast<double>(SDL_GetTicks64());
    const double dueMs = gSpeed == 0 ? 0 : static_cast<double>(gNowMs) / gSpeed;
    const double nowMs = static_cast<double>(SDL_GetTicks64());
    if (gSpeed == 0 || startMs + dueMs < nowMs - kMostLateMs) startMs = nowMs - dueMs;
    return startMs + dueMs - nowMs;
}

static bool isPassDrawn() {
    constexpr double kFrameMs = 17;
    static int passes = 0;
    return gDrawEvery != 0 && passes++ % gDrawEvery == 0 && aheadMs() > -kFrameMs;
}

static void keepPace() {
    SDL_Event event;
    while (!gEngineClosed && gLevelEnd == LevelEnd::None && SDL_PollEvent(&event) != 0)
        gOnRealEvent(event);
    const double ms = aheadMs();
    if (ms >= 1 && !gStopped) SDL_Delay(static_cast<Uint32>(ms));
}

void runLevel(uint64_t ms) {
    const uint64_t endMs = gNowMs + ms;
    while (gNowMs < endMs && gLevelEnd == LevelEnd::None && !gStopped) {
        const uint64_t step = std::min<uint64_t>(gPassMs, endMs - gNowMs);
        runLevelPass(static_cast<uint32_t>(step), isPassDrawn());
        keepPace();
    }
}
