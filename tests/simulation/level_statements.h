// The statements of random levels that call built-ins.
#pragma once

#include <cstdint>
#include <string>

#include "simulation/random.h"

// The random source and the script of the level that is being written.
extern Random gLevelDice;
extern std::string gLevelScript;

bool chance(int32_t ofThousand);
void addLine(const std::string& text);

std::string anyPlace();   // two arguments: x and y
std::string boundName();  // of a function, for a key

// Adds a statement of one of the subsystems, the console and the script errors among them.
void writeCallStatement();
void writeConsoleStatement();
