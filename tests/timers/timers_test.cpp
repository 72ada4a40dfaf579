#include "timers/timers.h"

#include <gtest/gtest.h>

#include "support/engine_test.h"
#include "texts/game_texts.h"

// A level whose timer functions print one letter each.
static std::string level(const std::string& mainBody, const std::string& more = "") {
    return "int a, b, c;\n"
           "int tick() { print(1); }\n"
           "int two() { print(2); }\n"
           "int three() { print(3); }\n" +
           more + "int main() { " + mainBody + " }\n";
}

static std::string run(const std::string& mainBody, const std::string& more = "") {
    return runLevel(level(mainBody, more));
}

// The numbers of the ticks, from 1 on, at which a repeating timer of `interval` fires.
static std::vector<int> firingTicks(const std::string& interval, int ticks) {
    run("createtimer(0, " + interval + ", \"tick\");");
    std::vector<int> fired;
    for (int i = 1; i <= ticks; i++) {
        if (tick() == "1") fired.push_back(i);
    }
    return fired;
}

using Ticks = std::vector<int>;

// Pace ------------------------------------------------------------------------------------------

TEST(Timers, WithoutTimersTheTickReturnsItsInterval) {
    EXPECT_EQ(1u, stepAllTimers(1, nullptr));
    EXPECT_EQ(77u, stepAllTimers(77, nullptr));
    EXPECT_TRUE(gTimers.empty());
    EXPECT_EQ(0, gNextTimerId);
    EXPECT_EQ(0, gLastTimerId);
    EXPECT_EQ(0, gCurrentTimerId);
}

TEST(Timers, TickReturnsItsIntervalWithTimersToo) {
    run("createtimer(0, 0, \"tick\");");
    EXPECT_EQ(5u, stepAllTimers(5, nullptr));
}

TEST(Timers, IntervalZeroFiresOnEveryTick) {
    EXPECT_EQ((Ticks{1, 2, 3, 4, 5}), firingTicks("0", 5));
}

TEST(Timers, IntervalsUpToTenFireOnEveryTickFromTheSecondOn) {
    EXPECT_EQ((Ticks{2, 3, 4, 5}), firingTicks("1", 5));
}

TEST(Timers, IntervalTenFiresOnEveryTickFromTheSecondOn) {
    EXPECT_EQ((Ticks{2, 3, 4, 5}), firingTicks("10", 5));
}

TEST(Timers, IntervalElevenFiresEverySecondTickFromTheThirdOn) {
    EXPECT_EQ((Ticks{3, 5, 7, 9}), firingTicks("11", 10));
}

TEST(Timers, IntervalTwentyFiveFiresOnTheFourthTickThenEveryThird) {
    EXPECT_EQ((Ticks{4, 7, 10, 13}), firingTicks("25", 14));
}

TEST(Timers, IntervalHundredFiresOnTheEleventhTickThenEveryTenth) {
    EXPECT_EQ((Ticks{11, 21, 31, 41}), firingTicks("100", 45));
}

TEST(Timers, EveryIntervalKeepsTheRule) {
    for (int interval = 1; interval <= 200; interval += 7) {
        gTimers.clear();
        const int period = (interval + 9) / 10;
        const Ticks fired = firingTicks(std::to_string(interval), 60);
        ASSERT_GE(fired.size(), 2u);
        EXPECT_EQ(period + 1, fired[0]) << interval;
        for (size_t i = 1; i < fired.size(); i++)
            EXPECT_EQ(period, fired[i] - fired[i - 1]) << interval;
    }
}

TEST(Timers, NegativeIntervalIsAHugeOne) {
    EXPECT_EQ(Ticks{}, firingTicks("-1", 500));
    EXPECT_EQ(0xFFFFFFFFu, gTimers.at(0).interval);
    EXPECT_EQ(5000u, counterOf(*gTimers.find(0)));
}

TEST(Timers, ThresholdIsComparedUnsigned) {
    run("createtimer(0, -2147483647 - 1, \"tick\");");
    findOrCreateTimer(0).counter = 0x7FFFFFFF;
    EXPECT_EQ("", tick());
    EXPECT_EQ("1", tick()) << "the counter has passed 0x80000000";
}

TEST(Timers, CounterWrapsAtItsEnd) {
    run("createtimer(0, -1, \"tick\");");
    findOrCreateTimer(0).counter = 0xFFFFFFFA;
    EXPECT_EQ("", tick());
    EXPECT_EQ(4u, counterOf(*gTimers.find(0)));
}

