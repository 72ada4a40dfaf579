// The built-ins of units. An id that no createunit has returned gets an invisible unit at 0, 0.
#pragma once

#include <cstdint>

// createunit(type, x, y): puts a unit on the screen and returns its id. There is one type, 0.
int32_t builtinCreateUnit();

// moveunit(id, x, y): places the unit at x, y at once. Returns 0.
int32_t builtinMoveUnit();

// getunitx(id), getunity(id): the unit's left and top edge.
int32_t builtinGetUnitX();
int32_t builtinGetUnitY();

// getlastcreatedunit(): the id of the unit created latest.
int32_t builtinGetLastCreatedUnit();
