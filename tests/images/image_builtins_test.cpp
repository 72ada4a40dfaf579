#include <gtest/gtest.h>

#include "images/images.h"
#include "support/engine_test.h"

class ImageBuiltins : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        writePicture("levels/level1/a.bmp", 40, 40, kRed);
        writePicture("levels/level1/b.bmp", 40, 40, kGreen);
    }
};

static const char kOneShown[] = "a = loadimage(\"a.bmp\"); showimage(a, 1);";

TEST_F(ImageBuiltins, LoadImageReadsFromTheLevelFolder) {
    EXPECT_EQ("01", runStatements("print(loadimage(\"a.bmp\")); print(loadimage(\"b.bmp\"));"));
    EXPECT_EQ("levels/level1/a.bmp", getPath(gImages.at(0)));
}

TEST_F(ImageBuiltins, LoadImageTakesABareWordInLowerCase) {
    writePicture("levels/level1/plain", 3, 3, kRed);
    EXPECT_EQ("0", runStatements("print(loadimage(PLAIN));"));
    EXPECT_EQ("levels/level1/plain", getPath(gImages.at(0)));
    EXPECT_EQ(3, getW(gImages.at(0)));
}

TEST_F(ImageBuiltins, AnyFlagButZeroShows) {
    runStatements(kOneShown);
    for (const char* flag : {"5", "-1", "1", "2147483647"}) {
        runStatements("showimage(0, 0);");
        EXPECT_EQ(kWhite, framePixel(20, 20));
        runStatements("showimage(0, " + std::string(flag) + ");");
        EXPECT_EQ(kRed, framePixel(20, 20)) << flag;
    }
}

TEST_F(ImageBuiltins, MoveImageIsReadBackByTheGetters) {
    runStatements(kOneShown);
    EXPECT_EQ("1020", runStatements("moveimage(0, 10, 20); print(getimagex(0));"
                                    "print(getimagey(0));"));
    EXPECT_EQ("-5-7", runStatements("moveimage(0, -5, -7); print(getimagex(0));"
                                    "print(getimagey(0));"));
}

TEST_F(ImageBuiltins, FreshImageStandsAtZero) {
    EXPECT_EQ("00", runStatements("loadimage(\"a.bmp\"); print(getimagex(0));"
                                  "print(getimagey(0));"));
}

TEST_F(ImageBuiltins, MovedImageIsDrawnAtItsNewPlace) {
    runStatements(std::string(kOneShown) + "moveimage(0, 300, 200);");
    EXPECT_EQ(kWhite, framePixel(20, 20));
    EXPECT_EQ(kWhite, framePixel(298, 220));
    EXPECT_EQ(kWhite, framePixel(320, 198));
    EXPECT_EQ(kRed, framePixel(302, 202));
    EXPECT_EQ(kRed, framePixel(338, 238));
    EXPECT_EQ(kWhite, framePixel(342, 220));
    EXPECT_EQ(kWhite, framePixel(320, 242));
}

TEST_F(ImageBuiltins, PictureIsStretchedToTheSizeOfTheScript) {
    runStatements(std::string(kOneShown) + "moveimage(0, 100, 100); changesizeimage(0, 200, 10);");
    EXPECT_EQ(kRed, framePixel(103, 105));
    EXPECT_EQ(kRed, framePixel(296, 105));
    EXPECT_EQ(kWhite, framePixel(303, 105));
    EXPECT_EQ(kWhite, framePixel(110, 113));
}

TEST_F(ImageBuiltins, SizesOfZeroAndBelowAreKept) {
    runStatements(kOneShown);
    runStatements("changesizeimage(0, 0, -5);");
    EXPECT_EQ(0, getW(gImages.at(0)));
    EXPECT_EQ(-5, getH(gImages.at(0)));
    runStatements("moveimage(0, 100, 100); changesizeimage(0, -40, -40);");
    EXPECT_EQ(-40, getW(gImages.at(0)));
    composeFrame();
}

TEST_F(ImageBuiltins, EmptySizesDrawNothing) {
    runStatements(std::string(kOneShown) + "moveimage(0, 100, 100);");
    for (const char* size : {"0, 40", "40, 0", "0, 0", "-40, -40", "-40, 40"}) {
        runStatements("changesizeimage(0, " + std::string(size) + ");");
        for (const int place : {61, 80, 99, 101, 120, 139}) {
            EXPECT_EQ(kWhite, framePixel(place, place)) << size;
            EXPECT_EQ(kWhite, framePixel(place, 120)) << size;
        }
    }
}

TEST_F(ImageBuiltins, HugeSizesAndPlacesNeverCrash) {
    runStatements(kOneShown);
    for (const char* call :
         {"changesizeimage(0, 2147483647, 2147483647);", "moveimage(0, 2147483647, -2147483647);",
          "changesizeimage(0, -2147483647, 5); moveimage(0, 0, 0);"}) {
        EXPECT_EQ("", runStatements(call));
        composeFrame();
    }
}

// Identifiers that never existed --------------------------------------------------------------

static const char* const kBadIds[] = {"-1", "1", "2147483647", "-2147483647-1", "16384"};

TEST_F(ImageBuiltins, UnknownIdentifiersAreIgnored) {
    runStatements(kOneShown);
    for (const std::string id : kBadIds) {
        EXPECT_EQ("000",
                  runStatements("print(showimage(" + id + ", 0));" + "print(moveimage(" + id +
                                ", 5, 5));" + "print(changesizeimage(" + id + ", 5, 5));"))
            << id;
    }
    EXPECT_EQ(1u, gImages.size());
    EXPECT_EQ(40, getW(gImages[0]));
    EXPECT_EQ(kRed, framePixel(20, 20));
}

TEST_F(ImageBuiltins, GettersOfUnknownIdentifiersReturnZero) {
    runStatements(std::string(kOneShown) + "moveimage(0, 3, 4);");
    for (const std::string id : kBadIds) {
        EXPECT_EQ("00",
                  runStatements("print(getimagex(" + id + ")); print(getimagey(" + id + "));"))
            << id;
    }
}

TEST_F(ImageBuiltins, AllOfThemIgnoreIdentifiersWhileThereIsNoImage) {
    EXPECT_EQ("00000", runStatements("print(showimage(0, 1)); print(moveimage(0, 1, 1));"
                                     "print(changesizeimage(0, 1, 1)); print(getimagex(0));"
                                     "print(getimagey(0));"));
}

// Arguments -----------------------------------------------------------------------------------

TEST_F(ImageBuiltins, AnyTokenSeparatesArguments) {
    runStatements(kOneShown);
    EXPECT_EQ("12", runStatements("moveimage(0; 1; 2); print(getimagex(0)); print(getimagey(0));"));
}

TEST_F(ImageBuiltins, MissingParenthesesAreErrors) {
    runStatements(kOneShown);
    for (const char* call :
         {"showimage 0, 1);", "moveimage(0, 1, 2;", "getimagex 0;", "getimagey(0;",
          "changesizeimage(0, 1, 2, 3);", "loadimage;", "loadimage(\"a.bmp\";"}) {
        const std::string output = runStatements(call);
        EXPECT_EQ(0u, output.find("\nWaiting '()' in line 0\n")) << call << output;
        EXPECT_NE(std::string::npos, output.find("Error buffer long jump")) << call;
    }
    EXPECT_EQ(1u, gImages.size()) << "loadimage reads its \")\" before it loads";
}
