#include "script/lexer.h"

#include <cctype>
#include <cstdio>
#include <cstring>

#include "script/errors.h"
#include "script/halt.h"
#include "script/text.h"

char gToken[kTokenCapacity];
TokenKind gTokenKind = TokenKind::Delimiter;
KeywordCode gKeywordCode = KeywordCode::None;

const KeywordName gKeywords[] = {
    {"if", KeywordCode::If},   {"else", KeywordCode::Else},     {"for", KeywordCode::For},
    {"do", KeywordCode::Do},   {"while", KeywordCode::While},   {"char", KeywordCode::Char},
    {"int", KeywordCode::Int}, {"return", KeywordCode::Return}, {"end", KeywordCode::End},
    {"", KeywordCode::End},
};

// Searches in these sets are searches in zero-terminated texts: a zero byte is found in each.
static const char kEndOfWord[] = " !;,+-<>'/*%^=()\t\r";
static const char kDelimiters[] = "+-*^/%=;(),'";

KeywordCode lookUpKeyword(char* text) {
    for (char* c = text; *c != '\0'; c++) {
        *c = static_cast<char>(std::tolower(static_cast<unsigned char>(*c)));
    }
    for (const KeywordName* keyword = gKeywords; keyword->name[0] != '\0'; keyword++) {
        if (std::strcmp(keyword->name, text) == 0) return keyword->code;
    }
    return KeywordCode::None;
}

bool isDelimiter(char c) {
    return std::strchr(kEndOfWord, c) != nullptr;
}

static const char* skipBlanks(const char* p) {
    while (byteAt(p) == ' ' || byteAt(p) == '\t')
        p++;
    return p;
}

// Blanks, at most one line end, blanks. What follows a carriage return is taken for its line feed.
static const char* skipWhiteSpace(const char* p) {
    p = skipBlanks(p);
    if (byteAt(p) != '\r') return p;
    p = p + 2 < gProgramEnd ? p + 2 : gProgramEnd;
    return skipBlanks(p);
}

// `p` stands at the first character of the comment. Returns the place behind its line, or null if
// the text ends before its line does.
static const char* skipLineComment(const char* p) {
    const void* end = std::memchr(p, '\n', static_cast<size_t>(gProgramEnd - p));
    return end == nullptr ? nullptr : static_cast<const char*>(end) + 1;
}

// `p` stands at the first character of the comment. Returns the place just behind it.
static const char* skipBlockComment(const char* p) {
    for (p += 2; p < gProgramEnd; p++) {
        if (*p == '*' && byteAt(p + 1) == '/') return p + 2;
    }
    gProgramPos = gProgramEnd;
    syntaxError(ScriptError::CommentNotClosed);
}

// The end of the text can be read any number of times: the position stays where it is.
static TokenKind finishText() {
    gKeywordCode = KeywordCode::Finished;
    return TokenKind::Delimiter;
}

static TokenKind takeCharacter(const char* p, TokenKind kind) {
    gToken[0] = byteAt(p);
    gToken[1] = '\0';
    gTokenKind = kind;
    gProgramPos = p + 1;
    return kind;
}

// Returns false, having read nothing, if `p` does not stand at a relational operator: so for a lone
// "=" or "!".
static bool takeRelational(const char* p) {
    const bool orEqual = byteAt(p + 1) == '=';
    char code = 0;
    switch (byteAt(p)) {
        case '<':
            code = orEqual ? kLessOrEqual : kLess;
            break;
        case '>':
            code = orEqual ? kGreaterOrEqual : kGreater;
            break;
        case '=':
            code = orEqual ? kEqual : '\0';
            break;
        case '!':
            code = orEqual ? kNotEqual : '\0';
            break;
        default:
            break;
    }
    if (code == 0) return false;
    gToken[0] = code;
    gToken[1] = orEqual ? code : '\0';
    gToken[2] = '\0';
    gProgramPos = orEqual ? p + 2 : p + 1;
    return true;
}

