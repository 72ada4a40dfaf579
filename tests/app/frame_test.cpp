#include "app/frame.h"

#include <gtest/gtest.h>

#include "images/images.h"
#include "support/engine_test.h"
#include "texts/game_texts.h"

class Frame : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        writePicture("levels/level1/red.bmp", 50, 50, kRed);
        writePicture("levels/level1/green.bmp", 50, 50, kGreen);
    }
};

static const char kBlock[] = "\xE2\x96\x88";  // a character cell full of ink

TEST_F(Frame, EmptyFrameIsPlainWhite) {
    composeFrame();
    std::vector<Uint32> pixels(640 * 480);
    ASSERT_EQ(0, SDL_RenderReadPixels(gRenderer, nullptr, SDL_PIXELFORMAT_ARGB8888, pixels.data(),
                                      640 * 4));
    for (const Uint32 pixel : pixels)
        ASSERT_EQ(kWhite, pixel & 0xFFFFFF);
}

TEST_F(Frame, ImageWithoutTextureDrawsNothingAndReportsNothing) {
    runStatements("a = loadimage(\"none.bmp\"); showimage(a, 1); changesizeimage(a, 640, 480);");
    EXPECT_EQ("", outputOf([] {
                  composeFrame();
                  drawFrame();
              }));
    EXPECT_EQ(kWhite, framePixel(320, 240));
}

TEST_F(Frame, LaterImageCoversAnEarlierOne) {
    runStatements(
        "loadimage(\"red.bmp\"); loadimage(\"green.bmp\"); moveimage(1, 25, 25);"
        "showimage(0, 1); showimage(1, 1);");
    EXPECT_EQ(kRed, framePixel(10, 10));
    EXPECT_EQ(kGreen, framePixel(35, 35));
    runStatements("showimage(0, 0); showimage(0, 1);");
    EXPECT_EQ(kGreen, framePixel(35, 35)) << "the order of loading counts, not of showing";
}

TEST_F(Frame, HiddenImageIsNotDrawn) {
    runStatements("loadimage(\"red.bmp\"); loadimage(\"green.bmp\"); showimage(0, 1);");
    EXPECT_EQ(kRed, framePixel(10, 10));
}

TEST_F(Frame, LayersCoverEachOtherInTheirOrder) {
    runStatements("createunit(0, 100, 100);" + ("createtext(\"" + std::string(kBlock)) +
                  "\", 80, 80, 100, 100);"
                  "loadimage(\"red.bmp\"); moveimage(0, 60, 60); changesizeimage(0, 140, 140);"
                  "showimage(0, 1);");
    EXPECT_EQ(kRed, framePixel(70, 70));
    EXPECT_EQ(kGrey, framePixel(140, 140)) << "texts above images";
    EXPECT_EQ(kBlue, framePixel(107, 107)) << "units above texts";
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 104, 104);
    pushMotion(300, 300);
    drain();
    EXPECT_EQ(kMagenta, framePixel(110, 110)) << "the selection box above all";
    EXPECT_EQ(kMagenta, framePixel(140, 140));
    EXPECT_EQ(kMagenta, framePixel(190, 190));
    EXPECT_EQ(kBlue, framePixel(102, 102));
    pushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 300, 300);
    drain();
    EXPECT_EQ(kBlue, framePixel(110, 110));
}

TEST_F(Frame, FrameIsRedrawnWhole) {
    runStatements("loadimage(\"red.bmp\"); showimage(0, 1);");
    EXPECT_EQ(kRed, framePixel(10, 10));
    runStatements("moveimage(0, 200, 200);");
    EXPECT_EQ(kWhite, framePixel(10, 10));
    EXPECT_EQ(kRed, framePixel(210, 210));
}

TEST_F(Frame, AllLayersHaveTheWholeWindow) {
    runStatements("loadimage(\"red.bmp\"); showimage(0, 1); changesizeimage(0, 640, 480);");
    for (const int x : {0, 639}) {
        for (const int y : {0, 479})
            EXPECT_EQ(kRed, framePixel(x, y));
    }
}

TEST_F(Frame, DrawingLeavesSizesAlone) {
    runStatements("loadimage(\"red.bmp\"); showimage(0, 1); changesizeimage(0, 10, 20);");
    composeFrame();
    EXPECT_EQ(10, getW(gImages.at(0)));
    EXPECT_EQ(20, getH(gImages.at(0)));
}

TEST_F(Frame, ManyFramesKeepTheirTexts) {
    runStatements("createtext(\"Hello\", 0, 0, 100, 20);");
    for (int i = 0; i < 200; i++)
        drawFrame();
    EXPECT_NE(nullptr, gGameTexts.at(0).texture);
}
