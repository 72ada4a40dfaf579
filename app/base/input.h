// Where the main loop's time, events and key states come from, and what it last saw of them.
//
// All three are SDL's own, unless another program plays the level: it puts its functions in before
// startTicks and runs the passes of the main loop itself. Ground: includes nothing of ours.
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

// Main thread only. Written by play/level, nobody else.
extern Input gInput;

// Makes SDL's pollEvent deliver the player's quit even if SDL's queue is full when it comes. After
// SDL_Init.
void watchForQuit();

// The left and the right mouse button are held. Written by app/main_loop at every button event.
// Nothing reads gRightButtonDown: it is kept on purpose.
extern bool gLeftButtonDown;
extern bool gRightButtonDown;

// The last event that a poll delivered to the main loop, with zeros in all bytes that the event
// does not fill; all zeros before the first. Written by app/main_loop, and by images/images, which
// marks a failed load in its type. Read from wherever script code runs.
extern SDL_Event gEvent;
