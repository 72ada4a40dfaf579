#include "script/errors/errors.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iterator>

#include "script/errors/recovery.h"
#include "script/source/text.h"
#include "script/source/tokens.h"

static const char* const kErrorTexts[] = {
    "Syntax error",                         // Syntax
    "Non-balanced '()'",                    // UnbalancedParens
    "выражение отсутствует",                // NoExpression
    "ожидается знак равенства",             // NoEqualsSign
    "None variable",                        // NoSuchVariable
    "ошибка в параметре",                   // BadParameter
    "Cant find ';'",                        // NoSemicolon
    "Non-balanced '{}'",                    // UnbalancedBraces
    "Cant find this function",              // NoSuchFunction
    "ожидается спецификатор типа",          // NoTypeSpecifier
    "Too many exuct function in argument",  // TooManyCalls
    "'return' is not in function",          // ReturnOutsideFunction
    "Waiting '()'",                         // NoParens
    "Waiting while",                        // NoWhile
    "Waiting closing '\"'",                 // NoClosingQuote
    "None string",                          // NoString
    "Too many local variables",             // TooManyLocals
    "X/0 Delenie na NULL",                  // DivisionByZero
    "Too many functions",                   // TooManyFunctions
    "Too many global variables",            // TooManyGlobals
    "Token is too long",                    // TokenTooLong
    "Comment is not closed",                // CommentNotClosed
    "Nested too deeply",                    // NestedTooDeeply
    "Too many arguments",                   // TooManyArguments
};
static_assert(std::size(kErrorTexts) == static_cast<size_t>(ScriptError::Count),
              "one text per error");

// Counts line ends from the second byte on, so the first line is line 0. Levels are debugged by
// these numbers: they stay zero-based.
static int lineOf(const char* position) {
    const char* second = gProgramBuffer + 1;
    const char* end = std::min(position + 1, gProgramEnd);
    return second < end ? static_cast<int>(std::count(second, end, '\r')) : 0;
}

// The text before the position, back to the line's start but not further than kContextBytes. A
// line feed that ends the walk is printed too: it puts the context on a line of its own.
static void printContext(const char* position) {
    constexpr int kContextBytes = 20;
    const char* from = position;
    for (int i = 0; i < kContextBytes && from > gProgramBuffer && byteAt(from) != '\n'; i++)
        from--;

    const char* last = std::min(position, gProgramEnd);
    if (from <= last) std::fwrite(from, 1, static_cast<size_t>(last - from) + 1, stdout);
}

void syntaxError(ScriptError error, const Place* position) {
    const char* text = textAt(position);
    std::printf("\n%s in line %d\n", kErrorTexts[static_cast<size_t>(error)], lineOf(text));
    printContext(text);
    leaveToRecoveryPoint();
}
