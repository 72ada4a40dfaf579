#include "script/evaluator.h"

#include "script/builtins.h"
#include "script/errors.h"
#include "script/functions.h"
#include "script/halt.h"
#include "script/names.h"
#include "script/nesting.h"
#include "script/text.h"
#include "script/tokens.h"
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

static inline bool isCall(const Name* name) {
    return name->builtin != nullptr || name->function != nullptr;
}

// The two calls of an identifier. Out of the way of the variables, which are met far more often.
[[gnu::noinline]] static int32_t evalCall(const Name* name) {
    int32_t result = 0;
    enterNesting();
    if (name->builtin != nullptr) {
        result = name->builtin->handler();
    } else {
        callFunction(name->function);
        result = gReturnValue;
    }
    leaveNesting();
    return result;
}

// identifier -> builtin arguments | function arguments | variable
// A built-in hides a function, a function hides a variable of the same name.
static inline void evalName(const Name* name, int32_t& value) {
    value = isCall(name) ? evalCall(name) : findVar(name);
}

// The position stands behind the opening quote. No escapes: the character counts as it is.
static int32_t evalCharacter() {
    const char* position = textAt(gProgramPos);
    if (byteAt(position) == '\0' || byteAt(position + 1) != '\'') {
        syntaxError(ScriptError::NoClosingQuote);
    }
    gProgramPos = placeAt(position + 2);
    return static_cast<signed char>(*position);
}

// atom -> identifier ... | number | "'" character "'" | (nothing, before a ")")
[[gnu::always_inline]] static inline void atom(int32_t& value) {
    const Place* token = gToken;  // once: the other thread may take a token in between
    if (token->kind == TokenKind::Identifier) {
        evalName(token->name, value);
    } else if (token->kind == TokenKind::Number) {
        value = token->number;
    } else if (tokenIs('\'')) {
        value = evalCharacter();
    } else if (tokenIs(')')) {
        return;
    } else {
        syntaxError(ScriptError::Syntax);
    }
    getToken();
}

// The inner half of paren, behind its "(". `value` is what an empty pair of parentheses leaves.
[[gnu::noinline]] static int32_t evalInParens(int32_t value) {
    enterNesting();
    getToken();
    evalAssign(value);
    if (!tokenIs(')')) syntaxError(ScriptError::NoParens);
    getToken();
    leaveNesting();
    return value;
}

// paren -> "(" assign ")" | atom
[[gnu::always_inline]] static inline void evalParen(int32_t& value) {
    if (tokenIs('(')) {
        value = evalInParens(value);
    } else {
        atom(value);
    }
}

// Operators -----------------------------------------------------------------------------------

// unary -> [ "+" | "-" ] paren
[[gnu::always_inline]] static inline void evalUnary(int32_t& value) {
    if (gToken->symbol == 0) return atom(value);  // no sign and no parenthesis: most operands
    const bool minus = tokenIs('-');
    if (minus || tokenIs('+')) getToken();
    evalParen(value);
    if (minus) value = wrapSubtract(0, value);
}

// product -> unary { ( "*" | "/" | "%" ) unary }
[[gnu::always_inline]] static inline void evalMulDiv(int32_t& value) {
    evalUnary(value);
    while (tokenIs('*') || tokenIs('/') || tokenIs('%')) {
        const char operation = gToken->symbol;
        getToken();
        int32_t right = 0;
        evalUnary(right);
        if (operation == '*') value = wrapMultiply(value, right);
        if (operation == '/') value = divide(value, right);
        if (operation == '%') value = remainder(value, right);
    }
}

// sum -> product { ( "+" | "-" ) product }
[[gnu::always_inline]] static inline void evalAddSub(int32_t& value) {
    evalMulDiv(value);
    while (tokenIs('+') || tokenIs('-')) {
        const bool minus = tokenIs('-');
        getToken();
        int32_t right = 0;
        evalMulDiv(right);
        value = minus ? wrapSubtract(value, right) : wrapAdd(value, right);
    }
}

// relation -> sum [ ( "<" | "<=" | ">" | ">=" | "==" | "!=" | empty token ) sum ]
// One comparison only. The operators are a zero-terminated set, and an empty token is found in it:
// its right operand is read, evaluated and dropped.
static void evalRelational(int32_t& value) {
    evalAddSub(value);
    const char relation = gToken->symbol;
    if (relation > kNotEqual || (relation == 0 && !tokenIsEmpty())) return;
    getToken();
    int32_t right = 0;
    evalAddSub(right);
    if (relation != 0) value = compare(relation, value, right) ? 1 : 0;
}

// The variable of this name, that of the current token, if "=" stands behind it; else null. Finding
// out reads the token behind and puts it back: that moves the position behind blanks and comments,
// behind an empty token, into a string. Only getche and getnum, which go on character by character,
// would see a position before a plain token.
static ScriptVariable* assignedVariable(const Name* name) {
    const bool isPlain = gProgramPos->plain && name->builtin == nullptr;
    if (isPlain && gProgramPos->symbol != '=') return nullptr;
    ScriptVariable* variable = lookUpVariable(name);
    if (variable == nullptr) return nullptr;
    const Place* next = peekToken();
    if (next->symbol == '=') return variable;
    gProgramPos = next->back;
    return nullptr;
}

// A number or a variable with nothing behind it, as in "f(1, n)": saves the walk down the levels
// for what stands in a text most often. Returns false, having done nothing, for anything else; so
// for a call, which may read on behind the token behind its name.
static bool evalLoneOperand(int32_t& value) {
    Place* next = gProgramPos;
    const char end = next->plain ? next->symbol : '\0';
    if (end != ')' && end != ';' && end != ',') return false;
    const Place* token = gToken;
    if (token->kind == TokenKind::Number) {
        value = token->number;
    } else if (token->kind == TokenKind::Identifier && !isCall(token->name)) {
        value = findVar(token->name);
    } else {
        return false;
    }
    takeToken(next);
    return true;
}

// assign -> variable "=" assign | relation
static void evalAssign(int32_t& value) {
    if (evalLoneOperand(value)) return;
    ScriptVariable* variable = nullptr;
    const Place* token = gToken;
    if (token->kind == TokenKind::Identifier) variable = assignedVariable(token->name);
    if (variable == nullptr) return evalRelational(value);
    enterNesting();
    getToken();
    getToken();
    evalAssign(value);
    variable->value = value;
    leaveNesting();
}

// Evaluates the expression at the position and leaves the token behind it as the current one.
// Returns false if there was only a ";": that is 0, and nothing is left to put back.
static bool evalFromPosition(int32_t& value) {
    getToken();
    if (tokenIsEmpty()) syntaxError(ScriptError::NoExpression);
    if (tokenIs(';')) {
        value = 0;
        return false;
    }
    evalAssign(value);
    return true;
}

void evalExpression(int32_t& value) {
    if (evalFromPosition(value)) putBack();
}

void evalArgument(int32_t& value) {
    const bool ended = evalFromPosition(value);
    if (ended && gToken->plain) return;  // put back it would be read again as it is
    if (ended) putBack();
    getToken();
}

void evalCurrentExpression() {
    int32_t value = 0;
    evalAssign(value);
}
