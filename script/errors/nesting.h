// The bound on nesting: how deeply expressions, statements and calls may be nested.
//
// The evaluator calls itself for every level of the script's nesting, so a hostile script would
// overflow the machine's stack. Each way to nest counts here: a parenthesis, an assignment, a call,
// a statement. Beyond the bound the script gets "Nested too deeply".
#pragma once

#include <cstdint>

struct Place;

// Levels of nesting in all work of one entry into the interpreter. No level takes more than 2 KiB
// of stack in the sanitizer build, so 8 MiB, the usual size, hold 3,000 levels and more in every
// build, and all of them in an optimised one.
constexpr int32_t kMaxNesting = 4000;

// The bound is looked at every so many levels only; kMaxNesting is a multiple of it.
constexpr int32_t kNestingStep = 16;
static_assert(kMaxNesting % kNestingStep == 0, "the bound must be looked at when it is reached");

// Levels entered and not left on this thread; runGuarded puts it back after an error. The TLS
// model is valid because the engine is never a shared library; it is as cheap as a plain variable.
[[gnu::tls_model("local-exec")]] extern __thread int32_t gNestingDepth;

// Raises NestedTooDeeply, at `position`, at the bound, and on a thread whose stack is smaller than
// usual before that stack runs out.
void checkNesting(Place* position);

inline void enterNesting(Place* position) {
    gNestingDepth++;
    if (gNestingDepth % kNestingStep == 0) checkNesting(position);
}

inline void leaveNesting() {
    gNestingDepth--;
}
