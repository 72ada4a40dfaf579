// Units: ids, places and orders, and each step of the unit tick.
#include <cmath>
#include <cstdint>
#include <map>

#include "simulation/builtin_calls.h"
#include "simulation/rules.h"
#include "simulation/ticks_seen.h"
#include "simulation/wrap.h"
#include "units/selection.h"
#include "units/unit_movement.h"
#include "units/units.h"

WRAP_FUNCTION("_Z16findOrCreateUniti", Unit&, FindUnit, (int32_t));
WRAP_FUNCTION("_Z10createUnitiii", int32_t, CreateUnit, (int32_t, int32_t, int32_t));
WRAP_FUNCTION("_Z15setUnitPositionR4Unitii", void, PlaceUnit, (Unit&, int32_t, int32_t));
WRAP_FUNCTION("_Z13orderUnitMoveR4Unitii", void, OrderUnit, (Unit&, int32_t, int32_t));
WRAP_FUNCTION("_Z12stepAllUnitsjPv", uint32_t, StepAllUnits, (uint32_t, void*));

// A unit as the calls and the ticks have left it.
struct KnownUnit {
    const Unit* record = nullptr;  // it never moves
    int32_t x = 0;
    int32_t y = 0;
    int32_t targetX = 0;
    int32_t targetY = 0;
    bool isMoving = false;
    bool isCreated = false;  // by createunit, not by a look-up
};
static std::map<int32_t, KnownUnit> gKnownUnits;
static int32_t gCreated = 0;

static constexpr int32_t kTolerance = 15;  // an order no farther than this ends where it began

static void requireSame(const Unit& unit, const KnownUnit& known) {
    requireRule(&unit == known.record, "a unit never moves in memory");
    requireRule(unit.rect.x == known.x && unit.rect.y == known.y, "a unit is where it was put");
    requireRule(unit.rect.w == 15 && unit.rect.h == 15, "every unit is 15 by 15");
    requireRule(unit.moveState == (known.isMoving ? kUnitMoving : kUnitIdle),
                "a unit moves while it has an order");
    requireRule(unit.targetX == known.targetX && unit.targetY == known.targetY,
                "a unit keeps its target");
    requireRule(unit.typeIndex == 0, "there is one type");
    requireRule(unit.image.visible == known.isCreated, "a created unit is visible, no other");
    requireRule(unit.statA == 100.0F && unit.statA2 == 100.0F && unit.statB == 0.0F &&
                    unit.statC == 10 && unit.statD == 20 && unit.statE == 0,
                "the stats are those of the type");
}

static KnownUnit& knownOf(const Unit& unit) {
    for (auto& [id, known] : gKnownUnits) {
        if (known.record == &unit) return known;
    }
    reportBrokenRule("a unit is never removed from the registry");
}

// Calls ------------------------------------------------------------------------------------------

// An unknown id gets an invisible unit at 0, 0.
Unit& wrapFindUnit(int32_t id) {
    const size_t size = gUnits.size();
    Unit& unit = realFindUnit(id);
    const bool isNew = gKnownUnits.count(id) == 0;
    KnownUnit& known = gKnownUnits[id];
    if (isNew) known.record = &unit;
    requireRule(gUnits.size() == size + (isNew ? 1 : 0), "a look-up adds one unit at most");
    requireSame(unit, known);
    return unit;
}

int32_t wrapCreateUnit(int32_t typeIndex, int32_t x, int32_t y) {
    const int32_t id = realCreateUnit(typeIndex, x, y);
    requireRule(id == gCreated, "unit ids are handed out in order");
    gCreated++;
    requireRule(gUnits.count(id) == 1, "a created unit is in the registry");
    KnownUnit& known = gKnownUnits[id];
    if (known.record == nullptr) known.record = &gUnits.at(id);
    known.x = x;
    known.y = y;
    known.isCreated = true;
    requireSame(gUnits.at(id), known);
    return id;
}

