#include "app/ticks.h"

#include <gtest/gtest.h>

#include <functional>

#include "app/base/input.h"
#include "images/images.h"
#include "support/engine_test.h"
#include "texts/fonts.h"
#include "texts/game_texts.h"

// Schedule of ZEL_TICKS=main; the time is passed in ---------------------------------------------

// A level whose timer prints one digit at every tick.
static void startCounting() {
    loadUnitTypes();
    runLevel("int tick() { print(1); } int main() { createtimer(0, 0, \"tick\"); }");
    runTicksOnMainThread(1000);
}

static size_t ticksUpTo(uint64_t nowMs) {
    testing::internal::CaptureStdout();
    runDueTicks(nowMs);
    return testing::internal::GetCapturedStdout().size();
}

TEST(Schedule, NothingIsDueAtTheStart) {
    startCounting();
    EXPECT_EQ(0u, ticksUpTo(1000));
}

TEST(Schedule, OneTimerTickForEachMillisecond) {
    startCounting();
    EXPECT_EQ(1u, ticksUpTo(1001));
    EXPECT_EQ(0u, ticksUpTo(1001));
    EXPECT_EQ(16u, ticksUpTo(1017));
    EXPECT_EQ(17u, ticksUpTo(1034));
}

TEST(Schedule, UpTo250MillisecondsAreMadeUp) {
    startCounting();
    EXPECT_EQ(250u, ticksUpTo(1250));
    EXPECT_EQ(249u, ticksUpTo(1499));
}

TEST(Schedule, LongerBacklogIsDropped) {
    startCounting();
    EXPECT_EQ(250u, ticksUpTo(1251));
    EXPECT_EQ(0u, ticksUpTo(1251));
    EXPECT_EQ(250u, ticksUpTo(100000));
    EXPECT_EQ(1u, ticksUpTo(100001)) << "what was dropped does not come back";
}

TEST(Schedule, WithoutTheSettingNothingRuns) {
    runLevel("int tick() { print(1); } int main() { createtimer(0, 0, \"tick\"); }");
    EXPECT_EQ(0u, ticksUpTo(5000));
}

TEST(Schedule, UnitTickComesEveryTenMillisecondsAfterTheTimerTick) {
    loadUnitTypes();
    runLevel(
        "int tick() { print(getunitx(0)); }"
        "int main() { moveunit(0, 1, 1); createtimer(0, 0, \"tick\"); }");
    orderUnitMove(gUnits.at(0), 500, 500);
    runTicksOnMainThread(1000);
    testing::internal::CaptureStdout();
    runDueTicks(1012);
    EXPECT_EQ("1111111111500500", testing::internal::GetCapturedStdout());
}

TEST(Schedule, UnitTicksKeepTheirPaceInSmallSteps) {
    loadUnitTypes();
    Unit& unit = findOrCreateUnit(0);
    runTicksOnMainThread(1000);
    int moves = 0;
    for (uint64_t ms = 1001; ms <= 1200; ms++) {
        unit.image.rect.x = -1;  // every unit tick puts the image back
        runDueTicks(ms);
        if (unit.image.rect.x == 0) moves++;
    }
    EXPECT_EQ(20, moves);
}

// A clock on which every look takes 25 ms: so every tick of a pass seems to take as long.
static uint64_t gSlowNowMs = 0;

static uint64_t slowNowMs() {
    return gSlowNowMs += 25;
}

TEST(Schedule, SlowTimerFunctionsEndAPassAfter100Milliseconds) {
    startCounting();
    gInput.nowMs = slowNowMs;
    EXPECT_EQ(4u, ticksUpTo(1200));
    EXPECT_EQ(4u, ticksUpTo(1200)) << "the rest waits for the next pass";
    gInput.nowMs = [] { return uint64_t{5}; };
    EXPECT_EQ(192u, ticksUpTo(1200));
}

// The unit tick puts the image back: true if one ran in the pass up to `nowMs`.
static bool unitTickRunsUpTo(uint64_t nowMs) {
    Unit& unit = findOrCreateUnit(0);
    unit.image.rect.x = -1;
    ticksUpTo(nowMs);
    return unit.image.rect.x == 0;
}