TEST(Timers, CounterIsTenAfterAFiring) {
    run("createtimer(0, 25, \"tick\");");
    tick(3);
    EXPECT_EQ(30u, counterOf(*gTimers.find(0)));
    tick();
    EXPECT_EQ(10u, counterOf(*gTimers.find(0)));
}

// Pause -----------------------------------------------------------------------------------------

TEST(Timers, PausedTimerKeepsItsCounterAndGoesOnFromIt) {
    run("createtimer(0, 25, \"tick\");",
        "int stop() { pausetimer(0, 1); }\n"
        "int go() { pausetimer(0, 0); }\n");
    tick(2);
    outputOfCall("stop");
    EXPECT_EQ("", tick(100));
    EXPECT_EQ(20u, counterOf(*gTimers.find(0)));
    outputOfCall("go");
    EXPECT_EQ("", tick());
    EXPECT_EQ("1", tick());
}

TEST(Timers, TimerThatPausesItselfFinishesItsFiring) {
    run("createtimer(0, 0, \"stop\");", "int stop() { print(5); pausetimer(0, 1); }\n");
    EXPECT_EQ("5", tick(10));
    EXPECT_EQ(10u, counterOf(*gTimers.find(0)));
}

TEST(Timers, AnyPauseFlagButZeroPauses) {
    run("createtimer(0, 0, \"tick\"); pausetimer(0, -3);");
    EXPECT_EQ("", tick(3));
}

// One-shot --------------------------------------------------------------------------------------

TEST(Timers, OneShotOfIntervalZeroFiresOnceOnTheFirstTick) {
    run("createtimer(1, 0, \"tick\");");
    EXPECT_EQ("1", tick());
    EXPECT_TRUE(gTimers.empty());
    EXPECT_EQ("", tick(50));
}

TEST(Timers, OneShotAmongOthersLeavesThemAlone) {
    run("createtimer(0, 0, \"tick\"); createtimer(1, 0, \"two\"); createtimer(0, 0, \"three\");");
    EXPECT_EQ("123", tick());
    EXPECT_EQ("13", tick());
    EXPECT_EQ(2u, gTimers.size());
}

TEST(Timers, OneShotKeepsToItsInterval) {
    run("createtimer(1, 25, \"tick\");");
    EXPECT_EQ("", tick(3));
    EXPECT_EQ("1", tick());
    EXPECT_EQ("", tick(20));
}

TEST(Timers, TwoOneShotsInARowFireBothAndEmptyTheRegistry) {
    run("createtimer(1, 0, \"tick\"); createtimer(1, 0, \"two\");");
    EXPECT_EQ("12", tick());
    EXPECT_TRUE(gTimers.empty());
}

TEST(Timers, OneShotRemovesTheEntryUnderItsOwnId) {
    // A record found under key 5 has id 0: its firing removes whatever is under 0.
    run("");
    ScriptTimer& timer = findOrCreateTimer(5);
    EXPECT_EQ(0, timer.id);
    timer.functionName = "tick";
    timer.paused = false;
    EXPECT_EQ("1", tick());
    EXPECT_EQ(1u, gTimers.count(5)) << "the key is not the id";
    EXPECT_TRUE(gTimers.at(5).paused);
    EXPECT_EQ("", tick(20));
}

// Walk ------------------------------------------------------------------------------------------

TEST(Timers, WalkGoesInAscendingOrderOfKeys) {
    run("createtimer(0, 0, \"tick\"); createtimer(0, 0, \"two\");"
        "createtimer(0, 0, \"three\");");
    EXPECT_EQ("123123", tick(2));
}

TEST(Timers, CreatedTimerIsSteppedInTheSameWalk) {
    run("createtimer(1, 0, \"make\");", "int make() { createtimer(0, 0, \"two\"); }\n");
    EXPECT_EQ("2", tick()) << "its first step sees the counter 0";
    EXPECT_EQ("2", tick());
}

TEST(Timers, CreatedTimerOfAnIntervalCountsFromTheSameWalk) {
    run("createtimer(1, 0, \"make\");", "int make() { createtimer(0, 25, \"two\"); }\n");
    EXPECT_EQ("", tick(3));
    EXPECT_EQ("2", tick());
}

TEST(Timers, TimerMayCreateOneAtEveryTick) {
    run("createtimer(0, 0, \"make\");", "int make() { createtimer(1, 10, \"two\"); }\n");
    EXPECT_EQ("", tick());
    EXPECT_EQ("2", tick());
    EXPECT_EQ("2", tick());
    EXPECT_EQ(4, gNextTimerId);
}

