// The expression evaluator: recursive descent over the tokens, computing as it reads.
//
// Each level is given the first token of its operand and returns its value and the first token it
// did not use. Where the evaluator stands is handed from level to level and on to the statements;
// gToken and gProgramPos are set for built-ins, gProgramPos for the reports of errors too.
//
// Arithmetic is 32-bit and wraps. There are no logical and no bitwise operators, no increment and
// no compound assignment; "^" is a token but no operator. Every error is raised by syntaxError and
// none returns: all of it runs inside runGuarded (script/recovery.h), on either thread.
#pragma once

#include <cstdint>

struct Place;

struct Evaluated {
    int32_t value;
    Place* place;  // where to go on: the position behind, or the first token not used
};

// Reads one expression at gProgramPos and returns its value. The token that ends it is put back, so
// the caller's next getToken reads it again while gToken still shows it; a lone ";" counts as 0 and
// stays consumed. Raises NoExpression where there is none.
int32_t evalExpression();

// The same at `position`; returns the position behind it instead of moving gProgramPos.
Evaluated evalExpression(Place* position);

// The same and then getToken, in one: returns the token that ends the expression. Sets no gToken.
Evaluated evalArgument(Place* position);

// Evaluates the expression that starts with `token`, and returns the token that ends it. Sets no
// gToken.
Evaluated evalExpressionFrom(Place* token);
