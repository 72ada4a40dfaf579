// The event loop: drains the event queue, runs the due ticks, draws a frame, and again.
//
// Time, events and key states come from gInput (app/base/input.h). Main thread only.
#pragma once

#include <SDL.h>

// The key states, one byte for each scancode; owned by their source. Read again at every keyboard
// event.
extern const Uint8* gKeyboardState;

void refreshKeyboardState();

// Runs passes until one has seen a quit event.
void runMainLoop();

// The parts of a pass, in their order.
struct Pass {
    bool (*readEvents)();  // true if there was a quit event
    void (*runTicks)();
    void (*draw)();
};

// The engine's own, unless another program plays the level: play/level draws fewer of the frames,
// and play/costs measures. Main thread only.
extern Pass gPass;

// One pass: the events, the ticks, the frame; then standard output is flushed. Returns true if
// there was a quit event; the pass is finished all the same.
bool runPass();

// Dispatches everything in the event queue. Returns true if there was a quit event among it: the
// events after it are dispatched all the same.
bool drainEvents();

// Fires the bindings of every key held now, in ascending order of scancodes 0 to 299; keys beyond
// never fire. Called for every key event, so a held key fires again when another one moves. Script
// errors jump: called inside runGuarded.
void fireHeldKeys();
