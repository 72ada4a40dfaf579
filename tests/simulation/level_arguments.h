// The arguments that random levels pass to built-ins, as script text.
#pragma once

#include <string>

#include "simulation/random.h"

// The functions f0, f1... that every level has, for timers and keys.
constexpr int32_t kLevelFunctions = 8;

// Timers that main starts first and nothing ever deletes: their ids are 0 up to here. Only they are
// resumed freely, for resuming an unknown timer ends the game.
constexpr int32_t kLastingTimers = 4;

std::string writeNumber(Random& random);        // small, negative or huge
std::string writeValue(Random& random);         // an integer expression
std::string writePlace(Random& random);         // an x or y, mostly in the window
std::string writeId(Random& random);            // a constant: few different ones, for unknown ids
                                                // create records
std::string writeLastId(Random& random);        // what the registries made latest, or near it
std::string writeDeletedTimer(Random& random);  // any id but those of the lasting timers
std::string writeInterval(Random& random);      // of a timer; never a short one
std::string writeKeyCode(Random& random);  // mostly one of the few keys that the player presses
std::string writeText(Random& random);     // a string or a bare word
std::string writePicture(Random& random);  // a good one, a missing one or a broken one
std::string writeFunctionName(Random& random);  // quoted; always one that exists

// The keys that levels bind and players press. Those from 256 on share lists with others.
extern const int32_t kUsualKeys[10];
