// How a built-in reads its arguments: the call convention.
//
// When a handler is called, the current token is the built-in's name and the position is behind it.
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

#include "script/lexer.h"

// A text or name argument: what one token can hold.
using ArgumentText = char[kTokenCapacity];

// Requires "(", else raises NoParens.
void openArguments();

// Reads one integer expression.
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
