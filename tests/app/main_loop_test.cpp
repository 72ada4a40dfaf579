#include <fcntl.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

#include "keys/key_bindings.h"
#include "support/engine_test.h"
#include "texts/game_texts.h"
#include "units/selection.h"

class MainLoop : public EngineTest {};

// A text has a surface once a frame has drawn it.
static bool frameWasDrawn() {
    return gGameTexts.at(0).surface != nullptr;
}

TEST_F(MainLoop, QuitFinishesItsPass) {
    runStatements("createunit(0, 100, 100); createtext(\"a\", 0, 0, 9, 9);");
    pushEvent(SDL_QUIT);
    pushClick(SDL_BUTTON_LEFT, 105, 105);
    pushClick(SDL_BUTTON_RIGHT, 300, 300);
    EXPECT_FALSE(frameWasDrawn());
    EXPECT_EQ("\nChoosen=1", outputOf([] { runMainLoop(); }));
    EXPECT_EQ(300, gUnits.at(0).targetX) << "the last event after the quit";
    EXPECT_TRUE(frameWasDrawn());
    EXPECT_EQ(0, SDL_HasEvents(SDL_FIRSTEVENT, SDL_LASTEVENT));
}

TEST_F(MainLoop, OnlyQuitEndsThePass) {
    EXPECT_FALSE(drainEvents());
    pushEvent(SDL_WINDOWEVENT);
    pushEvent(SDL_MOUSEWHEEL);
    pushEvent(SDL_DROPFILE);
    EXPECT_FALSE(drainEvents());
    pushEvent(SDL_QUIT);
    EXPECT_TRUE(drainEvents());
    EXPECT_FALSE(drainEvents());
}

TEST_F(MainLoop, LeftClickWithoutMotionShowsAnEmptyFrameThenPicks) {
    runStatements("createunit(0, 100, 100);");
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 105, 106);
    EXPECT_EQ("", drain());
    EXPECT_TRUE(gLeftButtonDown);
    EXPECT_TRUE(isVisible(selectionFrame()));
    EXPECT_EQ(105, getX(selectionFrame()));
    EXPECT_EQ(106, getY(selectionFrame()));
    EXPECT_EQ(0, getW(selectionFrame()));
    pushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 105, 106);
    EXPECT_EQ("\nChoosen=1", drain());
    EXPECT_FALSE(gLeftButtonDown);
    EXPECT_FALSE(isVisible(selectionFrame()));
}

TEST_F(MainLoop, RightPressDoesNothingVisibleTheReleaseOrders) {
    runStatements("createunit(0, 100, 100);");
    pushClick(SDL_BUTTON_LEFT, 105, 105);
    drain();
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT, 300, 300);
    EXPECT_EQ("", drain());
    EXPECT_TRUE(gRightButtonDown);
    EXPECT_FALSE(isVisible(selectionFrame()));
    EXPECT_EQ(kUnitIdle, gUnits.at(0).moveState);
    pushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_RIGHT, 301, 302);
    EXPECT_EQ("", drain());
    EXPECT_FALSE(gRightButtonDown);
    EXPECT_EQ(301, gUnits.at(0).targetX);
    EXPECT_EQ(302, gUnits.at(0).targetY);
}

TEST_F(MainLoop, OtherButtonsAreIgnored) {
    runStatements("createunit(0, 100, 100);");
    pushClick(SDL_BUTTON_LEFT, 105, 105);
    drain();
    for (const int other : {0, 2, 4, 5, 255}) {
        const Uint8 button = static_cast<Uint8>(other);
        pushButton(SDL_MOUSEBUTTONDOWN, button, 300, 300);
        EXPECT_EQ("", drain());
        EXPECT_FALSE(gLeftButtonDown);
        EXPECT_FALSE(gRightButtonDown);
        EXPECT_FALSE(isVisible(selectionFrame()));
        pushButton(SDL_MOUSEBUTTONUP, button, 300, 300);
        EXPECT_EQ("", drain());
    }
    EXPECT_EQ(kUnitIdle, gUnits.at(0).moveState);
    EXPECT_EQ(1u, gSelectedUnits.size());
}

