#include "units/selection.h"

#include <gtest/gtest.h>

#include <climits>

#include "support/engine_test.h"

class Selection : public EngineTest {};

static std::vector<int> selectedIds() {
    std::vector<int> ids;
    for (const Unit* unit : gSelectedUnits) {
        for (auto& entry : gUnits) {
            if (&entry.second == unit) ids.push_back(entry.first);
        }
    }
    return ids;
}

using Ids = std::vector<int>;

static std::string click(int x, int y) {
    pushClick(SDL_BUTTON_LEFT, x, y);
    return drain();
}

static std::string drag(int x, int y, int toX, int toY) {
    pushDrag(x, y, toX, toY);
    return drain();
}

// Picks ---------------------------------------------------------------------------------------

TEST_F(Selection, ClickOnAUnitPicksIt) {
    runStatements("createunit(0, 100, 100);");
    EXPECT_EQ("\nChoosen=1", click(105, 105));
    EXPECT_EQ(Ids{0}, selectedIds());
    EXPECT_EQ(&gUnits.at(0), gHoveredUnit);
}

TEST_F(Selection, UnitAnswersToSixteenBySixteenPixels) {
    runStatements("createunit(0, 100, 100);");
    EXPECT_EQ("\nChoosen=1", click(100, 100));
    EXPECT_EQ("\nChoosen=1", click(115, 115));
    EXPECT_EQ("", click(116, 100));
    EXPECT_EQ("", click(100, 116));
    EXPECT_EQ("", click(99, 100));
    EXPECT_EQ("", click(100, 99));
}

TEST_F(Selection, ClickBesideEmptiesTheSelectionSilently) {
    runStatements("createunit(0, 100, 100);");
    click(105, 105);
    EXPECT_EQ("", click(300, 300));
    EXPECT_EQ(Ids{}, selectedIds());
    EXPECT_EQ(nullptr, gHoveredUnit);
}

TEST_F(Selection, OfOverlappingUnitsTheLowestIdIsPicked) {
    runStatements("moveunit(7, 100, 100); moveunit(3, 105, 105);");
    EXPECT_EQ("\nChoosen=1", click(110, 110));
    EXPECT_EQ(Ids{3}, selectedIds());
}

TEST_F(Selection, ClickWithoutUnitsWritesNothing) {
    EXPECT_EQ("", click(5, 5));
    EXPECT_EQ(Ids{}, selectedIds());
    EXPECT_EQ("", drag(0, 0, 600, 400));
}

// Frames --------------------------------------------------------------------------------------

TEST_F(Selection, FrameAroundAUnitSelectsIt) {
    runStatements("createunit(0, 100, 100);");
    EXPECT_EQ("\nSelected=1", drag(90, 90, 120, 120));
    EXPECT_EQ(Ids{0}, selectedIds());
}

TEST_F(Selection, FrameThatOnlyOverlapsSelectsNothing) {
    runStatements("createunit(0, 100, 100);");
    click(105, 105);
    EXPECT_EQ("\nSelected=0", drag(90, 90, 110, 110));
    EXPECT_EQ(Ids{}, selectedIds());
}

TEST_F(Selection, EdgesOfTheFrameCountAsInside) {
    runStatements("createunit(0, 100, 100);");
    EXPECT_EQ("\nSelected=1", drag(100, 100, 115, 115));
    EXPECT_EQ("\nSelected=0", drag(101, 100, 115, 115));
    EXPECT_EQ("\nSelected=0", drag(100, 100, 114, 115));
    EXPECT_EQ("\nSelected=0", drag(100, 101, 115, 115));
    EXPECT_EQ("\nSelected=0", drag(100, 100, 115, 114));
}

TEST_F(Selection, FrameDraggedUpAndLeftPicksAtTheReleasePoint) {
    runStatements("createunit(0, 100, 100);");
    EXPECT_EQ("", drag(120, 120, 90, 90));
    EXPECT_EQ(Ids{}, selectedIds());
    EXPECT_EQ("\nChoosen=1", drag(130, 130, 105, 105));
    EXPECT_EQ(Ids{0}, selectedIds());
}

