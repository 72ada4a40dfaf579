// The selection: a second opinion on which units a click or a drag selects.
#include <SDL.h>

#include <algorithm>
#include <vector>

#include "images/images.h"
#include "simulation/rules.h"
#include "units/selection.h"

// The selection box and the selection as the events make them.
static SDL_Rect gFrame = {0, 0, 0, 0};
static bool gIsDrawing = false;
static std::vector<const Unit*> gSelection;

void startSelectionRules() {
    gFrame = selectionFrame().rect;
}

static bool isBetween(int64_t low, int64_t value, int64_t high) {
    return low <= value && value <= high;
}

// Edges count in, for the point and for the frame.
static bool holdsPoint(const SDL_Rect& rect, int32_t x, int32_t y) {
    return isBetween(rect.x, x, int64_t{rect.x} + rect.w) &&
           isBetween(rect.y, y, int64_t{rect.y} + rect.h);
}

static bool frameHolds(const SDL_Rect& rect) {
    const int64_t right = int64_t{gFrame.x} + gFrame.w, bottom = int64_t{gFrame.y} + gFrame.h;
    return isBetween(gFrame.x, rect.x, right) && isBetween(gFrame.y, rect.y, bottom) &&
           isBetween(gFrame.x, int64_t{rect.x} + rect.w, right) &&
           isBetween(gFrame.y, int64_t{rect.y} + rect.h, bottom);
}

static void selectFramed() {
    gSelection.clear();
    for (const auto& [id, unit] : gUnits)
        if (frameHolds(unit.rect)) gSelection.push_back(&unit);
}

static void selectUnder(int32_t x, int32_t y) {
    gSelection.clear();
    for (const auto& [id, unit] : gUnits) {
        if (gSelection.empty() && holdsPoint(unit.rect, x, y)) gSelection.push_back(&unit);
    }
}

static void release(const SDL_MouseButtonEvent& button) {
    gIsDrawing = false;
    if (gFrame.w > 0 && gFrame.h > 0 && !gUnits.empty()) {
        selectFramed();
    } else {
        selectUnder(button.x, button.y);
    }
}

static void checkOrders(const SDL_MouseButtonEvent& button) {
    for (const Unit* unit : gSelection) {
        requireRule(unit->moveState == kUnitMoving && unit->targetX == button.x &&
                        unit->targetY == button.y,
                    "a right click sends the selected units");
    }
}

void followSelection(const SDL_Event& event) {
    const bool isLeft = event.button.button == SDL_BUTTON_LEFT;
    const bool isRight = event.button.button == SDL_BUTTON_RIGHT;
    if (event.type == SDL_MOUSEBUTTONDOWN && isLeft) {
        gFrame = {event.button.x, event.button.y, 0, 0};
        gIsDrawing = true;
    } else if (event.type == SDL_MOUSEMOTION && gIsDrawing) {
        gFrame.w = event.motion.x - gFrame.x;
        gFrame.h = event.motion.y - gFrame.y;
    } else if (event.type == SDL_MOUSEBUTTONUP && isLeft) {
        release(event.button);
    } else if (event.type == SDL_MOUSEBUTTONUP && isRight) {
        checkOrders(event.button);
    }
    checkSelectionRules();
}

void checkSelectionRules() {
    const SDL_Rect& rect = selectionFrame().rect;
    requireRule(
        rect.x == gFrame.x && rect.y == gFrame.y && rect.w == gFrame.w && rect.h == gFrame.h,
        "the frame spans from the press to the pointer");
    requireRule(std::equal(gSelectedUnits.begin(), gSelectedUnits.end(), gSelection.begin(),
                           gSelection.end()),
                "the selection is what the frame or the pointer took, each unit once");
    const auto isHovered = [](const auto& entry) { return &entry.second == gHoveredUnit; };
    requireRule(gHoveredUnit == nullptr || std::any_of(gUnits.begin(), gUnits.end(), isHovered),
                "the hovered unit is in the registry");
}