// Appends the character at `p` to the token, which holds `length` characters so far.
static void appendCharacter(size_t length, const char* p) {
    if (length + 1 >= kTokenCapacity) {
        gProgramPos = p;
        syntaxError(ScriptError::TokenTooLong);
    }
    gToken[length] = *p;
    gToken[length + 1] = '\0';
}

// `p` stands behind the opening quote. There are no escapes.
static TokenKind takeString(const char* p) {
    for (size_t length = 0; byteAt(p) != '"'; length++, p++) {
        if (p >= gProgramEnd || *p == '\r') {
            gProgramPos = p;
            syntaxError(ScriptError::Syntax);
        }
        appendCharacter(length, p);
    }
    gProgramPos = p + 1;
    return gTokenKind = TokenKind::String;
}

static TokenKind takeWord(const char* p, TokenKind kind) {
    for (size_t length = 0; !isDelimiter(byteAt(p)); length++, p++)
        appendCharacter(length, p);
    gProgramPos = p;
    gTokenKind = kind;
    if (kind == TokenKind::Pending) {
        gKeywordCode = lookUpKeyword(gToken);
        const bool isKeyword = gKeywordCode != KeywordCode::None;
        gTokenKind = isKeyword ? TokenKind::Keyword : TokenKind::Identifier;
    }
    return gTokenKind;
}

// The tokens that may also stand directly behind a comment. Braces are not among them: a "{" there
// gives an empty token, like every other character that starts nothing.
static TokenKind takeToken(const char* p) {
    const char c = byteAt(p);
    if (takeRelational(p)) return TokenKind::Delimiter;
    if (std::strchr(kDelimiters, c) != nullptr) return takeCharacter(p, TokenKind::Delimiter);
    if (c == '"') return takeString(p + 1);
    if (std::isdigit(static_cast<unsigned char>(c)) != 0) return takeWord(p, TokenKind::Number);
    if (std::isalpha(static_cast<unsigned char>(c)) != 0) return takeWord(p, TokenKind::Pending);
    gProgramPos = p;
    return TokenKind::Delimiter;
}

#ifdef ZEL_STEP_BUDGET
void countStep();  // of the fuzz target: ends scripts that would never end
#else
static void countStep() {}
#endif

TokenKind getToken() {
    countStep();
    gTokenKind = TokenKind::Delimiter;
    gKeywordCode = KeywordCode::None;
    gToken[0] = '\0';

    const char* p = gProgramPos;
    if (p >= gProgramEnd) return finishText();
    p = skipWhiteSpace(p);
    gProgramPos = p;
    const char c = byteAt(p);
    if (c == '\0') return finishText();
    if (c == '{' || c == '}') return takeCharacter(p, TokenKind::Block);
    if (c == '/' && byteAt(p + 1) == '*') p = skipBlockComment(p);
    if (c == '/' && byteAt(p + 1) == '/') p = skipLineComment(p);
    if (p == nullptr) {
        gProgramPos = gProgramEnd;
        return finishText();
    }
    return takeToken(p);
}

void putBack() {
    const char* back = gProgramPos - std::strlen(gToken);
    // The other thread may have moved the position since the token was read.
    gProgramPos = back < gProgramBuffer ? gProgramBuffer : back;
}

void setToken(const char* name) {
    if (std::strlen(name) >= kTokenCapacity) abortProcess();
    std::strcpy(gToken, name);
    gTokenKind = TokenKind::Identifier;
    gKeywordCode = KeywordCode::None;
}

// Says what stands at the position, for someone who reads the text in an editor.
static void waitAtCharacter() {
    const unsigned char c = static_cast<unsigned char>(byteAt(gProgramPos));
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

void waitIfStuck(const char* before) {
    const bool nothingRead =
        tokenIsEmpty() && gTokenKind == TokenKind::Delimiter && gKeywordCode == KeywordCode::None;
    if (nothingRead && gProgramPos == before) waitAtCharacter();
}

void getTokenInEndlessLoop() {
    const char* before = gProgramPos;
    getToken();
    if (gKeywordCode == KeywordCode::Finished) {
        waitForEver("the text ends inside a block: a \"{\" has no \"}\"");
    }
    waitIfStuck(before);
}
