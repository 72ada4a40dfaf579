#include "script/evaluator.h"

#include <cstdlib>
#include <cstring>

#include "script/builtins.h"
#include "script/errors.h"
#include "script/functions.h"
#include "script/halt.h"
#include "script/lexer.h"
#include "script/nesting.h"
#include "script/text.h"
#include "script/variables.h"

// Arithmetic ----------------------------------------------------------------------------------

// The operations of a 32-bit processor, without what C++ leaves undefined.

static int32_t wrapAdd(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

static int32_t wrapSubtract(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

static int32_t wrapMultiply(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

static int32_t divide(int32_t a, int32_t b) {
    if (b == 0) syntaxError(ScriptError::DivisionByZero);
    if (b == -1) return wrapSubtract(0, a);
    return a / b;
}

// The remainder checks nothing: a zero divisor ends the process as the processor's own fault would.
static int32_t remainder(int32_t a, int32_t b) {
    if (b == 0) raiseDivisionFault();
    if (b == -1) return 0;
    return a % b;
}

static bool compare(char relation, int32_t a, int32_t b) {
    switch (relation) {
        case kLess:
            return a < b;
        case kLessOrEqual:
            return a <= b;
        case kGreater:
            return a > b;
        case kGreaterOrEqual:
            return a >= b;
        case kEqual:
            return a == b;
        default:
            return a != b;
    }
}

// Operands ------------------------------------------------------------------------------------

static void evalAssign(int32_t& value);

// identifier -> builtin arguments | function arguments | variable
// A built-in hides a function, a function hides a variable of the same name.
static void evalName(int32_t& value) {
    const int32_t builtin = findBuiltin(gToken);
    if (builtin >= 0) {
        value = gBuiltins[builtin].handler();
    } else if (findFunction(gToken) != nullptr) {
        callFunction();
        value = gReturnValue;
    } else {
        value = findVar(gToken);
    }
}

// The position stands behind the opening quote. No escapes: the character counts as it is.
static void evalCharacter(int32_t& value) {
    value = static_cast<signed char>(byteAt(gProgramPos));
    if (byteAt(gProgramPos) == '\0' || byteAt(gProgramPos + 1) != '\'') {
        syntaxError(ScriptError::NoClosingQuote);
    }
    gProgramPos = gProgramPos + 2;
}

// atom -> identifier ... | number | "'" character "'" | (nothing, before a ")")
static void atom(int32_t& value) {
    if (gTokenKind == TokenKind::Identifier) {
        evalName(value);
    } else if (gTokenKind == TokenKind::Number) {
        value = static_cast<int32_t>(std::strtol(gToken, nullptr, 10));
    } else if (tokenIs('\'')) {
        evalCharacter(value);
    } else if (tokenIs(')')) {
        return;
    } else {
        syntaxError(ScriptError::Syntax);
    }
    getToken();
}

// paren -> "(" assign ")" | atom
static void evalParen(int32_t& value) {
    if (!tokenIs('(')) return atom(value);
    getToken();
    evalAssign(value);
    if (!tokenIs(')')) syntaxError(ScriptError::NoParens);
    getToken();
}

// Operators -----------------------------------------------------------------------------------

// unary -> [ "+" | "-" ] paren
static void evalUnary(int32_t& value) {
    const bool minus = tokenIs('-');
    if (minus || tokenIs('+')) getToken();
    evalParen(value);
    if (minus) value = wrapSubtract(0, value);
}

// product -> unary { ( "*" | "/" | "%" ) unary }
static void evalMulDiv(int32_t& value) {
    evalUnary(value);
    while (tokenIs('*') || tokenIs('/') || tokenIs('%')) {
        const char operation = gToken[0];
        getToken();
        int32_t right = 0;
        evalUnary(right);
        if (operation == '*') value = wrapMultiply(value, right);
        if (operation == '/') value = divide(value, right);
        if (operation == '%') value = remainder(value, right);
    }
}

// sum -> product { ( "+" | "-" ) product }
static void evalAddSub(int32_t& value) {
    evalMulDiv(value);
    while (tokenIs('+') || tokenIs('-')) {
        const bool minus = tokenIs('-');
        getToken();
        int32_t right = 0;
        evalMulDiv(right);
        value = minus ? wrapSubtract(value, right) : wrapAdd(value, right);
    }
}

// The operator's code; 0 for an empty token, which counts as an operator without effect; -1 for
// any other token.
static int currentRelation() {
    if (tokenIsEmpty()) return 0;
    const bool isRelation = gTokenKind == TokenKind::Delimiter && gToken[0] <= kNotEqual;
    return isRelation && gToken[0] > 0 ? gToken[0] : -1;
}

// relation -> sum [ ( "<" | "<=" | ">" | ">=" | "==" | "!=" | empty token ) sum ]
// One comparison only. The operators are a zero-terminated set, and an empty token is found in it:
// its right operand is read, evaluated and dropped.
static void evalRelational(int32_t& value) {
    evalAddSub(value);
    const int relation = currentRelation();
    if (relation < 0) return;
    getToken();
    int32_t right = 0;
    evalAddSub(right);
    if (relation > 0) value = compare(static_cast<char>(relation), value, right) ? 1 : 0;
}

// Stands again behind the name that starts at `start`, as if the token after it had not been read:
// the position stays where putting that token back left it.
static void restoreName(const char* start) {
    const char* position = gProgramPos;
    gProgramPos = start;
    getToken();
    gProgramPos = position;
}

// assign -> variable "=" assign | relation
static void evalAssignOrRelation(int32_t& value) {
    if (gTokenKind == TokenKind::Identifier && isVar(gToken)) {
        char name[kNameCapacity];
        copyName(name, gToken);
        const char* start = gProgramPos - std::strlen(name);
        getToken();
        if (tokenIs('=')) {
            getToken();
            evalAssign(value);
            assignVar(name, value);
            return;
        }
        putBack();
        restoreName(start);
    }
    evalRelational(value);
}

static void evalAssign(int32_t& value) {
    enterNesting();
    evalAssignOrRelation(value);
    leaveNesting();
}

void evalExpression(int32_t& value) {
    getToken();
    if (tokenIsEmpty()) syntaxError(ScriptError::NoExpression);
    if (tokenIs(';')) {
        value = 0;
        return;
    }
    evalAssign(value);
    putBack();
}
