#include "units/units.h"

#include <gtest/gtest.h>

#include <climits>

#include "support/engine_test.h"
#include "support/sdl_calls.h"
#include "units/unit_movement.h"

class Units : public EngineTest {};

TEST_F(Units, OneTypeIsRecordedAtStartUp) {
    ASSERT_EQ(1u, gUnitTypes.size());
    const UnitType& type = gUnitTypes[0];
    EXPECT_EQ(100.0F, type.statA);
    EXPECT_EQ(0.0F, type.statB);
    EXPECT_EQ("levels/level1/img/peon.bmp", type.picturePath);
    EXPECT_EQ(5, type.speed);
    EXPECT_EQ(10, type.statC);
    EXPECT_EQ(20, type.statD);
    EXPECT_EQ(1, type.statE);
    EXPECT_EQ(0, type.statF);
}

TEST_F(Units, BeforeAnyUnitTheLastIdIsZero) {
    EXPECT_EQ("0", runStatements("print(getlastcreatedunit());"));
}

TEST_F(Units, IdsCountFromZeroInOrderOfCreation) {
    EXPECT_EQ("0122", runStatements("print(createunit(0, 1, 1)); print(createunit(0, 2, 2));"
                                    "print(createunit(0, 3, 3)); print(getlastcreatedunit());"));
}

TEST_F(Units, CreatedUnitStandsAtItsPlace) {
    EXPECT_EQ("10050", runStatements("createunit(0, 100, 50); print(getunitx(0));"
                                     "print(getunity(0));"));
    const Unit& unit = gUnits.at(0);
    EXPECT_EQ(15, unit.rect.w);
    EXPECT_EQ(15, unit.rect.h);
    EXPECT_EQ(kUnitIdle, unit.moveState);
    EXPECT_EQ(0, unit.typeIndex);
    EXPECT_EQ(100.0F, unit.statA);
    EXPECT_EQ(100.0F, unit.statA2);
    EXPECT_EQ(0.0F, unit.statB);
    EXPECT_EQ(0.0F, unit.statB2);
    EXPECT_EQ(10, unit.statC);
    EXPECT_EQ(20, unit.statD);
    EXPECT_EQ(0, unit.statE);
}

// The picture of the unit is 20 by 30 pixels.
TEST_F(Units, UnitIsDrawnFifteenByFifteenWhateverItsPicture) {
    runStatements("createunit(0, 100, 50);");
    EXPECT_EQ(kBlue, framePixel(101, 51));
    EXPECT_EQ(kBlue, framePixel(113, 63));
    EXPECT_EQ(kWhite, framePixel(117, 57));
    EXPECT_EQ(kWhite, framePixel(107, 67));
    EXPECT_EQ(kWhite, framePixel(98, 57));
    EXPECT_EQ(kWhite, framePixel(107, 48));
}

TEST_F(Units, PictureIsFirstCopiedToTheOriginInItsOwnSize) {
    recordCalls();
    runStatements("createunit(0, 100, 50);");
    EXPECT_EQ(1u, countCalls("SDL_RenderCopy(whole, 0, 0, 20, 30)"));
    EXPECT_EQ(1u, countCalls("SDL_RenderCopy"));
    drawUnits();
    EXPECT_EQ(1u, countCalls("SDL_RenderCopy(whole, 100, 50, 15, 15)"));
}

TEST_F(Units, MoveUnitPlacesAtOnceAndLeavesTheOrderAlone) {
    runStatements("createunit(0, 100, 100);");
    orderUnitMove(gUnits.at(0), 400, 400);
    EXPECT_EQ("0300200", runStatements("print(moveunit(0, 300, 200)); print(getunitx(0));"
                                       "print(getunity(0));"));
    EXPECT_EQ(kBlue, framePixel(307, 207));
    EXPECT_EQ(kUnitMoving, gUnits.at(0).moveState);
    EXPECT_EQ(400, gUnits.at(0).targetX);
    unitTick();
    EXPECT_EQ(400, gUnits.at(0).rect.x);
}

