#include "script/tokens.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "script/halt.h"

Name gNoName;
static std::vector<Place> gPlaceStorage(1);

Place* gPlaces = gPlaceStorage.data();

void resetTokens() {
    forgetNames();
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
static Binding bindingOf(const Place& place) {
    switch (place.symbol) {
        case '*':
        case '/':
        case '%':
            return Binding::Product;
        case '+':
        case '-':
            return Binding::Sum;
        case kLess:
        case kLessOrEqual:
        case kGreater:
        case kGreaterOrEqual:
        case kEqual:
        case kNotEqual:
            return Binding::Relation;
        default:
            return place.length == 0 ? Binding::Relation : Binding::None;
    }
}

static void keepMeaning(Place& place) {
    place.binding = bindingOf(place);
    const bool isEmpty = place.length == 0 && place.kind == TokenKind::Delimiter;
    // A "/" directly behind a comment is read as the start of one when it is read at its own place.
    const char behind = byteAt(textAt(place.next));
    const bool opensComment = place.symbol == '/' && (behind == '/' || behind == '*');
    place.plain = place.length > 0 && place.kind != TokenKind::String && !opensComment;
    place.stuck = isEmpty && place.keyword == KeywordCode::None && place.next == &place;
    if (place.kind == TokenKind::Identifier) place.name = nameOf(place.text);
    if (place.kind == TokenKind::Number) {
        place.number = static_cast<int32_t>(std::strtol(place.text, nullptr, 10));
    }
}

static void keepToken(Place& place) {
    const Token token = readToken(textAt(&place));
    place.kind = token.kind;
    place.keyword = token.keyword;
    place.symbol = token.symbol;
    place.length = token.length;
    place.fault = token.fault;
    place.next = placeAt(token.end);
    place.back = placeAt(token.end - token.length);
    std::memcpy(place.text, token.text, sizeof place.text);
    if (!token.faulty) keepMeaning(place);
    // Last of all: the other thread may read the place at any moment. This orders the stores for
    // the compiler, and x86 keeps that order; another processor may show the other thread a place
    // whose token is kept and whose fields are still those of an unread one.
    std::atomic_signal_fence(std::memory_order_release);
    place.state = token.faulty ? PlaceState::Faulty : PlaceState::Kept;
}

void readPlace(Place* place) {
    if (place->state == PlaceState::Unread) keepToken(*place);
    if (place->state == PlaceState::Faulty) syntaxError(place->fault, place->next);
}

void keepTokens(const Place* from, const Place* to) {
    while (from < to) {
        Place& place = gPlaces[from - gPlaces];
        if (place.state == PlaceState::Unread) keepToken(place);
        if (place.state == PlaceState::Faulty || place.next == from) return;
        from = place.next;
    }
}

Name* checkDeclaredName(Place* token) {
    if (token->length > kMaxNameLength) {
        std::printf("Name is too long: %s\n", token->text);
        abortProcess();
    }
    return token->name = nameOf(token->text);
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

static const char* unbalancedReason(char open) {
    if (gProgramCut) return "the script is longer than 9999 bytes and its end is cut off";
    return open == '{' ? "the text ends inside a block: a \"{\" has no \"}\""
                       : "the text ends inside a \"for\": its \"(\" has no \")\"";
}

static Place* walkToBalance(Place* position, char open, char close) {
    int depth = 1;
    for (Place* token = tokenAt(position);; token = tokenAt(token->next)) {
        if (token->symbol == open) depth++;
        if (token->symbol == close && --depth == 0) return token;
        waitIfStuck(token);
        if (token->keyword != KeywordCode::Finished) continue;
        waitForEver(unbalancedReason(open), token->next);
    }
}

Place* findBalance(Place* position, char open, char close) {
    Place*& end = open == '{' ? position->braceEnd : position->bracketEnd;
    if (end == nullptr) end = walkToBalance(position, open, close);
    return end;
}

// Says what stands at the position, for someone who reads the text in an editor.
void waitAtCharacter(const Place* token) {
    const unsigned char c = static_cast<unsigned char>(byteAt(textAt(token->next)));
    char reason[160];
    if (c == '\n') {
        std::snprintf(reason, sizeof reason,
                      "a line feed without a carriage return before it: "
                      "save the script with CR LF line ends");
    } else if (std::isprint(c) != 0) {
        std::snprintf(reason, sizeof reason,
                      "the character '%c' starts nothing in the language: remove it", c);
    } else {
        std::snprintf(reason, sizeof reason,
                      "the byte 0x%02X starts nothing in the language: remove it", c);
    }
    waitForEver(reason, token->next);
}
