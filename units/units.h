// Units: the game pieces that a player selects and sends around.
//
// Every unit is 15 by 15 pixels, on the screen and for the mouse, whatever the size of its picture.
// Units are never removed, so references to them stay valid, and a walk stays among them whatever
// is added meanwhile: each has a cursor of its own. Unlocked: script code on either thread, the
// unit tick, the frame drawing and the mouse share the registry.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "images/images.h"

// The stats of types and units are kept on purpose: they are copied, and nothing reads them.
struct UnitType {
    float statA = 100.0F;
    float statB = 0.0F;
    std::string picturePath;  // relative to the working directory
    int32_t speed = 5;        // part of the arrival tolerance, in pixels
    int32_t statC = 10;
    int32_t statD = 20;
    int32_t statE = 1;  // never copied
    int32_t statF = 0;  // never copied
};

enum UnitMoveState : uint16_t { kUnitIdle = 0, kUnitMoving = 1 };

struct Unit {
    int32_t targetX = 0;  // where the unit is ordered to, in window pixels
    int32_t targetY = 0;
    float statA = 100.0F;
    float statA2 = 100.0F;
    float statB = 0.0F;
    float statB2 = 0.0F;
    int32_t statC = 10;
    int32_t statD = 20;
    int32_t statE = 0;  // 0 again whenever a move ends
    Image image;
    SDL_Rect rect = {0, 0, 15, 15};  // the unit rectangle; its size never changes
    int32_t typeIndex = 0;           // into gUnitTypes
    uint16_t moveState = kUnitIdle;  // the unit tick acts on exactly kUnitMoving
};

extern std::vector<UnitType> gUnitTypes;  // one entry, from loadUnitTypes on

extern std::map<int32_t, Unit> gUnits;  // by id, walked in ascending order

extern int32_t gNextUnitId;  // the id of the next unit created; only grows
extern int32_t gLastUnitId;  // the id of the unit created latest; 0 before any

// Records the unit type. Loads no picture; always returns true.
bool loadUnitTypes();

// The unit under `id`; an unknown id gets an idle unit at 0, 0 without picture, never drawn, but
// there for the mouse.
Unit& findOrCreateUnit(int32_t id);

// Creates a unit at x, y and returns its id: 0, 1, 2... in order of creation. If its picture cannot
// be loaded, that is reported and the unit is there all the same. Any thread; waits for the main
// thread.
int32_t createUnit(int32_t typeIndex, int32_t x, int32_t y);

// Makes the unit one of the type: its stats, and its picture at the unit's rectangle, visible. A
// type index outside the list is clamped into it. Main thread.
void setUnitType(Unit& unit, int32_t typeIndex);

// Places the unit at once; an order under way stays.
void setUnitPosition(Unit& unit, int32_t x, int32_t y);

// Orders the unit to x, y; the next unit tick takes it up.
void orderUnitMove(Unit& unit, int32_t x, int32_t y);

inline const SDL_Rect& unitRect(const Unit& unit) {
    return unit.rect;
}

// Main thread.
void drawUnit(const Unit& unit);
void drawUnits();

// The type of the unit, its index clamped into the list.
const UnitType& unitType(int32_t typeIndex);