TEST_F(MainLoop, BothButtonsMayBeHeldAtOnce) {
    runStatements("createunit(0, 100, 100); createunit(0, 200, 100);");
    pushClick(SDL_BUTTON_LEFT, 105, 105);
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 190, 90);
    pushMotion(230, 130);
    pushClick(SDL_BUTTON_RIGHT, 400, 400);
    pushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 230, 130);
    EXPECT_EQ("\nChoosen=1\nSelected=1", drain());
    EXPECT_EQ(kUnitMoving, gUnits.at(0).moveState);
    EXPECT_EQ(kUnitIdle, gUnits.at(1).moveState);
}

TEST_F(MainLoop, ReleaseReadsThePointerOfItsOwnEvent) {
    runStatements("createunit(0, 100, 100);");
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 400, 400);
    pushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 105, 105);
    EXPECT_EQ("\nChoosen=1", drain()) << "no motion: the frame has the size 0";
}

TEST_F(MainLoop, KeysFrom300OnNeverFire) {
    runLevel(
        "int hit() { print(1); } int main() { addexectfunckey(0, 300, \"hit\");"
        "addexectfunckey(0, 299, \"hit\"); }");
    for (int key = 300; key < SDL_NUM_SCANCODES; key++)
        hold(key);
    EXPECT_EQ("", keyEvent());
    hold(299);
    EXPECT_EQ("1", keyEvent());
}

TEST_F(MainLoop, KeyEventsFireAllHeldKeysEach) {
    runLevel(
        "int hit() { print(getcurrentkey()); } int main() {"
        "addexectfunckey(0, 4, \"hit\"); addexectfunckey(0, 5, \"hit\"); }");
    hold(4);
    hold(5);
    pushEvent(SDL_KEYDOWN);
    pushEvent(SDL_KEYUP);
    EXPECT_EQ("4545", drain());
}

TEST_F(MainLoop, EventsAreHandledInOrder) {
    runLevel(
        "int hit() { print(getmousex()); } int main() { addexectfunckey(0, 4, \"hit\");"
        "createunit(0, 100, 100); }");
    hold(4);
    pushClick(SDL_BUTTON_LEFT, 105, 105);
    pushEvent(SDL_KEYDOWN);
    pushDrag(90, 90, 130, 130);
    EXPECT_EQ("\nChoosen=10\nSelected=1", drain());
}

// What has left the process for whoever reads its standard output, while `action` ran.
static std::string outputThatArrived(void (*action)()) {
    int ends[2];
    EXPECT_EQ(0, pipe2(ends, O_NONBLOCK));
    std::fflush(stdout);
    const int before = dup(1);
    dup2(ends[1], 1);
    action();
    char arrived[64];
    const ssize_t size = read(ends[0], arrived, sizeof arrived);
    std::fflush(stdout);
    dup2(before, 1);
    for (const int end : {before, ends[0], ends[1]})
        close(end);
    return std::string(arrived, size > 0 ? static_cast<size_t>(size) : 0);
}

TEST_F(MainLoop, OutputOfAPassCanBeReadAfterIt) {
    runLevel("int hit() { print(7); } int main() { addexectfunckey(0, 4, \"hit\"); }");
    hold(4);
    pushEvent(SDL_KEYDOWN);
    EXPECT_EQ("7", outputThatArrived([] { runPass(); }));
}

TEST_F(MainLoop, PassIsEventsThenTicksThenFrame) {
    static std::string order;
    const Pass engine = gPass;
    gPass = {[] {
                 order += "events ";
                 return true;
             },
             [] { order += "ticks "; }, [] { order += "frame"; }};
    EXPECT_TRUE(runPass());
    EXPECT_EQ("events ticks frame", order);
    gPass = engine;
    runStatements("createtext(\"a\", 0, 0, 9, 9);");
    EXPECT_FALSE(runPass());
    EXPECT_TRUE(frameWasDrawn());
}

// The event record ------------------------------------------------------------------------------

TEST_F(MainLoop, RecordKeepsTheLastEventWhenTheQueueIsEmpty) {
    pushMotion(31, 42);
    drain();
    for (int i = 0; i < 5; i++)
        drain();
    EXPECT_EQ("3142", runStatements("print(getmousex()); print(getmousey());"));
}

