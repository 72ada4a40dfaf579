#include "script/errors/token_reader.h"

#include <cctype>
#include <cstdio>

#include "script/errors/endless.h"
#include "script/errors/errors.h"
#include "script/errors/halt.h"

// The error that taking a token with this fault raises.
static ScriptError errorOf(TokenFault fault) {
    switch (fault) {
        case TokenFault::TooLong:
            return ScriptError::TokenTooLong;
        case TokenFault::OpenComment:
            return ScriptError::CommentNotClosed;
        default:
            return ScriptError::Syntax;
    }
}

void readPlace(Place* place) {
    if (place->state == PlaceState::Unread) keepToken(place);
    answerWithPlace(place);
    if (place->state == PlaceState::Faulty) syntaxError(errorOf(place->token.fault), place->next);
}

Symbol* checkDeclaredSymbol(Place* at) {
    TokenText text;
    copyText(at->token, text);
    if (at->token.length > kMaxNameLength) {
        std::printf("Name is too long: %s\n", text);
        abortProcess();
    }
    return at->symbol = internSymbol(text);
}

static const char* unbalancedReason(char open) {
    if (gProgramCut) return "the script is longer than 9999 bytes and its end is cut off";
    return open == '{' ? "the text ends inside a block: a \"{\" has no \"}\""
                       : "the text ends inside a \"for\": its \"(\" has no \")\"";
}

Place* walkToBalance(Place* position, char open, char close) {
    int depth = 1;
    Place* at = tokenAt(position);
    for (;; at = tokenAt(at->next)) {
        if (holds(at, open)) depth++;
        if (holds(at, close) && --depth == 0) break;
        waitIfStuck(at);
        if (at->token.keyword == KeywordCode::Finished) {
            waitEndlessly(unbalancedReason(open), at->next);
        }
    }
    (open == '{' ? position->braceEnd : position->parenEnd) = at;
    return at;
}

// Says what is at the position, for someone who reads the text in an editor.
void waitAtCharacter(const Place* at) {
    const unsigned char c = static_cast<unsigned char>(byteAt(textAt(at->next)));
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
    waitEndlessly(reason, at->next);
}
