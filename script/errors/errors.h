// Script errors: their codes, their texts, and the one way out.
//
// Whatever goes wrong in a script, at load time or while it runs, ends in syntaxError(): it prints
// the report on standard output and leaves the interpreter for the innermost recovery point
// (script/errors/recovery.h). Line numbers in reports count from zero.
#pragma once

#include <cstdint>

// The texts are in errors.cpp in the same order. Codes without a raiser keep their place: the
// numbers are known to makers of levels.
enum class ScriptError : int32_t {
    Syntax = 0,
    UnbalancedParens = 1,  // never raised
    NoExpression = 2,
    NoEqualsSign = 3,  // never raised
    NoSuchVariable = 4,
    BadParameter = 5,  // never raised
    NoSemicolon = 6,
    UnbalancedBraces = 7,  // never raised
    NoSuchFunction = 8,    // never raised
    NoTypeSpecifier = 9,
    TooManyCalls = 10,
    ReturnOutsideFunction = 11,
    NoParens = 12,
    NoWhile = 13,
    NoClosingQuote = 14,
    NoString = 15,  // never raised
    TooManyLocals = 16,
    DivisionByZero = 17,
    TooManyFunctions = 18,
    TooManyGlobals = 19,
    TokenTooLong = 20,
    CommentNotClosed = 21,
    NestedTooDeeply = 22,
    TooManyArguments = 23,
    Count
};

struct Place;

// Prints the report - the message, the line, the text up to `position` - and jumps to the recovery
// point of the calling thread. Nothing is unwound: no stack frame on the way may hold an object
// with a destructor.
[[noreturn, gnu::cold]] void syntaxError(ScriptError error, const Place* position);
