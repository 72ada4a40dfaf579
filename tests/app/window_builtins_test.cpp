#include <gtest/gtest.h>

#include "support/engine_test.h"
#include "support/sdl_calls.h"

class WindowBuiltins : public EngineTest {};

TEST_F(WindowBuiltins, TitleCarriesThePrefix) {
    EXPECT_EQ("0", runStatements("print(changewindowname(\"Level 2\"));"));
    EXPECT_STREQ("Zel - Level 2", SDL_GetWindowTitle(gWindow));
    runStatements("changewindowname(\"\");");
    EXPECT_STREQ("Zel - ", SDL_GetWindowTitle(gWindow));
}

TEST_F(WindowBuiltins, TitleMayBeABareWordAndHoldAnyBytes) {
    runStatements("changewindowname(PLAIN);");
    EXPECT_STREQ("Zel - plain", SDL_GetWindowTitle(gWindow));
    runStatements("changewindowname(\"%s %n \xFF\xFE\");");
    EXPECT_STREQ("Zel - %s %n \xFF\xFE", SDL_GetWindowTitle(gWindow));
    const std::string longest(79, 't');
    runStatements("changewindowname(\"" + longest + "\");");
    EXPECT_EQ("Zel - " + longest, SDL_GetWindowTitle(gWindow));
}

static Uint32 fullscreenFlags() {
    return SDL_GetWindowFlags(gWindow) & SDL_WINDOW_FULLSCREEN_DESKTOP;
}

TEST_F(WindowBuiltins, FullscreenPassesTheModeOn) {
    EXPECT_EQ("0", runStatements("print(fullscreen(4097));"));
    EXPECT_EQ(Uint32{SDL_WINDOW_FULLSCREEN_DESKTOP}, fullscreenFlags());
    runStatements("fullscreen(0);");
    EXPECT_EQ(0u, fullscreenFlags());
}

TEST_F(WindowBuiltins, WindowIsBackAtItsSizeAfterFullScreen) {
    runStatements("fullscreen(1);");
    EXPECT_EQ(Uint32{SDL_WINDOW_FULLSCREEN}, fullscreenFlags());
    runStatements("fullscreen(0);");
    EXPECT_EQ(0u, fullscreenFlags());
    int w = 0;
    int h = 0;
    SDL_GetWindowSize(gWindow, &w, &h);
    EXPECT_EQ(640, w);
    EXPECT_EQ(480, h);
}

TEST_F(WindowBuiltins, AnyModeIsPassedOnUnchanged) {
    for (const char* mode : {"-1", "2", "4096", "65537", "2147483647", "-2147483647 - 1"}) {
        recordCalls();
        EXPECT_EQ("0", runStatements("print(fullscreen(" + std::string(mode) + "));"));
        const std::string number = valueOf(mode);
        EXPECT_EQ(1u, countCalls("SDL_SetWindowFullscreen(" + number + ")")) << number;
        composeFrame();
    }
}

TEST(EventRecord, StartsZeroed) {
    EXPECT_EQ("00", runStatements("print(getmousex()); print(getmousey());"));
}

TEST_F(WindowBuiltins, MouseInMainIsAtZero) {
    EXPECT_EQ("00", runStatements("print(getmousex()); print(getmousey());"));
}

TEST_F(WindowBuiltins, MissingParenthesesAreErrors) {
    for (const char* call :
         {"changewindowname \"a\";", "changewindowname(\"a\";", "fullscreen;", "fullscreen(1;",
          "exitgame;", "exitgame(1);", "getmousex;", "getmousey(2);"}) {
        EXPECT_EQ(0u, runStatements(call).find("\nWaiting '()' in line 0\n")) << call;
    }
    EXPECT_FALSE(gEngineClosed);
    EXPECT_STREQ("Zel", SDL_GetWindowTitle(gWindow));
}

// exitgame --------------------------------------------------------------------------------------

TEST_F(WindowBuiltins, ScriptGoesOnAfterExitGame) {
    EXPECT_EQ("07", runStatements("print(exitgame()); print(7);"));
    EXPECT_TRUE(gEngineClosed);
    EXPECT_EQ(0u, SDL_WasInit(SDL_INIT_VIDEO));
}

TEST_F(WindowBuiltins, SecondExitGameDoesNothing) {
    EXPECT_EQ("0", runStatements("exitgame(); exitgame(); print(exitgame());"));
}

// Whatever a script does afterwards uses nothing that was released.
TEST_F(WindowBuiltins, EveryBuiltInMayBeCalledAfterExitGame) {
    runStatements(
        "loadimage(\"img/peon.bmp\"); showimage(0, 1); createunit(0, 5, 5);"
        "createtext(\"a\", 0, 0, 9, 9);");
    drawFrame();
    const std::string output = runStatements(
        "exitgame(); changewindowname(\"b\"); fullscreen(1); fullscreen(0);"
        "loadimage(\"img/peon.bmp\"); showimage(0, 0); showimage(1, 1); moveimage(0, 3, 3);"
        "changesizeimage(0, 3, 3); createunit(0, 7, 7); moveunit(0, 8, 8);"
        "createtext(\"c\", 1, 1, 9, 9); movegametext(0, 3, 3); setgametextwh(0, 3, 3);"
        "hidetext(0, 1); deletetext(0); createtext(\"d\", 0, 0, 9, 9);"
        "changeallcolorfont(1, 2, 3); getmousex(); getmousey();"
        "deletetimer(5); addexectfunckey(0, 4, \"main\"); print(7);");
    EXPECT_EQ('7', output.back()) << output;
    EXPECT_NE(std::string::npos,
              output.find("\n1Unable to load image levels/level1/img/peon.bmp! SDL Error: "));
    for (int i = 0; i < 3; i++) {
        drainEvents();
        tick();
        unitTick();
        drawFrame();
    }
}

TEST_F(WindowBuiltins, FontMayBeChangedAfterExitGame) {
    const std::string output =
        runStatements("exitgame(); changeallfont(\"arial.ttf\", 20); print(7);");
    EXPECT_EQ('7', output.back());
    drawFrame();
    closeEngine();
}
