// What the engine asks of SDL, in which order: at the start, in a pass of the main loop, at the
// end.
#include "support/sdl_calls.h"

#include <gtest/gtest.h>

#include <atomic>
#include <utility>

#include "app/base/input.h"
#include "app/ticks.h"
#include "images/images.h"
#include "support/engine_test.h"

using Calls = std::vector<std::string>;

int engineMain(int, char**);  // main of app/main.cpp

class CallsOfAStart : public FolderTest {};
class CallsWhileRunning : public EngineTest {};

static Calls operator+(Calls first, const Calls& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

static const Calls kStart = {
    "TTF_Init()",
    "TTF_OpenFont(arial.ttf, 12)",
    "SDL_Init(29233)",  // 0x7231: timer, audio, video, joystick, haptic, game controller, events
    "SDL_SetHint(SDL_RENDER_BATCHING, 1)",
    "SDL_SetHint(SDL_RENDER_SCALE_QUALITY, 1)",
    "SDL_CreateWindow(Zel, 536805376, 536805376, 640, 480, 4)",  // undefined place, shown
    "SDL_CreateRenderer(1, 6)",                                  // accelerated, in step
    "SDL_SetRenderDrawColor(255, 255, 255, 255)",
    "IMG_LoadTexture(SysPics/select.bmp)",
    "SDL_RenderCopy(whole, 0, 0, 8, 8)",
};

static const Calls kEmptyFrame = {"SDL_RenderClear()", "SDL_RenderPresent()"};

static const Calls kEnd = {
    "SDL_DestroyRenderer()",
    "SDL_DestroyWindow()",
    "TTF_CloseFont()",
    "TTF_Quit()",
    "IMG_Quit()",
    "SDL_Quit()",
};

// The calls recorded, but for what the engine needs to stop its ticks.
static Calls callsMade() {
    Calls calls;
    for (const std::string& call : recordedCalls()) {
        if (call.find("SDL_QuitSubSystem") != 0) calls.push_back(call);
    }
    return calls;
}

// Events ----------------------------------------------------------------------------------------

static int pollQuitOnce(SDL_Event* event) {
    static bool polled = false;
    SDL_zerop(event);
    event->type = SDL_QUIT;
    return std::exchange(polled, true) ? 0 : 1;
}

// Start -----------------------------------------------------------------------------------------

TEST_F(CallsOfAStart, StepsComeInTheirOrder) {
    recordCalls();
    startEngine();
    EXPECT_EQ(kStart, callsMade());
    closeEngine();
}

// The title shows where the script's main runs.
static const char kTitledLevel[] = "int main() { changewindowname(\"a\"); }\r\n";
static const Calls kTitle = {"SDL_SetWindowTitle(Zel - a)"};
static const Calls kKeys = {"SDL_GetKeyboardState()"};

TEST_F(CallsOfAStart, WholeRunStartsTheTicksAfterMainAndBeforeTheLoop) {
    writeFile("levels/level1/script.txt", kTitledLevel);
    gInput.pollEvent = pollQuitOnce;
    recordCalls();
    EXPECT_EQ(0, engineMain(0, nullptr));
    const Calls ticks = {"SDL_AddTimer(1, stepAllTimers)", "SDL_AddTimer(10, stepAllUnits)"};
    EXPECT_EQ(kStart + kTitle + kKeys + ticks + kEmptyFrame + kEnd, callsMade());
}

TEST_F(CallsOfAStart, TicksOnTheMainThreadNeedNoTimers) {
    writeFile("levels/level1/script.txt", kTitledLevel);
    setenv("ZEL_TICKS", "main", 1);
    gInput.pollEvent = pollQuitOnce;
    recordCalls();
    EXPECT_EQ(0, engineMain(0, nullptr));
    EXPECT_EQ(kStart + kTitle + kKeys + kEmptyFrame + kEnd, callsMade());
}

TEST_F(CallsOfAStart, MissingScriptEndsItWithoutALoop) {
    recordCalls();
    EXPECT_EQ(0, engineMain(0, nullptr));
    EXPECT_EQ(kStart + kEnd, callsMade());
}

// A pass ----------------------------------------------------------------------------------------

static void writeDots() {
    writePicture("levels/level1/a.bmp", 1, 2, kRed);
    writePicture("levels/level1/b.bmp", 3, 4, kGreen);
    writePicture("levels/level1/c.bmp", 5, 6, kGreen);
}

static std::string copyTo(const std::string& rect) {
    return "SDL_RenderCopy(whole, " + rect + ")";
}

TEST_F(CallsWhileRunning, FrameCopiesWhatIsVisibleLayerByLayer) {
    writeDots();
    runStatements(
        "createunit(0, 10, 20); createtext(\"t\", 30, 40, 50, 60); loadimage(\"a.bmp\");"
        "loadimage(\"b.bmp\"); loadimage(\"c.bmp\"); showimage(2, 1); showimage(0, 1);"
        "moveimage(0, 70, 80);");
    setVisible(selectionFrame(), true);
    recordCalls();
    drawFrame();
    const Calls layers = {
        copyTo("70, 80, 1, 2"),
        copyTo("0, 0, 5, 6"),
        "TTF_RenderUTF8_Solid(t, 100, 100, 100, 0)",
        copyTo("30, 40, 50, 60"),
        copyTo("10, 20, 15, 15"),
        copyTo("0, 0, 8, 8"),
    };
    EXPECT_EQ(Calls{kEmptyFrame[0]} + layers + Calls{kEmptyFrame[1]}, callsMade());
}

TEST_F(CallsWhileRunning, PassRunsKeysThenTicksThenTheFrame) {
    writeDots();
    runLevel(
        "int key() { moveimage(0, 30, 0); }"
        "int tick() { moveimage(0, getimagex(0) + 1, 7); }"
        "int main() { loadimage(\"a.bmp\"); showimage(0, 1);"
        "addexectfunckey(0, 4, \"key\"); createtimer(0, 0, \"tick\"); }");
    gInput.nowMs = [] { return uint64_t{1005}; };
    runTicksOnMainThread(1000);
    hold(4);
    pushEvent(SDL_KEYDOWN);
    recordCalls();
    EXPECT_FALSE(runPass());
    const Calls frame = {kEmptyFrame[0], copyTo("35, 7, 1, 2"), kEmptyFrame[1]};
    EXPECT_EQ(kKeys + frame, callsMade());
}

// End -------------------------------------------------------------------------------------------

TEST_F(CallsWhileRunning, CloseReleasesThePicturesThenTheRest) {
    writeDots();
    runStatements("loadimage(\"b.bmp\"); loadimage(\"a.bmp\"); createunit(0, 1, 1);");
    recordCalls();
    closeEngine();
    const Calls textures = {callOn("SDL_DestroyTexture", gImages.at(0).texture),
                            callOn("SDL_DestroyTexture", gImages.at(1).texture)};
    EXPECT_EQ(textures + kEnd, callsMade());
    recordCalls();
    closeEngine();
    EXPECT_EQ(Calls{}, recordedCalls()) << "nothing released is used again";
}

TEST_F(CallsWhileRunning, FramesAfterTheCloseOnlyWaitAsLongAsAFrame) {
    closeEngine();
    recordCalls();
    drawFrame();
    drawFrame();
    EXPECT_EQ((Calls{"SDL_Delay(16)", "SDL_Delay(16)"}), recordedCalls());
}

TEST_F(CallsWhileRunning, ExitGameLeavesFullScreenBeforeTheClose) {
    runStatements("fullscreen(4097);");
    recordCalls();
    runStatements("exitgame();");
    EXPECT_EQ(Calls{"SDL_SetWindowFullscreen(0)"} + kEnd, callsMade());
}

TEST_F(CallsWhileRunning, CloseWaitsForTheTimerFunctionThatRuns) {
    runLevel(
        "int tick() { changeallfont(\"none.ttf\", 9); }"
        "int main() { createtimer(1, 0, \"tick\"); }");
    static std::atomic<bool> running{false};
    // Keeps the timer function running until the close has gone on without it, or long enough.
    gOnCall = [](const std::string& call) {
        if (call != "TTF_OpenFont(none.ttf, 9)") return;
        running = true;
        for (int i = 0; i < 300 && countCalls("SDL_DestroyRenderer") == 0; i++)
            SDL_Delay(1);
        recordCall("timer function goes on");
    };
    recordCalls();
    testing::internal::CaptureStdout();
    startTicks();
    while (!running)
        SDL_Delay(1);
    closeEngine();
    EXPECT_EQ("Cant load none.ttf font!", testing::internal::GetCapturedStdout());
    const Calls inOrder = {"timer function goes on", "SDL_DestroyRenderer()"};
    EXPECT_EQ(inOrder, recordedCalls(inOrder));
    gOnCall = nullptr;
}
