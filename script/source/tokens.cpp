#include "script/source/tokens.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <vector>

Symbol gNoSymbol;
static std::vector<Place> gPlaceStorage(1);

Place* gPlaces = gPlaceStorage.data();

void resetTokens() {
    forgetSymbols();
    gPlaceStorage.clear();
    gPlaceStorage.resize(static_cast<size_t>(gProgramEnd - gProgramBuffer) + 2);
    gPlaces = gPlaceStorage.data();
}

Place* placeAt(const char* position) {
    return gPlaces +
           (std::clamp(position, static_cast<const char*>(gProgramBuffer), gProgramEnd + 1) -
            gProgramBuffer);
}

// Reading -------------------------------------------------------------------------------------

// The relational operators are a zero-terminated set, and an empty token is found in it.
static Precedence precedenceOf(const Token& token) {
    switch (token.punctuator) {
        case '*':
        case '/':
        case '%':
            return Precedence::Product;
        case '+':
        case '-':
            return Precedence::Sum;
        case kLess:
        case kLessOrEqual:
        case kGreater:
        case kGreaterOrEqual:
        case kEqual:
        case kNotEqual:
            return Precedence::Relation;
        default:
            return token.length == 0 ? Precedence::Relation : Precedence::None;
    }
}

// A "/" directly after a comment is read as the start of one when it is read at its own place.
static bool opensComment(const Token& token) {
    const char after = byteAt(token.end);
    return token.punctuator == '/' && (after == '/' || after == '*');
}

static void rememberMeaning(Place& place) {
    const Token& token = place.token;
    place.precedence = precedenceOf(token);
    place.plain = token.length > 0 && token.kind != TokenKind::String && !opensComment(token);
    if (token.kind != TokenKind::Identifier && token.kind != TokenKind::Number) return;
    TokenText text;
    copyText(token, text);
    if (token.kind == TokenKind::Identifier) {
        place.symbol = internSymbol(text);
    } else {
        place.number = static_cast<int32_t>(std::strtol(text, nullptr, 10));
    }
}

void keepToken(Place* place) {
    const Token token = readToken(textAt(place));
    place->token = token;
    place->next = placeAt(token.end);
    place->back = placeAt(token.end - token.length);
    if (token.fault == TokenFault::None) rememberMeaning(*place);
    // Last of all: the other thread may read the place at any moment. This orders the stores for
    // the compiler, and x86 keeps that order; another processor may show the other thread a place
    // whose token is kept and whose fields are still those of an unread one.
    std::atomic_signal_fence(std::memory_order_release);
    place->state = token.fault == TokenFault::None ? PlaceState::Kept : PlaceState::Faulty;
}

void keepTokens(const Place* from, const Place* to) {
    while (from < to) {
        Place& place = gPlaces[from - gPlaces];
        if (place.state == PlaceState::Unread) keepToken(&place);
        if (place.state == PlaceState::Faulty || place.next == from) return;
        from = place.next;
    }
}

// Moving --------------------------------------------------------------------------------------

Place* afterCharacter(const Place* position) {
    return placeAt(textAt(position) + 1);
}

Place* afterCloseParen(const Place* position) {
    const char* character = textAt(position);
    while (character < gProgramEnd && *character != ')')
        character++;
    return placeAt(character < gProgramEnd ? character + 1 : gProgramEnd);
}
