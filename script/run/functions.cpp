#include "script/run/functions.h"

#include "script/errors/errors.h"
#include "script/errors/token_reader.h"
#include "script/host/expression.h"
#include "script/run/statements.h"
#include "script/source/symbols.h"

ScriptFunction gFunctionTable[kMaxFunctions];
int32_t gFunctionCount = 0;
int32_t gReturnValue = 0;

void recordFunction(const ScriptFunction& function) {
    if (gFunctionCount >= kMaxFunctions) {
        syntaxError(ScriptError::TooManyFunctions, function.location);
    }
    gFunctionTable[gFunctionCount] = function;
    gFunctionCount++;
    if (function.name->function == nullptr) function.name->function = function.location;
}

Place* findFunction(const char* name) {
    const Symbol* known = findSymbol(name);
    return known == nullptr ? nullptr : known->function;
}

// Evaluates the argument list at `position` and pushes the values, the last one first. Returns the
// position after the list.
static Place* getArgs(Place* position) {
    int32_t values[kMaxArguments];
    int32_t count = 0;

    Place* at = tokenAt(position);
    if (!holds(at, '(')) syntaxError(ScriptError::NoParens, at->next);
    do {
        if (count == kMaxArguments) syntaxError(ScriptError::TooManyArguments, at->next);
        Place* const start = at->next;
        const Result argument = evalExpression(start);
        values[count++] = argument.value;
        at = tokenAfter(start, argument);
    } while (holds(at, ','));

    while (count > 0)
        pushArgument(values[--count], at->next);
    return at->next;
}

// Reads the parameters at `position`, in the callee's definition, and names the arguments with
// them, the first one the first. `base` is where the callee's call frame starts: parameters without
// an argument become locals with the value 0, and nothing below it is touched. Returns the
// position after the list.
static Place* getParams(Place* position, int32_t base) {
    int32_t slot = gLocalTop - 1;
    Place* at = nullptr;
    do {
        at = tokenAt(position);
        if (holds(at, ')')) return at->next;
        if (at->token.keyword != KeywordCode::Char && at->token.keyword != KeywordCode::Int) {
            syntaxError(ScriptError::NoTypeSpecifier, at->next);
        }
        at = tokenAt(at->next);
        Symbol* name = declaredSymbol(at);
        ScriptVariable* argument = slot >= base ? &gLocalStack[slot--] : pushArgument(0, at->next);
        nameArgument(argument, name);
        at = tokenAt(at->next);
        position = at->next;
    } while (holds(at, ','));
    if (!holds(at, ')')) syntaxError(ScriptError::NoParens, at->next);
    return position;
}

Place* callFunction(Place* location, Place* position) {
    const int32_t base = gLocalTop;
    Place* afterCall = getArgs(position);
    pushCall(base, afterCall);
    interpretBlock(getParams(location, base));
    gLocalTop = popCall(afterCall);
    return afterCall;
}
