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

    Place* token = tokenAt(position);
    if (token->punctuator != '(') syntaxError(ScriptError::NoParens, token->next);
    do {
        if (count == kMaxArguments) syntaxError(ScriptError::TooManyArguments, token->next);
        const Result argument = evalExpression(token->next);
        values[count++] = argument.value;
        token = tokenAfter(argument);
    } while (token->punctuator == ',');

    while (count > 0)
        pushArgument(values[--count], token->next);
    return token->next;
}

// Reads the parameters at `position`, in the callee's definition, and names the arguments with
// them, the first one the first. `base` is where the callee's frame starts: parameters without an
// argument become locals with the value 0, and nothing below the frame is touched. Returns the
// position after the list.
static Place* getParams(Place* position, int32_t base) {
    int32_t slot = gLocalTop - 1;
    Place* token = nullptr;
    do {
        token = tokenAt(position);
        if (token->punctuator == ')') return token->next;
        if (token->keyword != KeywordCode::Char && token->keyword != KeywordCode::Int) {
            syntaxError(ScriptError::NoTypeSpecifier, token->next);
        }
        token = tokenAt(token->next);
        Symbol* name = declaredSymbol(token);
        ScriptVariable* argument =
            slot >= base ? &gLocalStack[slot--] : pushArgument(0, token->next);
        nameArgument(argument, name);
        token = tokenAt(token->next);
        position = token->next;
    } while (token->punctuator == ',');
    if (token->punctuator != ')') syntaxError(ScriptError::NoParens, token->next);
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
