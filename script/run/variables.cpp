#include "script/run/variables.h"

ScriptVariable gGlobalVars[kMaxGlobals];
int32_t gGlobalCount = 0;

ScriptVariable gLocalStack[kMaxLocals];

int32_t gCallStack[1 + kMaxCalls];

uint64_t gCallNumbers[1 + kMaxCalls] = {1};
__thread uint64_t gLastCallNumber = 0;

// Threads start 2^48 apart, so their numbers never meet in practice. The main thread is the first,
// before there is another.
void startCallNumbers() {
    static uint64_t threads = 0;
    threads++;
    gLastCallNumber = threads << 48;
}

void declareGlobalVariable(const ScriptVariable& variable, const Place* position) {
    if (gGlobalCount >= kMaxGlobals) syntaxError(ScriptError::TooManyGlobals, position);
    ScriptVariable& slot = gGlobalVars[gGlobalCount];
    slot = variable;
    gGlobalCount++;
    if (variable.name->global == nullptr) variable.name->global = &slot;
}

static ScriptVariable* searchCallFrame(const Symbol* name, int32_t base) {
    for (int32_t i = gLocalTop - 1; i >= base; i--) {
        if (gLocalStack[i].name == name) return &gLocalStack[i];
    }
    return nullptr;
}

ScriptVariable* searchVariable(Symbol* name) {
    const int32_t depth = gCallDepth;  // once: the frame and the call that is kept agree
    ScriptVariable* local = searchCallFrame(name, gCallStack[depth]);
    ScriptVariable* variable = local != nullptr ? local : name->global;
    if (variable != nullptr) keepVariable(name, variable, gCallNumbers[depth]);
    return variable;
}
