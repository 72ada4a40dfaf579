#include "units/unit_movement.h"

#include <cmath>

// Added to the type's speed: a unit ordered no farther than this stays where it is.
static constexpr int32_t kArrivalMargin = 10;

// a - b in 32 bits, wrapping.
static uint32_t difference(int32_t a, int32_t b) {
    return static_cast<uint32_t>(a) - static_cast<uint32_t>(b);
}

int32_t distanceAndHeading(int32_t x, int32_t y, int32_t targetX, int32_t targetY, float& heading) {
    constexpr double kPi = 3.14;  // not a better one: headings have always been counted with it
    constexpr double kHalfTurn = 180.0;
    constexpr float kFullTurn = 360.0F;

    const uint32_t dx = difference(targetX, x);
    const uint32_t dy = difference(targetY, y);
    const int32_t sum = static_cast<int32_t>(dx * dx + dy * dy);

    const double back = std::atan2(static_cast<int32_t>(difference(y, targetY)),
                                   static_cast<int32_t>(difference(x, targetX)));
    heading = static_cast<float>(back / kPi * kHalfTurn);
    if (heading < 0.0F) heading += kFullTurn;
    return sum > 0 ? static_cast<int32_t>(std::sqrt(static_cast<double>(sum))) : 0;
}

static void moveUnit(Unit& unit) {
    float heading = 0.0F;
    const int32_t distance =
        distanceAndHeading(unit.rect.x, unit.rect.y, unit.targetX, unit.targetY, heading);
    if (distance > unitType(unit.typeIndex).speed + kArrivalMargin) {
        unit.rect.x = unit.targetX;
        unit.rect.y = unit.targetY;
        return;
    }
    unit.targetX = 0;
    unit.targetY = 0;
    unit.statE = 0;
    unit.moveState = kUnitIdle;
}

void stepUnit(Unit& unit) {
    if (unit.moveState == kUnitMoving) moveUnit(unit);
    unit.image.rect = unit.rect;
}

uint32_t stepAllUnits(uint32_t interval, void*) {
    for (auto& [id, unit] : gUnits)
        stepUnit(unit);
    return interval;
}