void wrapPlaceUnit(Unit& unit, int32_t x, int32_t y) {
    KnownUnit& known = knownOf(unit);
    known.x = x;
    known.y = y;
    realPlaceUnit(unit, x, y);
    requireSame(unit, known);
    requireRule(unit.image.rect.x == x && unit.image.rect.y == y, "the picture goes with the unit");
}

void wrapOrderUnit(Unit& unit, int32_t x, int32_t y) {
    KnownUnit& known = knownOf(unit);
    known.targetX = x;
    known.targetY = y;
    known.isMoving = true;
    realOrderUnit(unit, x, y);
    requireSame(unit, known);
}

static void afterMoveUnit(const BuiltinCall& call, int32_t) {
    const KnownUnit& known = gKnownUnits[call.values[0]];
    requireRule(known.record != nullptr && known.x == call.values[1] && known.y == call.values[2],
                "moveunit places the unit");
}

static void afterGetUnitX(const BuiltinCall& call, int32_t result) {
    requireRule(result == gKnownUnits[call.values[0]].x, "getunitx tells the left edge");
}

static void afterGetUnitY(const BuiltinCall& call, int32_t result) {
    requireRule(result == gKnownUnits[call.values[0]].y, "getunity tells the top edge");
}

void setUnitBuiltinRules() {
    setBuiltinRule("moveunit", afterMoveUnit);
    setBuiltinRule("getunitx", afterGetUnitX);
    setBuiltinRule("getunity", afterGetUnitY);
}

// Ticks ------------------------------------------------------------------------------------------

// The sum of the squares is one of 32 bits; a negative one counts as distance 0.
static bool isFar(const KnownUnit& unit) {
    const uint32_t dx = static_cast<uint32_t>(unit.targetX) - static_cast<uint32_t>(unit.x);
    const uint32_t dy = static_cast<uint32_t>(unit.targetY) - static_cast<uint32_t>(unit.y);
    const int32_t sum = static_cast<int32_t>(dx * dx + dy * dy);
    return sum > 0 && static_cast<int32_t>(std::sqrt(static_cast<double>(sum))) > kTolerance;
}

// A far target is reached at once; the order ends in the tick that finds the unit near it.
static void expectStep(KnownUnit& unit) {
    if (!unit.isMoving) return;
    if (isFar(unit)) {
        unit.x = unit.targetX;
        unit.y = unit.targetY;
        return;
    }
    unit.targetX = unit.targetY = 0;
    unit.isMoving = false;
}

static bool isSameRect(const SDL_Rect& a, const SDL_Rect& b) {
    return a.x == b.x && a.y == b.y && a.w == b.w && a.h == b.h;
}

uint32_t wrapStepAllUnits(uint32_t interval, void* parameter) {
    noteUnitTick();
    const uint32_t result = realStepAllUnits(interval, parameter);
    requireRule(result == interval, "the tick keeps its interval");
    for (auto& [id, known] : gKnownUnits) {
        expectStep(known);
        requireSame(*known.record, known);
        requireRule(isSameRect(known.record->image.rect, known.record->rect),
                    "after a unit tick the picture is where the unit is");
    }
    return result;
}

// After a pass -----------------------------------------------------------------------------------

static size_t gTypes = 0;

void startUnitRules() {
    gTypes = gUnitTypes.size();
}

void checkUnitRules() {
    requireRule(gTypes == 1 && gUnitTypes.size() == 1, "there is one unit type");
    requireRule(gNextUnitId == gCreated, "each creation takes one unit id");
    requireRule(gLastUnitId == (gCreated > 0 ? gCreated - 1 : 0),
                "the last id is the latest taken");
    requireRule(gUnits.size() == gKnownUnits.size(), "no unit comes or goes unseen");
    for (const auto& [id, unit] : gUnits) {
        requireRule(gKnownUnits.count(id) == 1, "a unit keeps its id");
        requireSame(unit, gKnownUnits.at(id));
    }
}
