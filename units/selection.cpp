#include "units/selection.h"

#include <cstdio>

#include "app/base/input.h"

std::vector<Unit*> gSelectedUnits;
Unit* gHoveredUnit = nullptr;

// The far edge of a rectangle, in 64 bits: scripts can place rectangles at the end of the numbers.
static int64_t right(const SDL_Rect& rect) {
    return int64_t{rect.x} + rect.w;
}

static int64_t bottom(const SDL_Rect& rect) {
    return int64_t{rect.y} + rect.h;
}

bool pointInRect(int32_t px, int32_t py, const SDL_Rect& rect) {
    return rect.x <= px && px <= right(rect) && rect.y <= py && py <= bottom(rect);
}

bool rectInsideRect(const SDL_Rect& a, const SDL_Rect& b) {
    return b.x <= a.x && a.x <= right(b) && b.y <= a.y && a.y <= bottom(b) && b.x <= right(a) &&
           right(a) <= right(b) && b.y <= bottom(a) && bottom(a) <= bottom(b);
}

void startSelectionFrame() {
    setPosition(selectionFrame(), gEvent.button.x, gEvent.button.y);
    setSize(selectionFrame(), 0, 0);
    setVisible(selectionFrame(), true);
}

// The unit with the lowest id whose rectangle contains the point, or null.
static Unit* findUnitAt(int32_t x, int32_t y) {
    for (auto& [id, unit] : gUnits) {
        if (pointInRect(x, y, unitRect(unit))) return &unit;
    }
    return nullptr;
}

void onPointerMotion() {
    const int32_t x = gEvent.motion.x;
    const int32_t y = gEvent.motion.y;
    if (gLeftButtonDown) {
        setSize(selectionFrame(), x - getX(selectionFrame()), y - getY(selectionFrame()));
        setVisible(selectionFrame(), true);
    } else {
        gHoveredUnit = findUnitAt(x, y);
    }
}

bool selectUnitsInFrame() {
    const SDL_Rect box = getRect(selectionFrame());
    if (box.w < 1 || box.h < 1 || gUnits.empty()) return false;

    gSelectedUnits.clear();
    for (auto& [id, unit] : gUnits) {
        if (rectInsideRect(unitRect(unit), box)) gSelectedUnits.push_back(&unit);
    }
    std::printf("\nSelected=%zu", gSelectedUnits.size());
    return true;
}

void pickUnitAtPoint() {
    gSelectedUnits.clear();
    gHoveredUnit = findUnitAt(gEvent.button.x, gEvent.button.y);
    if (gHoveredUnit == nullptr) return;
    gSelectedUnits.push_back(gHoveredUnit);
    std::printf("\nChoosen=%zu", gSelectedUnits.size());
}

void commandSelectedUnits() {
    for (Unit* unit : gSelectedUnits)
        orderUnitMove(*unit, gEvent.button.x, gEvent.button.y);
}
