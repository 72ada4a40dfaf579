// Built-ins that wait, for the other thread or for the player.
//
// By default script code runs on two threads in one state. While a built-in waits, the other thread
// may run script code and move that state; what the waiting call goes on with is put back after it:
//
//     const ScriptState state = saveScriptState();
//     ...                                           // waits
//     restoreScriptState(state);
//
// The stacks are not saved: what the other thread calls meanwhile leaves them as it found them, and
// so does its error. A timer function that was under way before the key function that closes the
// engine does not: it ends in the middle of that one (ARCHITECTURE.md, what the default cannot do).
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
