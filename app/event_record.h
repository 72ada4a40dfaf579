// The copy of an event that scripts can look into (getmousex, getmousey).
#pragma once

#include <SDL.h>

// Returns `event` with zeros in every byte that an event of its type does not fill. SDL queues
// whole unions whose unused bytes are whatever its stack held.
SDL_Event filledPart(const SDL_Event& event);
