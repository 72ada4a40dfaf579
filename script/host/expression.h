// Expressions: how to get the value of one. Statements and built-ins' arguments alike use it; the
// evaluator (script/run/evaluator.cpp) computes it.
//
// Arithmetic is 32-bit and wraps. There are no logical and no bitwise operators, no increment and
// no compound assignment; "^" is a token but no operator. Every error is raised by syntaxError and
// none returns: all of it runs inside runGuarded (script/errors/recovery.h), on either thread.
#pragma once

#include <cstdint>

#include "script/errors/token_reader.h"

struct Result {
    Place* end;  // the first token that was not used
    int32_t value;
};

// Evaluates the expression at `position`. An expression that is only a ";" is empty: it counts as 0
// and ends at its ";". Raises NoExpression where there is none.
Result evalExpression(Place* position);

// Where reading goes on after the expression at `position`: the token that ended it is put back,
// but the ";" of an empty one is used up.
inline Place* positionAfter(const Place* position, const Result& result) {
    return holds(position, ';') ? result.end->next : result.end->back;
}

// The token read there.
inline Place* tokenAfter(const Place* position, const Result& result) {
    const bool isReadAgainAsItIs = result.end->plain && !holds(position, ';');
    return isReadAgainAsItIs ? result.end : tokenAt(positionAfter(position, result));
}
