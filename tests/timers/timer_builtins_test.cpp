#include <gtest/gtest.h>

#include <climits>

#include "support/engine_test.h"

static std::string run(const std::string& mainBody) {
    return runLevel("int tick() { print(1); }\nint main() { int a; " + mainBody + " }");
}

TEST(TimerBuiltins, CreateTimerReturnsTheIdAfterTheNewOne) {
    EXPECT_EQ("1021", run("print(createtimer(0, 100, \"tick\")); print(getlasttimer());"
                          "print(createtimer(0, 100, \"tick\")); print(getlasttimer());"));
    EXPECT_EQ("tick", gTimers.at(0).functionName);
    EXPECT_EQ(100u, gTimers.at(0).interval);
    EXPECT_FALSE(gTimers.at(0).paused);
    EXPECT_FALSE(gTimers.at(0).oneShot);
    EXPECT_EQ(1, gTimers.at(1).id);
}

TEST(TimerBuiltins, AnyOnceFlagButZeroMakesAOneShot) {
    run("createtimer(-7, 0, \"tick\"); createtimer(5, 0, \"tick\");");
    EXPECT_TRUE(gTimers.at(0).oneShot);
    EXPECT_TRUE(gTimers.at(1).oneShot);
}

TEST(TimerBuiltins, NameIsABareWordOrAStringWithItsCase) {
    run("createtimer(1, 0, TICK); createtimer(1, 0, \"Tick\");");
    EXPECT_EQ("tick", gTimers.at(0).functionName);
    EXPECT_EQ("Tick", gTimers.at(1).functionName);
}

TEST(TimerBuiltins, BeforeAnyTimerBothIdsAreZero) {
    EXPECT_EQ("00", run("print(getlasttimer()); print(getcurrenttimer());"));
}

TEST(TimerBuiltins, FiredOneShotIsUnknownAfterwards) {
    run("createtimer(1, 0, \"tick\");");
    EXPECT_EQ("1", tick());
    EXPECT_TRUE(gTimers.empty());
    EXPECT_EQ("01", run("print(pausetimer(0, 1)); print(getlasttimer());"));
    EXPECT_EQ("", gTimers.at(0).functionName);
    EXPECT_EQ(1, gTimers.at(0).id) << "a fresh record";
    EXPECT_EQ("0", run("print(deletetimer(0));"));
    EXPECT_TRUE(gTimers.empty());
}

TEST(TimerBuiltins, PausingAnUnknownTimerInsertsADefaultRecord) {
    run("createtimer(0, 100, \"tick\"); pausetimer(7, 1);");
    const ScriptTimer& timer = gTimers.at(7);
    EXPECT_EQ("", timer.functionName);
    EXPECT_EQ(0u, timer.interval);
    EXPECT_TRUE(timer.oneShot);
    EXPECT_TRUE(timer.paused);
    EXPECT_EQ(1, timer.id);
    EXPECT_EQ(2, gNextTimerId);
    EXPECT_EQ(1, gLastTimerId);
}

TEST(TimerBuiltins, PausedDefaultRecordHasItsKeyAsIdWhereTheCounterStoodThere) {
    run("for (a = 0; a < 7; a = a + 1) { createtimer(0, 9, \"tick\"); } pausetimer(7, 1);");
    EXPECT_EQ(7, gTimers.at(7).id);
}

TEST(TimerBuiltinsDeathTest, ResumingAnUnknownTimerEndsTheProcessOnTheNextTick) {
    run("pausetimer(7, 0);");
    EXPECT_FALSE(gTimers.at(7).paused);
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            stepAllTimers(1, nullptr);
        },
        testing::ExitedWithCode(1), "^\\(\\) not found!\n$");
}

TEST(TimerBuiltins, DeletingAnUnknownTimerConsumesOneId) {
    run("createtimer(0, 100, \"tick\"); deletetimer(9);");
    EXPECT_EQ(1u, gTimers.size());
    EXPECT_EQ(1u, gTimers.count(0));
    EXPECT_EQ(2, gNextTimerId);
    EXPECT_EQ(1, gLastTimerId);
}

TEST(TimerBuiltins, RecordUnderTheNextKeyIsReconfigured) {
    // The record under key 2 takes id 0, one more look-up id 1: then the counter is at 2.
    run("pausetimer(2, 1); deletetimer(50);");
    gTimers.at(2).counter = 70;
    EXPECT_EQ("21", run("print(createtimer(0, 100, \"tick\")); print(getlasttimer());"));
    ASSERT_EQ(1u, gTimers.size());
    EXPECT_EQ(0, gTimers.at(2).id);
    EXPECT_EQ(70u, gTimers.at(2).counter);
    EXPECT_EQ(100u, gTimers.at(2).interval);
    EXPECT_EQ("tick", gTimers.at(2).functionName);
    EXPECT_FALSE(gTimers.at(2).paused);
    EXPECT_FALSE(gTimers.at(2).oneShot);
}

TEST(TimerBuiltins, LaterTimersReconfigureTheSameRecordUntilAnIdIsConsumed) {
    run("pausetimer(2, 1); deletetimer(50); createtimer(0, 100, \"tick\");");
    EXPECT_EQ("22", run("print(createtimer(1, 5, \"tick\")); print(createtimer(0, 6, \"tick\"));"));
    EXPECT_EQ(1u, gTimers.size());
    EXPECT_EQ(6u, gTimers.at(2).interval);
    EXPECT_EQ("4", run("deletetimer(60); print(createtimer(0, 7, \"tick\"));"));
    EXPECT_EQ(7u, gTimers.at(3).interval);
    EXPECT_EQ(3, gTimers.at(3).id);
}

TEST(TimerBuiltins, DeletingTheRunningTimerDoesNotDisturbTheWalk) {
    runLevel(
        "int quit() { deletetimer(getcurrenttimer()); print(8); }\n"
        "int tick() { print(1); }\n"
        "int main() { createtimer(0, 0, \"quit\"); createtimer(0, 0, \"tick\"); }");
    EXPECT_EQ("81", tick());
    EXPECT_EQ("1", tick());
}

TEST(TimerBuiltins, NegativeIntervalIsKeptAsItsPattern) {
    run("createtimer(0, -5, \"tick\");");
    EXPECT_EQ(0xFFFFFFFBu, gTimers.at(0).interval);
}

TEST(TimerBuiltins, MissingParenthesesAreErrors) {
    for (const char* call :
         {"createtimer 0, 1, \"tick\");", "pausetimer(0, 1;", "deletetimer 0;", "deletetimer(0;",
          "getlasttimer;", "getlasttimer(1);", "getcurrenttimer(;"}) {
        EXPECT_EQ(0u, run(call).find("\nWaiting '()' in line 1\n")) << call;
    }
}

TEST(TimerBuiltins, CreateTimerWithoutItsClosingParenthesisHasMadeTheTimer) {
    EXPECT_EQ(0u, run("createtimer(0, 100, \"tick\";").find("\nWaiting '()' in line 1\n"));
    ASSERT_EQ(1u, gTimers.size());
    EXPECT_FALSE(gTimers.at(0).paused);
}

TEST(TimerBuiltins, IdsOfAllSizesAreTaken) {
    EXPECT_EQ("0000", run("print(pausetimer(2147483647, 1)); print(pausetimer(-1, 1));"
                          "print(pausetimer(-2147483647 - 1, 1)); print(deletetimer(-99));"));
    EXPECT_EQ(1u, gTimers.count(INT_MIN));
    EXPECT_EQ(1u, gTimers.count(INT_MAX));
    EXPECT_EQ("", tick(3));
}
