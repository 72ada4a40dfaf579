// The unit tick: carries out the orders of the units.
//
// There is no walk: a unit that is farther from its target than the tolerance is there after
// one tick, and the tick after that clears the order. A nearer target clears the order at once.
#pragma once

#include <cstdint>

#include "units/units.h"

// Steps every unit in order of ids. Returns `interval` unchanged, as SDL_TimerCallback wants. Every
// 10 ms, on SDL's timer thread, or on the main thread with ZEL_TICKS=main.
uint32_t stepAllUnits(uint32_t interval, void* parameter);

// One step of one unit. In every case its image is put at the unit's rectangle.
void stepUnit(Unit& unit);

// The distance from x, y to the target in whole pixels, cut, and the heading from the target to
// x, y in degrees, about [0, 360), counted with 3.14 for pi. The sum of the squares is of 32 bits
// and wraps; a negative one counts as distance 0. The heading is kept on purpose: no move uses it.
int32_t distanceAndHeading(int32_t x, int32_t y, int32_t targetX, int32_t targetY, float& heading);