TEST_F(MainLoop, MousePlaceIsTakenFromMotionAndButtons) {
    pushMotion(31, 42);
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT, 600, 7);
    drain();
    EXPECT_EQ("6007", runStatements("print(getmousex()); print(getmousey());"));
    pushMotion(-3, 2000);
    drain();
    EXPECT_EQ("-32000", runStatements("print(getmousex()); print(getmousey());"));
}

// Every byte of an event is set; a record holds zeros where its kind of event has nothing.
static void pushFilled(Uint32 type) {
    SDL_Event event;
    std::memset(&event, 0x5A, sizeof event);
    event.type = type;
    ASSERT_EQ(1, SDL_PushEvent(&event));
}

TEST_F(MainLoop, EventsWithoutDataLeaveZeros) {
    for (const Uint32 type :
         {Uint32{SDL_QUIT}, Uint32{SDL_CLIPBOARDUPDATE}, Uint32{SDL_APP_LOWMEMORY},
          Uint32{SDL_KEYMAPCHANGED}, Uint32{SDL_RENDER_TARGETS_RESET}}) {
        pushFilled(type);
        drain();
        EXPECT_EQ("00", runStatements("print(getmousex()); print(getmousey());")) << type;
    }
}

TEST_F(MainLoop, AfterAWheelEventTheMouseIsTheTurnAndItsDirection) {
    SDL_Event event;
    std::memset(&event, 0x5A, sizeof event);
    event.type = SDL_MOUSEWHEEL;
    event.wheel.y = -3;
    event.wheel.direction = SDL_MOUSEWHEEL_FLIPPED;
    SDL_PushEvent(&event);
    drain();
    EXPECT_EQ("-31", runStatements("print(getmousex()); print(getmousey());"));
}

TEST_F(MainLoop, AfterAWindowEventTheMouseIsItsSecondNumberAndZero) {
    SDL_Event event;
    std::memset(&event, 0x5A, sizeof event);
    event.type = SDL_WINDOWEVENT;
    event.window.data2 = 479;
    SDL_PushEvent(&event);
    drain();
    EXPECT_EQ("4790", runStatements("print(getmousex()); print(getmousey());"));
}

TEST_F(MainLoop, AfterAKeyEventTheMouseIsPartOfTheKeySymbol) {
    SDL_Event event;
    std::memset(&event, 0x5A, sizeof event);
    event.type = SDL_KEYDOWN;
    event.key.keysym.scancode = SDL_SCANCODE_Q;
    event.key.keysym.sym = SDLK_q;
    event.key.keysym.mod = KMOD_LSHIFT;
    SDL_PushEvent(&event);
    drain();
    ASSERT_EQ(offsetof(SDL_KeyboardEvent, keysym.sym), offsetof(SDL_MouseMotionEvent, x));
    EXPECT_EQ("113", runStatements("print(getmousex());"));
    EXPECT_EQ("1", runStatements("print(getmousey());")) << "the modifiers and two zero bytes";
}

TEST_F(MainLoop, AfterATextEventTheMouseIsPartOfTheText) {
    SDL_Event event;
    std::memset(&event, 0x5A, sizeof event);
    event.type = SDL_TEXTINPUT;
    std::strcpy(event.text.text, "a");
    SDL_PushEvent(&event);
    drain();
    EXPECT_EQ("00", runStatements("print(getmousex()); print(getmousey());"))
        << "the text is one letter and zeros";
    event.type = SDL_TEXTINPUT;
    std::memset(event.text.text, 0, sizeof event.text.text);
    std::memcpy(event.text.text, "12345678abcd", 12);
    SDL_PushEvent(&event);
    drain();
    ASSERT_EQ(8u, offsetof(SDL_MouseMotionEvent, x) - offsetof(SDL_TextInputEvent, text));
    EXPECT_EQ("1684234849", runStatements("print(getmousex());")) << "abcd as an integer";
    EXPECT_EQ("0", runStatements("print(getmousey());"));
}

TEST_F(MainLoop, TextWithoutAnEndStaysInItsField) {
    SDL_Event event;
    std::memset(&event, 'z', sizeof event);
    event.type = SDL_TEXTINPUT;
    SDL_PushEvent(&event);
    drain();
    EXPECT_EQ(0x7A7A7A7A, gEvent.motion.x);
}
