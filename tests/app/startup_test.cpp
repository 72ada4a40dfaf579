#include <SDL_ttf.h>
#include <gtest/gtest.h>

#include "app/ticks.h"
#include "images/images.h"
#include "support/engine_test.h"
#include "texts/fonts.h"
#include "texts/game_texts.h"
#include "units/units.h"

class StartUp : public FolderTest {};
class Running : public EngineTest {};

TEST(Globals, PathsAndSizes) {
    EXPECT_EQ(640, SCREEN_WIDTH);
    EXPECT_EQ(480, SCREEN_HEIGHT);
    EXPECT_EQ("levels/level1/", gLevelDir);
    EXPECT_EQ("levels/level1//script.txt", gScriptPath);
    EXPECT_EQ("PicturesPath.txt", gPicturesListPath);
    EXPECT_EQ(nullptr, gTimerParam);
}

TEST(Globals, EverythingIsEmptyBeforeTheStart) {
    EXPECT_EQ(nullptr, gWindow);
    EXPECT_EQ(nullptr, gRenderer);
    EXPECT_TRUE(gImages.empty());
    EXPECT_TRUE(gSystemPictures.empty());
    EXPECT_TRUE(gTimers.empty());
    EXPECT_TRUE(gGameTexts.empty());
    EXPECT_TRUE(gUnits.empty());
    EXPECT_TRUE(gUnitTypes.empty());
    EXPECT_FALSE(gLeftButtonDown);
    EXPECT_FALSE(gRightButtonDown);
}

TEST_F(StartUp, PrintsNothingWhenAllIsThere) {
    EXPECT_EQ("", outputOf([] { EXPECT_TRUE(initEngine()); }));
    closeEngine();
}

TEST_F(StartUp, FontAndUnitTypesComeBeforeSdl) {
    setenv("SDL_VIDEODRIVER", "nosuchdriver", 1);
    const std::string output = outputOf([] { EXPECT_FALSE(initEngine()); });
    EXPECT_EQ(0u, output.find("SDL could not initialize! SDL_Error: ")) << output;
    EXPECT_EQ('\n', output.back());
    EXPECT_NE(nullptr, gFont);
    EXPECT_EQ(1u, gUnitTypes.size());
    EXPECT_EQ(nullptr, gWindow);
    closeEngine();
}

TEST_F(StartUp, MissingFontEndsItBeforeEverythingElse) {
    std::filesystem::remove("arial.ttf");
    EXPECT_EQ("Cant load arial.ttf font!\nCant load font!",
              outputOf([] { EXPECT_FALSE(initEngine()); }));
    EXPECT_TRUE(gUnitTypes.empty());
    EXPECT_EQ(0u, SDL_WasInit(0));
    closeEngine();
}

TEST_F(StartUp, RefusedHintEndsItBeforeTheWindow) {
    SDL_SetHintWithPriority(SDL_HINT_RENDER_SCALE_QUALITY, "0", SDL_HINT_OVERRIDE);
    EXPECT_EQ("\nWarning: Linear texture filtering not enabled!",
              outputOf([] { EXPECT_FALSE(initEngine()); }));
    EXPECT_EQ(nullptr, gWindow);
    closeEngine();
}

TEST_F(StartUp, RendererThatCannotBeMadeEndsItAfterTheWindow) {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    const std::string output = outputOf([] { EXPECT_FALSE(initEngine()); });
    EXPECT_EQ(0u, output.find("\nRender is not loaded! SDL_Error: ")) << output;
    EXPECT_NE('\n', output.back());
    EXPECT_NE(nullptr, gWindow);
    EXPECT_EQ(nullptr, gRenderer);
    EXPECT_TRUE(gSystemPictures.empty());
    closeEngine();
}

TEST_F(StartUp, MissingSelectionPictureDoesNotStopIt) {
    std::filesystem::remove("SysPics/select.bmp");
    const std::string output = outputOf([] { EXPECT_TRUE(initEngine()); });
    EXPECT_NE(std::string::npos, output.find("\nCant load SYSimage: SysPics/select.bmp.   "));
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 50, 50);
    pushMotion(150, 150);
    drain();
    EXPECT_EQ(kWhite, framePixel(100, 100)) << "a frame without picture is not seen";
    closeEngine();
}

TEST_F(Running, WindowIsTitledZelAndOf640By480) {
    EXPECT_STREQ("Zel", SDL_GetWindowTitle(gWindow));
    int w = 0;
    int h = 0;
    SDL_GetWindowSize(gWindow, &w, &h);
    EXPECT_EQ(640, w);
    EXPECT_EQ(480, h);
    EXPECT_NE(0u, SDL_GetWindowFlags(gWindow) & SDL_WINDOW_SHOWN);
}

TEST_F(Running, RendererIsTheSecondOfSdlsList) {
    SDL_RendererInfo second;
    SDL_RendererInfo ours;
    ASSERT_EQ(0, SDL_GetRenderDriverInfo(1, &second));
    ASSERT_EQ(0, SDL_GetRendererInfo(gRenderer, &ours));
    EXPECT_STREQ(second.name, ours.name);
    EXPECT_NE(0u, ours.flags & SDL_RENDERER_ACCELERATED);
}

TEST_F(Running, DrawColourIsOpaqueWhite) {
    Uint8 r = 0, g = 0, b = 0, a = 0;
    SDL_GetRenderDrawColor(gRenderer, &r, &g, &b, &a);
    EXPECT_EQ(255 * 4, r + g + b + a);
}

TEST_F(Running, PicturesAreScaledLinearly) {
    EXPECT_STREQ("1", SDL_GetHint(SDL_HINT_RENDER_SCALE_QUALITY));
}

TEST_F(Running, AllSubsystemsAreUp) {
    EXPECT_EQ(0x7231u, SDL_WasInit(0x7231));
}

// Shutdown --------------------------------------------------------------------------------------

TEST_F(StartUp, CloseWithoutAStartIsHarmless) {
    closeEngine();
    closeEngine();
    EXPECT_TRUE(gEngineClosed);
}

TEST_F(Running, CloseQuitsTheLibrariesAndASecondOneDoesNothing) {
    runStatements(
        "createunit(0, 1, 1); loadimage(\"img/peon.bmp\");"
        "createtext(\"a\", 0, 0, 9, 9);");
    composeFrame();
    closeEngine();
    EXPECT_EQ(0u, SDL_WasInit(0));
    EXPECT_EQ(0, TTF_WasInit());
    closeEngine();
    EXPECT_NE(nullptr, gWindow) << "handles keep their values";
    EXPECT_NE(nullptr, gRenderer);
}

TEST_F(Running, EventsAfterTheCloseAreNone) {
    closeEngine();
    EXPECT_FALSE(drainEvents());
}
