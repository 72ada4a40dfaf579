// Built-ins that wait, for the other thread or for the player.
//
// By default script code runs on two threads in one state. While a built-in waits, the other thread
// may run script code and move that state; what the waiting call goes on with is put back after it:
//
//     const ScriptState state = saveScriptState();
//     ...                                           // waits
//     restoreScriptState(state);
//
// The stacks need not be saved: every call leaves them as it found them.
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
