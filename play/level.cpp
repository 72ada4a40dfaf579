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
#include "play/costs.h"
#include "play/hands.h"
#include "play/output.h"
#include "play/pace.h"
#include "play/watch.h"
#include "script/run/program.h"

LevelEnd gLevelEnd = LevelEnd::None;
std::string gStuckReason;
uint32_t gPassMs = 16;
bool gDrawPasses = true;

static uint64_t gNowMs = 0;
static std::jmp_buf gWayOut;  // of the start or the pass that is running

// Ends ---------------------------------------------------------------------------------------

struct EndText {
    const char* word;
    const char* sentence;
};
static const EndText kEndTexts[] = {
    {"none", "it goes on"},                                        // None
    {"closed", "its window was closed"},                           // Closed
    {"exitgame", "exitgame has shut the engine down"},             // Exited
    {"0", "the script's end, status 0"},                           // Ended
    {"1", "status 1, a function that was called does not exist"},  // Failed
    {"abort", "aborted, a name is too long"},                      // Aborted
    {"division", "arithmetic fault, % by zero"},                   // Divided
    {"stuck", "reading the script never ends"},                    // Stuck
};
static_assert(std::size(kEndTexts) == static_cast<size_t>(LevelEnd::Count), "one text per end");

const char* endWord(LevelEnd end) {
    return kEndTexts[static_cast<size_t>(end)].word;
}

std::string endSentence() {
    const std::string sentence = kEndTexts[static_cast<size_t>(gLevelEnd)].sentence;
    if (gLevelEnd != LevelEnd::Stuck) return sentence;
    return sentence + ", " + gStuckReason;
}

void leaveLevel(LevelEnd end) {
    gLevelEnd = end;
    std::longjmp(gWayOut, 1);
}

// After exitgame the engine would go on for ever without ticks, events and frames.
static void noticeExit() {
    takeOutput();
    if (gEngineClosed && gLevelEnd == LevelEnd::None) gLevelEnd = LevelEnd::Exited;
}

// Start --------------------------------------------------------------------------------------

uint64_t levelTimeMs() {
    return gNowMs;
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
    restartWatch();
    const bool started = setjmp(gWayOut) != 0 || bringUp();
    noticeExit();
    return started;
}

// Passes -------------------------------------------------------------------------------------

// Nothing waits for a frame that no screen shows, and the driver would queue frames without bound:
// reading a pixel waits for those before it.
static void boundFrames() {
    constexpr int kFramesInFlight = 4;
    static int frames = 0;
    if (++frames % kFramesInFlight != 0 || isWindowShown()) return;
    const SDL_Rect corner = {0, 0, 1, 1};
    Uint32 pixel = 0;
    SDL_RenderReadPixels(gRenderer, &corner, SDL_PIXELFORMAT_ARGB8888, &pixel, sizeof pixel);
}

// The order is that of the main loop.
static bool playPass(bool draw) {
    startCosts();
    const bool quit = drainEvents();
    noteCost(PassPart::Events);
    runDueTicks(gNowMs);
    noteCost(PassPart::Ticks);
    if (draw && !gEngineClosed) {
        boundFrames();
        drawFrame();
    }
    noteCost(PassPart::Drawing);
    return quit;
}

void runLevelPass(uint32_t ms, bool draw) {
    if (gLevelEnd != LevelEnd::None) return;
    gNowMs += ms;
    restartWatch();
    if (setjmp(gWayOut) == 0 && playPass(draw)) gLevelEnd = LevelEnd::Closed;
    noticeExit();
}

void runLevel(uint64_t ms) {
    const uint64_t endMs = gNowMs + ms;
    while (gNowMs < endMs && gLevelEnd == LevelEnd::None && !gStopped) {
        const uint64_t step = std::min<uint64_t>(gPassMs, endMs - gNowMs);
        runLevelPass(static_cast<uint32_t>(step), gDrawPasses && !isLate());
        keepPace();
    }
}
