#include <gtest/gtest.h>

#include <climits>

#include "keys/key_bindings.h"
#include "support/engine_test.h"

// Keys need no window: only the queue of events and the array of held keys.
class Keys : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(0, SDL_Init(SDL_INIT_EVENTS));
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    }
};
using KeysDeathTest = Keys;

static const char kFunctions[] =
    "int one() { print(1); }\n"
    "int two() { print(2); }\n"
    "int three() { print(3); }\n"
    "int key() { print(getcurrentkey()); }\n";

static std::string run(const std::string& mainBody, const std::string& more = "") {
    return runLevel(kFunctions + more + "int main() { int a; " + mainBody + " }\n");
}

static std::vector<std::string> names(int list) {
    return gKeyBindings.at(static_cast<uint8_t>(list));
}

using Names = std::vector<std::string>;

// Firing ----------------------------------------------------------------------------------------

TEST_F(Keys, NothingHeldFiresNothing) {
    run("addexectfunckey(0, 4, \"one\");");
    gCurrentKey = 77;
    EXPECT_EQ("", keyEvent());
    EXPECT_EQ(77, gCurrentKey);
}

TEST_F(Keys, HoldingWithoutAnEventFiresNothing) {
    run("addexectfunckey(0, 4, \"one\");");
    hold(4);
    EXPECT_EQ("", drain());
}

TEST_F(Keys, FunctionsFireInOrderOfBindingAtEachEvent) {
    run("addexectfunckey(0, 4, \"two\"); addexectfunckey(0, 4, \"one\");");
    hold(4);
    EXPECT_EQ("21", keyEvent());
    EXPECT_EQ("21", keyEvent());
}

TEST_F(Keys, NameBoundTwiceFiresTwice) {
    run("addexectfunckey(0, 4, \"one\"); addexectfunckey(0, 4, \"two\");"
        "addexectfunckey(0, 4, \"one\");");
    hold(4);
    EXPECT_EQ("121", keyEvent());
}

TEST_F(Keys, KeyUpAndRepeatFireLikeKeyDown) {
    run("addexectfunckey(0, 4, \"one\");");
    hold(4);
    pushEvent(SDL_KEYUP);
    EXPECT_EQ("1", drain());
    SDL_Event event;
    SDL_zero(event);
    event.type = SDL_KEYDOWN;
    event.key.repeat = 1;
    SDL_PushEvent(&event);
    EXPECT_EQ("1", drain());
}

TEST_F(Keys, ReleasedKeyDoesNotFireAtItsOwnRelease) {
    run("addexectfunckey(0, 4, \"one\");");
    hold(4);
    EXPECT_EQ("1", keyEvent());
    hold(4, false);
    pushEvent(SDL_KEYUP);
    EXPECT_EQ("", drain());
}

TEST_F(Keys, HeldKeysFireInOrderOfTheirCodesAndAgainWithAThird) {
    run("addexectfunckey(0, 30, \"two\"); addexectfunckey(0, 4, \"one\");"
        "addexectfunckey(0, 12, \"three\");");
    hold(30);
    EXPECT_EQ("2", keyEvent());
    hold(4);
    EXPECT_EQ("12", keyEvent());
    hold(12);
    EXPECT_EQ("132", keyEvent());
    hold(200);
    EXPECT_EQ("132", keyEvent());
}

TEST_F(Keys, EveryCodeUpTo299FiresAndNoneBeyond) {
    // 256 to 299 share the lists of 0 to 43: there the second of two names is taken out again.
    run("for (a = 0; a < 300; a = a + 1) { addexectfunckey(0, a, \"key\"); }"
        "for (a = 0; a < 44; a = a + 1) { deletefunckey(a, \"key\"); }");
    for (int key = 0; key < SDL_NUM_SCANCODES; key++) {
        hold(key);
        EXPECT_EQ(key < 300 ? std::to_string(key) : "", keyEvent());
        hold(key, false);
    }
}

TEST_F(Keys, CurrentKeyIsTheFullCodeAndStaysAfterwards) {
    run("addexectfunckey(0, 41, \"key\"); addexectfunckey(0, 290, \"key\");");
    hold(41);
    EXPECT_EQ("41", keyEvent());
    hold(41, false);
    hold(290);
    EXPECT_EQ("290", keyEvent());
    hold(290, false);
    EXPECT_EQ("", keyEvent());
    EXPECT_EQ("290", run("print(getcurrentkey());"));
}

