// Selecting units with the mouse and sending them.
//
// The left button draws the selection box, in names the selection frame (images/images.h): its
// release selects the units that lie wholly inside, or, if it was dragged up or left or not at all,
// the unit under the pointer. The release of the right button orders the selected units to the
// pointer. The handlers take the pointer from the mouse event in gEvent, in window pixels. Main
// thread.
#pragma once

#include <vector>

#include "units/units.h"

extern std::vector<Unit*> gSelectedUnits;  // in order of ids, each once; they point into gUnits

// The unit under the pointer, or null. Kept on purpose: nothing reads it.
extern Unit* gHoveredUnit;

// Both hit tests count the edges in: a unit of 15 by 15 pixels answers to 16 by 16.
bool pointInRect(int32_t px, int32_t py, const SDL_Rect& rect);
bool rectInsideRect(const SDL_Rect& a, const SDL_Rect& b);

// Left button pressed: shows the box at the pointer, 0 by 0.
void startSelectionFrame();

// Pointer moved: stretches the box to the pointer, sizes below zero too, while the left button is
// held; else notes the unit under the pointer.
void onPointerMotion();

// Left button released: selects the units inside the box and prints "\nSelected=" and their number.
// Returns false, having done nothing, if the box is under one pixel wide or high or if there is no
// unit at all.
bool selectUnitsInFrame();

// What follows if that returned false: empties the selection, then selects the unit with the lowest
// id under the pointer, if there is one, and prints "\nChoosen=1".
void pickUnitAtPoint();

// Right button released: orders the selected units to the pointer.
void commandSelectedUnits();
