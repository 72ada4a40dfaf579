// What timer functions on SDL's thread ask of the main thread, and how the two wait for each other.
#include "app/base/main_thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "app/ticks.h"
#include "images/images.h"
#include "script/errors/recovery.h"
#include "script/host/arguments.h"
#include "script/run/functions.h"
#include "script/source/tokens.h"
#include "support/engine_test.h"
#include "texts/fonts.h"
#include "texts/game_texts.h"

class HandOver : public EngineTest {
protected:
    // Calls a function of the level on another thread while this one drains events.
    std::string callElsewhere(const char* name) {
        testing::internal::CaptureStdout();
        std::atomic<bool> done{false};
        std::thread other([&] {
            callScriptFunctionGuarded(name);
            done = true;
        });
        while (!done)
            drainEvents();
        other.join();
        drainEvents();
        return testing::internal::GetCapturedStdout();
    }

    // Until the other thread waits for this one: its request is the only event of a user's type.
    static void waitForARequest() {
        while (SDL_HasEvents(SDL_USEREVENT, SDL_LASTEVENT - 1) == SDL_FALSE)
            SDL_Delay(1);
    }
};

TEST_F(HandOver, LoadWaitsForItsTexture) {
    writePicture("levels/level1/a.bmp", 31, 17, kRed);
    runLevel(
        "int f() { int i; i = loadimage(\"a.bmp\"); showimage(i, 1); print(i); } int main() {}");
    EXPECT_EQ("0", callElsewhere("f"));
    EXPECT_EQ(31, getW(gImages.at(0)));
    EXPECT_EQ(kRed, framePixel(10, 10));
}

TEST_F(HandOver, AttachedTextureIsDrawnOnceHereBeforeTheNextFrame) {
    writePicture("levels/level1/a.bmp", 31, 17, kRed);
    runLevel("int f() { loadimage(\"a.bmp\"); } int main() {}");
    EXPECT_EQ("", callElsewhere("f"));
    const SDL_Rect place = {10, 10, 1, 1};
    Uint32 pixel = 0;
    SDL_RenderReadPixels(gRenderer, &place, SDL_PIXELFORMAT_ARGB8888, &pixel, 4);
    EXPECT_EQ(kRed, pixel & 0xFFFFFF);
    EXPECT_EQ(kWhite, framePixel(10, 10));
}

TEST_F(HandOver, PictureLoadedHereWhileAnotherWaitsTakesTheLowerIdentifier) {
    writePicture("levels/level1/slow.bmp", 31, 17, kRed);
    writePicture("levels/level1/quick.bmp", 9, 9, kGreen);
    std::atomic<int32_t> waited{-1};
    std::thread other([&] { waited = loadImageFile("levels/level1/slow.bmp"); });
    waitForARequest();
    EXPECT_EQ(0, loadImageFile("levels/level1/quick.bmp"));
    while (waited < 0)
        drainEvents();
    other.join();
    EXPECT_EQ(1, waited);
    EXPECT_EQ(9, getW(gImages.at(0)));
    EXPECT_EQ(31, getW(gImages.at(1)));
}

TEST_F(HandOver, FailedLoadIsReportedWithSdlsReason) {
    runLevel("int f() { loadimage(\"none.bmp\"); } int main() { f(); }");
    const std::string here = outputOfCall("f");
    EXPECT_EQ(here, callElsewhere("f"));
}

TEST_F(HandOver, TitleAndFullScreenArriveInOrder) {
    runLevel(
        "int f() { int i; for (i = 0; i < 100; i = i + 1) { changewindowname(\"a\");"
        "fullscreen(4097); fullscreen(0); changewindowname(\"b\"); } } int main() {}");
    EXPECT_EQ("", callElsewhere("f"));
    EXPECT_STREQ("Zel - b", SDL_GetWindowTitle(gWindow));
    EXPECT_EQ(0u, SDL_GetWindowFlags(gWindow) & SDL_WINDOW_FULLSCREEN_DESKTOP);
}

TEST_F(HandOver, HandedOverEventsAreNoEventsToTheScript) {
    pushMotion(11, 22);
    drain();
    runLevel("int f() { changewindowname(\"a\"); createunit(0, 1, 1); } int main() {}");
    callElsewhere("f");
    EXPECT_EQ("1122", runStatements("print(getmousex()); print(getmousey());"));
}

TEST_F(HandOver, UnitGetsItsTexture) {
    runLevel("int f() { createunit(0, 100, 100); } int main() {}");
    EXPECT_EQ("", callElsewhere("f"));
    EXPECT_EQ(kBlue, framePixel(107, 107));
}

