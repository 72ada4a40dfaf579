#include "script/source/lexer.h"

#include <cctype>
#include <cstring>

#include "script/source/text.h"

static char lower(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

KeywordCode lookUpKeyword(char* text) {
    for (char* c = text; *c != '\0'; c++) {
        *c = lower(*c);
    }
    for (const KeywordName* keyword = gKeywords; keyword->name[0] != '\0'; keyword++) {
        const bool canBe = keyword->name[0] == text[0];  // few are: saves most comparisons
        if (canBe && std::strcmp(keyword->name, text) == 0) return keyword->code;
    }
    return KeywordCode::None;
}

void copyText(const Token& token, TokenText& text) {
    const bool isRelation = token.punctuator > 0 && token.punctuator <= kNotEqual;
    const bool isWord = token.kind == TokenKind::Identifier || token.kind == TokenKind::Keyword;
    const char* from = token.start + (token.kind == TokenKind::String ? 1 : 0);
    for (size_t i = 0; i < token.length; i++) {
        text[i] = isRelation ? token.punctuator : isWord ? lower(from[i]) : from[i];
    }
    text[token.length] = '\0';
}

bool isDelimiter(char c) {
    return std::strchr(kEndOfWord, c) != nullptr;
}

static const char* skipBlanks(const char* p) {
    while (byteAt(p) == ' ' || byteAt(p) == '\t')
        p++;
    return p;
}

// Blanks, at most one line end, blanks. What follows a carriage return counts as its line feed.
static const char* skipWhiteSpace(const char* p) {
    p = skipBlanks(p);
    if (byteAt(p) != '\r') return p;
    p = p + 2 < gProgramEnd ? p + 2 : gProgramEnd;
    return skipBlanks(p);
}

// `p` is at the first character of the comment. Returns the position after its line, or null if the
// text ends first.
static const char* skipLineComment(const char* p) {
    const void* end = std::memchr(p, '\n', static_cast<size_t>(gProgramEnd - p));
    return end == nullptr ? nullptr : static_cast<const char*>(end) + 1;
}

// The same for a block comment: the position just after it, or null.
static const char* skipBlockComment(const char* p) {
    for (p += 2; p < gProgramEnd; p++) {
        if (*p == '*' && byteAt(p + 1) == '/') return p + 2;
    }
    return nullptr;
}

static void finishText(Token& token, const char* end) {
    token.keyword = KeywordCode::Finished;
    token.start = token.end = end;
}

static void fail(Token& token, const char* place, TokenFault fault) {
    token.fault = fault;
    token.end = place;
    if (token.start == nullptr) token.start = place;
}

// Makes `c` the whole text, `length` times.
static void takePunctuator(Token& token, const char* p, char c, int length) {
    token.punctuator = c;
    token.length = static_cast<uint8_t>(c == '\0' ? 0 : length);
    token.end = p + length;
}

// Counts the character at `p` in; returns false, the token failed, if there is no room for it.
static bool appendCharacter(Token& token, const char* p) {
    if (size_t{token.length} + 1 >= kTokenCapacity) {
        fail(token, p, TokenFault::TooLong);
        return false;
    }
    token.length++;
    return true;
}

// `p` is after the opening quote. There are no escapes.
static void takeString(Token& token, const char* p) {
    for (; byteAt(p) != '"'; p++) {
        if (p >= gProgramEnd || *p == '\r') return fail(token, p, TokenFault::OpenString);
        if (!appendCharacter(token, p)) return;
    }
    token.kind = TokenKind::String;
    token.end = p + 1;
}

static void takeWord(Token& token, const char* p, TokenKind kind) {
    for (; !isDelimiter(byteAt(p)); p++) {
        if (!appendCharacter(token, p)) return;
    }
    token.kind = kind;
    token.end = p;
    if (kind == TokenKind::Pending) {
        TokenText word;
        copyText(token, word);
        token.keyword = lookUpKeyword(word);
        const bool isKeyword = token.keyword != KeywordCode::None;
        token.kind = isKeyword ? TokenKind::Keyword : TokenKind::Identifier;
    }
}

// The tokens that may also come directly after a comment. Braces are not among them: a "{" there
// gives an empty token, like every other character that starts nothing.
static void takeToken(Token& token, const char* p) {
    token.start = p;
    const char c = byteAt(p);
    const bool orEqual = byteAt(p + 1) == '=';
    if (const char relation = relationCode(c, orEqual); relation != '\0') {
        takePunctuator(token, p, relation, orEqual ? 2 : 1);
    } else if (std::strchr(kDelimiters, c) != nullptr) {
        takePunctuator(token, p, c, 1);
    } else if (c == '"') {
        takeString(token, p + 1);
    } else if (std::isdigit(static_cast<unsigned char>(c)) != 0) {
        takeWord(token, p, TokenKind::Number);
    } else if (std::isalpha(static_cast<unsigned char>(c)) != 0) {
        takeWord(token, p, TokenKind::Pending);
    } else {
        token.end = p;
    }
}

Token readToken(const char* position) {
    Token token;
    if (position >= gProgramEnd) {
        finishText(token, position);
        return token;
    }
    const char* p = skipWhiteSpace(position);
    const char c = byteAt(p);
    const char second = byteAt(p + 1);
    if (c == '\0') {
        finishText(token, p);
    } else if (c == '{' || c == '}') {
        token.kind = TokenKind::Block;
        token.start = p;
        takePunctuator(token, p, c, 1);
    } else if (c == '/' && second == '*') {
        p = skipBlockComment(p);
        if (p == nullptr) fail(token, gProgramEnd, TokenFault::OpenComment);
        if (p != nullptr) takeToken(token, p);
    } else if (c == '/' && second == '/') {
        p = skipLineComment(p);
        if (p == nullptr) finishText(token, gProgramEnd);
        if (p != nullptr) takeToken(token, p);
    } else {
        takeToken(token, p);
    }
    return token;
}
