#include "units/units.h"

#include <algorithm>

#include "app/globals.h"

std::vector<UnitType> gUnitTypes;
std::map<int32_t, Unit> gUnits;
std::map<int32_t, Unit>::iterator gUnitCursor;
int32_t gNextUnitId = 0;
int32_t gLastUnitId = 0;

bool loadUnitTypes() {
    UnitType type;
    type.picturePath = gLevelDir + "img/peon.bmp";
    gUnitTypes.push_back(type);
    return true;
}

static int32_t clampTypeIndex(int32_t typeIndex) {
    return std::clamp(typeIndex, 0, static_cast<int32_t>(gUnitTypes.size()) - 1);
}

const UnitType& unitType(int32_t typeIndex) {
    return gUnitTypes[static_cast<size_t>(clampTypeIndex(typeIndex))];
}

Unit& findOrCreateUnit(int32_t id) {
    return gUnits[id];
}

int32_t createUnit(int32_t typeIndex, int32_t x, int32_t y) {
    const int32_t id = gNextUnitId;
    gLastUnitId = id;
    gNextUnitId = id + 1;
    Unit& unit = findOrCreateUnit(id);
    setUnitType(unit, typeIndex);
    setUnitPosition(unit, x, y);
    return id;
}

void setUnitType(Unit& unit, int32_t typeIndex) {
    const UnitType& type = unitType(typeIndex);
    unit.typeIndex = clampTypeIndex(typeIndex);
    setPath(unit.image, type.picturePath);
    setTexture(unit.image, loadTexture(type.picturePath));
    unit.statC = type.statC;
    unit.statD = type.statD;
    unit.statA = unit.statA2 = type.statA;
    unit.statB = unit.statB2 = type.statB;
    unit.image.rect = unit.rect;
    setVisible(unit.image, true);
}

void setUnitPosition(Unit& unit, int32_t x, int32_t y) {
    unit.rect.x = x;
    unit.rect.y = y;
    setPosition(unit.image, x, y);
}

void orderUnitMove(Unit& unit, int32_t x, int32_t y) {
    unit.targetX = x;
    unit.targetY = y;
    unit.moveState = kUnitMoving;
}

void drawUnit(const Unit& unit) {
    draw(unit.image);
}

void drawUnits() {
    gUnitCursor = gUnits.begin();
    while (!gUnits.empty() && gUnitCursor != gUnits.end()) {
        drawUnit(gUnitCursor->second);
        ++gUnitCursor;
    }
}
