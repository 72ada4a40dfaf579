// Writes random levels.
//
// A level uses all built-ins, with sensible and senseless arguments, from functions that timers and
// keys call. It may do anything but hang: loops end, and whatever it makes without end is counted
// and bounded, or swept away from time to time. Script errors, deep calls, a shut-down of the
// engine and the ways in which a script ends the process happen in some levels.
#pragma once

#include <cstdint>
#include <string>

// The script of the seed: CR LF lines, below the size at which scripts are cut.
std::string writeLevel(uint64_t seed);
