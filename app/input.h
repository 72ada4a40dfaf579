// Where the main loop's time, events and key states come from.
//
// All three are SDL's own, unless another program plays the level: it puts its functions in before
// startTicks and runs the passes of the main loop itself. Ground floor: includes nothing of ours.
#pragma once

#include <SDL.h>

#include <cstdint>

struct Input {
    // Milliseconds since some fixed moment; never goes back.
    uint64_t (*nowMs)();

    // Takes the next event, as SDL_PollEvent does. Returns 0, changing nothing that counts, if
    // there is none.
    int (*pollEvent)(SDL_Event* event);

    // The key states now, one byte for each of SDL_NUM_SCANCODES scancodes. Owned by the source and
    // valid as long as the process.
    const Uint8* (*keyStates)();
};

// Main thread only.
extern Input gInput;

// Makes SDL's pollEvent deliver the player's quit even if SDL's queue is full when it comes. After
// SDL_Init.
void watchForQuit();