TEST(Schedule, SlowTimerFunctionsNeverStarveTheUnits) {
    startCounting();
    gInput.nowMs = slowNowMs;
    EXPECT_FALSE(unitTickRunsUpTo(1009)) << "none has fallen due";
    EXPECT_TRUE(unitTickRunsUpTo(1110)) << "due in what this pass leaves";
    EXPECT_TRUE(unitTickRunsUpTo(3000)) << "due in what this pass drops";
    for (uint64_t ms = 3100; ms < 6000; ms += 100)
        EXPECT_TRUE(unitTickRunsUpTo(ms)) << ms;
}

TEST(Schedule, UnitTicksThatRanInThePassAreNotRepeated) {
    loadUnitTypes();
    runLevel("int main() { moveunit(0, 1, 1); }");
    orderUnitMove(gUnits.at(0), 500, 500);
    runTicksOnMainThread(1000);
    ticksUpTo(1019);
    EXPECT_EQ(kUnitMoving, gUnits.at(0).moveState) << "one tick moves it, a second ends the order";
    ticksUpTo(1020);
    EXPECT_EQ(kUnitIdle, gUnits.at(0).moveState);
}

TEST(Schedule, UnitsRestOnceATimerFunctionHasClosedTheEngine) {
    startCounting();
    gInput.nowMs = [] {
        stopTicks();
        return uint64_t{5};
    };
    EXPECT_FALSE(unitTickRunsUpTo(1200));
}

// Real time, both settings ----------------------------------------------------------------------

class RealTime : public EngineTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        setenv("ZEL_TICKS", GetParam(), 1);
    }
    bool onMain() const { return std::string(GetParam()) == "main"; }
};

INSTANTIATE_TEST_SUITE_P(Ticks, RealTime, testing::Values("", "main"), [](const auto& setting) {
    return std::string(setting.param).empty() ? "Default" : "Main";
});

constexpr uint64_t kPatienceMs = 120000;  // exists only so that a hang ends

// Passes of the main loop while `goesOn`. Returns what was printed; it is caught in one piece, for
// a timer thread may print at any moment.
static std::string playWhile(const std::function<bool()>& goesOn) {
    testing::internal::CaptureStdout();
    startTicks();
    const uint64_t end = SDL_GetTicks64() + kPatienceMs;
    while (goesOn() && SDL_GetTicks64() < end) {
        drainEvents();
        runDueTicks(SDL_GetTicks64());
        drawFrame();
        SDL_Delay(5);
    }
    return testing::internal::GetCapturedStdout();
}

// No tick comes early, and all timers count the same ticks. How late ticks may be depends on the
// machine's load: the rate is only reported.
TEST_P(RealTime, TimersKeepTheirPaceToEachOther) {
    runLevel(
        "int a, b, c;\n"
        "int every() { a = a + 1; if (a == 1000) { show(); } }\n"
        "int ten() { b = b + 1; } int hundred() { c = c + 1; }\n"
        "int show() { print(b); print(\" \"); print(c);"
        "deletetimer(0); deletetimer(1); deletetimer(2); }\n"
        "int main() { createtimer(0, 0, \"every\"); createtimer(0, 100, \"ten\");"
        "createtimer(0, 1000, \"hundred\"); }");
    const uint64_t start = SDL_GetTicks64();
    const std::string counts = playWhile([] { return !gTimers.empty(); });
    const double seconds = static_cast<double>(SDL_GetTicks64() - start) / 1000;
    int ten = 0, hundred = 0;
    ASSERT_EQ(2, std::sscanf(counts.c_str(), "%d \n %d", &ten, &hundred)) << counts;
    std::printf("Ticks a second: %.0f\n", 1000 / seconds);
    EXPECT_LE(1000, 1010 * seconds);
    EXPECT_NEAR(100, ten, 3);
    EXPECT_NEAR(10, hundred, 2);
}

TEST_P(RealTime, ErrorsOfTimerFunctionsDoNotStopTheTicks) {
    runLevel(
        "int n; int bad() { int x; nothing = 1; }\n"
        "int good() { print(7); n = n + 1; if (n == 3) { deletetimer(0); deletetimer(1); } }\n"
        "int main() { createtimer(0, 0, \"bad\"); createtimer(0, 0, \"good\"); }");
    const std::string output = playWhile([] { return !gTimers.empty(); });
    closeEngine();
    EXPECT_EQ(0u, output.find("\nNone variable in line 0\n")) << output.substr(0, 200);
    EXPECT_NE(std::string::npos, output.find("Error buffer long jump7\nNone variable"));
    EXPECT_EQ(std::string::npos, output.find("Too many"));
    EXPECT_EQ(0, gCallDepth);
    EXPECT_EQ(0, gLocalTop);
}

