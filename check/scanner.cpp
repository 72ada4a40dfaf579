#include "check/scanner.h"

#include <algorithm>
#include <cctype>

#include "script/source/text.h"

std::string lowerCase(std::string_view text) {
    std::string lowered(text);
    for (char& c : lowered)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lowered;
}

Scanner::Scanner(const std::string& text) : text_(text), lowered_(lowerCase(text)) {
    setProgramText(text_.c_str(), "");
}

size_t Scanner::skipBlanks(size_t position) const {
    while (byteAt(position) == ' ' || byteAt(position) == '\t')
        position++;
    return position;
}

size_t Scanner::afterCloseParen(size_t position) const {
    const size_t close = text_.find(')', position);
    return close == std::string::npos ? std::max(position, size()) : close + 1;
}

// Between the position asked for and the token are blanks, at most one line end, at most one
// comment.
void Scanner::noteSkipped(Lexeme& lexeme) const {
    size_t p = skipBlanks(lexeme.from);
    if (p >= lexeme.start) return;
    lexeme.afterLineEnd = byteAt(p) == '\r';
    if (lexeme.afterLineEnd) p = skipBlanks(p + 2);
    lexeme.afterComment = p < lexeme.start;
}

// The lexer stops at the first character that has no room: the rest is not a token of its own.
void Scanner::passLongToken(Lexeme& lexeme) const {
    const bool isString = byteAt(lexeme.start) == '"';
    const char* const ends = isString ? "\"\r" : kEndOfWord;
    const size_t end = std::min(text_.find_first_of(ends, lexeme.start + 1), size());
    lexeme.next = isString && byteAt(end) == '"' ? end + 1 : end;
    lexeme.kind = isString ? TokenKind::String : TokenKind::Identifier;
}

// The texts of the relational operators: the code, once for each byte of the source.
static const char kRelationTexts[][3] = {
    {kLess, 0, 0},       {kLessOrEqual, kLessOrEqual, 0},
    {kGreater, 0, 0},    {kGreaterOrEqual, kGreaterOrEqual, 0},
    {kEqual, kEqual, 0}, {kNotEqual, kNotEqual, 0},
};

// The token's text as a piece of the script, or of the script in lower case: it outlives the token.
std::string_view Scanner::textOf(const Lexeme& lexeme, const Token& token) const {
    if (lexeme.isFinished()) return {};  // which may be asked for beyond the end
    const size_t size = lexeme.next - lexeme.start;
    switch (lexeme.kind) {
        case TokenKind::Identifier:
        case TokenKind::Keyword:
            return std::string_view(lowered_).substr(lexeme.start, size);
        case TokenKind::String: {
            const size_t quotes = byteAt(lexeme.next - 1) == '"' && size > 1 ? 2 : 1;
            return std::string_view(text_).substr(lexeme.start + 1, size - quotes);
        }
        default:
            const bool isRelation = token.punctuator > 0 && token.punctuator <= kNotEqual;
            if (isRelation) return kRelationTexts[token.punctuator - 1];
            return std::string_view(text_).substr(lexeme.start, token.length);
    }
}

Lexeme Scanner::read(size_t position) const {
    const Token token = readToken(text_.c_str() + position);
    Lexeme lexeme;
    lexeme.kind = token.kind;
    lexeme.keyword = token.keyword;
    lexeme.fault = token.fault;
    lexeme.from = position;
    lexeme.start = static_cast<size_t>(token.start - text_.c_str());
    lexeme.next = static_cast<size_t>(token.end - text_.c_str());
    if (token.fault == TokenFault::OpenString) lexeme.kind = TokenKind::String;
    if (token.fault == TokenFault::TooLong) passLongToken(lexeme);
    noteSkipped(lexeme);
    lexeme.text = textOf(lexeme, token);
    return lexeme;
}

Lexeme Scanner::readReal(size_t position) const {
    for (;;) {
        const Lexeme token = read(position);
        if (!token.isNothing() || token.fault != TokenFault::None) return token;
        position = token.next == position ? position + 1 : token.next;
    }
}