TEST_F(Selection, FrameWithoutWidthOrHeightPicks) {
    runStatements("createunit(0, 100, 100);");
    EXPECT_EQ("\nChoosen=1", drag(105, 90, 105, 110));
    EXPECT_EQ("\nChoosen=1", drag(90, 105, 110, 105));
    EXPECT_EQ("\nSelected=0", drag(109, 109, 110, 110)) << "one pixel is a frame";
}

TEST_F(Selection, FrameSelectsAllInsideInOrderOfIds) {
    runStatements(
        "createunit(0, 300, 300); createunit(0, 100, 100); createunit(0, 500, 20);"
        "createunit(0, 200, 200); createunit(0, 640, 100);");
    EXPECT_EQ("\nSelected=4", drag(0, 0, 640, 480));
    EXPECT_EQ((Ids{0, 1, 2, 3}), selectedIds());
    EXPECT_EQ("\nSelected=4", drag(0, 0, 640, 480));
    EXPECT_EQ(4u, gSelectedUnits.size()) << "none twice";
}

TEST_F(Selection, FrameIsShownWhileTheButtonIsHeld) {
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 50, 60);
    drain();
    EXPECT_TRUE(isVisible(selectionFrame()));
    EXPECT_EQ(50, getX(selectionFrame()));
    EXPECT_EQ(60, getY(selectionFrame()));
    EXPECT_EQ(0, getW(selectionFrame()));
    EXPECT_EQ(0, getH(selectionFrame()));
    EXPECT_EQ(kWhite, framePixel(50, 60));
    pushMotion(150, 100);
    drain();
    EXPECT_EQ(100, getW(selectionFrame()));
    EXPECT_EQ(40, getH(selectionFrame()));
    EXPECT_EQ(kMagenta, framePixel(100, 80));
    EXPECT_EQ(kMagenta, framePixel(53, 63));
    EXPECT_EQ(kMagenta, framePixel(147, 97));
    EXPECT_EQ(kWhite, framePixel(153, 80));
    pushMotion(20, 30);
    drain();
    EXPECT_EQ(-30, getW(selectionFrame()));
    EXPECT_EQ(-30, getH(selectionFrame()));
    for (const int place : {25, 35, 45, 55, 65})
        EXPECT_EQ(kWhite, framePixel(place, place + 5)) << "a negative frame draws nothing";
    pushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 20, 30);
    drain();
    EXPECT_FALSE(isVisible(selectionFrame()));
}

TEST_F(Selection, MotionWithTheButtonShowsTheFrameAgain) {
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 50, 60);
    drain();
    setVisible(selectionFrame(), false);
    pushMotion(150, 100);
    drain();
    EXPECT_TRUE(isVisible(selectionFrame()));
}

// Hover ---------------------------------------------------------------------------------------

TEST_F(Selection, MotionWithoutTheButtonNotesTheUnitUnderThePointer) {
    runStatements("createunit(0, 100, 100); createunit(0, 110, 110);");
    pushMotion(112, 112);
    drain();
    EXPECT_EQ(&gUnits.at(0), gHoveredUnit);
    pushMotion(120, 120);
    drain();
    EXPECT_EQ(&gUnits.at(1), gHoveredUnit);
    pushMotion(300, 300);
    drain();
    EXPECT_EQ(nullptr, gHoveredUnit);
    EXPECT_EQ(Ids{}, selectedIds());
}

TEST_F(Selection, MotionWithTheButtonLeavesTheHoverAlone) {
    runStatements("createunit(0, 100, 100);");
    pushMotion(105, 105);
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 300, 300);
    pushMotion(310, 310);
    drain();
    EXPECT_EQ(&gUnits.at(0), gHoveredUnit);
}

// Orders --------------------------------------------------------------------------------------

