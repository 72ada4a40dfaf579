// The expression evaluator: recursive descent over the tokens, computing as it reads.
//
// Each level starts with the first token of its operand already read and returns with the first
// token it did not use in gToken. Arithmetic is 32-bit and wraps.
//
// There are no logical and no bitwise operators, no increment and no compound assignment; "^" is
// a token but no operator. Every error is raised by syntaxError and none returns.
#pragma once

#include <cstdint>

// Reads one expression and returns its value. The token that ends it is put back, so the caller's
// next getToken reads it again while gToken still shows it; a lone ";" counts as 0 and stays
// consumed. Raises NoExpression where there is none.
int32_t evalExpression();

// evalExpression and then getToken, in one: the token that ends the expression is the current one
// afterwards, and the position is behind it.
int32_t evalArgument();

// Evaluates the expression whose first token is the current one, and drops its value. The token
// that ends it stays the current one.
void evalCurrentExpression();