TEST_F(HandOver, CloseGivesUpAWaitingLoadWithoutAWord) {
    runLevel(
        "int f() { print(loadimage(\"img/peon.bmp\")); print(createunit(0, 1, 1)); }"
        "int main() {}");
    testing::internal::CaptureStdout();
    std::thread other([] { callScriptFunctionGuarded("f"); });
    waitForARequest();
    gEngineClosed = true;  // in the order of closeEngine, before it waits for the timer thread
    stopMainThreadCalls();
    other.join();
    gEngineClosed = false;
    EXPECT_EQ("00", testing::internal::GetCapturedStdout());
    EXPECT_EQ(nullptr, gImages.at(0).texture);
    EXPECT_EQ("levels/level1/img/peon.bmp", getPath(gImages[0]));
    EXPECT_EQ(nullptr, gUnits.at(0).image.texture);
}

// One thread waits, the other runs script code ---------------------------------------------------

TEST_F(HandOver, WaitingLoadGoesOnWhereItWas) {
    const std::string level =
        "int five() { return 5; } int nothing() { } int key() { print(2); return 9; }"
        "int f() { five(); CALL; print(nothing()); } int main() {}";
    for (const std::string call :
         {"loadimage(\"img/peon.bmp\")", "createunit(0, 1, 1)", "print(loadimage(\"none.bmp\"))"}) {
        std::string text = level;
        runLevel(text.replace(text.find("CALL"), 4, call));
        testing::internal::CaptureStdout();
        std::thread other([] { callScriptFunctionGuarded("f"); });
        waitForARequest();
        callScriptFunctionGuarded("key");
        drainEvents();
        other.join();
        const std::string output = testing::internal::GetCapturedStdout();
        EXPECT_EQ('2', output.front()) << call;
        EXPECT_EQ('5', output.back()) << call << output;
        EXPECT_EQ(std::string::npos, output.find("Error buffer")) << output;
    }
}

static std::atomic<bool> gTimerHasStarted{false};

// In place of a timer function: moves what script code moves, while the close waits for it.
static Uint32 disturbDuringTheClose(Uint32, void*) {
    gTimerHasStarted = true;
    while (!gEngineClosed)
        SDL_Delay(1);
    gProgramPos = gToken = gPlaces;
    gReturnValue = 9;
    gLocalTop = gCallDepth = 0;
    return 0;
}

TEST_F(HandOver, ExitGameThatWaitsForATimerFunctionGoesOnWhereItWas) {
    runLevel(
        "int five() { return 5; } int nothing() { }"
        "int key() { int a; a = 6; five(); exitgame(); print(nothing()); five(); print(a); }"
        "int main() {}");
    SDL_AddTimer(1, disturbDuringTheClose, nullptr);
    while (!gTimerHasStarted)
        SDL_Delay(1);
    EXPECT_EQ("56", outputOfCall("key"));
    EXPECT_TRUE(gEngineClosed);
}

// A processor may show one thread what the other found at a place before what it read there.
TEST_F(HandOver, CallThatIsSeenBeforeItsSymbolIsAnError) {
    runLevel("int f() { print(7); } int call() { f(); } int main() { call(); }");
    ASSERT_EQ("7", outputOfCall("call"));
    int calls = 0;
    for (Place* place = gPlaces; textAt(place) < gProgramEnd; place++) {
        if (place->operand != Operand::Call || place->symbol != findSymbol("f")) continue;
        place->symbol = &gNoSymbol;
        calls++;
    }
    EXPECT_EQ(1, calls);
    EXPECT_EQ(0u, outputOfCall("call").find("\nNone variable in line 0\n"));
}

// SDL's event queue is full ---------------------------------------------------------------------

static void fillTheQueue() {
    SDL_Event event;
    SDL_zero(event);
    event.type = SDL_MOUSEWHEEL;
    while (SDL_PushEvent(&event) == 1) {
    }
}

TEST_F(HandOver, LoadWaitsForRoomInTheQueue) {
    runLevel("int f() { print(loadimage(\"img/peon.bmp\")); } int main() {}");
    fillTheQueue();
    EXPECT_EQ("0", callElsewhere("f"));
    EXPECT_NE(nullptr, gImages.at(0).texture);
}

TEST_F(HandOver, OfPendingTitlesTheNewestCounts) {
    runLevel(
        "int f() { int i; for (i = 0; i < 70000; i = i + 1) { changewindowname(\"a\");"
        "fullscreen(4097); } fullscreen(0); changewindowname(\"b\"); } int main() {}");
    const int before = SDL_GetNumAllocations();
    std::thread other([] { callScriptFunctionGuarded("f"); });
    other.join();  // nobody drains the queue meanwhile
    EXPECT_LT(SDL_GetNumAllocations(), before + 10) << "replaced requests are freed";
    EXPECT_EQ("", drain());
    EXPECT_STREQ("Zel - b", SDL_GetWindowTitle(gWindow));
    EXPECT_EQ(0u, SDL_GetWindowFlags(gWindow) & SDL_WINDOW_FULLSCREEN_DESKTOP);
}

