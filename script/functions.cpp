#include "script/functions.h"

#include "script/errors.h"
#include "script/evaluator.h"
#include "script/names.h"
#include "script/statements.h"
#include "script/tokens.h"

ScriptFunction gFunctionTable[kMaxFunctions];
int32_t gFunctionCount = 0;
int32_t gReturnValue = 0;

void recordFunction(const ScriptFunction& function) {
    if (gFunctionCount >= kMaxFunctions) syntaxError(ScriptError::TooManyFunctions);
    gFunctionTable[gFunctionCount] = function;
    gFunctionCount++;
    if (function.name->function == nullptr) function.name->function = function.location;
}

Place* findFunction(const char* name) {
    const Name* known = findName(name);
    return known == nullptr ? nullptr : known->function;
}

// Evaluates the argument list at `position` and pushes the values, the last one first. Returns the
// position behind the list.
static Place* getArgs(Place* position) {
    int32_t values[kMaxArguments];
    int32_t count = 0;

    Place* token = tokenAt(position);
    if (token->symbol != '(') syntaxErrorBehind(token, ScriptError::NoParens);
    do {
        if (count == kMaxArguments) syntaxErrorBehind(token, ScriptError::TooManyArguments);
        const Evaluated argument = evalArgument(token->next);
        values[count++] = argument.value;
        token = argument.place;
    } while (token->symbol == ',');

    gProgramPos = token->next;  // for an error's report
    while (count > 0)
        pushArgument(values[--count]);
    return token->next;
}

// Reads the parameters at `position`, in the callee's definition, and names the arguments with
// them, the first one the first. `base` is where the callee's frame starts: parameters without an
// argument become locals with the value 0, and nothing below the frame is touched. Returns the
// position behind the list.
static Place* getParams(Place* position, int32_t base) {
    int32_t slot = gLocalTop - 1;
    Place* token = nullptr;
    do {
        token = tokenAt(position);
        if (token->symbol == ')') return token->next;
        if (token->keyword != KeywordCode::Char && token->keyword != KeywordCode::Int) {
            syntaxErrorBehind(token, ScriptError::NoTypeSpecifier);
        }
        token = tokenAt(token->next);
        Name* name = declaredName(token);
        gProgramPos = token->next;  // for an error's report
        ScriptVariable* argument = slot >= base ? &gLocalStack[slot--] : pushArgument(0);
        nameArgument(argument, name);
        token = tokenAt(token->next);
        position = token->next;
    } while (token->symbol == ',');
    if (token->symbol != ')') syntaxErrorBehind(token, ScriptError::NoParens);
    return position;
}

Place* callFunction(Place* location, Place* position) {
    const int32_t base = gLocalTop;
    Place* behindCall = getArgs(position);
    pushCall(base);
    interpretBlock(getParams(location, base));
    gLocalTop = popCall();
    return behindCall;
}