TEST_F(Units, UnknownIdsGetAnInvisibleIdleUnitAtTheOrigin) {
    EXPECT_EQ("00", runStatements("print(getunitx(99)); print(getunity(-3));"));
    ASSERT_EQ(2u, gUnits.size());
    const Unit& unit = gUnits.at(99);
    EXPECT_EQ(0, unit.rect.x);
    EXPECT_EQ(15, unit.rect.w);
    EXPECT_FALSE(unit.image.visible);
    EXPECT_EQ(nullptr, unit.image.texture);
    EXPECT_EQ("", unit.image.path);
    EXPECT_EQ(kUnitIdle, unit.moveState);
    EXPECT_EQ(kWhite, framePixel(7, 7));
    EXPECT_EQ(0, gNextUnitId);
    EXPECT_EQ(0, gLastUnitId);
}

TEST_F(Units, ImplicitUnitIsPickedByAClickOnItsRectangle) {
    runStatements("getunitx(99);");
    pushClick(SDL_BUTTON_LEFT, 15, 15);
    EXPECT_EQ("\nChoosen=1", drain());
}

TEST_F(Units, CreationMayReachAnImplicitUnitAndOverwritesIt) {
    runStatements("moveunit(1, 70, 80); createunit(0, 1, 1);");
    EXPECT_EQ("1", runStatements("print(createunit(0, 200, 210));"));
    EXPECT_EQ(2u, gUnits.size());
    EXPECT_EQ(200, gUnits.at(1).rect.x);
    EXPECT_TRUE(gUnits.at(1).image.visible);
}

TEST_F(Units, UnitTakesAllStatsOfItsType) {
    UnitType& type = gUnitTypes.at(0);
    type.statA = 1;
    type.statB = 2;
    type.statC = 3;
    type.statD = 4;
    type.statE = 5;
    runStatements("createunit(0, 0, 0);");
    const Unit& unit = gUnits.at(0);
    EXPECT_EQ(1, unit.statA);
    EXPECT_EQ(1, unit.statA2);
    EXPECT_EQ(2, unit.statB);
    EXPECT_EQ(2, unit.statB2);
    EXPECT_EQ(3, unit.statC);
    EXPECT_EQ(4, unit.statD);
    EXPECT_EQ(0, unit.statE) << "the type keeps it for itself";
}

TEST_F(Units, TypeIndexOutsideTheListIsClamped) {
    EXPECT_EQ("0123", runStatements("print(createunit(-1, 1, 1)); print(createunit(1, 1, 1));"
                                    "print(createunit(2147483647, 1, 1));"
                                    "print(createunit(-2147483647 - 1, 1, 1));"));
    for (const auto& entry : gUnits)
        EXPECT_EQ(0, entry.second.typeIndex);
}

TEST_F(Units, UnitWhosePictureFailsIsThereAllTheSame) {
    std::filesystem::remove("levels/level1/img/peon.bmp");
    const std::string output = runStatements("print(createunit(0, 100, 50));");
    EXPECT_EQ(0u, output.find("\n1Unable to load image levels/level1/img/peon.bmp! SDL Error: "));
    EXPECT_EQ(std::string::npos, output.find("Cant load image")) << output;
    EXPECT_EQ('0', output.back());
    EXPECT_EQ(kWhite, framePixel(107, 57));
    pushClick(SDL_BUTTON_LEFT, 107, 57);
    EXPECT_EQ("\nChoosen=1", drain());
}

TEST_F(Units, UnitsAreDrawnInAscendingOrderOfIds) {
    runStatements("createunit(0, 100, 100);");
    writePicture("levels/level1/img/peon.bmp", 15, 15, kRed);
    runStatements("createunit(0, 105, 105);");
    EXPECT_EQ(kBlue, framePixel(102, 102));
    EXPECT_EQ(kRed, framePixel(110, 110));
}

