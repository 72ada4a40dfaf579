// The lexer: one token at a time from the program text.
//
// There is no token list. Whoever needs the next token calls getToken(), which reads at
// gProgramPos, leaves the token in the three globals below and moves behind it; putBack() steps
// back over a token just read. A token depends on nothing but the position it is read at.
//
// Lines end in CR LF. A bare line feed is not white space: it stops every construct it meets.
// Runs on whichever thread runs script code.
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

struct KeywordName {
    char name[20];
    KeywordCode code;
};

// The keywords, ended by an entry with an empty name.
extern const KeywordName gKeywords[];

constexpr size_t kTokenCapacity = 80;  // bytes of a token's text, the terminating zero included

extern char gToken[kTokenCapacity];  // text of the current token; words are in lower case
extern TokenKind gTokenKind;         // kind of the current token
extern KeywordCode gKeywordCode;     // None if the current token is not a keyword

// Reads the token at gProgramPos. Only one line end is skipped in a call, so an empty line gives an
// empty token; so does a character that starts nothing (and then the position does not move).
// Raises Syntax for a string not closed on its line, TokenTooLong, CommentNotClosed.
TokenKind getToken();

// Moves back over the current token by the length of its text; an empty token moves nothing.
void putBack();

// Puts `name` in place of the current token, as an identifier. Longer names than a token can be
// (79 characters) abort the process.
void setToken(const char* name);

// Lowers `text` in place and returns the keyword it then is, or None.
KeywordCode lookUpKeyword(char* text);

// True for the characters that end a number or a word.
bool isDelimiter(char c);

// True if the current token is the delimiter or brace `c`. A string that only reads like it is not.
inline bool tokenIs(char c) {
    return gTokenKind != TokenKind::String && gToken[0] == c && gToken[1] == '\0';
}

inline bool tokenIsEmpty() {
    return gToken[0] == '\0';
}

// Reads a token for a loop that goes on whatever it reads but a certain token. When the loop can
// only read the same for ever - the end of the text, or an empty token that does not move the
// position - says so and waits (script/halt.h).
void getTokenInEndlessLoop();

// The second half of that proof alone, for loops that end at the end of the text: `before` is the
// position at which the current token was read.
void waitIfStuck(const char* before);
