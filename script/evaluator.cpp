#include "script/evaluator.h"

#include "script/arithmetic.h"
#include "script/builtins.h"
#include "script/errors.h"
#include "script/functions.h"
#include "script/halt.h"
#include "script/names.h"
#include "script/nesting.h"
#include "script/text.h"
#include "script/tokens.h"
#include "script/variables.h"

// Division ------------------------------------------------------------------------------------

static int32_t divide(int32_t a, int32_t b) {
    if (b == 0) syntaxError(ScriptError::DivisionByZero);
    return wrapDivide(a, b);
}

// The remainder checks nothing: a zero divisor ends the process as the processor's own fault would.
static int32_t remainder(int32_t a, int32_t b) {
    if (b == 0) raiseDivisionFault();
    return wrapRemainder(a, b);
}

// Operands ------------------------------------------------------------------------------------

// Each level of the grammar is a function that starts at the current token, is given the value so
// far and returns the new one: an empty pair of parentheses leaves what it was given. The
// short ones are inlined: most operands have nothing around them, and pay for no level that they do
// not use.

static int32_t evalAssign(int32_t value);

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
static inline int32_t evalName(const Name* name) {
    const bool isCall = name->builtin != nullptr || name->function != nullptr;
    return isCall ? evalCall(name) : findVar(name);
}

// The position stands behind the opening quote. No escapes: the character counts as it is.
[[gnu::noinline]] static int32_t evalCharacter() {
    const char* position = textAt(gProgramPos);
    if (byteAt(position) == '\0' || byteAt(position + 1) != '\'') {
        syntaxError(ScriptError::NoClosingQuote);
    }
    gProgramPos = placeAt(position + 2);
    return static_cast<signed char>(*position);
}

// atom -> identifier ... | number | "'" character "'" | (nothing, before a ")")
[[gnu::always_inline]] static inline int32_t atom(int32_t value) {
    const Place* token = gToken;  // once: the other thread may take a token in between
    if (token->kind == TokenKind::Identifier) {
        value = evalName(token->name);
    } else if (token->kind == TokenKind::Number) {
        value = token->number;
    } else if (tokenIs('\'')) {
        value = evalCharacter();
    } else if (tokenIs(')')) {
        return value;
    } else {
        syntaxError(ScriptError::Syntax);
    }
    getToken();
    return value;
}

// paren -> "(" assign ")" | atom
[[gnu::noinline]] static int32_t evalParen(int32_t value) {
    if (!tokenIs('(')) return atom(value);
    enterNesting();
    getToken();
    value = evalAssign(value);
    if (!tokenIs(')')) syntaxError(ScriptError::NoParens);
    getToken();
    leaveNesting();
    return value;
}

// Operators -----------------------------------------------------------------------------------

// unary -> [ "+" | "-" ] paren
[[gnu::always_inline]] static inline int32_t evalUnary(int32_t value) {
    if (gToken->symbol == 0) return atom(value);  // no sign and no parenthesis: most operands
    const bool minus = tokenIs('-');
    if (minus || tokenIs('+')) getToken();
    value = evalParen(value);
    return minus ? wrapSubtract(0, value) : value;
}

static int32_t multiplyOrDivide(char operation, int32_t a, int32_t b) {
    if (operation == '*') return wrapMultiply(a, b);
    return operation == '/' ? divide(a, b) : remainder(a, b);
}

// The levels of the operators start behind their first operand, which is the value they are given.

// product -> unary { ( "*" | "/" | "%" ) unary }
[[gnu::always_inline]] static inline int32_t evalMulDiv(int32_t value) {
    while (gToken->binding == Binding::Product) {
        const char operation = gToken->symbol;
        getToken();
        const int32_t right = evalUnary(0);
        value = multiplyOrDivide(operation, value, right);
    }
    return value;
}

// sum -> product { ( "+" | "-" ) product }
[[gnu::always_inline]] static inline int32_t evalAddSub(int32_t value) {
    value = evalMulDiv(value);
    while (gToken->binding == Binding::Sum) {
        const bool minus = tokenIs('-');
        getToken();
        const int32_t right = evalMulDiv(evalUnary(0));
        value = minus ? wrapSubtract(value, right) : wrapAdd(value, right);
    }
    return value;
}

// relation -> sum [ ( "<" | "<=" | ">" | ">=" | "==" | "!=" | empty token ) sum ]
// One comparison only. The right operand of an empty token is read, evaluated and dropped.
[[gnu::noinline]] static int32_t evalRelational(int32_t value) {
    value = evalAddSub(value);
    if (gToken->binding != Binding::Relation) return value;
    const char relation = gToken->symbol;
    getToken();
    const int32_t right = evalAddSub(evalUnary(0));
    if (relation == 0) return value;
    return compareValues(relation, value, right) ? 1 : 0;
}

// The variable of this name, that of the current token, if "=" stands behind it; else null. Finding
// out reads the token behind and puts it back: that moves the position behind blanks and comments,
// behind an empty token, into a string. Only getche and getnum, which go on character by character,
// would see a position before a plain token.
static inline ScriptVariable* assignedVariable(const Name* name) {
    const bool isPlain = gProgramPos->plain && name->builtin == nullptr;
    if (isPlain && gProgramPos->symbol != '=') return nullptr;
    ScriptVariable* variable = lookUpVariable(name);
    if (variable == nullptr) return nullptr;
    const Place* next = peekToken();
    if (next->symbol == '=') return variable;
    gProgramPos = next->back;
    return nullptr;
}

// assign -> variable "=" assign | relation
static int32_t evalAssign(int32_t value) {
    ScriptVariable* variable = nullptr;
    const Place* token = gToken;
    if (token->kind == TokenKind::Identifier) variable = assignedVariable(token->name);
    if (variable == nullptr) {
        value = evalUnary(value);
        return gToken->binding == Binding::None ? value : evalRelational(value);
    }
    enterNesting();
    getToken();
    getToken();
    value = evalAssign(value);
    variable->value = value;
    leaveNesting();
    return value;
}

// Takes the first token of the expression at the position. Returns false if that is a ";": it
// counts as 0 and stays consumed, and nothing is left to put back.
static inline bool beginExpression() {
    getToken();
    if (tokenIsEmpty()) syntaxError(ScriptError::NoExpression);
    return !tokenIs(';');
}

int32_t evalExpression() {
    if (!beginExpression()) return 0;
    const int32_t value = evalAssign(0);
    putBack();
    return value;
}

int32_t evalArgument() {
    int32_t value = 0;
    if (beginExpression()) {
        value = evalAssign(0);
        if (gToken->plain) return value;  // put back it would be read again as it is
        putBack();
    }
    getToken();
    return value;
}

void evalCurrentExpression() {
    evalAssign(0);
}
