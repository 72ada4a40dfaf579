// What the checker can find: one row for each id.
//
// X(name, id, confirmed, meaning)
//
// `confirmed` says what the finding is worth. Error: the engine refuses, hangs, aborts or ends as
// soon as it loads the text or reaches the place. Warning: probably not meant, or wrong only on
// some ways through the script. A finding of either kind is shown as an error only where the engine
// certainly gets there (check/trial.h); otherwise it is shown as a warning.
#pragma once

#include <cstddef>

// clang-format off
#define ZEL_CHECK_IDS(X)                                                                          \
    X(LineEnd, "line-end", Error, "a line does not end in CR LF")                                 \
    X(TooBig, "too-big", Error, "the script is longer than the engine reads")                     \
    X(ZeroByte, "zero-byte", Warning, "a zero byte ends the text")                                \
    X(BadCharacter, "bad-character", Error, "a character that starts nothing in the language")    \
    X(NoSuchOperator, "no-such-operator", Error, "an operator that the language lacks")           \
    X(OpenBrace, "open-brace", Error, "a { without its }")                                        \
    X(ExtraBrace, "extra-brace", Error, "a } without its {")                                      \
    X(OpenComment, "open-comment", Error, "a comment that is not closed")                         \
    X(OpenString, "open-string", Error, "a string that is not closed on its line")                \
    X(CharacterLiteral, "character-literal", Error, "not one character between apostrophes")      \
    X(GluedCharacter, "glued-character", Error, "a brace, quote or dot stuck to a word")          \
    X(TokenTooLong, "token-too-long", Error, "a word, number or string of over 79 characters")    \
    X(NameTooLong, "name-too-long", Error, "a name of over 30 characters")                        \
    X(TooManyFunctions, "too-many-functions", Error, "more than 100 functions")                   \
    X(TooManyGlobals, "too-many-globals", Error, "more than 100 global variables")                \
    X(NoMain, "no-main", Error, "no function main")                                               \
    X(MainParameters, "main-parameters", Error, "main has parameters")                            \
    X(Initialiser, "initialiser", Error, "a declaration with a value")                            \
    X(ParameterList, "parameter-list", Error, "a parameter list that cannot be read")             \
    X(Parentheses, "parentheses", Error, "parentheses that do not match")                         \
    X(UnknownFunction, "unknown-function", Error, "a call of a function that does not exist")     \
    X(UnknownVariable, "unknown-variable", Error, "a variable that no declaration reaches")       \
    X(DoWithoutWhile, "do-without-while", Error, "do { } without while")                          \
    X(MissingSemicolon, "missing-semicolon", Error, "a missing ;")                                \
    X(OutputInExpression, "output-in-expression", Error, "puts or print inside an expression")    \
    X(BuiltinArguments, "builtin-arguments", Error, "wrong arguments of a built-in")              \
    X(DivisionByZero, "division-by-zero", Error, "a division by zero")                            \
    X(EmptyExpression, "empty-expression", Error, "nothing where a value must be")             \
    X(Syntax, "syntax", Error, "a word or sign in the wrong place")                   \
    X(TooManyLocals, "too-many-locals", Error, "the stack of local variables overflows")          \
    X(TooManyCalls, "too-many-calls", Error, "too many calls in each other")                      \
    X(NestedTooDeeply, "nested-too-deeply", Error, "too deeply nested")                           \
    X(TooManyArguments, "too-many-arguments", Error, "more than 32 arguments in a call")          \
    X(EndlessLoop, "endless-loop", Error, "a loop that nothing ends")                             \
    X(UnbracedBody, "unbraced-body", Warning, "a body that may be skipped, without braces")       \
    X(ElseIf, "else-if", Warning, "else if without braces")                                       \
    X(LoneElse, "lone-else", Warning, "an else without its if")                                   \
    X(NoBody, "no-body", Warning, "a function without a body")                                    \
    X(GapBeforeBrace, "gap-before-brace", Warning, "a comment or empty line before a {")          \
    X(GapBeforeElse, "gap-before-else", Warning, "a comment or empty line before else")           \
    X(CommentInExpression, "comment-in-expression", Warning,                                      \
      "a comment and a blank inside an expression")                                               \
    X(EmptyLineInExpression, "empty-line-in-expression", Warning,                                 \
      "an empty line inside an expression")                                                       \
    X(CommentUnderComment, "comment-under-comment", Warning,                                      \
      "a comment directly after a comment")                                                      \
    X(BareBlock, "bare-block", Warning, "a block of its own inside a block")                      \
    X(IgnoredText, "ignored-text", Warning, "text that the engine passes over")                   \
    X(NoEffect, "no-effect", Warning, "a statement that does nothing")                            \
    X(CallbackUnknown, "callback-unknown", Error, "a call-back name that no function has")      \
    X(CallbackCase, "callback-case", Error, "a call-back name with capital letters")            \
    X(CallbackParameters, "callback-parameters", Warning, "a call-back with parameters")          \
    X(DuplicateName, "duplicate-name", Warning, "two definitions of one name")                    \
    X(HiddenName, "hidden-name", Warning, "a name that a built-in has")                           \
    X(BadName, "bad-name", Warning, "a declaration of something that is no name")                 \
    X(ArgumentCount, "argument-count", Warning, "more or fewer arguments than parameters")        \
    X(ReturnInLoop, "return-in-loop", Warning, "a return inside a loop")                          \
    X(ReturnNotLast, "return-not-last", Warning, "a return with statements after it")            \
    X(NoReturnValue, "no-return-value", Warning, "the value of a function without return")        \
    X(DeclarationInLoop, "declaration-in-loop", Warning, "a declaration inside a loop")           \
    X(ForEmptyPart, "for-empty-part", Warning, "an empty part of a for without a blank")          \
    X(ForEmptyTest, "for-empty-test", Warning, "an empty test: the loop never runs")              \
    X(ChainedComparison, "chained-comparison", Warning, "comparisons in a chain")                 \
    X(OddNumber, "odd-number", Warning, "a number with letters, or a too big one")                \
    X(TextArgument, "text-argument", Warning, "a text argument that is not in quotes")            \
    X(TimerInterval, "timer-interval", Warning, "a timer that never rests")                        \
    X(AssignedCondition, "assigned-condition", Warning, "an assignment where == is meant")        \
    X(NeverShown, "never-shown", Warning, "a picture that is loaded and never shown")             \
    X(KeyCode, "key-code", Warning, "a key code outside 0 to 299")                                \
    X(TextRewritten, "text-rewritten", Warning, "createtext rewrites the text before it")         \
    X(MissingFile, "missing-file", Warning, "a picture or font that does not exist")              \
    X(FileCase, "file-case", Warning, "a picture or font in other letter case")                   \
    X(UnusedFunction, "unused-function", Warning, "a function that nothing calls")                \
    X(UnusedVariable, "unused-variable", Warning, "a variable that nothing uses")
// clang-format on

enum class CheckId {
#define ZEL_ROW(name, ...) name,
    ZEL_CHECK_IDS(ZEL_ROW)
#undef ZEL_ROW
        Count
};

enum class Severity { Warning, Error };

struct CheckIdInfo {
    const char* name;    // as it is shown in brackets
    Severity confirmed;  // of a place that the engine certainly reaches
    const char* meaning;
};

const CheckIdInfo& infoOf(CheckId id);