TEST_F(Units, PlacesAtTheEndOfTheNumbersNeverCrash) {
    EXPECT_EQ("2147483647-2147483648", runStatements("createunit(0, 2147483647, -2147483647 - 1);"
                                                     "print(getunitx(0)); print(getunity(0));"));
    composeFrame();
    pushClick(SDL_BUTTON_LEFT, 5, 5);
    pushDrag(0, 0, 640, 480);
    EXPECT_EQ("\nSelected=0", drain());
    orderUnitMove(gUnits.at(0), 5, 5);
    unitTick();
    composeFrame();
}

TEST_F(Units, MissingParenthesesAreErrors) {
    for (const char* call : {"createunit 0, 1, 2);", "createunit(0, 1, 2;", "moveunit(0, 1, 2;",
                             "getunitx 5;", "getunity(5;", "getlastcreatedunit;"}) {
        EXPECT_EQ(0u, runStatements(call).find("\nWaiting '()' in line 0\n")) << call;
    }
    EXPECT_EQ(1u, gUnits.size()) << "createunit makes its unit before it reads the \")\"";
    EXPECT_EQ(1, gNextUnitId);
}

// Movement --------------------------------------------------------------------------------------

class UnitMovement : public testing::Test {
protected:
    void SetUp() override { loadUnitTypes(); }
};

static Unit unitAt(int x, int y) {
    Unit unit;
    setUnitPosition(unit, x, y);
    return unit;
}

TEST_F(UnitMovement, FarOrderPlacesAtOnceAndIsClearedATickLater) {
    Unit unit = unitAt(100, 100);
    unit.statE = 9;
    orderUnitMove(unit, 200, 100);
    stepUnit(unit);
    EXPECT_EQ(200, unit.rect.x);
    EXPECT_EQ(100, unit.rect.y);
    EXPECT_EQ(kUnitMoving, unit.moveState);
    EXPECT_EQ(200, unit.targetX);
    EXPECT_EQ(9, unit.statE);
    stepUnit(unit);
    EXPECT_EQ(200, unit.rect.x);
    EXPECT_EQ(kUnitIdle, unit.moveState);
    EXPECT_EQ(0, unit.targetX);
    EXPECT_EQ(0, unit.targetY);
    EXPECT_EQ(0, unit.statE);
}

TEST_F(UnitMovement, OrderUpToFifteenPixelsAwayIsOnlyCleared) {
    const int targets[][2] = {{110, 105}, {115, 100}, {100, 85}, {100, 100}, {111, 111}};
    for (const auto& target : targets) {
        Unit unit = unitAt(100, 100);
        orderUnitMove(unit, target[0], target[1]);
        stepUnit(unit);
        EXPECT_EQ(100, unit.rect.x);
        EXPECT_EQ(100, unit.rect.y);
        EXPECT_EQ(kUnitIdle, unit.moveState);
        EXPECT_EQ(0, unit.targetX);
        EXPECT_EQ(0, unit.targetY);
    }
}

TEST_F(UnitMovement, OrderSixteenPixelsAwayIsCarriedOut) {
    Unit unit = unitAt(100, 100);
    orderUnitMove(unit, 116, 100);
    stepUnit(unit);
    EXPECT_EQ(116, unit.rect.x);
}

TEST_F(UnitMovement, TickReturnsItsIntervalWithAndWithoutUnits) {
    EXPECT_EQ(10u, stepAllUnits(10, nullptr));
    EXPECT_TRUE(gUnits.empty());
    findOrCreateUnit(3);
    EXPECT_EQ(77u, stepAllUnits(77, nullptr));
}

TEST_F(UnitMovement, TickStepsEveryUnit) {
    for (const int id : {5, -5, 0}) {
        setUnitPosition(findOrCreateUnit(id), 100, 100);
        orderUnitMove(gUnits.at(id), 300, 300 + id);
    }
    unitTick();
    for (const int id : {5, -5, 0})
        EXPECT_EQ(300 + id, gUnits.at(id).rect.y);
}

