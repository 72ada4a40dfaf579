// How a built-in reads its arguments: the call convention, and the one cursor of the interpreter.
//
// When a handler is called, the current token is the built-in's name and the cursor is after it.
// The handler reads everything up to and including the closing ")" with the readers below, one for
// each thing in a call, so that it reads like the call it serves:
//
//     openArguments();                      // (
//     const int32_t id = readInteger();     // id
//     nextArgument();                       // ,
//     readText(name);                       // "name"
//     expectCloseParen();                   // )
//
// Every reader may raise a script error, which jumps over the handler: a handler keeps no object
// with a destructor while it reads. Text goes into a fixed buffer for the same reason.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "script/errors/errors.h"
#include "script/source/lexer.h"

struct Place;

// Where the next token of a call is read. Set on the way into a built-in by script/run/evaluator,
// and taken up after it; what it holds at other times means nothing. Never null. Both threads use
// it, so a built-in that waits for the other one has it put back (script/run/waiting), and one that
// waits for the player sets it itself (script/host/console_builtins).
extern Place* gProgramPos;

// The current token: the last one that getToken read, or that ended an expression. Never null. Set
// and put back with gProgramPos, by script/run/evaluator and script/run/waiting.
extern Place* gToken;

// Puts the cursor at the start of a program text that has just been loaded.
void resetCursor();

// Reads the token at the cursor, makes it the current one and moves after it.
TokenKind getToken();

// Moves back over the current token by the length of its text; an empty token moves nothing. Of a
// string the text is two characters shorter than its source.
void putBack();

// True if the current token is the delimiter or brace `c`. A string that only reads like it is not.
bool tokenIs(char c);

// Raises `error` at the cursor.
[[noreturn]] void argumentError(ScriptError error);

// A text or name argument: what one token can hold.
using ArgumentText = TokenText;

// Evaluates the expression at the cursor and leaves the token that ends it to be read.
int32_t readExpression();

// Requires "(", else raises NoParens.
void openArguments();

// Reads one integer expression: the argument of a call.
int32_t readInteger();

// Reads integer expressions, the separators between them included: one for each target.
void readIntegers(std::initializer_list<int32_t*> targets);

// Reads the separator before a further argument. It is not checked: any token will do.
void nextArgument();

// Reads one token and takes its text as it is: a string without its quotes, case kept, or a bare
// word in lower case. The kind of the token is not checked.
void readText(ArgumentText& text);

// Requires ")", else raises NoParens.
void expectCloseParen();

// The two shortest calls: "(" and ")", and one integer in them.
void noArguments();
int32_t onlyInteger();

// Requires ")" and then ";" (else raises NoParens, NoSemicolon) and puts the ";" back: for the
// built-ins that must end a statement.
void closeStatement();
