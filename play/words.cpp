#include "play/words.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

static void noteFault(Words& words, size_t index, const std::string& fault) {
    if (!words.fault.empty()) return;
    words.fault = fault;
    words.faultColumn = static_cast<int>(index) + 1;
}

// Taking apart --------------------------------------------------------------------------------

static bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

static bool startsComment(const std::string& line, size_t at) {
    return line.compare(at, 2, "//") == 0;
}

// Two hexadecimal digits at `at`.
static bool readHexByte(const std::string& line, size_t at, char& byte) {
    const std::string digits = line.substr(std::min(at, line.size()), 2);
    char* end = nullptr;
    byte = static_cast<char>(std::strtoul(digits.c_str(), &end, 16));
    return digits.size() == 2 && std::isxdigit(static_cast<unsigned char>(digits[0])) != 0 &&
           *end == '\0';
}

// The character that the escape behind the backslash before `at` means; `at` moves behind it.
static char readEscape(Words& words, const std::string& line, size_t& at) {
    const char c = at < line.size() ? line[at] : '\0';
    const size_t start = at++;
    char byte = c;
    if (c == 'n') return '\n';
    if (c == 'r') return '\r';
    if (c == 't') return '\t';
    if (c == '"' || c == '\\') return c;
    if (c == 'x' && readHexByte(line, at, byte)) {
        at += 2;
        return byte;
    }
    noteFault(words, start - 1, "a backslash wants n, r, t, \", \\ or xNN behind it");
    return c;
}

// `at` is behind the opening quote and moves behind the closing one.
static void readQuotedWord(Words& words, const std::string& line, size_t& at) {
    Word word = {"", true, static_cast<int>(at)};
    while (at < line.size() && line[at] != '"') {
        const char c = line[at++];
        word.text += c == '\\' ? readEscape(words, line, at) : c;
    }
    if (at >= line.size()) noteFault(words, static_cast<size_t>(word.column) - 1, "no closing \"");
    at++;
    words.words.push_back(word);
}

static void readBareWord(Words& words, const std::string& line, size_t& at) {
    Word word = {"", false, static_cast<int>(at) + 1};
    while (at < line.size() && !isBlank(line[at]))
        word.text += line[at++];
    words.words.push_back(word);
}

Words splitLine(const std::string& line) {
    Words words;
    words.endColumn = static_cast<int>(line.size()) + 1;
    size_t at = 0;
    while (words.fault.empty()) {
        while (at < line.size() && isBlank(line[at]))
            at++;
        if (at >= line.size() || startsComment(line, at)) break;
        if (line[at] == '"')
            readQuotedWord(words, line, ++at);
        else
            readBareWord(words, line, at);
    }
    return words;
}

// Reading --------------------------------------------------------------------------------------

bool atEnd(const Words& words) {
    return words.next >= words.words.size();
}

void expected(Words& words, const std::string& what) {
    const int column = atEnd(words) ? words.endColumn : words.words[words.next].column;
    const std::string found = atEnd(words) ? "the line's end" : words.words[words.next].text;
    noteFault(words, static_cast<size_t>(column) - 1, "expected " + what + ", found " + found);
}

bool isComplete(Words& words) {
    if (!atEnd(words)) expected(words, "nothing more");
    return words.fault.empty();
}

bool takeWord(Words& words, const char* word) {
    if (atEnd(words)) return false;
    const Word& next = words.words[words.next];
    if (next.inQuotes || next.text != word) return false;
    words.next++;
    return true;
}

int64_t readNumber(Words& words, const char* what, int64_t low, int64_t high) {
    const std::string text = atEnd(words) ? "" : words.words[words.next].text;
    char* end = nullptr;
    const long long value = std::strtoll(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || value < low || value > high) {
        expected(words,
                 std::string(what) + ", " + std::to_string(low) + " to " + std::to_string(high));
        return low;
    }
    words.next++;
    return value;
}

std::string readQuoted(Words& words, const char* what) {
    if (!atEnd(words) && words.words[words.next].inQuotes) return words.words[words.next++].text;
    expected(words, what);
    return "";
}

std::string readPath(Words& words) {
    if (!atEnd(words)) return words.words[words.next++].text;
    expected(words, "a file name");
    return "";
}

Uint32 readColour(Words& words) {
    const std::string text = atEnd(words) ? "" : words.words[words.next].text;
    const bool isColour = text.size() == 7 && text[0] == '#' &&
                          text.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
    if (!isColour) {
        expected(words, "a colour as #rrggbb");
        return 0;
    }
    words.next++;
    return static_cast<Uint32>(std::strtoul(text.c_str() + 1, nullptr, 16));
}

SDL_Scancode readKey(Words& words) {
    if (takeWord(words, "code"))
        return static_cast<SDL_Scancode>(readNumber(words, "a scancode", 1, SDL_NUM_SCANCODES - 1));
    const size_t first = words.next;
    std::string name;
    for (; !atEnd(words); words.next++)
        name += (name.empty() ? "" : " ") + words.words[words.next].text;
    const SDL_Scancode key = SDL_GetScancodeFromName(name.c_str());
    if (key != SDL_SCANCODE_UNKNOWN) return key;
    words.next = first;
    expected(words, "the name of a key");
    return key;
}

Uint8 readButton(Words& words) {
    static const char* const kButtons[] = {"left", "middle", "right", "x1", "x2"};
    Uint8 number = SDL_BUTTON_LEFT;
    for (const char* button : kButtons) {
        if (takeWord(words, button)) return number;
        number++;
    }
    expected(words, "left, middle, right, x1 or x2");
    return SDL_BUTTON_LEFT;
}