TEST_F(Selection, RightReleaseSendsAllSelectedUnitsToOnePoint) {
    runStatements("createunit(0, 100, 100); createunit(0, 200, 200); createunit(0, 300, 300);");
    drag(90, 90, 220, 220);
    pushClick(SDL_BUTTON_RIGHT, 400, 50);
    EXPECT_EQ("", drain());
    for (const int id : {0, 1}) {
        EXPECT_EQ(400, gUnits.at(id).targetX);
        EXPECT_EQ(50, gUnits.at(id).targetY);
        EXPECT_EQ(kUnitMoving, gUnits.at(id).moveState);
    }
    EXPECT_EQ(kUnitIdle, gUnits.at(2).moveState);
    unitTick();
    EXPECT_EQ(400, gUnits.at(0).rect.x);
    EXPECT_EQ(300, gUnits.at(2).rect.x);
}

TEST_F(Selection, SelectionStaysForTheNextOrder) {
    runStatements("createunit(0, 100, 100);");
    click(105, 105);
    for (const int x : {300, 400, 500}) {
        pushClick(SDL_BUTTON_RIGHT, x, 20);
        drain();
        unitTick();
        unitTick();
        EXPECT_EQ(x, gUnits.at(0).rect.x);
        EXPECT_EQ(kUnitIdle, gUnits.at(0).moveState);
    }
}

TEST_F(Selection, OrderNearTheUnitIsOnlyCleared) {
    runStatements("createunit(0, 100, 100);");
    click(105, 105);
    pushClick(SDL_BUTTON_RIGHT, 110, 105);
    drain();
    unitTick();
    EXPECT_EQ(100, gUnits.at(0).rect.x);
    EXPECT_EQ(kUnitIdle, gUnits.at(0).moveState);
}

TEST_F(Selection, RightReleaseWithoutSelectionDoesNothing) {
    runStatements("createunit(0, 100, 100);");
    pushClick(SDL_BUTTON_RIGHT, 300, 300);
    EXPECT_EQ("", drain());
    EXPECT_EQ(kUnitIdle, gUnits.at(0).moveState);
}

// Hit tests -----------------------------------------------------------------------------------

TEST(HitTests, PointOnAnyEdgeIsInside) {
    const SDL_Rect rect = {10, 20, 15, 15};
    EXPECT_TRUE(pointInRect(10, 20, rect));
    EXPECT_TRUE(pointInRect(25, 35, rect));
    EXPECT_FALSE(pointInRect(9, 25, rect));
    EXPECT_FALSE(pointInRect(26, 25, rect));
    EXPECT_FALSE(pointInRect(15, 19, rect));
    EXPECT_FALSE(pointInRect(15, 36, rect));
    EXPECT_FALSE(pointInRect(5, 5, {5, 5, -1, -1}));
}

TEST(HitTests, RectangleIsInsideItself) {
    const SDL_Rect rect = {10, 20, 15, 15};
    EXPECT_TRUE(rectInsideRect(rect, rect));
    EXPECT_FALSE(rectInsideRect(rect, {10, 20, 14, 15}));
    EXPECT_FALSE(rectInsideRect(rect, {10, 20, 15, 14}));
    EXPECT_FALSE(rectInsideRect(rect, {11, 20, 15, 15}));
    EXPECT_FALSE(rectInsideRect(rect, {10, 21, 15, 15}));
}

TEST(HitTests, RectanglesAtTheEndOfTheNumbersDoNotWrap) {
    const SDL_Rect far = {INT_MAX, INT_MAX, 15, 15};
    EXPECT_TRUE(pointInRect(INT_MAX, INT_MAX, far));
    EXPECT_FALSE(pointInRect(0, 0, far));
    EXPECT_FALSE(rectInsideRect(far, {0, 0, 640, 480}));
    EXPECT_FALSE(pointInRect(0, 0, {INT_MIN, INT_MIN, 15, 15}));
}
