// Expressions: how to get the value of one. Statements and built-ins' arguments alike use it; the
// evaluator (script/evaluator.cpp) computes it.
//
// Arithmetic is 32-bit and wraps. There are no logical and no bitwise operators, no increment and
// no compound assignment; "^" is a token but no operator. Every error is raised by syntaxError and
// none returns: all of it runs inside runGuarded (script/recovery.h), on either thread.
#pragma once

#include <cstdint>

#include "script/token_reader.h"

struct Result {
    int32_t value;
    bool isEmpty;  // there was only a ";": it counts as 0 and is used up
    Place* end;    // the first token that the expression did not use; of an empty one its ";"
};

// Evaluates the expression at `position`. Raises NoExpression where there is none.
Result evalExpression(Place* position);

// Where reading goes on: the token that ended the expression is put back, the ";" of an empty one
// is not.
inline Place* positionAfter(const Result& result) {
    return result.isEmpty ? result.end->next : result.end->back;
}

// The token read there.
inline Place* tokenAfter(const Result& result) {
    const bool isReadAgainAsItIs = result.end->plain && !result.isEmpty;
    return isReadAgainAsItIs ? result.end : tokenAt(positionAfter(result));
}
