#include "script/tokens.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "script/halt.h"

static std::vector<Place> gPlaceStorage(1);

Place* gPlaces = gPlaceStorage.data();
Place* gProgramPos = gPlaceStorage.data();
Place* gToken = gPlaceStorage.data();

void resetTokens() {
    forgetNames();
    gPlaceStorage.assign(static_cast<size_t>(gProgramEnd - gProgramBuffer) + 2, Place());
    gPlaces = gProgramPos = gToken = gPlaceStorage.data();
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
    place.state = token.faulty ? PlaceState::Faulty : PlaceState::Kept;
}

void readPlace(Place* place) {
    if (place->state == PlaceState::Unread) keepToken(*place);
    if (place->state == PlaceState::Faulty) {
        gProgramPos = place->next;
        syntaxError(place->fault);
    }
}

void keepTokens(const Place* from, const Place* to) {
    while (from < to) {
        Place& place = gPlaces[from - gPlaces];
        if (place.state == PlaceState::Unread) keepToken(place);
        if (place.state == PlaceState::Faulty || place.next == from) return;
        from = place.next;
    }
}

Name* checkDeclaredName() {
    if (gToken->length > kMaxNameLength) {
        std::printf("Name is too long: %s\n", gToken->text);
        abortProcess();
    }
    return gToken->name = nameOf(gToken->text);
}

// Moving --------------------------------------------------------------------------------------

void skipCharacter() {
    gProgramPos = placeAt(textAt(gProgramPos) + 1);
}

void skipPastCloseParen() {
    const char* position = textAt(gProgramPos);
    while (position < gProgramEnd && *position != ')')
        position++;
    gProgramPos = placeAt(position < gProgramEnd ? position + 1 : gProgramEnd);
}

static const char* unbalancedReason(char open) {
    if (gProgramCut) return "the script is longer than 9999 bytes and its end is cut off";
    return open == '{' ? "the text ends inside a block: a \"{\" has no \"}\""
                       : "the text ends inside a \"for\": its \"(\" has no \")\"";
}

// Walks over places, not gProgramPos: what the other thread does to the position must not be kept.
static Place* findBalance(Place* place, char open, char close) {
    for (int depth = 1;; place = place->next) {
        countStep();
        if (place->state != PlaceState::Kept) readPlace(place);
        if (place->symbol == open) depth++;
        if (place->symbol == close && --depth == 0) return place;
        if (place->keyword != KeywordCode::Finished && !place->stuck) continue;
        takeToken(place);
        waitIfStuck();
        waitForEver(unbalancedReason(open));
    }
}

void skipBalanced(char open, char close) {
    Place* first = peekToken();
    Place*& end = open == '{' ? first->braceEnd : first->bracketEnd;
    if (end == nullptr) end = findBalance(first, open, close);
    takeToken(end);
}

// Says what stands at the position, for someone who reads the text in an editor.
void waitAtCharacter() {
    const unsigned char c = static_cast<unsigned char>(byteAt(textAt(gProgramPos)));
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
    waitForEver(reason);
}