TEST(Timers, FunctionDeletesItsOwnTimer) {
    run("createtimer(0, 0, \"tick\"); createtimer(0, 0, \"quit\"); createtimer(0, 0, \"three\");",
        "int quit() { print(8); deletetimer(getcurrenttimer()); print(9); }\n");
    EXPECT_EQ("1893", tick()) << "each of the others exactly once";
    EXPECT_EQ("13", tick());
}

TEST(Timers, FunctionDeletesTheNextTimer) {
    run("createtimer(0, 0, \"quit\"); createtimer(0, 0, \"two\"); createtimer(0, 0, \"three\");",
        "int quit() { print(8); deletetimer(1); }\n");
    EXPECT_EQ("83", tick());
    EXPECT_EQ("83", tick());
}

TEST(Timers, FunctionDeletesThePreviousTimer) {
    run("createtimer(0, 0, \"tick\"); createtimer(0, 0, \"quit\"); createtimer(0, 0, \"three\");",
        "int quit() { print(8); deletetimer(0); }\n");
    EXPECT_EQ("183", tick());
    EXPECT_EQ("83", tick());
}

TEST(Timers, FunctionDeletesAllTimers) {
    run("createtimer(0, 0, \"quit\"); createtimer(0, 0, \"two\"); createtimer(0, 0, \"three\");",
        "int quit() { int i; print(8);\n"
        "for (i = 0; i < 3; i = i + 1) { deletetimer(i); } print(9); }\n");
    EXPECT_EQ("89", tick());
    EXPECT_TRUE(gTimers.empty());
    EXPECT_EQ("", tick());
}

TEST(Timers, LastTimerMayDeleteAllOthers) {
    run("createtimer(0, 0, \"tick\"); createtimer(0, 0, \"two\"); createtimer(0, 0, \"quit\");",
        "int quit() { print(8); deletetimer(0); deletetimer(1); }\n");
    EXPECT_EQ("128", tick());
    EXPECT_EQ("8", tick());
}

TEST(Timers, FunctionReplacesItsOwnTimerByANewOne) {
    run("createtimer(0, 0, \"swap\"); createtimer(0, 0, \"two\");",
        "int swap() { print(8); deletetimer(getcurrenttimer()); createtimer(1, 0, \"three\"); }\n");
    EXPECT_EQ("823", tick());
    EXPECT_EQ("2", tick());
}

TEST(Timers, OneShotThatDeletesItselfIsGoneOnce) {
    run("createtimer(1, 0, \"quit\"); createtimer(0, 0, \"two\");",
        "int quit() { print(8); deletetimer(0); }\n");
    EXPECT_EQ("82", tick());
    EXPECT_EQ("2", tick());
}

TEST(Timers, CurrentTimerIsTheOneThatFires) {
    run("createtimer(0, 0, \"who\"); createtimer(0, 0, \"who\"); createtimer(0, 10, \"who\");",
        "int who() { print(getcurrenttimer()); }\n");
    EXPECT_EQ("01", tick());
    EXPECT_EQ(1, gCurrentTimerId) << "a step that does not fire publishes nothing";
    EXPECT_EQ("012", tick());
}

TEST(Timers, CurrentTimerIsTheIdAndNotTheKey) {
    run("", "int who() { print(getcurrenttimer()); }\n");
    findOrCreateTimer(40).functionName = "who";
    findOrCreateTimer(30).functionName = "who";
    gTimers.at(40).paused = gTimers.at(30).paused = false;
    EXPECT_EQ("10", tick()) << "key 30 first: it was made second";
}

TEST(Timers, RandomInsertionsAndRemovalsNeverDisturbTheWalk) {
    // A small generator in the script; every timer makes, deletes, pauses and resumes others.
    run("int i; a = 12345; for (i = 0; i < 20; i = i + 1) { createtimer(0, i * 3, \"stir\"); }",
        "int next() { a = a * 1103515245 + 12345; b = a / 65536; if (b < 0) { b = 0 - b; } }\n"
        "int stir() { next(); c = b % 6;\n"
        "if (c == 0) { if (b % 3) { createtimer(b % 2, b % 40, \"stir\"); } }\n"
        "if (c == 1) { deletetimer(b % (getlasttimer() + 1)); }\n"
        "if (c == 2) { deletetimer(getcurrenttimer()); createtimer(0, 5, \"stir\"); }\n"
        "if (c == 3) { if (b % 4 == 0) { createtimer(0, 7, \"stir\"); } } }\n");
    const std::string output = tick(3000);
    EXPECT_EQ("", output.substr(0, 400));
    EXPECT_GT(gNextTimerId, 100);
    for (const auto& entry : gTimers)
        EXPECT_TRUE(entry.second.functionName == "stir" || entry.second.paused);
}