TEST_F(Keys, BeforeAnyFiringTheCurrentKeyIsZero) {
    EXPECT_EQ("0", run("print(getcurrentkey());"));
}

TEST_F(Keys, ErrorDropsTheRestOfThePassOnly) {
    run("addexectfunckey(0, 4, \"bad\"); addexectfunckey(0, 4, \"one\");"
        "addexectfunckey(0, 5, \"two\"); addexectfunckey(0, 3, \"three\");",
        "int bad() { nothing = 1; }\n");
    for (const int key : {3, 4, 5})
        hold(key);
    pushEvent(SDL_KEYDOWN);
    pushEvent(SDL_KEYDOWN);
    const std::string output = drain();
    const std::string pass = output.substr(0, output.size() / 2);
    EXPECT_EQ(pass + pass, output) << "the next event fires all of it again";
    EXPECT_EQ(0u, pass.find("3\nNone variable in line 4\n")) << pass;
    EXPECT_EQ(pass.size() - 22, pass.find("Error buffer long jump")) << pass;
    EXPECT_EQ(0, gCallDepth);
    EXPECT_EQ(0, gLocalTop);
}

TEST_F(Keys, StacksStayLevelOverManyErrors) {
    run("addexectfunckey(0, 4, \"bad\");", "int bad() { int x; nothing = 1; }\n");
    hold(4);
    for (int i = 0; i < 1000; i++)
        ASSERT_EQ(std::string::npos, keyEvent().find("Too many"));
    EXPECT_EQ(0, gCallDepth);
    EXPECT_EQ(0, gLocalTop);
}

TEST_F(KeysDeathTest, UnknownFunctionEndsTheProcessWhenItsKeyFires) {
    run("addexectfunckey(0, 4, \"nobody\");");
    EXPECT_EQ("", keyEvent());
    hold(4);
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            pushEvent(SDL_KEYDOWN);
            drainEvents();
        },
        testing::ExitedWithCode(1), "^nobody\\(\\) not found!\n$");
}

// Changes during the firing ---------------------------------------------------------------------

TEST_F(Keys, NameAppendedDuringTheFiringIsCalledInIt) {
    run("addexectfunckey(0, 4, \"more\"); addexectfunckey(0, 4, \"two\");",
        "int more() { print(7); addexectfunckey(0, 4, \"three\"); }\n");
    hold(4);
    EXPECT_EQ("723", keyEvent());
    EXPECT_EQ("7233", keyEvent());
}

TEST_F(Keys, FunctionThatRemovesItselfMakesTheNextOneBeSkippedOnce) {
    run("addexectfunckey(0, 4, \"quit\"); addexectfunckey(0, 4, \"two\");"
        "addexectfunckey(0, 4, \"three\");",
        "int quit() { print(7); deletefunckey(4, \"quit\"); }\n");
    hold(4);
    EXPECT_EQ("73", keyEvent());
    EXPECT_EQ("23", keyEvent());
}

TEST_F(Keys, RemovingALaterNameDropsItFromTheFiring) {
    run("addexectfunckey(0, 4, \"quit\"); addexectfunckey(0, 4, \"two\");"
        "addexectfunckey(0, 4, \"three\");",
        "int quit() { print(7); deletefunckey(4, \"two\"); }\n");
    hold(4);
    EXPECT_EQ("73", keyEvent());
}

TEST_F(Keys, EmptyingTheListEndsTheFiring) {
    run("addexectfunckey(0, 4, \"quit\"); addexectfunckey(0, 4, \"two\");",
        "int quit() { print(7); deletefunckey(4, \"two\"); deletefunckey(4, \"quit\"); }\n");
    hold(4);
    EXPECT_EQ("7", keyEvent());
    EXPECT_EQ("", keyEvent());
}

TEST_F(Keys, RenamingDuringTheFiringHoldsForWhatIsStillToCome) {
    run("addexectfunckey(0, 4, \"swap\"); addexectfunckey(0, 4, \"two\");",
        "int swap() { print(7); changefunckey(4, \"two\", \"three\"); }\n");
    hold(4);
    EXPECT_EQ("73", keyEvent());
}

