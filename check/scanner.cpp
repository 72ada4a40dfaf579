#include "check/scanner.h"

#include <algorithm>
#include <cctype>
#include <cstring>

std::string lowerCase(std::string_view text) {
    std::string lowered(text);
    for (char& c : lowered)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lowered;
}

Scanner::Scanner(const std::string& text) : text_(text), lowered_(lowerCase(text)) {}

size_t Scanner::skipBlanks(size_t position) const {
    while (byteAt(position) == ' ' || byteAt(position) == '\t')
        position++;
    return position;
}

size_t Scanner::behindCloseParen(size_t position) const {
    const size_t close = text_.find(')', position);
    return close == std::string::npos ? std::max(position, size()) : close + 1;
}

// The position stands at a "/". Only one comment is skipped: what follows it is read as it stands.
size_t Scanner::skipComment(size_t position, Lexeme& token) const {
    const char second = byteAt(position + 1);
    if (second != '*' && second != '/') return position;
    token.afterComment = true;
    if (second == '/') {
        const size_t end = text_.find('\n', position);
        return end == std::string::npos ? std::string::npos : end + 1;
    }
    const size_t close = text_.find("*/", position + 2);
    if (close != std::string::npos) return close + 2;
    token.fault = TokenFault::OpenComment;
    return size();
}

// Words ---------------------------------------------------------------------------------------

static bool endsWord(char c) {
    return std::strchr(kEndOfWord, c) != nullptr;
}

static KeywordCode keywordOf(std::string_view word) {
    for (const KeywordName& keyword : gKeywords) {
        if (keyword.name[0] != '\0' && word == keyword.name) return keyword.code;
    }
    return KeywordCode::None;
}

void Scanner::readWord(Lexeme& token, TokenKind kind) const {
    size_t end = token.start;
    while (!endsWord(byteAt(end)))
        end++;
    if (end - token.start >= kTokenCapacity) token.fault = TokenFault::TooLong;
    const std::string& from = kind == TokenKind::Number ? text_ : lowered_;
    token.text = std::string_view(from).substr(token.start, end - token.start);
    token.next = end;
    token.kind = kind;
    if (kind != TokenKind::Pending) return;
    token.keyword = keywordOf(token.text);
    const bool isKeyword = token.keyword != KeywordCode::None;
    token.kind = isKeyword ? TokenKind::Keyword : TokenKind::Identifier;
}

void Scanner::readString(Lexeme& token) const {
    const size_t begin = token.start + 1;
    const size_t end = std::min(text_.find_first_of("\"\r", begin), size());
    token.kind = TokenKind::String;
    token.text = std::string_view(text_).substr(begin, end - begin);
    token.next = end + 1;
    if (token.text.size() >= kTokenCapacity) token.fault = TokenFault::TooLong;
    if (byteAt(end) == '"') return;
    token.next = end;
    if (token.fault == TokenFault::None) token.fault = TokenFault::OpenString;
}

// Punctuation ---------------------------------------------------------------------------------

// The texts of the relational operators: the code, once for each byte of the source.
static const char kRelationTexts[][3] = {
    {kLess, 0, 0},       {kLessOrEqual, kLessOrEqual, 0},
    {kGreater, 0, 0},    {kGreaterOrEqual, kGreaterOrEqual, 0},
    {kEqual, kEqual, 0}, {kNotEqual, kNotEqual, 0},
};

bool Scanner::readRelation(Lexeme& token) const {
    const char code = relationCode(byteAt(token.start), byteAt(token.start + 1) == '=');
    if (code == '\0') return false;
    token.text = kRelationTexts[code - 1];
    token.next = token.start + token.text.size();
    return true;
}

// The tokens that may also stand directly behind a comment.
void Scanner::readPlain(Lexeme& token) const {
    const char c = byteAt(token.start);
    token.next = token.start;
    if (readRelation(token)) return;
    if (c == '\0') {  // behind a comment: the zero counts as a delimiter with an empty text
        token.next = token.start + 1;
    } else if (std::strchr(kDelimiters, c) != nullptr) {
        token.text = std::string_view(text_).substr(token.start, 1);
        token.next = token.start + 1;
    } else if (c == '"') {
        readString(token);
    } else if (std::isdigit(static_cast<unsigned char>(c)) != 0) {
        readWord(token, TokenKind::Number);
    } else if (std::isalpha(static_cast<unsigned char>(c)) != 0) {
        readWord(token, TokenKind::Pending);
    }
}

static Lexeme finish(Lexeme token, size_t position) {
    token.keyword = KeywordCode::Finished;
    token.start = token.next = position;
    return token;
}

Lexeme Scanner::read(size_t position) const {
    Lexeme token;
    token.from = position;
    if (position >= size()) return finish(token, position);

    size_t p = skipBlanks(position);
    if (byteAt(p) == '\r') {
        // Whatever follows the carriage return is taken for its line feed.
        token.afterLineEnd = true;
        p = skipBlanks(std::min(p + 2, size()));
    }
    if (p >= size()) return finish(token, p);
    token.start = p;
    if (byteAt(p) == '{' || byteAt(p) == '}') {
        token.kind = TokenKind::Block;
        token.text = std::string_view(text_).substr(p, 1);
        token.next = p + 1;
        return token;
    }
    if (byteAt(p) == '/') p = skipComment(p, token);
    if (p == std::string::npos) return finish(token, size());
    token.start = token.next = p;
    if (token.fault == TokenFault::None) readPlain(token);
    return token;
}

Lexeme Scanner::readReal(size_t position) const {
    for (;;) {
        const Lexeme token = read(position);
        if (!token.isNothing() || token.fault != TokenFault::None) return token;
        position = token.next == position ? position + 1 : token.next;
    }
}
