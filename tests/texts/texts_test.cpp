#include <gtest/gtest.h>

#include <climits>
#include <fstream>

#include "support/engine_test.h"
#include "texts/fonts.h"
#include "texts/game_texts.h"

class Texts : public EngineTest {};

// A whole character cell of ink: stretched to a rectangle it fills the middle with the colour.
static const char kBlock[] = "\xE2\x96\x88";

static std::string createBlock(const std::string& rect) {
    return "createtext(\"" + std::string(kBlock) + "\", " + rect + ");";
}

// Moves the timer counter on, so that the next text gets a key of its own.
static const char kNextKey[] = "deletetimer(9999);";

// Fonts and colour ------------------------------------------------------------------------------

TEST_F(Texts, FirstFontIsArialOfTwelvePointsInGrey) {
    ASSERT_NE(nullptr, gFont);
    TTF_Font* same = TTF_OpenFont("arial.ttf", 12);
    EXPECT_EQ(TTF_FontHeight(same), TTF_FontHeight(gFont));
    TTF_CloseFont(same);
    EXPECT_EQ(100, gTextColour.r);
    EXPECT_EQ(100, gTextColour.g);
    EXPECT_EQ(100, gTextColour.b);
    EXPECT_EQ(0, gTextColour.a);
}

TEST_F(Texts, TextIsDrawnInGreyAfterStartUp) {
    runStatements(createBlock("100, 100, 60, 40"));
    EXPECT_EQ(kGrey, framePixel(130, 120));
}

TEST_F(Texts, TextIsStretchedToItsRectangleAndNotBeyond) {
    runStatements(createBlock("100, 100, 300, 200"));
    EXPECT_EQ(kGrey, framePixel(250, 200));
    EXPECT_EQ(kWhite, framePixel(95, 200));
    EXPECT_EQ(kWhite, framePixel(405, 200));
    EXPECT_EQ(kWhite, framePixel(250, 95));
    EXPECT_EQ(kWhite, framePixel(250, 305));
}

TEST_F(Texts, TextLeavesTheBackgroundBetweenItsLetters) {
    runStatements("createtext(\"| |\", 100, 100, 300, 100);");
    EXPECT_EQ(kWhite, framePixel(250, 150));
}

TEST_F(Texts, ColourTurnsEveryTextAtTheNextFrame) {
    runStatements(createBlock("0, 0, 60, 40") + kNextKey + createBlock("100, 100, 60, 40"));
    EXPECT_EQ(kGrey, framePixel(130, 120));
    EXPECT_EQ("0", runStatements("print(changeallcolorfont(255, 0, 0));"));
    EXPECT_EQ(kRed, framePixel(130, 120));
    EXPECT_EQ(kRed, framePixel(30, 20));
}

TEST_F(Texts, ColourValuesAreCutToTheirLowByte) {
    runStatements("changeallcolorfont(256, -1, 511);");
    EXPECT_EQ(0, gTextColour.r);
    EXPECT_EQ(255, gTextColour.g);
    EXPECT_EQ(255, gTextColour.b);
    EXPECT_EQ(0, gTextColour.a);
    runStatements("changeallcolorfont(2147483647, -2147483647 - 1, 65536 + 7);");
    EXPECT_EQ(255, gTextColour.r);
    EXPECT_EQ(0, gTextColour.g);
    EXPECT_EQ(7, gTextColour.b);
}

TEST_F(Texts, ChangedFontIsUsedByAllTexts) {
    runStatements("createtext(\"Hello\", 0, 0, 100, 20);");
    composeFrame();
    const int before = gGameTexts.at(0).surface->h;
    EXPECT_EQ("0", runStatements("print(changeallfont(\"arial.ttf\", 48));"));
    composeFrame();
    EXPECT_GT(gGameTexts.at(0).surface->h, 2 * before);
    EXPECT_EQ(100, gGameTexts.at(0).rect.w);
}

TEST_F(Texts, MissingFontIsReportedAndTheOldOneStays) {
    TTF_Font* before = gFont;
    EXPECT_EQ("Cant load none.ttf font!0",
              runStatements("print(changeallfont(\"none.ttf\", 20));"));
    EXPECT_EQ(before, gFont);
    runStatements(createBlock("100, 100, 60, 40"));
    EXPECT_EQ(kGrey, framePixel(130, 120));
}

