// The event loop: drains SDL's event queue, lets the due ticks run, draws a frame; for ever.
// Main thread only.
#pragma once

#include <SDL.h>

// SDL's array of key states, one byte for each scancode; owned by SDL. Read again at every keyboard
// event.
extern const Uint8* gKeyboardState;

void refreshKeyboardState();

// Runs until a pass has seen a quit event; that pass is finished, its frame included. Standard
// output is flushed once per pass.
void runMainLoop();

// Dispatches everything in the event queue. Returns true if there was a quit event among it: the
// events behind that one are dispatched all the same.
bool drainEvents();

// Fires the bindings of every key held now, in ascending order of scancodes 0 to 299; keys beyond
// never fire. Called for every key event, so a held key fires again when another one moves. Script
// errors jump: called inside runGuarded.
void fireHeldKeys();
