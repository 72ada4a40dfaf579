// The tokens of a script as the engine's lexer reads them (script/source/lexer.h), with what the
// checker wants to know besides: where a token begins, and what was skipped before it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "script/source/lexer.h"

struct Lexeme {
    TokenKind kind = TokenKind::Delimiter;
    KeywordCode keyword = KeywordCode::None;
    TokenFault fault = TokenFault::None;
    std::string_view text;      // as the engine has it in gToken: words lowered, operators as codes
    size_t from = 0;            // the position that the token was asked for at
    size_t start = 0;           // its first byte, after blanks and comments
    size_t next = 0;            // the position after it
    bool afterComment = false;  // a comment was skipped before it
    bool afterLineEnd = false;  // a line end was skipped before it

    bool is(char c) const { return kind != TokenKind::String && text.size() == 1 && text[0] == c; }
    bool isFinished() const { return keyword == KeywordCode::Finished; }
    bool isFaulty() const { return fault != TokenFault::None; }
    bool isEmpty() const { return text.empty(); }
    bool isType() const { return keyword == KeywordCode::Char || keyword == KeywordCode::Int; }
    bool isIdentifier() const { return kind == TokenKind::Identifier; }
    // An empty token that is neither the end of the text nor an empty string.
    bool isNothing() const { return text.empty() && kind == TokenKind::Delimiter && !isFinished(); }
    bool isRelation() const {
        return kind == TokenKind::Delimiter && !text.empty() && text[0] > 0 && text[0] <= kNotEqual;
    }
};

class Scanner {
public:
    // Keeps a reference to the text, and makes it the program text of the lexer: one scanner at a
    // time.
    explicit Scanner(const std::string& text);

    Lexeme read(size_t position) const;

    // The first token from the position on that is not empty, or the end of the text. Characters
    // that start nothing are passed over.
    Lexeme readReal(size_t position) const;

    // The byte there; zero at the end and after it.
    char byteAt(size_t position) const { return position < text_.size() ? text_[position] : '\0'; }
    size_t size() const { return text_.size(); }
    std::string_view source(const Lexeme& token) const {
        return std::string_view(text_).substr(token.start, token.next - token.start);
    }
    std::string_view source(size_t from, size_t to) const {
        return std::string_view(text_).substr(from, to - from);
    }
    // Where the words begin, at or after the position; the end of the text if they are not there.
    size_t find(std::string_view words, size_t position) const {
        return std::min(text_.find(words, position), size());
    }
    // After the first ")" from the position on, or the end of the text.
    size_t afterCloseParen(size_t position) const;

private:
    size_t skipBlanks(size_t position) const;
    void noteSkipped(Lexeme& lexeme) const;
    void passLongToken(Lexeme& lexeme) const;
    std::string_view textOf(const Lexeme& lexeme, const Token& token) const;

    const std::string& text_;
    std::string lowered_;
};

// The text in lower case, as the engine lowers names.
std::string lowerCase(std::string_view text);