TEST_F(Texts, BrokenFontsAreReportedAndTheOldOneStays) {
    TTF_Font* before = gFont;
    writeFile("empty.ttf", "");
    writeFile("text.ttf", "This is no font.");
    std::ifstream whole("arial.ttf", std::ios::binary);
    std::string bytes(3000, '\0');
    whole.read(&bytes[0], 3000);
    writeFile("cut.ttf", bytes);
    for (const std::string name : {"empty.ttf", "text.ttf", "cut.ttf", "levels", "", "%s%n"}) {
        EXPECT_EQ("Cant load " + name + " font!0",
                  runStatements("print(changeallfont(\"" + name + "\", 20));"));
        EXPECT_EQ(before, gFont);
    }
}

TEST_F(Texts, FontSizesOfAllKindsNeverCrash) {
    runStatements("createtext(\"Hello\", 0, 0, 100, 20);");
    for (const char* size : {"0", "-1", "1", "500", "-2147483647 - 1"}) {
        const std::string output =
            runStatements("print(changeallfont(\"arial.ttf\", " + std::string(size) + "));");
        EXPECT_EQ('0', output.back()) << size;
        composeFrame();
    }
}

TEST_F(Texts, FontChangedAThousandTimesLeavesOneOpen) {
    runStatements(
        "createtext(\"Hello\", 0, 0, 100, 20);"
        "for (a = 0; a < 1000; a = a + 1) { changeallfont(\"arial.ttf\", 10 + a % 9); }");
    composeFrame();
    EXPECT_NE(nullptr, gGameTexts.at(0).surface);
}

// Drawing ---------------------------------------------------------------------------------------

TEST_F(Texts, EachFrameRendersAfresh) {
    runStatements("createtext(\"Hello\", 0, 0, 100, 20);");
    EXPECT_EQ(nullptr, gGameTexts.at(0).surface);
    composeFrame();
    ASSERT_NE(nullptr, gGameTexts.at(0).surface);
    EXPECT_NE(nullptr, gGameTexts.at(0).texture);
    const int width = gGameTexts.at(0).surface->w;
    runStatements("createtext(\"Hello, hello\", 0, 0, 100, 20);");
    composeFrame();
    EXPECT_GT(gGameTexts.at(0).surface->w, width);
}

TEST_F(Texts, HiddenTextMakesNoSurfaceAndNoTexture) {
    runStatements(createBlock("100, 100, 60, 40") + "hidetext(0, 1);");
    EXPECT_EQ(kWhite, framePixel(130, 120));
    EXPECT_EQ(nullptr, gGameTexts.at(0).surface);
    EXPECT_EQ(nullptr, gGameTexts.at(0).texture);
}

TEST_F(Texts, TextsAreDrawnInAscendingOrderOfKeys) {
    runStatements(std::string(kNextKey) + createBlock("100, 100, 60, 40"));
    GameText& lower = findOrCreateGameText(-5);
    lower.text = "| |";
    lower.rect = {100, 100, 60, 40};
    lower.hidden = false;
    composeFrame();
    EXPECT_EQ(1, gGameTexts.at(-5).number);
    EXPECT_EQ(kGrey, framePixel(130, 120)) << "key 1 covers key -5";
}

TEST_F(Texts, EmptyTextDrawsNothing) {
    EXPECT_EQ("0", runStatements("print(createtext(\"\", 100, 100, 60, 40));"));
    EXPECT_EQ(kWhite, framePixel(130, 120));
}

TEST_F(Texts, TextThatBecomesEmptyDisappears) {
    runStatements(createBlock("100, 100, 60, 40"));
    EXPECT_EQ(kGrey, framePixel(130, 120));
    runStatements("createtext(\"\", 100, 100, 60, 40);");
    EXPECT_EQ(kWhite, framePixel(130, 120));
}

TEST_F(Texts, InvalidUtf8NeverCrashes) {
    for (const char* text :
         {"\xFF", "\xC3", "\xE2\x96", "\xF0\x9F\x98", "\x80\x80\x80", "\xED\xA0\x80", "\xC0\xAF",
          "a\xFF"
          "b",
          "\x01\x02\x7F", "\xF4\x90\x80\x80", "\xEF\xBF\xBF", "\xEF\xBB\xBF"}) {
        EXPECT_EQ("", runStatements("createtext(\"" + std::string(text) + "\", 0, 0, 60, 40);"));
        composeFrame();
    }
    EXPECT_EQ(1u, gGameTexts.size());
}

TEST_F(Texts, CyrillicTextIsDrawn) {
    runStatements("createtext(\"\xD0\x96\", 100, 100, 60, 40);");
    composeFrame();
    EXPECT_NE(nullptr, gGameTexts.at(0).texture);
}

