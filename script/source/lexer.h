// The lexer: reads the token at a position of the program text.
//
// A token depends on nothing but its position, errors included: reading has no side effects. Who
// wants the tokens one after the other uses script/source/tokens.h.
//
// Lines end in CR LF. A bare line feed is not white space: it stops every construct it meets.
#pragma once

#include <cstddef>
#include <cstdint>

enum class TokenKind : int8_t {
    Delimiter = 0,  // punctuation, relational operators, empty tokens, the end of the text
    Identifier = 1,
    Number = 2,
    Keyword = 3,
    Pending = 4,  // a word not yet looked up; never seen outside the lexer
    String = 5,
    Block = 6  // "{" or "}"
};

enum class KeywordCode : int8_t {
    None = 0,
    Char = 1,
    Int = 2,
    If = 3,
    Else = 4,
    For = 5,
    Do = 6,
    While = 7,
    Return = 9,
    Finished = 11,  // the end of the text
    End = 12
};

// A relational operator is its code as the token's text: one byte for a one-character operator,
// the byte twice for a two-character one. So the text is as long as its source.
constexpr char kLess = 1;
constexpr char kLessOrEqual = 2;
constexpr char kGreater = 3;
constexpr char kGreaterOrEqual = 4;
constexpr char kEqual = 5;
constexpr char kNotEqual = 6;

// The code of the operator that starts with `first`, with a "=" after it or without; 0 if that is
// no relational operator: so for a lone "=" or "!".
constexpr char relationCode(char first, bool orEqual) {
    switch (first) {
        case '<':
            return orEqual ? kLessOrEqual : kLess;
        case '>':
            return orEqual ? kGreaterOrEqual : kGreater;
        case '=':
            return orEqual ? kEqual : '\0';
        case '!':
            return orEqual ? kNotEqual : '\0';
        default:
            return '\0';
    }
}

// What is wrong with a token that cannot be read.
enum class TokenFault : uint8_t {
    None,
    OpenString,  // not closed on its line
    TooLong,
    OpenComment  // not closed before the end of the text
};

struct KeywordName {
    char name[20];
    KeywordCode code;
};

// The keywords, ended by an entry with an empty name.
inline constexpr KeywordName gKeywords[] = {
    {"if", KeywordCode::If},   {"else", KeywordCode::Else},     {"for", KeywordCode::For},
    {"do", KeywordCode::Do},   {"while", KeywordCode::While},   {"char", KeywordCode::Char},
    {"int", KeywordCode::Int}, {"return", KeywordCode::Return}, {"end", KeywordCode::End},
    {"", KeywordCode::End},
};

// The characters that end a number or a word, and those that are a token of their own. Searches in
// these sets are searches in zero-terminated texts: a zero byte is found in each.
inline constexpr char kEndOfWord[] = " !;,+-<>'/*%^=()\t\r";
inline constexpr char kDelimiters[] = "+-*^/%=;(),'";

constexpr size_t kTokenCapacity = 80;  // bytes of a token's text, the terminating zero included
constexpr size_t kMaxNameLength = 30;  // characters of a name that is declared

struct Token {
    const char* start = nullptr;  // its first byte, after what was skipped
    const char* end = nullptr;    // the position after the token; with a fault, the fault's place
    TokenKind kind = TokenKind::Delimiter;
    KeywordCode keyword = KeywordCode::None;
    char punctuator = 0;  // the text's first byte if this is a delimiter or a brace and has one
    uint8_t length = 0;   // of the text
    TokenFault fault = TokenFault::None;
};

using TokenText = char[kTokenCapacity];  // zero-terminated

// Writes the text of a token that has no fault: words in lower case, strings without their quotes,
// relational operators as their codes.
void copyText(const Token& token, TokenText& text);

// Reads the token at `position`, which may be anywhere in the text and at most one past its end.
// Only one line end is skipped, so an empty line gives an empty token; so does a character that
// starts nothing, and then the token ends where it was read.
Token readToken(const char* position);

// Lowers `text` in place and returns the keyword it then is, or None.
KeywordCode lookUpKeyword(char* text);

// True for the characters that end a number or a word: kEndOfWord, and not kDelimiters.
bool isDelimiter(char c);
