#include "script/host/expression.h"

#include <cstddef>
#include <iterator>

#include "script/errors/errors.h"
#include "script/errors/halt.h"
#include "script/errors/nesting.h"
#include "script/errors/token_reader.h"
#include "script/host/arguments.h"
#include "script/host/builtins.h"
#include "script/run/arithmetic.h"
#include "script/run/functions.h"
#include "script/run/variables.h"
#include "script/source/symbols.h"
#include "script/source/text.h"

// Recursive descent over the tokens, computing as it reads. Each function is given the first token
// of what it evaluates and returns its value and the first token it did not use. What an operand
// was found to be is remembered with its place, so that the next visit need not ask. The cursor of
// the built-ins (script/host/arguments.h) is set on the way into one.

static Result evalAssign(Place* at);

// Operands ------------------------------------------------------------------------------------

// The two calls of an identifier. `position` is where the arguments are read.
static Result evalCall(Place* at, Place* position) {
    const Symbol* symbol = at->symbol;
    int32_t value = 0;
    enterNesting(position);
    if (symbol->builtin != nullptr) {
        gToken = at;
        gProgramPos = position;
        value = symbol->builtin->handler();
        position = gProgramPos;
    } else {
        position = callFunction(symbol->function, position);
        value = gReturnValue;
    }
    leaveNesting();
    return {tokenAt(position), value};
}

// The value of the variable that `at` names.
static inline int32_t findVar(const Place* at) {
    const ScriptVariable* variable = lookUpVariable(at->symbol);
    if (variable == nullptr) syntaxError(ScriptError::NoSuchVariable, at->next);
    return variable->value;
}

// A built-in may go on character by character: its "(" must be the character after its name.
static bool isPlainCall(const Place* name) {
    const Place* opening = name->next;
    const bool isNextCharacter = opening->back == opening;
    return holds(opening, '(') && (name->symbol->builtin == nullptr || isNextCharacter);
}

// identifier -> builtin arguments | function arguments | variable
// A built-in hides a function, a function hides a variable of the same name. `position` is where
// reading goes on after the identifier.
static Result evalName(Place* at, Place* position) {
    const Symbol* symbol = at->symbol;
    if (symbol->builtin != nullptr || symbol->function != nullptr) {
        if (isPlainCall(at)) at->operand = Operand::Call;
        return evalCall(at, position);
    }
    const int32_t value = findVar(at);
    Place* next = tokenAt(position);
    if (at->next->plain && !holds(next, '=')) at->operand = Operand::Variable;
    return {next, value};
}

static Result evalNumber(Place* at) {
    Place* next = tokenAt(at->next);
    at->operand = Operand::Number;
    return {next, at->number};
}

// No escapes: the character counts as it is.
static Result evalCharacter(const Place* quote) {
    const char* position = textAt(quote->next);
    if (byteAt(position) == '\0' || byteAt(position + 1) != '\'') {
        syntaxError(ScriptError::NoClosingQuote, quote->next);
    }
    return {tokenAt(placeAt(position + 2)), static_cast<signed char>(*position)};
}

// atom -> identifier ... | number | "'" character "'" | (nothing, before a ")": it counts as 0)
static Result atom(Place* at) {
    if (at->token.kind == TokenKind::Identifier) return evalName(at, at->next);
    if (at->token.kind == TokenKind::Number) return evalNumber(at);
    if (holds(at, '\'')) return evalCharacter(at);
    if (holds(at, ')')) return {at, 0};
    syntaxError(ScriptError::Syntax, at->next);
}

// "(" assign ")"
static Result evalGroup(Place* opening) {
    enterNesting(opening->next);
    const Result inner = evalAssign(tokenAt(opening->next));
    if (!holds(inner.end, ')')) syntaxError(ScriptError::NoParens, inner.end->next);
    leaveNesting();
    return {tokenAt(inner.end->next), inner.value};
}

// paren -> "(" assign ")" | atom
static Result evalParen(Place* at) {
    if (!holds(at, '(')) return atom(at);
    at->operand = Operand::Group;
    return evalGroup(at);
}

// unary -> [ "+" | "-" ] paren
static Result evalUnary(Place* at) {
    if (!holds(at, '-') && !holds(at, '+')) return evalParen(at);
    const Result operand = evalParen(tokenAt(at->next));
    return {operand.end, holds(at, '-') ? wrapSubtract(0, operand.value) : operand.value};
}

// Operands met before -------------------------------------------------------------------------

static Result evalKeptNumber(Place* at) {
    return {at->next, at->number};
}

static Result evalKeptVariable(Place* at) {
    return {at->next, findVar(at)};
}

static Result evalKeptCall(Place* at) {
    return evalCall(at, at->next);
}

// In the order of Operand.
static constexpr Result (*kOperands[])(Place*) = {
    evalUnary,  // Other
    evalUnary,  // Assigned: the variable before the "="
    evalKeptNumber, evalKeptVariable, evalKeptCall, evalGroup,
};
static_assert(std::size(kOperands) == static_cast<size_t>(Operand::Count), "one for each");

// unary, by what an earlier visit found it to be.
static inline Result evalOperand(Place* at) {
    return kOperands[static_cast<size_t>(at->operand)](at);
}

