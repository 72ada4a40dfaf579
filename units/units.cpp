#include "units/units.h"

#include <algorithm>

#include "app/base/main_thread.h"
#include "app/base/paths.h"
#include "images/textures.h"

std::vector<UnitType> gUnitTypes;
std::map<int32_t, Unit> gUnits;
int32_t gNextUnitId = 0;
int32_t gLastUnitId = 0;

bool loadUnitTypes() {
    UnitType type;
    type.picturePath = gLevelDir + kUnitPicture;
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

struct UnitCreation {
    int32_t typeIndex;
    int32_t x;
    int32_t y;
    int32_t id;
};

static void runCreation(void* data) {
    UnitCreation* creation = static_cast<UnitCreation*>(data);
    creation->id = gNextUnitId;
    gLastUnitId = creation->id;
    gNextUnitId = creation->id + 1;
    Unit& unit = findOrCreateUnit(creation->id);
    setUnitType(unit, creation->typeIndex);
    setUnitPosition(unit, creation->x, creation->y);
}

// The unit is created as a whole on the main thread, whose walks then meet it complete or not at
// all.
int32_t createUnit(int32_t typeIndex, int32_t x, int32_t y) {
    UnitCreation creation = {typeIndex, x, y, 0};
    callOnMainThread(runCreation, &creation);
    return creation.id;
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
    for (const auto& [id, unit] : gUnits)
        drawUnit(unit);
}
