#include "simulation/builtin_calls.h"

#include <utility>

#include "script/errors/nesting.h"
#include "script/host/arguments.h"
#include "script/host/builtin_list.h"
#include "script/host/builtins.h"
#include "script/source/symbols.h"
#include "simulation/rules.h"
#include "simulation/wrap.h"

#define COUNT_BUILTIN(...) +1
static constexpr size_t kBuiltins = 0 ZEL_BUILTINS(COUNT_BUILTIN);

#define COUNT_ARGUMENTS(name, handler, arguments, ...) static_cast<int32_t>(sizeof(arguments)) - 1,
static constexpr int32_t kArguments[] = {ZEL_BUILTINS(COUNT_ARGUMENTS)};

static BuiltinRule gRules[kBuiltins];
static bool gRuleIsEarly[kBuiltins];
static BuiltinFunction gWatched[kBuiltins];

// The active calls, the innermost last: arguments may call built-ins too.
static BuiltinCall gCalls[kMaxNesting + 1];
static int32_t gDepth = 0;

int32_t builtinDepth() {
    return gDepth;
}

// A call with all its integers read has failed at its ")".
void leaveBuiltinCalls(int32_t depth) {
    while (gDepth > depth) {
        const BuiltinCall& call = gCalls[--gDepth];
        const bool isRead = call.count == kArguments[call.builtin];
        if (isRead && gRuleIsEarly[call.builtin]) gRules[call.builtin](call, 0);
    }
}

void setBuiltinRule(const char* builtin, BuiltinRule rule) {
    gRules[findBuiltin(builtin)] = rule;
}

void setEarlyBuiltinRule(const char* builtin, BuiltinRule rule) {
    setBuiltinRule(builtin, rule);
    gRuleIsEarly[findBuiltin(builtin)] = true;
}

// An error jumps over this function: it keeps nothing that needs an end.
template <size_t index>
static int32_t callWatched() {
    gCalls[gDepth] = BuiltinCall();
    gCalls[gDepth].builtin = index;
    gDepth++;
    const int32_t result = gBuiltins[index].handler();
    gDepth--;
    if (gRules[index] != nullptr) gRules[index](gCalls[gDepth], result);
    return result;
}

template <size_t... indices>
static void fillWatched(std::index_sequence<indices...>) {
    ((gWatched[indices] = {gBuiltins[indices].name, callWatched<indices>}), ...);
}

void watchBuiltins() {
    fillWatched(std::make_index_sequence<kBuiltins>());
    for (const BuiltinFunction& builtin : gWatched)
        internSymbol(builtin.name)->builtin = &builtin;
}

// The readers of arguments -----------------------------------------------------------------------

WRAP_FUNCTION("_Z11readIntegerv", int32_t, ReadInteger, ());
WRAP_FUNCTION("_Z11onlyIntegerv", int32_t, OnlyInteger, ());
WRAP_FUNCTION("_Z12readIntegersSt16initializer_listIPiE", void, ReadIntegers,
              (std::initializer_list<int32_t*>));

static void noteInteger(int32_t value) {
    if (gDepth == 0) return;
    BuiltinCall& call = gCalls[gDepth - 1];
    if (call.count < kWatchedArguments) call.values[call.count++] = value;
}

int32_t wrapReadInteger() {
    const int32_t value = realReadInteger();
    noteInteger(value);
    return value;
}

int32_t wrapOnlyInteger() {
    const int32_t value = realOnlyInteger();
    noteInteger(value);
    return value;
}

void wrapReadIntegers(std::initializer_list<int32_t*> targets) {
    realReadIntegers(targets);
    for (const int32_t* target : targets)
        noteInteger(*target);
}
