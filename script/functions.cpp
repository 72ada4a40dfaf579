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

void getArgs() {
    int32_t values[kMaxArguments];
    int32_t count = 0;

    getToken();
    if (!tokenIs('(')) syntaxError(ScriptError::NoParens);
    do {
        if (count == kMaxArguments) syntaxError(ScriptError::TooManyArguments);
        values[count++] = evalArgument();
    } while (tokenIs(','));

    while (count > 0)
        pushLocal({nullptr, kArgumentType, values[--count]});
}

// Names the argument at `slot`, or pushes a local where the caller gave no argument.
static void nameParameter(int32_t slot, int32_t base) {
    Name* name = declaredName();
    if (slot < base) return pushLocal({name, kParameterType, 0});
    gLocalStack[slot].name = name;
    gLocalStack[slot].type = kParameterType;
}

void getParams(int32_t base) {
    int32_t slot = gLocalTop - 1;
    do {
        getToken();
        if (tokenIs(')')) return;
        if (gToken->keyword != KeywordCode::Char && gToken->keyword != KeywordCode::Int) {
            syntaxError(ScriptError::NoTypeSpecifier);
        }
        getToken();
        nameParameter(slot, base);
        slot--;
        getToken();
    } while (tokenIs(','));
    if (!tokenIs(')')) syntaxError(ScriptError::NoParens);
}

// Flattened: a call of a small function costs little more than what the halves do.
[[gnu::flatten]] void callFunction(Place* location) {
    if (location == nullptr) syntaxError(ScriptError::NoSuchFunction);

    const int32_t base = gLocalTop;
    getArgs();
    Place* behindCall = gProgramPos;
    pushCall(base);
    gProgramPos = location;
    getParams(base);
    interpretBlock();
    gProgramPos = behindCall;
    gLocalTop = popCall();
}