TEST_F(Texts, LongestTextIsDrawn) {
    runStatements("createtext(\"" + std::string(79, 'W') + "\", 0, 0, 640, 40);");
    EXPECT_EQ(std::string(79, 'W'), gGameTexts.at(0).text);
    composeFrame();
    EXPECT_NE(nullptr, gGameTexts.at(0).texture);
}

TEST_F(Texts, TextTooWideForATextureDrawsNothing) {
    runStatements("changeallfont(\"arial.ttf\", 500); createtext(\"" + std::string(79, 'W') +
                  "\", 0, 0, 640, 40);");
    composeFrame();
    EXPECT_EQ(nullptr, gGameTexts.at(0).texture);
}

TEST_F(Texts, SizesOfAllKindsNeverCrash) {
    for (const char* rect :
         {"100, 100, 0, 0", "100, 100, -60, -40", "100, 100, 2147483647, 2147483647",
          "-2147483647, 2147483647, 5, 5", "2147483647, 2147483647, 2147483647, 2147483647"}) {
        runStatements(createBlock(rect));
        composeFrame();
    }
    runStatements(createBlock("100, 100, 0, 40"));
    EXPECT_EQ(kWhite, framePixel(100, 120));
}

// Registry --------------------------------------------------------------------------------------

TEST_F(Texts, BeforeAnyTextTheLastNumberIsZero) {
    EXPECT_EQ("0", runStatements("print(getlastgametext());"));
}

TEST_F(Texts, SecondTextWithoutTimersRewritesTheFirst) {
    EXPECT_EQ("0", runStatements("print(createtext(\"Hello\", 10, 10, 100, 20));"));
    EXPECT_EQ("Hello", gGameTexts.at(0).text);
    EXPECT_EQ(10, gGameTexts.at(0).rect.x);
    EXPECT_EQ(100, gGameTexts.at(0).rect.w);
    EXPECT_EQ(20, gGameTexts.at(0).rect.h);
    EXPECT_FALSE(gGameTexts.at(0).hidden);
    EXPECT_EQ("0", runStatements("print(createtext(\"Bye\", 50, 50, 40, 20));"));
    ASSERT_EQ(1u, gGameTexts.size());
    EXPECT_EQ("Bye", gGameTexts.at(0).text);
    EXPECT_EQ(50, gGameTexts.at(0).rect.x);
    EXPECT_EQ(40, gGameTexts.at(0).rect.w);
    EXPECT_EQ(0, gGameTexts.at(0).number);
}

TEST_F(Texts, RewritingShowsAHiddenText) {
    runStatements("createtext(\"Hello\", 10, 10, 100, 20); hidetext(0, 1);");
    EXPECT_TRUE(gGameTexts.at(0).hidden);
    runStatements("createtext(\"Bye\", 50, 50, 40, 20);");
    EXPECT_FALSE(gGameTexts.at(0).hidden);
}

static const char kTwoTimers[] =
    "int tick() { }\n"
    "int main() { createtimer(0, 900, \"tick\"); createtimer(0, 900, \"tick\");";

TEST_F(Texts, TextsAreKeyedByTheTimerCounter) {
    EXPECT_EQ("01", runLevel(std::string(kTwoTimers) +
                             "print(createtext(\"Hello\", 10, 10, 100, 20));"
                             "movegametext(0, 5, 5); print(getlastgametext()); }"));
    ASSERT_EQ(2u, gGameTexts.size());
    EXPECT_EQ("Hello", gGameTexts.at(2).text);
    EXPECT_EQ(10, gGameTexts.at(2).rect.x);
    EXPECT_EQ(0, gGameTexts.at(2).number);
    EXPECT_TRUE(gGameTexts.at(0).hidden);
    EXPECT_EQ(1, gGameTexts.at(0).number);
    EXPECT_EQ(5, gGameTexts.at(0).rect.x);
}

TEST_F(Texts, CreatingATextConsumesNoTimerId) {
    runStatements("createtext(\"Hello\", 10, 10, 100, 20);");
    EXPECT_EQ(0, gNextTimerId);
    EXPECT_EQ(1, gNextTextNumber);
}

TEST_F(Texts, NewTextUnderAnImplicitRecordReturnsTheNumberMadeLatest) {
    // Look-ups make the numbers 0 and 1 under the keys 0 and 7; the text then takes over key 0.
    EXPECT_EQ("1", runStatements("getgametextx(0); getgametextx(7);"
                                 "print(createtext(\"Hello\", 1, 2, 3, 4));"));
    EXPECT_EQ(0, gGameTexts.at(0).number);
    EXPECT_FALSE(gGameTexts.at(0).hidden);
}