TEST_F(Keys, FunctionThatUnbindsAKeyStillToComeStopsIt) {
    run("addexectfunckey(0, 4, \"quit\"); addexectfunckey(0, 5, \"two\");",
        "int quit() { print(7); deletefunckey(5, \"two\"); }\n");
    hold(4);
    hold(5);
    EXPECT_EQ("7", keyEvent());
}

// Lists by the low byte, flags by the whole code ------------------------------------------------

TEST_F(Keys, Code260SharesTheListOf4) {
    run("addexectfunckey(0, 260, \"one\");");
    EXPECT_EQ(Names{"one"}, names(4));
    EXPECT_EQ(0, gKeyHasBindings[4]);
    hold(4);
    EXPECT_EQ("", keyEvent()) << "4 has no flag of its own";
    hold(4, false);
    hold(260);
    EXPECT_EQ("1", keyEvent());
    run("addexectfunckey(0, 4, \"two\");");
    EXPECT_EQ("12", keyEvent());
    hold(260, false);
    hold(4);
    EXPECT_EQ("12", keyEvent());
    hold(260);
    EXPECT_EQ("1212", keyEvent());
}

TEST_F(Keys, RemovalClearsTheFlagOfTheNamedCodeOnly) {
    run("addexectfunckey(0, 260, \"one\"); addexectfunckey(0, 4, \"two\");"
        "deletefunckey(4, \"one\"); deletefunckey(4, \"two\");");
    EXPECT_EQ(0, gKeyHasBindings[4]);
    EXPECT_EQ(1, gKeyHasBindings[260]);
    hold(4);
    hold(260);
    EXPECT_EQ("", keyEvent()) << "260 fires an empty list";
    EXPECT_EQ(0, gCurrentKey);
}

TEST_F(Keys, CodeThatLostItsOnlyBindingDoesNotFireTheSharedList) {
    run("addexectfunckey(0, 4, \"one\"); addexectfunckey(0, 260, \"two\");"
        "deletefunckey(4, \"one\"); deletefunckey(260, \"two\");"
        "addexectfunckey(0, 4, \"one\");");
    EXPECT_EQ(0, gKeyHasBindings[260]);
    hold(260);
    EXPECT_EQ("", keyEvent());
    hold(4);
    EXPECT_EQ("1", keyEvent());
}

TEST_F(Keys, RemovalThroughACodeWithoutFlagDoesNothing) {
    run("addexectfunckey(0, 260, \"one\"); deletefunckey(4, \"one\");"
        "changefunckey(4, \"one\", \"two\");");
    EXPECT_EQ(Names{"one"}, names(4));
}

TEST_F(Keys, EveryPairOfSharingCodesSharesOneList) {
    run("for (a = 256; a < 300; a = a + 1) { addexectfunckey(0, a, \"key\"); }");
    EXPECT_EQ(44u, gKeyBindings.size());
    for (int key = 256; key < 300; key++) {
        EXPECT_EQ(Names{"key"}, names(key - 256));
        EXPECT_EQ(1, gKeyHasBindings[key]);
        EXPECT_EQ(0, gKeyHasBindings[key - 256]);
    }
}

// Change and removal ----------------------------------------------------------------------------

TEST_F(Keys, RemovingTheOnlyBindingClearsTheFlag) {
    run("addexectfunckey(0, 4, \"one\"); deletefunckey(4, \"one\");");
    EXPECT_EQ(0, gKeyHasBindings[4]);
    EXPECT_EQ(Names{}, names(4));
    hold(4);
    EXPECT_EQ("", keyEvent());
    run("addexectfunckey(0, 4, \"two\");");
    EXPECT_EQ("2", keyEvent()) << "a new list";
}

TEST_F(Keys, RemovalTakesTheLastOfEqualNames) {
    run("addexectfunckey(0, 4, \"one\"); addexectfunckey(0, 4, \"two\");"
        "addexectfunckey(0, 4, \"one\"); addexectfunckey(0, 4, \"three\");"
        "deletefunckey(4, \"one\");");
    EXPECT_EQ((Names{"one", "two", "three"}), names(4));
}

