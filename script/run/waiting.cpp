#include "script/run/waiting.h"

#include "script/host/arguments.h"
#include "script/run/functions.h"

ScriptState saveScriptState() {
    return {gProgramPos, gToken, gReturnValue};
}

void restoreScriptState(const ScriptState& state) {
    gProgramPos = state.position;
    gToken = state.token;
    gReturnValue = state.returnValue;
}
