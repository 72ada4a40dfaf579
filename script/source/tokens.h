// The tokens of the script, and the memory that makes reading one again cost next to nothing.
//
// The text never changes after loading and a token depends on its position alone, so a token is
// read by the lexer once and kept. Each position of the text has a Place: the token that is read
// there, and what is remembered of it - its value or symbol, the places after it and before it,
// what an expression and a walk over brackets found there. All of that is what reading the text
// again would find. A position is a pointer to its place.
//
// "x = 5;" at the start of the text. There is a place for each of its bytes; four of them are read,
// as "x" ends at byte 1, "=" at byte 3 and "5" at byte 5:
//
//             place 0         place 1       place 2   place 3    place 4   place 5
//     byte    x               blank         =         blank      5         ;
//     token   "x" identifier  "=" at 2      unread    "5" at 4   unread    ";" at 5
//     next    place 1         place 3                 place 5              place 6
//     back    place 0         place 2                 place 4              place 5
//     symbol  that of "x"
//     number                                          5
//
// There is no token list and no reading position in here. A reader keeps its place as a value:
// tokenAt(position) of script/errors/token_reader.h is the token there,
// tokenAt(token->next) the one after it, and token->back is where reading goes on when a token is
// put back.
//
// By default two threads run script code in this one state, unlocked: they may read each other's
// tokens then. Every pointer stays inside the storage, in whatever order the processor shows one
// thread what the other wrote: the pointers of a place are never null, and until its token is kept
// they lead to the place itself, to the start of the text and to a symbol without a meaning;
// braceEnd and parenEnd are whole when they are not null. The kind of an operand may be seen before
// its symbol: whoever follows a pointer of the symbol looks whether it is null. ZEL_TICKS=main
// avoids it.
#pragma once

#include <cstdint>

#include "script/source/lexer.h"
#include "script/source/symbols.h"
#include "script/source/text.h"

enum class PlaceState : uint8_t {
    Unread,
    Kept,   // the token has been read and is here
    Faulty  // it has been read and has a fault
};

// Precedence as a binary operator; higher binds tighter.
enum class Precedence : uint8_t {
    None,      // the end of the expression
    Relation,  // the relational operators and every empty token
    Sum,       // "+" "-"
    Product    // "*" "/" "%"
};

// What the operand that starts with the token was found to be when an expression reached it. The
// token after it has then been read too. None of it can change while the program runs.
enum class Operand : uint8_t {
    Other,     // whatever else, or not reached yet
    Assigned,  // an identifier before a "=": an assignment if it is a variable then
    Number,
    Variable,  // no function and no built-in, and the token after it is plain and no "="
    Call,      // of a function or built-in, with a "(" after it
    Group,     // in parentheses
    Count
};

// The symbol of tokens that have none. No variable, no function and no built-in is called so.
extern Symbol gNoSymbol;

struct Place {
    // What was read here. Until then: an empty token at the start of the text.
    Token token = {gProgramBuffer, gProgramBuffer};

    // What is remembered of it.
    PlaceState state = PlaceState::Unread;
    Precedence precedence = Precedence::None;
    Operand operand = Operand::Other;
    bool plain = false;  // put back and read again it is the same: not so empty ones, strings
    int32_t number = 0;  // value of a number
    Place* next = this;  // after the token; with a fault, at the fault
    Place* back = this;  // where putting the token back leads
    Symbol* symbol = &gNoSymbol;  // of an identifier, and of what a declaration uses as a name
    Place* braceEnd = nullptr;    // the "}" that ends a walk over "{" and "}" from here
    Place* parenEnd = nullptr;    // the ")" that ends a walk over "(" and ")" from here
};

// True if the token is the delimiter, brace or relational operator `c`.
inline bool holds(const Place* place, char c) {
    return place->token.punctuator == c;
}

// True if the token has no length and ends where it starts, so that reading never advances. The end
// of the text does so too and is none.
inline bool isStuck(const Place* place) {
    return place->next == place && place->token.keyword != KeywordCode::Finished;
}

// The places of the program text, in order: one for each byte, one for its end, one past that.
extern Place* gPlaces;

// Makes the places of the program text that has just been set; all that was kept is forgotten. The
// first place is gPlaces.
void resetTokens();

// Where a place lies in the text, and back; positions outside the text are put at its ends.
inline const char* textAt(const Place* place) {
    return gProgramBuffer + (place - gPlaces);
}
Place* placeAt(const char* position);

// Reads the token at `place` and keeps it there, or the fault it has. A place is read once.
void keepToken(Place* place);

// The position one character after `position`, but never further than one past the end.
Place* afterCharacter(const Place* position);

// The position just after the first ")" at or after `position`, or the end of the text.
Place* afterCloseParen(const Place* position);

// Keeps the tokens from `from` up to `to`, so that script code on two threads finds them read.
void keepTokens(const Place* from, const Place* to);
