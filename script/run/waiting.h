// Built-ins that wait, for the other thread or for the player.
//
// By default script code runs on two threads in one state. While a built-in waits, the other thread
// may run script code and move that state; what the waiting call goes on with is put back after it:
//
//     const ScriptState state = saveScriptState();
//     ...                                           // waits
//     restoreScriptState(state);
//
// The tops of the stacks are not in it: what the other thread calls meanwhile leaves them as it
// found them, and so does its error. exitgame puts them back itself: the timer function that it
// waits for was under way before, and ends in the middle of the function that closes the engine.
#pragma once

#include <cstdint>

struct Place;

struct ScriptState {
    Place* position;      // gProgramPos
    Place* token;         // gToken
    int32_t returnValue;  // gReturnValue
};

ScriptState saveScriptState();
void restoreScriptState(const ScriptState& state);