TEST_F(Texts, AnyHideFlagButZeroHides) {
    for (const char* flag : {"5", "1", "-1", "2147483647"}) {
        runStatements(createBlock("100, 100, 60, 40") + "hidetext(0, " + flag + ");");
        EXPECT_EQ(kWhite, framePixel(130, 120)) << flag;
        runStatements("hidetext(0, 0);");
        EXPECT_EQ(kGrey, framePixel(130, 120)) << flag;
    }
}

TEST_F(Texts, MoveAndSizeChangeWhatTheyName) {
    runStatements(createBlock("10, 10, 60, 40") + "movegametext(0, 200, 300);");
    EXPECT_EQ(kWhite, framePixel(40, 30));
    EXPECT_EQ(kGrey, framePixel(230, 320));
    EXPECT_EQ("200300", runStatements("setgametextwh(0, 200, 100); print(getgametextx(0));"
                                      "print(getgametexty(0));"));
    EXPECT_EQ(kGrey, framePixel(300, 350));
}

TEST_F(Texts, UnknownIdsGetAHiddenDefaultText) {
    EXPECT_EQ("00000", runStatements("print(getgametextx(3)); print(getgametexty(-4));"
                                     "print(movegametext(5, 1, 1)); print(setgametextwh(6, 1, 1));"
                                     "print(deletetext(77));"));
    EXPECT_EQ(5, gNextTextNumber);
    for (const auto& entry : gGameTexts) {
        EXPECT_TRUE(entry.second.hidden);
        EXPECT_EQ("", entry.second.text);
        EXPECT_EQ(nullptr, entry.second.surface);
    }
    composeFrame();
}

TEST_F(Texts, DeletingATextWhoseNumberIsItsKeyRemovesIt) {
    runStatements(createBlock("100, 100, 60, 40"));
    EXPECT_EQ(kGrey, framePixel(130, 120));
    EXPECT_EQ("0", runStatements("print(deletetext(0));"));
    EXPECT_TRUE(gGameTexts.empty());
    EXPECT_EQ(kWhite, framePixel(130, 120));
}

TEST_F(Texts, DeletingATextOfAnotherNumberHidesItAndErasesTheOtherKey) {
    runLevel(std::string(kTwoTimers) + createBlock("100, 100, 60, 40") +
             "movegametext(0, 5, 5); }");
    composeFrame();
    runStatements("deletetext(2);");
    ASSERT_EQ(1u, gGameTexts.size());
    EXPECT_TRUE(gGameTexts.at(2).hidden) << "number 0: key 0 is erased";
    EXPECT_EQ(kWhite, framePixel(130, 120));
}

TEST_F(Texts, DeletingAnUnknownTextWhoseNumberIsItsIdLeavesNothing) {
    runStatements("deletetext(0);");
    EXPECT_TRUE(gGameTexts.empty());
    EXPECT_EQ(1, gNextTextNumber);
}

TEST_F(Texts, NumbersAreNeverUsedAgain) {
    EXPECT_EQ("01", runStatements("print(createtext(\"a\", 0, 0, 9, 9)); deletetext(0);"
                                  "print(createtext(\"b\", 0, 0, 9, 9));"));
    EXPECT_EQ(1, gGameTexts.at(0).number);
}

TEST_F(Texts, MissingParenthesesAreErrors) {
    for (const char* call :
         {"createtext \"a\", 1, 2, 3, 4);", "deletetext 0;", "hidetext(0, 1;", "getlastgametext;",
          "getlastgametext(1);", "movegametext(0, 1, 2, 3);", "getgametextx(0;", "getgametexty;",
          "setgametextwh(0, 1, 2;", "changeallfont \"a\", 5);", "changeallcolorfont(1, 2, 3;"}) {
        EXPECT_EQ(0u, runStatements(call).find("\nWaiting '()' in line 0\n")) << call;
    }
}

TEST_F(Texts, OnlyTheGettersWaitForTheClosingParenthesis) {
    runStatements("getgametextx(3;");
    EXPECT_TRUE(gGameTexts.empty());
    runStatements("movegametext(3, 8, 9;");
    EXPECT_EQ(8, gGameTexts.at(3).rect.x);
    runStatements("setgametextwh(3, 6, 7;");
    EXPECT_EQ(7, gGameTexts.at(3).rect.h);
    runStatements("hidetext(3, 0;");
    EXPECT_FALSE(gGameTexts.at(3).hidden);
}