TEST_P(RealTime, ThousandPicturesLoadedByATimerAreAllDrawn) {
    writePicture("levels/level1/dot.bmp", 4, 4, kRed);
    runLevel(
        "int n;\n"
        "int load() { int id, i; for (i = 0; i < 10; i = i + 1) { if (n < 1000) {\n"
        "id = loadimage(\"dot.bmp\"); moveimage(id, (n % 40) * 16, n / 40 * 16);\n"
        "showimage(id, 1); n = n + 1; } } }\n"
        "int main() { createtimer(0, 0, \"load\"); }");
    startTicks();
    testing::internal::CaptureStdout();
    const uint64_t end = SDL_GetTicks64() + kPatienceMs;
    while (SDL_GetTicks64() < end && (gImages.size() < 1000 || !isVisible(gImages.back()))) {
        // A loading timer thread gets one texture at each look into the queue, and frames are slow.
        for (int i = 0; i < 2000; i++)
            drainEvents();
        runDueTicks(SDL_GetTicks64());
        drawFrame();
    }
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    ASSERT_EQ(1000u, gImages.size());
    for (int i = 0; i < 1000; i++)
        ASSERT_NE(nullptr, gImages[static_cast<size_t>(i)].texture) << i;
    composeFrame();
    std::vector<Uint32> pixels(640 * 480);
    SDL_RenderReadPixels(gRenderer, nullptr, SDL_PIXELFORMAT_ARGB8888, pixels.data(), 640 * 4);
    for (size_t i = 0; i < 1000; i++)
        ASSERT_EQ(kRed, pixels[(i / 40 * 16 + 1) * 640 + i % 40 * 16 + 1] & 0xFFFFFF) << i;
}

TEST_P(RealTime, UnitsAreCreatedByATimer) {
    runLevel(
        "int make() { createunit(0, 100, 100); }"
        "int main() { createtimer(1, 0, \"make\"); }");
    playWhile([] { return !gTimers.empty(); });
    EXPECT_EQ(kBlue, framePixel(107, 107));
}

TEST_P(RealTime, TimerSetsTitleFullScreenAndFont) {
    runLevel(
        "int act() { changewindowname(\"by timer\"); fullscreen(4097);"
        "changeallfont(\"arial.ttf\", 40); print(7); }"
        "int main() { createtext(\"a\", 0, 0, 20, 20); createtimer(1, 0, \"act\"); }");
    const int height = TTF_FontHeight(gFont);
    EXPECT_EQ("7", playWhile([] { return !gTimers.empty(); }));
    drainEvents();
    EXPECT_STREQ("Zel - by timer", SDL_GetWindowTitle(gWindow));
    EXPECT_EQ(Uint32{SDL_WINDOW_FULLSCREEN_DESKTOP},
              SDL_GetWindowFlags(gWindow) & SDL_WINDOW_FULLSCREEN_DESKTOP);
    EXPECT_GT(TTF_FontHeight(gFont), 2 * height);
}

TEST_P(RealTime, ExitGameByATimerClosesTheEngineAndTheLoopGoesOn) {
    runLevel(
        "int quit() { print(1); exitgame(); print(2); createtext(\"b\", 0, 0, 9, 9);"
        "loadimage(\"img/peon.bmp\"); changewindowname(\"c\"); }"
        "int main() { createtext(\"a\", 0, 0, 20, 20); createunit(0, 5, 5);"
        "createtimer(1, 0, \"quit\"); createtimer(0, 0, \"quit\"); }");
    const std::string output = playWhile([] { return !gEngineClosed; });
    EXPECT_TRUE(gEngineClosed);
    EXPECT_EQ("12", output.substr(0, 2));
    for (int i = 0; i < 3; i++)
        drawFrame();
}

TEST(TickSetting, UnknownValueIsNamedOnStandardError) {
    SDL_Init(SDL_INIT_TIMER);
    setenv("ZEL_TICKS", "Main", 1);
    testing::internal::CaptureStderr();
    startTicks();
    const std::string message = testing::internal::GetCapturedStderr();
    EXPECT_NE(std::string::npos, message.find("ZEL_TICKS=Main")) << message;
    SDL_Quit();
}