TEST_F(UnitMovement, IdleUnitsHaveTheirImageSetToTheUnitRectangle) {
    Unit& unit = findOrCreateUnit(0);
    unit.rect = {30, 40, 15, 15};
    setPosition(unit.image, 1, 2);
    setSize(unit.image, 3, 4);
    unitTick();
    EXPECT_EQ(30, getX(unit.image));
    EXPECT_EQ(40, getY(unit.image));
    EXPECT_EQ(15, getW(unit.image));
    EXPECT_EQ(15, getH(unit.image));
}

TEST_F(UnitMovement, OnlyTheStateOneMoves) {
    for (const int state : {0, 2, 257, 65535}) {
        Unit unit = unitAt(100, 100);
        orderUnitMove(unit, 300, 300);
        unit.moveState = static_cast<uint16_t>(state);
        stepUnit(unit);
        EXPECT_EQ(100, unit.rect.x);
        EXPECT_EQ(state, unit.moveState);
        EXPECT_EQ(300, unit.targetX);
    }
}

TEST_F(UnitMovement, ImplicitUnitMovesLikeTypeZero) {
    Unit& unit = findOrCreateUnit(99);
    orderUnitMove(unit, 15, 0);
    unitTick();
    EXPECT_EQ(0, unit.rect.x);
    orderUnitMove(unit, 16, 0);
    unitTick();
    EXPECT_EQ(16, unit.rect.x);
}

static float headingTo(int x, int y, int targetX, int targetY) {
    float heading = 0.0F;
    distanceAndHeading(x, y, targetX, targetY, heading);
    return heading;
}

static int distanceTo(int x, int y, int targetX, int targetY) {
    float heading = 0.0F;
    return distanceAndHeading(x, y, targetX, targetY, heading);
}

TEST_F(UnitMovement, HeadingCountsWithTheShortPi) {
    EXPECT_NEAR(180.0913, headingTo(0, 0, 10, 0), 0.0001);
    EXPECT_NEAR(269.9544, headingTo(0, 0, 0, 10), 0.0001);
    EXPECT_NEAR(0.0, headingTo(10, 0, 0, 0), 0.0001) << "it points from the target to the unit";
    EXPECT_NEAR(90.0456, headingTo(0, 10, 0, 0), 0.0001);
    EXPECT_EQ(0.0F, headingTo(7, 7, 7, 7));
}

TEST_F(UnitMovement, HeadingOfDifferencesThatWrap) {
    EXPECT_NEAR(360 - 45.0228, headingTo(INT_MIN, INT_MAX, INT_MAX, INT_MIN), 0.0001);
    EXPECT_NEAR(135.0685, headingTo(INT_MAX, INT_MIN, INT_MIN, INT_MAX), 0.0001);
}

TEST_F(UnitMovement, DistanceIsCutToWholePixels) {
    EXPECT_EQ(11, distanceTo(100, 100, 110, 105));
    EXPECT_EQ(15, distanceTo(100, 100, 115, 100));
    EXPECT_EQ(15, distanceTo(0, 0, 11, 11));
    EXPECT_EQ(5, distanceTo(3, 4, 0, 0));
    EXPECT_EQ(0, distanceTo(-9, -9, -9, -9));
}

TEST_F(UnitMovement, OverflowOfTheSumWrapsAndNegativeCountsAsZero) {
    EXPECT_EQ(0, distanceTo(0, 0, 65536, 0)) << "65536 squared wraps to 0";
    EXPECT_EQ(0, distanceTo(0, 0, 46341, 0)) << "46341 squared wraps below 0";
    EXPECT_EQ(46340, distanceTo(0, 0, 46340, 0));
    EXPECT_EQ(362, distanceTo(0, 0, 65537, 0)) << "65537 squared wraps to 131073";
    EXPECT_EQ(1, distanceTo(INT_MIN, INT_MAX, INT_MAX, INT_MIN)) << "the differences wrap to 1";
    EXPECT_EQ(1, distanceTo(INT_MAX, INT_MIN, INT_MIN, INT_MAX));
}