// Registry --------------------------------------------------------------------------------------

TEST(Timers, ConstructionTakesAnIdAndCopyingDoesNot) {
    const ScriptTimer first;
    const ScriptTimer second;
    EXPECT_EQ(0, first.id);
    EXPECT_EQ(1, second.id);
    EXPECT_EQ(1, gLastTimerId);
    EXPECT_EQ(2, gNextTimerId);
    const ScriptTimer copy = first;
    EXPECT_EQ(0, copy.id);
    EXPECT_EQ(2, gNextTimerId);
    EXPECT_EQ("", first.functionName);
    EXPECT_EQ(0u, first.counter);
    EXPECT_EQ(0u, first.interval);
    EXPECT_TRUE(first.paused);
    EXPECT_TRUE(first.oneShot);
}

TEST(Timers, LookUpOfAnUnknownKeyTakesTheNextIdNotTheKey) {
    EXPECT_EQ(0, findOrCreateTimer(1000).id);
    EXPECT_EQ(1, findOrCreateTimer(-1000).id);
    EXPECT_EQ(0, findOrCreateTimer(1000).id);
    EXPECT_EQ(2, gNextTimerId);
    EXPECT_EQ(1, gLastTimerId);
    EXPECT_EQ(2u, gTimers.size());
}

TEST(Timers, RemovalGoesByKeyAndOfAnUnknownOneIsNothing) {
    findOrCreateTimer(3);
    removeTimer(0);
    EXPECT_EQ(1u, gTimers.size());
    removeTimer(3);
    EXPECT_TRUE(gTimers.empty());
    removeTimer(3);
    EXPECT_EQ(1, gNextTimerId) << "ids are never given back";
}

// Names and errors ------------------------------------------------------------------------------

TEST(TimersDeathTest, UnknownFunctionEndsTheProcessWhenTheTimerFires) {
    run("createtimer(1, 25, \"nobody\");");
    tick(3);
    EXPECT_EXIT(stepAllTimers(1, nullptr), testing::ExitedWithCode(1), "");
}

TEST(TimersDeathTest, NameInCapitalsIsNoFunction) {
    run("createtimer(1, 0, \"Tick\");");
    EXPECT_EXIT(stepAllTimers(1, nullptr), testing::ExitedWithCode(1), "");
}

TEST(TimersDeathTest, BuiltInIsNoFunctionOfTheScript) {
    run("createtimer(1, 0, \"getmousex\");");
    EXPECT_EXIT(stepAllTimers(1, nullptr), testing::ExitedWithCode(1), "");
}

static const char kBadTick[] = "int bad() { print(4); nothing = 1; print(5); }\n";

TEST(Timers, ErrorInATimerFunctionIsReportedAndTheTickGoesOn) {
    run("createtimer(0, 0, \"bad\"); createtimer(0, 0, \"two\");", kBadTick);
    for (int i = 0; i < 3; i++) {
        const std::string output = tick();
        EXPECT_EQ(0u, output.find("4\nNone variable in line 4\n")) << output;
        EXPECT_EQ(output.size() - 23, output.find("Error buffer long jump2")) << output;
    }
    EXPECT_EQ(10u, counterOf(*gTimers.find(0))) << "as if the function had returned";
}

TEST(Timers, OneShotWithAnErrorIsRemovedAllTheSame) {
    run("createtimer(1, 0, \"bad\");", kBadTick);
    tick();
    EXPECT_TRUE(gTimers.empty());
}

TEST(Timers, StacksStayLevelOverTenThousandErrors) {
    run("createtimer(0, 0, \"deep\");",
        "int bad(int x) { int y; nothing = 1; }\n"
        "int deep() { int z; bad(1 + (2 * (3 + bad(4)))); }\n");
    tick();
    const int32_t top = gLocalTop;
    const int32_t depth = gCallDepth;
    EXPECT_EQ(0, top);
    EXPECT_EQ(0, depth);
    for (int i = 0; i < 100; i++) {
        const std::string output = tick(100);
        ASSERT_NE(std::string::npos, output.find("None variable"));
        ASSERT_EQ(std::string::npos, output.find("Too many")) << output;
        ASSERT_EQ(std::string::npos, output.find("Nested too deeply")) << output;
    }
    EXPECT_EQ(top, gLocalTop);
    EXPECT_EQ(depth, gCallDepth);
}
