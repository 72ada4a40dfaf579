// Reading the script's tokens while it runs: what cannot be read raises its error, and what cannot
// be got past stops the script for good. Called inside runGuarded (script/errors/recovery.h), on
// either thread.
#pragma once

#include "script/source/tokens.h"

// Reads the token at `place`; raises its error, with the position at the fault, if it has one.
// Cold: runs once per place, so it is kept out of line.
[[gnu::cold]] void readPlace(Place* place);

#ifdef ZEL_STEP_BUDGET
void countStep();  // of the fuzz target: ends scripts that would never end
#else
inline void countStep() {}
#endif

// The token at `position`; raises its error if it has one.
inline Place* tokenAt(Place* position) {
    countStep();
    if (position->state != PlaceState::Kept) readPlace(position);
    return position;
}

// The name that `at`, whatever its kind, gives to what is being declared. One longer than 30
// characters is fatal: prints "Name is too long: " and the name, and aborts the process.
Symbol* checkDeclaredSymbol(Place* at);
inline Symbol* declaredSymbol(Place* at) {
    const bool isGood = at->symbol != &gNoSymbol && at->token.length <= kMaxNameLength;
    return isGood ? at->symbol : checkDeclaredSymbol(at);
}

// Reads on from `position` until as many `close` as `open` have passed, one `open` being read
// already, and returns the last `close`; `open` is "{" or "(". Where the text has no such place
// this never returns (script/errors/halt.h).
Place* walkToBalance(Place* position, char open, char close);
inline Place* findBalance(Place* position, char open, char close) {
    Place* const end = open == '{' ? position->braceEnd : position->parenEnd;
    return end != nullptr ? end : walkToBalance(position, open, close);
}

// Says so and waits endlessly if `at` is one that reading never gets past: for loops that go on
// whatever they read.
[[noreturn]] void waitAtCharacter(const Place* at);
inline void waitIfStuck(const Place* at) {
    if (isStuck(at)) waitAtCharacter(at);
}
