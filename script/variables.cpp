#include "script/variables.h"

#include <cstdio>
#include <cstring>

#include "script/errors.h"
#include "script/halt.h"

ScriptVariable gGlobalVars[kMaxGlobals];
int32_t gGlobalCount = 0;

ScriptVariable gLocalStack[kMaxLocals];
int32_t gLocalTop = 0;

int32_t gCallStack[kMaxCalls];
int32_t gCallDepth = 0;

// The tops are copied before they are tested and used: in between, the other thread may move them,
// and no index may leave its array even then.

void copyName(char (&target)[kNameCapacity], const char* name) {
    if (std::strlen(name) >= kNameCapacity) {
        std::printf("Name is too long: %s\n", name);
        abortProcess();
    }
    std::strcpy(target, name);
}

void declareGlobalVariable(const ScriptVariable& variable) {
    const int32_t count = gGlobalCount;
    if (count >= kMaxGlobals) syntaxError(ScriptError::TooManyGlobals);
    gGlobalVars[count] = variable;
    gGlobalCount = count + 1;
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

int32_t currentFrameBase() {
    const int32_t depth = gCallDepth;
    return depth > 0 ? gCallStack[depth - 1] : 0;
}

// Returns null for an unknown name.
static ScriptVariable* lookUpVariable(const char* name) {
    const int32_t base = currentFrameBase();
    for (int32_t i = gLocalTop - 1; i >= base; i--) {
        if (std::strcmp(gLocalStack[i].name, name) == 0) return &gLocalStack[i];
    }
    for (ScriptVariable& global : gGlobalVars) {
        if (std::strcmp(global.name, name) == 0) return &global;
    }
    return nullptr;
}

static ScriptVariable& requireVariable(const char* name) {
    ScriptVariable* variable = lookUpVariable(name);
    if (variable == nullptr) syntaxError(ScriptError::NoSuchVariable);
    return *variable;
}

int32_t findVar(const char* name) {
    return requireVariable(name).value;
}

bool isVar(const char* name) {
    return lookUpVariable(name) != nullptr;
}

void assignVar(const char* name, int32_t value) {
    requireVariable(name).value = value;
}
