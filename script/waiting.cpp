#include "script/waiting.h"

#include "script/arguments.h"
#include "script/functions.h"

ScriptState saveScriptState() {
    return {gProgramPos, gToken, gReturnValue};
}

void restoreScriptState(const ScriptState& state) {
    gProgramPos = state.position;
    gToken = state.token;
    gReturnValue = state.returnValue;
}
