// How much of the engine's room a script uses: the gauge that a maker watches as a game grows.
#pragma once

#include <string>

// "room: 3120 of 9999 bytes, 14 of 100 functions, 23 of 100 globals, calls 4 deep", without a line
// end; `bytes` are those of the script's file. Programs read this line: its words stay.
//
// The calls are the longest chain that the words of the script allow: each of them may be active at
// once, the first being main or a call-back. That part is missing where a function may call itself,
// by whatever detour: nobody knows how deep that goes.
std::string roomLine(const std::string& bytes);
