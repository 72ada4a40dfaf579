// The random player, and the clock: what gInput gives the engine in place of SDL's.
#pragma once

#include <cstdint>

// Puts the player of the seed in SDL's place. Before the engine reads gInput.
void startPlayer(uint64_t seed);

// Lets some time pass, and decides what the player does in the pass to come.
void beginPlayersPass();

// The player closes the window in the next pass.
void closeByPlayer();

// Milliseconds on the player's clock since it was started.
uint64_t playedMs();

// Events of this pass that the engine has not asked for.
bool eventsAreLeft();

// A quit event, a left or a right button event has been delivered, as the last of its kind.
bool quitWasDelivered();
bool leftIsDown();
bool rightIsDown();

// Keys held now among the scancodes that fire.
int32_t heldKeys();
bool isHeld(int32_t key);
