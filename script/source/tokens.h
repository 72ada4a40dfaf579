// The tokens of the script, and the memory that makes reading one again cost next to nothing.
//
// The text never changes after loading and a token depends on its position alone, so a token is
// read by the lexer once and kept. Each position of the text has a Place, which holds the token
// that is read there; a position is a pointer to its place, and so is a token. Kept with the token
// are its value or symbol, the places around it, and where the brackets opened before it close:
// what reading the text again would find.
//
// "x = 5;" at the start of the text:
//
//     byte      0: x         1: blank   2: =       3: blank   4: 5       5: ;
//     place     "x" symbol   "="        "="        "5"        "5" 5      ";"
//     next      1            3          3          5          5          6
//
// There is no token list and no reading position in here. Who reads holds the place it has come to
// as a value: tokenAt(position) of script/errors/token_reader.h is the token there,
// tokenAt(token->next) the one after it, and token->back is where reading goes on when a token is
// put back.
//
// By default two threads run script code in this one state, unlocked: they may read each other's
// tokens then. Every pointer stays inside the storage, in whatever order the processor shows one
// thread what the other wrote: the pointers of a place are never null, and until its token is kept
// they lead to the place itself and to a name that stands for nothing. ZEL_TICKS=main avoids it.
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

// Cached kind of the operand that starts with the token; the token after it has then been read too.
enum class Operand : uint8_t {
    Other,
    Number,
    Variable  // no call, and the token after it is plain and no "="
};

// The name of tokens that have none. No variable, no function and no built-in is called so.
extern Symbol gNoSymbol;

struct Place {
    PlaceState state = PlaceState::Unread;
    Precedence precedence = Precedence::None;
    Operand operand = Operand::Other;
    bool plain =
        false;  // reading again after putting back gives it again: not so empty ones, strings
    bool stuck = false;  // zero length, ends where it starts: reading never advances
    TokenKind kind = TokenKind::Delimiter;
    KeywordCode keyword = KeywordCode::None;
    char punctuator = 0;        // as in Token
    uint8_t length = 0;         // of the token's text
    int32_t number = 0;         // of a number: its value
    Place* next = this;         // after the token; with a fault, at the fault
    Place* back = this;         // where putting the token back leads
    Symbol* name = &gNoSymbol;  // of an identifier, and of what a declaration took for a name
    Place* braceEnd = nullptr;  // where findBalance from here found the "}"
    Place* parenEnd = nullptr;  // the same for the ")"
    TokenFault fault = TokenFault::None;
    char text[kTokenCapacity] = "";
};

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
