#include "script/variables.h"

#include <cstdio>

#include "script/errors.h"
#include "script/halt.h"
#include "script/tokens.h"

ScriptVariable gGlobalVars[kMaxGlobals];
int32_t gGlobalCount = 0;

ScriptVariable gLocalStack[kMaxLocals];
int32_t gLocalTop = 0;

int32_t gCallStack[kMaxCalls];
int32_t gCallDepth = 0;

// The tops are copied before they are tested and used: in between, the other thread may move them,
// and no index may leave its array even then.

Name* declaredName() {
    if (gToken->length >= kNameCapacity) {
        std::printf("Name is too long: %s\n", gToken->text);
        abortProcess();
    }
    return tokenName();
}

void declareGlobalVariable(const ScriptVariable& variable) {
    const int32_t count = gGlobalCount;
    if (count >= kMaxGlobals) syntaxError(ScriptError::TooManyGlobals);
    gGlobalVars[count] = variable;
    gGlobalCount = count + 1;
    if (variable.name->global == nullptr) variable.name->global = &gGlobalVars[count];
}

void pushLocal(const ScriptVariable& variable) {
    const int32_t top = gLocalTop;
    if (top >= kMaxLocals) syntaxError(ScriptError::TooManyLocals);
    gLocalStack[top] = variable;
    gLocalTop = top + 1;
}

void pushCall(int32_t base) {
    const int32_t depth = gCallDepth;
    if (depth >= kMaxCalls) syntaxError(ScriptError::TooManyCalls);
    gCallStack[depth] = base;
    gCallDepth = depth + 1;
}

int32_t popCall() {
    const int32_t depth = gCallDepth - 1;
    if (depth < 0) syntaxError(ScriptError::ReturnOutsideFunction);
    gCallDepth = depth;
    return gCallStack[depth];
}

static ScriptVariable& requireVariable(Name* name) {
    ScriptVariable* variable = lookUpVariable(name);
    if (variable == nullptr) syntaxError(ScriptError::NoSuchVariable);
    return *variable;
}

int32_t findVar(Name* name) {
    return requireVariable(name).value;
}

bool isVar(Name* name) {
    return lookUpVariable(name) != nullptr;
}

void assignVar(Name* name, int32_t value) {
    requireVariable(name).value = value;
}
