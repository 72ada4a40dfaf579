// The bound on nesting: how deep expressions, statements and calls may stand in each other.
//
// The evaluator calls itself for every level of the script's nesting, so the machine's stack is
// what a hostile script would overflow. Both recursive roads (an expression, a statement) count
// here; beyond the bound the script gets "Nested too deeply".
#pragma once

#include <cstdint>

#include "script/errors.h"

// Levels of nesting in all work of one entry into the interpreter. The longest road of one level
// takes under 2 KiB of stack in the sanitizer build: 8 MiB, the usual size, hold them all.
constexpr int32_t kMaxNesting = 4000;

// Levels entered and not left on this thread; runGuarded puts it back after an error.
extern __thread int32_t gNestingDepth;

// The lowest address that script code may use on this thread's stack.
extern __thread const char* gStackFloor;

// Finds gStackFloor on a thread that enters the interpreter for the first time.
void findStackFloor();

// Enters one level, or raises NestedTooDeeply: at the bound, and on a thread whose stack is smaller
// than usual, before that stack runs out.
inline void enterNesting() {
    const char* here = static_cast<const char*>(__builtin_frame_address(0));
    if (gNestingDepth >= kMaxNesting || here < gStackFloor) {
        syntaxError(ScriptError::NestedTooDeeply);
    }
    gNestingDepth++;
}

inline void leaveNesting() {
    gNestingDepth--;
}
