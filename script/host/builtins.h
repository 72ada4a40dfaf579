// The table of the functions that the engine offers to scripts.
//
// A name is looked up here before the script's own functions and variables. Identifiers reach the
// interpreter in lower case, so scripts may write a built-in's name in any case.
#pragma once

#include <cstdint>
#include <string_view>

struct BuiltinFunction {
    const char* name;  // lower case
    int32_t (
        *handler)();  // reads its own arguments (script/host/arguments.h) and returns the result
};

// Ended by an entry with an empty name.
extern const BuiltinFunction gBuiltins[];

// The index of the built-in with exactly this name, or -1. Kept on purpose: the evaluator
// gets it from the symbol.
int32_t findBuiltin(std::string_view name);

// Gives each symbol of a built-in its row, for a program text that has just been set.
void declareBuiltins();
