// The user functions of the script: the table that the pre-scan fills, and the call.
#pragma once

#include <cstdint>

#include "script/run/variables.h"

struct Place;

constexpr int32_t kMaxFunctions = 100;
constexpr int32_t kMaxArguments = 32;  // of one call

struct ScriptFunction {
    Symbol* name = nullptr;     // lower case: the lexer lowers every identifier
    int32_t returnType = 0;     // keyword code of the type word: kept on purpose, nothing reads it
    Place* location = nullptr;  // just after the definition's "("
};

extern ScriptFunction gFunctionTable[kMaxFunctions];  // in text order

// Used entries of gFunctionTable. script/run/program sets it to 0 before a load.
extern int32_t gFunctionCount;

// The value of the last `return` executed anywhere. A call does not reset it: a function that ends
// without `return` yields what the last one before it left. Written by script/run/statements, and
// put back by script/run/waiting.
extern int32_t gReturnValue;

// Raises TooManyFunctions, at its location, when the table is full.
void recordFunction(const ScriptFunction& function);

// The location of the first function with exactly this name, or null.
Place* findFunction(const char* name);

// Calls the function at `location` with the arguments whose "(" is at `position`, and returns the
// position after them. gReturnValue holds the result.
// Raises TooManyArguments, TooManyCalls and whatever the arguments and the body raise.
Place* callFunction(Place* location, Place* position);
