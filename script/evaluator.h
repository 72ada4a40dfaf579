// The expression evaluator: recursive descent over the tokens, computing as it reads.
//
// Each level starts with the first token of its operand already read, and returns its value and the
// first token it did not use. Where the evaluator stands is handed from level to level, and from
// here to the statements: that is faster than one position in memory. gProgramPos and gToken are
// set for who reads them - built-ins and the reports of errors - and behind an expression.
//
// Arithmetic is 32-bit and wraps. There are no logical and no bitwise operators, no increment and no
// compound assignment; "^" is a token but no operator. Every error is raised by syntaxError and none
// returns.
#pragma once

#include <cstdint>

struct Place;

// What reading a part of the script leaves: a value, and where to go on.
struct Evaluated {
    int32_t value;
    Place* place;
};

// Reads one expression at gProgramPos and returns its value. The token that ends it is put back, so
// the caller's next getToken reads it again while gToken still shows it; a lone ";" counts as 0 and
// stays consumed. Raises NoExpression where there is none.
int32_t evalExpression();

// The same at `position`; gProgramPos is left alone, and where it would be is returned.
Evaluated evalExpression(Place* position);

// evalExpression and then getToken, in one: the token that ends the expression is returned.
Evaluated evalArgument(Place* position);

// Evaluates the expression that starts with `token`, and returns the token that ends it.
Evaluated evalCurrentExpression(Place* token);