// True for a number, and for a variable that the current call has looked up before: their values
// need no call.
static inline bool isSimple(const Place* at) {
    return at->operand == Operand::Number ||
           (at->operand == Operand::Variable && isKnown(at->symbol));
}

static inline int32_t simpleValue(const Place* at) {
    return at->operand == Operand::Number ? at->number : at->symbol->variable->value;
}

// Operators -----------------------------------------------------------------------------------

// An empty token is an operator too: its right operand is dropped.
static inline int32_t applyOperator(char operation, int32_t left, int32_t right, const Place* end) {
    switch (operation) {
        case '+':
            return wrapAdd(left, right);
        case '-':
            return wrapSubtract(left, right);
        case '*':
            return wrapMultiply(left, right);
        case '/':
            if (right == 0) syntaxError(ScriptError::DivisionByZero, end->next);
            return wrapDivide(left, right);
        case '%':
            // No check in the language: the process ends as by the processor's own fault.
            if (right == 0) raiseDivisionFault();
            return wrapRemainder(left, right);
        case kLess:
            return compareValues(kLess, left, right);
        case kLessOrEqual:
            return compareValues(kLessOrEqual, left, right);
        case kGreater:
            return compareValues(kGreater, left, right);
        case kGreaterOrEqual:
            return compareValues(kGreaterOrEqual, left, right);
        case kEqual:
            return compareValues(kEqual, left, right);
        case kNotEqual:
            return compareValues(kNotEqual, left, right);
        default:  // an empty token
            return left;
    }
}

static Result evalOperators(int32_t value, Place* at, Precedence limit);

// The same where a right operand takes calls. A loop, for a chain of operators nests nothing.
[[gnu::noinline]] static Result evalOperatorsByCalls(int32_t value, Place* at, Precedence limit) {
    Precedence precedence = at->precedence;
    do {
        const Result first = evalOperand(tokenAt(at->next));
        const Result right = evalOperators(first.value, first.end, precedence);
        value = applyOperator(at->token.punctuator, value, right.value, right.end);
        at = right.end;
        if (precedence == Precedence::Relation) break;
        precedence = at->precedence;
    } while (precedence > limit);
    return {at, value};
}

// relation (evalRelational) -> sum [ ( "<" | "<=" | ">" | ">=" | "==" | "!=" | empty token ) sum ]
// sum (evalAddSub)          -> product { ( "+" | "-" ) product }
// product (evalMulDiv)      -> unary { ( "*" | "/" | "%" ) unary }
// Goes on at `at`, after the left operand `value`, with the operators that bind tighter than
// `limit`. One comparison only.
static Result evalOperators(int32_t value, Place* at, Precedence limit) {
    while (at->precedence > limit) {
        const Place* right = at->next;
        const Precedence precedence = at->precedence;
        if (!isSimple(right) || right->next->precedence > precedence) {
            return evalOperatorsByCalls(value, at, limit);
        }
        value = applyOperator(at->token.punctuator, value, simpleValue(right), right->next);
        at = right->next;
        if (precedence == Precedence::Relation) break;
    }
    return {at, value};
}

// Assignments ---------------------------------------------------------------------------------

// The value of an assignment is that of its right side.
static Result assign(ScriptVariable* variable, const Place* name, const Place* equalsSign) {
    enterNesting(name->next);
    const Result right = evalAssign(tokenAt(equalsSign->next));
    variable->value = right.value;
    leaveNesting();
    return right;
}

// assign, where it starts with an identifier
// After a variable the next token is read, to see whether it is "=", and put back if it is not.
// That moves the position: past blanks and comments, past an empty token, into a string. A
// plain token is found again from either position; only getche and getnum, which go on character by
// character, could tell.
[[gnu::noinline]] static Result evalAssignName(Place* at) {
    Place* position = at->next;
    if (!position->plain || holds(position, '=') || at->symbol->builtin != nullptr) {
        ScriptVariable* variable = lookUpVariable(at->symbol);
        if (variable != nullptr) {
            const Place* after = tokenAt(position);
            if (holds(after, '=')) {
                at->operand = Operand::Assigned;
                return assign(variable, at, after);
            }
            position = after->back;
        }
    }
    const Result name = evalName(at, position);
    return evalOperators(name.value, name.end, Precedence::None);
}

// assign, where an earlier visit found that it starts with an identifier and a "=".
[[gnu::noinline]] static Result evalAssigned(Place* at) {
    ScriptVariable* variable = lookUpVariable(at->symbol);
    if (variable != nullptr) return assign(variable, at, at->next);
    const Result name = evalName(at, at->next);
    return evalOperators(name.value, name.end, Precedence::None);
}

// assign -> variable "=" assign | relation
static Result evalAssign(Place* at) {
    if (isSimple(at)) return evalOperators(simpleValue(at), at->next, Precedence::None);
    if (at->operand == Operand::Assigned) return evalAssigned(at);
    const bool isName = at->token.kind == TokenKind::Identifier;
    if (isName && at->operand == Operand::Other) return evalAssignName(at);
    const Result operand = evalOperand(at);
    return evalOperators(operand.value, operand.end, Precedence::None);
}

Result evalExpression(Place* position) {
    if (position->operand != Operand::Other) return evalAssign(position);
    Place* at = tokenAt(position);
    if (at->token.length == 0) syntaxError(ScriptError::NoExpression, at->next);
    if (holds(at, ';')) return {at, 0};
    return evalAssign(at);
}