TEST_F(HandOver, TitleSetHereCountsMoreThanAPendingOne) {
    runLevel("int f() { changewindowname(\"a\"); fullscreen(4097); } int main() {}");
    std::thread other([] { callScriptFunctionGuarded("f"); });
    other.join();
    runStatements("changewindowname(\"b\"); fullscreen(0);");
    EXPECT_EQ("", drain());
    EXPECT_STREQ("Zel - b", SDL_GetWindowTitle(gWindow));
    EXPECT_EQ(0u, SDL_GetWindowFlags(gWindow) & SDL_WINDOW_FULLSCREEN_DESKTOP);
}

TEST_F(HandOver, WhatIsPostedLeavesRoomForThePlayersEvents) {
    runLevel(
        "int f() { int i; for (i = 0; i < 70000; i = i + 1) { deletetext(i); } } int main() {}");
    std::thread other([] { callScriptFunctionGuarded("f"); });
    other.join();
    pushEvent(SDL_QUIT);
    EXPECT_TRUE(drainEvents());
}

TEST_F(HandOver, QuitIsHeardThoughTheQueueIsFull) {
    fillTheQueue();
    SDL_Event quit;
    SDL_zero(quit);
    quit.type = SDL_QUIT;
    ASSERT_NE(1, SDL_PushEvent(&quit)) << "there is no room for it";
    EXPECT_TRUE(drainEvents());
    EXPECT_EQ(Uint32{SDL_QUIT}, gEvent.type);
    EXPECT_FALSE(drainEvents()) << "it is heard once";
}

TEST_F(HandOver, QuitThatIsStillQueuedAtTheCloseIsGoneWithIt) {
    pushEvent(SDL_QUIT);
    closeEngine();
    EXPECT_FALSE(drainEvents());
}

TEST_F(HandOver, AfterTheCloseNothingIsKept) {
    runLevel(
        "int f() { int i; for (i = 0; i < 1000; i = i + 1) { changewindowname(\"a\");"
        "fullscreen(1); createtext(\"b\", 0, 0, 9, 9); deletetext(i); exitgame(); } }"
        "int main() { exitgame(); }");
    const int before = SDL_GetNumAllocations();
    std::thread other([] { callScriptFunctionGuarded("f"); });
    other.join();
    EXPECT_EQ(before, SDL_GetNumAllocations());
}

// What the other thread asks for -----------------------------------------------------------------

TEST_F(HandOver, TextErasedElsewhereIsReleasedHere) {
    runLevel(
        "int f() { deletetext(0); createtext(\"b\", 0, 0, 9, 9); deletetext(0); } int main() {"
        "createtext(\"a\", 0, 0, 9, 9); }");
    composeFrame();
    EXPECT_EQ("", callElsewhere("f"));
    composeFrame();
}

TEST_F(HandOver, FontReplacedElsewhereIsClosedHere) {
    runLevel(
        "int f() { int i; for (i = 0; i < 50; i = i + 1) { changeallfont(\"arial.ttf\", 30); } }"
        "int main() { createtext(\"a\", 0, 0, 9, 9); }");
    EXPECT_EQ("", callElsewhere("f"));
    composeFrame();
    EXPECT_NE(nullptr, gGameTexts.at(0).texture);
}

// Two threads in the interpreter ----------------------------------------------------------------

// Each declares 95 names that are no identifiers: words that the load does not know.
static std::string declaresNewWords(const std::string& function) {
    std::string text = "int " + function + "() {";
    for (int i = 0; i < 95; i++)
        text += " int " + std::to_string(i) + function + ";";
    return text + " }\n";
}

TEST_F(HandOver, TwoThreadsMayMeetNewWordsAtOnce) {
    const std::string level = declaresNewWords("a") + declaresNewWords("b") + "int main() {}";
    for (int round = 0; round < 150; round++) {
        runLevel(level);
        testing::internal::CaptureStdout();  // the threads may well run into errors of the script
        std::atomic<int> started{0};
        const auto call = [&](const char* function) {
            started++;
            while (started < 2) {
            }
            callScriptFunctionGuarded(function);
        };
        std::thread other(call, "a");
        call("b");
        other.join();
        testing::internal::GetCapturedStdout();
    }
    EXPECT_EQ("7", runLevel("int main() { print(7); }"));
}