TEST_F(Keys, ChangeReplacesEveryEqualName) {
    run("addexectfunckey(0, 4, \"one\"); addexectfunckey(0, 4, \"two\");"
        "addexectfunckey(0, 4, \"one\"); changefunckey(4, \"one\", \"three\");");
    EXPECT_EQ((Names{"three", "two", "three"}), names(4));
}

TEST_F(Keys, NamesThatAreNotBoundChangeNothing) {
    run("addexectfunckey(0, 4, \"one\"); changefunckey(4, \"two\", \"three\");"
        "deletefunckey(4, \"two\"); deletefunckey(4, \"ONE\"); deletefunckey(4, \"on\");"
        "changefunckey(4, \"One\", \"three\"); changefunckey(4, \"one2\", \"three\");");
    EXPECT_EQ(Names{"one"}, names(4));
    EXPECT_EQ(1, gKeyHasBindings[4]);
}

TEST_F(Keys, KeysWithoutBindingsChangeNothing) {
    EXPECT_EQ("00", run("print(changefunckey(4, \"one\", \"two\"));"
                        "print(deletefunckey(4, \"one\"));"));
    EXPECT_TRUE(gKeyBindings.empty());
}

TEST_F(Keys, EmptyAndLongNamesAreNamesLikeOthers) {
    const std::string name(79, 'x');
    run("addexectfunckey(0, 4, \"" + name + "\"); addexectfunckey(0, 4, \"\");");
    EXPECT_EQ((Names{name, ""}), names(4));
    run("changefunckey(4, \"" + name + "\", \"one\"); changefunckey(4, \"\", \"two\");");
    hold(4);
    EXPECT_EQ("12", keyEvent());
}

// Built-ins -------------------------------------------------------------------------------------

TEST_F(Keys, FirstArgumentIsEvaluatedAndIgnored) {
    EXPECT_EQ("05", run("print(addexectfunckey(a = 5, 4, \"one\")); print(a);"));
    EXPECT_EQ(Names{"one"}, names(4));
}

TEST_F(Keys, AllButGetCurrentKeyReturnZero) {
    EXPECT_EQ("000", run("print(addexectfunckey(1, 4, \"one\"));"
                         "print(changefunckey(4, \"one\", \"two\"));"
                         "print(deletefunckey(4, \"two\"));"));
}

TEST_F(Keys, BareWordsAreNamesInLowerCase) {
    run("addexectfunckey(0, 4, ONE);");
    EXPECT_EQ(Names{"one"}, names(4));
}

TEST_F(Keys, MissingParenthesesAreErrors) {
    for (const char* call : {"addexectfunckey 0, 4, \"one\");", "addexectfunckey(0, 4, \"one\";",
                             "changefunckey(4, \"one\", \"two\";", "deletefunckey(4, \"one\", 5);",
                             "getcurrentkey;", "getcurrentkey(3);"}) {
        EXPECT_EQ(0u, run(call).find("\nWaiting '()' in line 4\n")) << call;
    }
    EXPECT_TRUE(gKeyBindings.empty()) << "the \")\" is read before anything is bound";
}

TEST_F(Keys, CodesOutsideTheScannedRangeAreAcceptedAndIgnored) {
    for (const std::string key : {"300", "301", "511", "512", "65536", "2147483647", "-1", "-2",
                                  "-256", "-2147483647", "-2147483647 - 1"}) {
        EXPECT_EQ("000", run("print(addexectfunckey(0, " + key + ", \"one\"));" +
                             "print(changefunckey(" + key + ", \"one\", \"two\"));" +
                             "print(deletefunckey(" + key + ", \"two\"));"))
            << key;
        EXPECT_EQ("0", run("print(addexectfunckey(0, " + key + ", \"one\"));")) << key;
    }
    EXPECT_TRUE(gKeyBindings.empty());
    for (int key = 0; key < SDL_NUM_SCANCODES; key++)
        hold(key);
    EXPECT_EQ("", keyEvent());
}

TEST_F(Keys, FiringACodeOutsideTheRangeDirectlyDoesNothing) {
    for (const int key : {INT_MIN, -1, 300, 512, INT_MAX})
        fireKey(key);
    EXPECT_EQ(0, gCurrentKey);
}
