// The variables of the script: globals, the stack of locals, and the stack of active calls.
//
// All values are signed 32-bit integers, `char` variables too. The stacks are fixed; what does not
// fit is a script error. Unlocked: shared by the main thread and the timer thread: the tops are
// copied before they are tested and used, so that no index leaves its array if the other thread
// moves them in between.
//
// What runs for every operand or call is inline here.
#pragma once

#include <cstdint>

#include "script/errors/errors.h"
#include "script/errors/recovery.h"
#include "script/source/symbols.h"

constexpr int32_t kMaxGlobals = 100;
constexpr int32_t kMaxLocals = 201;  // of all active calls together, arguments included
constexpr int32_t kMaxCalls = 101;   // active at one time, the run of main included

// What ScriptVariable::type holds besides the keyword codes of `char` and `int`.
constexpr int32_t kArgumentType = 0;
constexpr int32_t kParameterType = 3;

struct ScriptVariable {
    Symbol* name = nullptr;        // null for an argument that no parameter names
    int32_t type = kArgumentType;  // how it was declared: kept on purpose, nothing reads it
    int32_t value = 0;
};

extern ScriptVariable gGlobalVars[kMaxGlobals];  // in declaration order; filled by the pre-scan

// Used entries of gGlobalVars. script/run/program sets it to 0 before a load.
extern int32_t gGlobalCount;

// Locals and arguments of all active calls; gLocalTop entries are used.
extern ScriptVariable gLocalStack[kMaxLocals];

// For each active call, gLocalTop at its start: the base of its call frame. Index 0: outside any
// call, where it is 0.
extern int32_t gCallStack[1 + kMaxCalls];

// The numbers of the active calls; index 0: outside any call. No two calls have the same. A
// symbol's cached variable is valid only while its call number matches, so no call frame is
// searched twice for it.
extern uint64_t gCallNumbers[1 + kMaxCalls];

// The number of the call that this thread entered last; 0 before the first. Each thread counts from
// a start of its own.
[[gnu::tls_model("local-exec")]] extern __thread uint64_t gLastCallNumber;
void startCallNumbers();  // gives this thread its start
inline uint64_t nextCallNumber() {
    if (gLastCallNumber == 0) startCallNumbers();
    return ++gLastCallNumber;
}

// Caches the variable that the symbol names in the call with this number. The cache is never null
// again, so two reads of it cannot differ in that while the other thread caches another one.
inline void keepVariable(Symbol* name, ScriptVariable* variable, uint64_t call) {
    name->variable = variable;
    name->call = call;
}

// lookUpVariable by a search of the call frame and the globals; keeps what it finds.
ScriptVariable* searchVariable(Symbol* name);

// Raises TooManyGlobals, at `position`, when gGlobalVars is full.
void declareGlobalVariable(const ScriptVariable& variable, const Place* position);

// Pushes an argument of the call to come, and returns it. Raises TooManyLocals, at `position`, when
// the stack is full.
inline ScriptVariable* pushArgument(int32_t value, const Place* position) {
    const int32_t top = gLocalTop;
    if (top >= kMaxLocals) syntaxError(ScriptError::TooManyLocals, position);
    gLocalStack[top] = {nullptr, kArgumentType, value};
    gLocalTop = top + 1;
    return &gLocalStack[top];
}

// Pushes a local of the current call, with the value 0. Raises TooManyLocals.
inline void pushLocal(Symbol* name, int32_t type, const Place* position) {
    ScriptVariable* local = pushArgument(0, position);
    local->name = name;
    local->type = type;
    keepVariable(name, local, gCallNumbers[gCallDepth]);
}

// Names an argument of the current call by the next of its parameters. Of two parameters with the
// same name the first one counts: the other's argument stays unnamed.
inline void nameArgument(ScriptVariable* argument, Symbol* name) {
    const uint64_t call = gCallNumbers[gCallDepth];
    argument->type = kParameterType;
    if (name->call == call) return;
    argument->name = name;
    keepVariable(name, argument, call);
}

// Enters a call, with its call frame at gLocalStack[base]. Raises TooManyCalls.
inline void pushCall(int32_t base, const Place* position) {
    const int32_t depth = gCallDepth + 1;
    if (depth > kMaxCalls) syntaxError(ScriptError::TooManyCalls, position);
    gCallStack[depth] = base;
    gCallNumbers[depth] = nextCallNumber();
    gCallDepth = depth;
}

// Leaves the current call and returns its base. Raises ReturnOutsideFunction if there is none.
inline int32_t popCall(const Place* position) {
    const int32_t depth = gCallDepth;
    if (depth <= 0) syntaxError(ScriptError::ReturnOutsideFunction, position);
    gCallDepth = depth - 1;
    return gCallStack[depth];
}

// True if the current call has looked the symbol up. symbol->variable is that.
inline bool isKnown(const Symbol* symbol) {
    return symbol->call == gCallNumbers[gCallDepth] && symbol->variable != nullptr;
}

// The look-up of a symbol: the current call's locals from the newest to the oldest, then the
// globals; the first match counts. A callee cannot see the locals of its caller. Null if there is
// none.
inline ScriptVariable* lookUpVariable(Symbol* symbol) {
    return isKnown(symbol) ? symbol->variable : searchVariable(symbol);
}
