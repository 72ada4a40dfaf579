#include "script/functions.h"

#include <cstring>

#include "script/errors.h"
#include "script/evaluator.h"
#include "script/lexer.h"
#include "script/statements.h"
#include "script/text.h"

ScriptFunction gFunctionTable[kMaxFunctions];
int32_t gFunctionCount = 0;
int32_t gReturnValue = 0;

void recordFunction(const ScriptFunction& function) {
    if (gFunctionCount >= kMaxFunctions) syntaxError(ScriptError::TooManyFunctions);
    gFunctionTable[gFunctionCount] = function;
    gFunctionCount++;
}

const char* findFunction(const char* name) {
    for (int32_t i = 0; i < gFunctionCount; i++) {
        if (std::strcmp(gFunctionTable[i].name, name) == 0) return gFunctionTable[i].location;
    }
    return nullptr;
}

void getArgs() {
    int32_t values[kMaxArguments];
    int32_t count = 0;

    getToken();
    if (!tokenIs('(')) syntaxError(ScriptError::NoParens);
    do {
        if (count == kMaxArguments) syntaxError(ScriptError::TooManyArguments);
        values[count] = 0;
        evalExpression(values[count]);
        count++;
        getToken();
    } while (tokenIs(','));

    ScriptVariable argument;
    while (count > 0) {
        argument.value = values[--count];
        pushLocal(argument);
    }
}

// Names the argument at `slot`, or pushes a local where the caller gave no argument.
static void nameParameter(int32_t slot, int32_t base) {
    ScriptVariable missing;
    ScriptVariable& parameter = slot >= base ? gLocalStack[slot] : missing;
    parameter.type = kParameterType;
    copyName(parameter.name, gToken);
    if (slot < base) pushLocal(missing);
}

void getParams(int32_t base) {
    int32_t slot = gLocalTop - 1;
    do {
        getToken();
        if (tokenIs(')')) return;
        if (gKeywordCode != KeywordCode::Char && gKeywordCode != KeywordCode::Int) {
            syntaxError(ScriptError::NoTypeSpecifier);
        }
        getToken();
        nameParameter(slot, base);
        slot--;
        getToken();
    } while (tokenIs(','));
    if (!tokenIs(')')) syntaxError(ScriptError::NoParens);
}

void callFunction() {
    const char* location = findFunction(gToken);
    if (location == nullptr) syntaxError(ScriptError::NoSuchFunction);

    const int32_t base = gLocalTop;
    getArgs();
    const char* behindCall = gProgramPos;
    pushCall(base);
    gProgramPos = location;
    getParams(base);
    interpretBlock();
    gProgramPos = behindCall;
    gLocalTop = popCall();
}
