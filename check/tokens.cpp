#include "check/tokens.h"

#include <cctype>
#include <cstdlib>
#include <cstring>

#include "check/names.h"

static bool isOneOf(char c, const char* set) {
    return c != '\0' && std::strchr(set, c) != nullptr;
}

static bool isPrintable(char c) {
    return c >= ' ' && c <= '~';
}

// Characters that start nothing -----------------------------------------------------------------

static const char kForeignOperators[] = "&|![].?:~";

static std::string adviceFor(char c) {
    switch (c) {
        case '&':
            return "there is no && and no &: nest two ifs, or multiply the conditions";
        case '|':
            return "there is no || and no |: use two ifs, or add the conditions";
        case '!':
            return "there is no !: compare with == 0";
        case '[':
        case ']':
            return "there are no arrays: use single variables";
        case '.':
            return "names are one word, without points";
        default:
            return std::string("there is no operator ") + c;
    }
}

void reportStuck(const Scanner& scanner, size_t position, Findings& findings) {
    const char c = scanner.byteAt(position);
    const std::string never = "the load never ends here: ";
    if (c == '\n') {
        findings.add(CheckId::LineEnd, position,
                     never +
                         "this line ends in a bare line feed; save the script with CR LF line "
                         "ends, or run zelcheck --fix",
                     Severity::Error);
    } else if (isOneOf(c, kForeignOperators)) {
        findings.add(CheckId::NoSuchOperator, position, never + adviceFor(c), Severity::Error);
    } else if (c == '_') {
        findings.add(CheckId::BadCharacter, position, never + "a name begins with a letter",
                     Severity::Error);
    } else {
        findings.add(CheckId::BadCharacter, position,
                     never + "this character starts nothing in the language; remove it",
                     Severity::Error);
    }
}

void reportFault(const Scanner& scanner, const Lexeme& token, Findings& findings) {
    if (token.fault == TokenFault::OpenComment) {
        findings.add(CheckId::OpenComment, scanner.find("/*", token.from), "this /* has no */",
                     Severity::Error);
    } else if (token.fault == TokenFault::OpenString) {
        findings.add(CheckId::OpenString, token.start,
                     "this string has no closing \" on its line; there are no escapes in strings",
                     Severity::Error);
    } else if (token.fault == TokenFault::TooLong) {
        findings.add(CheckId::TokenTooLong, token.start,
                     "a word, number or string has at most " + std::to_string(kTokenCapacity - 1) +
                         " characters; this one has " + std::to_string(token.text.size()),
                     Severity::Error);
    }
}

// Words that have swallowed something -------------------------------------------------------------

// The first byte of the token that does not belong to a name or number, or npos.
static size_t firstForeign(std::string_view text) {
    for (size_t i = 0; i < text.size(); i++) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (std::isalnum(c) == 0 && c != '_' && c < 0x80) return i;
    }
    return std::string_view::npos;
}

// Digits with a point in or after them.
static bool isFraction(std::string_view text) {
    const size_t point = text.find_first_not_of("0123456789");
    return point > 0 && point < text.size() && text[point] == '.' &&
           text.find_first_not_of("0123456789", point + 1) == std::string_view::npos;
}

static void reportForeign(std::string_view text, size_t start, size_t at, Findings& findings) {
    const char c = text[at];
    const std::string word = "\"" + std::string(text) + "\" is read as one word: ";
    if (isFraction(text)) {
        findings.add(CheckId::OddNumber, start,
                     "there are whole numbers only: " + quoted(text) + " counts as " +
                         std::string(text.substr(0, at)),
                     Severity::Error);
    } else if (c == '\n') {
        findings.add(CheckId::LineEnd, start + at,
                     "the bare line feed becomes a part of the word before it; save the script "
                     "with CR LF line ends, or run zelcheck --fix");
    } else if (isOneOf(c, kForeignOperators)) {
        findings.add(CheckId::NoSuchOperator, start + at, word + adviceFor(c));
    } else {
        const std::string what = isPrintable(c) ? std::string("the ") + c : "this character";
        findings.add(CheckId::GluedCharacter, start + at, word + "put a blank before " + what);
    }
}

static void inspectNumber(const Lexeme& token, Findings& findings) {
    const std::string digits(token.text.substr(0, token.text.find_first_not_of("0123456789")));
    const int32_t value = static_cast<int32_t>(std::strtol(digits.c_str(), nullptr, 10));
    const bool cut = std::to_string(value) != digits && digits.find_first_not_of('0') == 0;
    if (digits.size() != token.text.size() || cut) {
        findings.add(CheckId::OddNumber, token.start,
                     "\"" + std::string(token.text) + "\" counts as " + std::to_string(value));
    }
}

static void inspectComment(const Scanner& scanner, const Lexeme& token, Findings& findings) {
    const char next = scanner.byteAt(token.start + 1);
    if (token.afterComment && token.is('/') && (next == '/' || next == '*')) {
        findings.add(CheckId::CommentUnderComment, token.start,
                     "after a comment this one is no comment: its text is run; indent it, or "
                     "leave an empty line between");
    }
}

// In other languages \" is a quote inside a text. Here the text ends: what comes after it is then
// neither a comma nor a bracket nor the end of the statement.
static size_t inspectString(const Scanner& scanner, const Lexeme& token, Findings& findings) {
    if (token.text.empty() || token.text.back() != '\\') return 0;
    const Lexeme next = scanner.readReal(token.next);
    if (next.is(',') || next.is(')') || next.is(';') || next.isFinished()) return 0;
    findings.add(CheckId::OpenString, token.next - 2,
                 "there are no escapes in a text: it ends here, and cannot have a quote in it");
    return scanner.find("\r", token.next);
}

size_t inspectToken(const Scanner& scanner, const Lexeme& token, Findings& findings) {
    inspectComment(scanner, token, findings);
    if (token.kind == TokenKind::String) return inspectString(scanner, token, findings);
    if (token.kind != TokenKind::Identifier && token.kind != TokenKind::Number) return 0;
    const size_t foreign = firstForeign(token.text);
    if (foreign != std::string_view::npos) {
        reportForeign(scanner.source(token), token.start, foreign, findings);
    } else if (token.kind == TokenKind::Number) {
        inspectNumber(token, findings);
    }
    return 0;
}
