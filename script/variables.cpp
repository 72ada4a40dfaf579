#include "script/variables.h"

ScriptVariable gGlobalVars[kMaxGlobals];
int32_t gGlobalCount = 0;

ScriptVariable gLocalStack[kMaxLocals];
int32_t gLocalTop = 0;

int32_t gCallStack[1 + kMaxCalls];
int32_t gCallDepth = 0;

void declareGlobalVariable(const ScriptVariable& variable) {
    if (gGlobalCount >= kMaxGlobals) syntaxError(ScriptError::TooManyGlobals);
    ScriptVariable& slot = gGlobalVars[gGlobalCount];
    slot = variable;
    gGlobalCount++;
    if (variable.name->global == nullptr) variable.name->global = &slot;
}
