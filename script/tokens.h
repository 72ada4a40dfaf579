// The tokens of the script, and the memory that makes reading one again cost next to nothing.
//
// The text never changes after loading and a token depends on its position alone, so a token is
// read by the lexer once and kept. For each position of the text there is one Place, which holds
// the token that is read there; a position is a pointer to its place, and so is a token. Kept with
// the token are its value or its name, the places around it, and where the brackets that open
// before it close. None of that can be seen from outside: it is what reading the text again would
// find.
//
// There is no token list and no reading position in here. Who reads holds the place it has come to
// as a value: tokenAt(position) of script/token_reader.h is the token there, tokenAt(token->next)
// the one after it, and token->back is where reading goes on when a token is put back.
//
// By default two threads run script code in this one state, unlocked: they may read each other's
// tokens then. Every pointer stays inside the storage, in whatever order the processor shows one
// thread what the other wrote: the pointers of a place are never null, and until its token is kept
// they lead to the place itself and to a name that stands for nothing. ZEL_TICKS=main avoids it.
#pragma once

#include <cstdint>

#include "script/lexer.h"
#include "script/names.h"
#include "script/text.h"

enum class PlaceState : uint8_t {
    Unread,
    Kept,   // the token has been read and is here
    Faulty  // it has been read and has a fault
};

// What an expression takes the token behind an operand for; the more, the closer it binds.
enum class Binding : uint8_t {
    None,      // the end of the expression
    Relation,  // the relational operators and every empty token
    Sum,       // "+" "-"
    Product    // "*" "/" "%"
};

// What an operand that starts with the token is, if an earlier visit found that out; the token
// behind it has then been read too.
enum class Operand : uint8_t {
    Other,
    Number,
    Variable  // no call, and behind it stands a plain token but no "="
};

// The name of tokens that have none. No variable, no function and no built-in is called so.
extern Name gNoName;

struct Place {
    PlaceState state = PlaceState::Unread;
    Binding binding = Binding::None;
    Operand operand = Operand::Other;
    bool plain = false;  // put back, it is read again as it was; not so an empty one or a string
    bool stuck = false;  // an empty token that ends where it was read: reading on reads it for ever
    TokenKind kind = TokenKind::Delimiter;
    KeywordCode keyword = KeywordCode::None;
    char symbol = 0;            // as in Token
    uint8_t length = 0;         // of the token's text
    int32_t number = 0;         // of a number: its value
    Place* next = this;         // after the token; of a faulty one, at the fault
    Place* back = this;         // where putting the token back leads
    Name* name = &gNoName;      // of an identifier, and of what a declaration took for a name
    Place* braceEnd = nullptr;  // where findBalance from here found the "}"
    Place* parenEnd = nullptr;  // the same for the ")"
    TokenFault fault = TokenFault::None;
    char text[kTokenCapacity] = "";
};

// The places of the program text, in order: one for each byte, one for its end, one behind that.
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

// The position one character behind `position`, but never further than one past the end.
Place* afterCharacter(const Place* position);

// The position just behind the first ")" at or after `position`, or the end of the text.
Place* afterCloseParen(const Place* position);

// Keeps the tokens from `from` up to `to`, so that script code on two threads finds them read.
void keepTokens(const Place* from, const Place* to);
