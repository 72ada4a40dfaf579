// The hands of the play: keys, pointer and buttons as the engine sees them.
//
// What the hands do waits in a queue, and the engine's next pass reads it as its events. Nothing
// else gets in: the engine sees key, mouse and quit events of the play and no event of SDL's own.
// Events look like real ones, with the usual American layout, whatever the keyboard of the machine.
#pragma once

#include <SDL.h>

// For gInput. The next event of the play; taking the event of a key changes the key's state, so a
// key that goes down and up in one pass still counts as held while its first event is dispatched.
int takeEvent(SDL_Event* event);
const Uint8* heldKeys();

// Presses a key; one that is down already repeats.
void pressKey(SDL_Scancode key);

// Lets a key go. Returns false, doing nothing, if it is not down.
bool releaseKey(SDL_Scancode key);

// Moves the pointer, in window pixels; it may leave the window. bringPointer does nothing if it is
// there already.
void movePointer(int x, int y);
void bringPointer(int x, int y);

// Presses and releases a button where the pointer is: SDL_BUTTON_LEFT and so on. releaseButton
// returns false, doing nothing, if the button is not down.
void pressButton(Uint8 button);
bool releaseButton(Uint8 button);

// The close button of the window.
void pressClose();
