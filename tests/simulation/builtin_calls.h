// Watches the calls of built-ins: which one, and the integers it has read.
//
// Every name of a built-in in the loaded script is given a handler that calls the engine's own and
// then the rule of that built-in.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr int32_t kWatchedArguments = 8;

struct BuiltinCall {
    size_t builtin = 0;  // its index in the table
    int32_t count = 0;   // integers read so far
    int32_t values[kWatchedArguments] = {};
};

// A rule about one built-in: it looks at the registry after the call.
using BuiltinRule = void (*)(const BuiltinCall& call, int32_t result);

// Applies `rule` to all later calls of the built-in that come to their end. Before watchBuiltins.
void setBuiltinRule(const char* builtin, BuiltinRule rule);

// The same for a built-in that has done its work when it looks for its ")": the rule holds for
// calls, too, that fail there.
void setEarlyBuiltinRule(const char* builtin, BuiltinRule rule);

// Once the script has been loaded.
void watchBuiltins();

// The number of active calls. An error jumps out of all that an entry has added.
int32_t builtinDepth();
void leaveBuiltinCalls(int32_t depth);

// The rules of images and units; texts have one of their own.
void setImageBuiltinRules();
void setTextBuiltinRules();
void setUnitBuiltinRules();
