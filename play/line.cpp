#include "play/line.h"

#include <SDL.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "app/base/window.h"

// Words -------------------------------------------------------------------------------------------

static constexpr char kBlanks[] = " \t\r";
// The character that is meant by the escape after the backslash before `at`.
static char readEscape(const std::string& line, size_t at, Fault& fault) {
    static const std::string kLetters = "nrt\"\\";
    const size_t index = at < line.size() ? kLetters.find(line[at]) : std::string::npos;
    if (index != std::string::npos) return "\n\r\t\"\\"[index];
    fault = {"a backslash wants n, r, t, \" or \\ after it", 0, static_cast<int>(at)};
    return '\\';
}

// `at` is past the opening quote and moves past the closing one.
static Word readQuotedWord(const std::string& line, size_t& at, Fault& fault) {
    Word word = {"", true, static_cast<int>(at)};
    while (at < line.size() && line[at] != '"') {
        const char c = line[at++];
        word.text += c == '\\' ? readEscape(line, at++, fault) : c;
    }
    if (at >= line.size() && fault.text.empty()) fault = {"no closing \"", 0, word.column};
    at++;
    return word;
}

std::vector<Word> splitLine(const std::string& line, Fault& fault) {
    std::vector<Word> words;
    size_t at = line.find_first_not_of(kBlanks);
    while (fault.text.empty() && at < line.size() && line.compare(at, 2, "//") != 0) {
        if (line[at] == '"') {
            words.push_back(readQuotedWord(line, ++at, fault));
        } else {
            const size_t end = std::min(line.find_first_of(kBlanks, at), line.size());
            words.push_back({line.substr(at, end - at), false, static_cast<int>(at) + 1});
            at = end;
        }
        at = line.find_first_not_of(kBlanks, at);
    }
    words.push_back({"", false, static_cast<int>(line.size()) + 1});
    return words;
}

// Forms -------------------------------------------------------------------------------------------

struct NumberKind {
    const char* name;
    const char* what;
    int64_t low;
    int64_t high;
};
static constexpr NumberKind kNumberKinds[] = {
    {"MS", "milliseconds", 0, 1000LL * 3600 * 24 * 365},
    {"X", "x", 0, SCREEN_WIDTH - 1},
    {"Y", "y", 0, SCREEN_HEIGHT - 1},
    {"W", "a width", 1, SCREEN_WIDTH},
    {"H", "a height", 1, SCREEN_HEIGHT},
    {"ATX", "x", INT16_MIN, INT16_MAX},  // the mouse may leave the window
    {"ATY", "y", INT16_MIN, INT16_MAX},
    {"N", "a number", 0, INT32_MAX},
};

static bool readNumber(const std::string& text, int64_t low, int64_t high, Arguments& said) {
    char* end = nullptr;
    said.numbers.push_back(std::strtoll(text.c_str(), &end, 10));
    return !text.empty() && *end == '\0' && said.numbers.back() >= low &&
           said.numbers.back() <= high;
}

static bool readColour(const std::string& text, Arguments& said) {
    const bool isHex = text.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
    if (text.size() != 7 || text[0] != '#' || !isHex) return false;
    said.numbers.push_back(std::strtoll(text.c_str() + 1, nullptr, 16));
    return true;
}

// The rest of the line: the name of a key as SDL has it, or "code N".
static bool readKey(const std::vector<Word>& words, size_t& next, Arguments& said) {
    if (words[next].text == "code" && next + 3 == words.size()) {
        next += 2;
        return readNumber(words[next - 1].text, 1, SDL_NUM_SCANCODES - 1, said);
    }
    std::string name = words[next].text;
    while (!words[next].text.empty() && !words[++next].text.empty())
        name += ' ' + words[next].text;
    said.numbers.push_back(SDL_GetScancodeFromName(name.c_str()));
    return said.numbers.back() != SDL_SCANCODE_UNKNOWN;
}

// The word is one of "one|other|third"; where there is a choice the index is kept.
static bool readChoice(const std::string& choices, const Word& word, Arguments& said) {
    std::istringstream list(choices);
    std::string choice;
    for (int64_t i = 0; !word.inQuotes && std::getline(list, choice, '|'); i++) {
        if (word.text != choice) continue;
        if (choices.size() > choice.size()) said.numbers.push_back(i);
        return true;
    }
    return false;
}

// Reads the words that a part of a form stands for. Returns what it would have taken, or nothing.
static std::string readPart(const std::string& part, const std::vector<Word>& words, size_t& next,
                            Arguments& said) {
    const Word& word = words[next];
    if (part == "KEY") return readKey(words, next, said) ? "" : "the name of a key";
    const bool isEnd = ++next == words.size();
    for (const NumberKind& kind : kNumberKinds) {
        if (part != kind.name) continue;
        if (readNumber(word.text, kind.low, kind.high, said)) return "";
        return std::string(kind.what) + ", " + std::to_string(kind.low) + " to " +
               std::to_string(kind.high);
    }
    if (part == "COLOUR") return readColour(word.text, said) ? "" : "a colour as #rrggbb";
    if (part != "TEXT" && part != "FILE") return readChoice(part, word, said) ? "" : part;
    said.texts.push_back(word.text);
    if (part == "TEXT") return word.inQuotes ? "" : "a text in quotes";
    return isEnd ? "the name of a file" : "";
}

static void note(Fault& fault, const std::vector<Word>& words, size_t word, std::string wanted) {
    if (!fault.text.empty() && word < fault.word) return;
    if (!fault.text.empty() && word == fault.word) wanted = fault.text + '|' + wanted;
    fault = {wanted, word, words[word].column};
}

bool readForm(const std::vector<Word>& words, const char* form, Arguments& said, Fault& fault) {
    said = {};
    std::istringstream parts(form);
    std::string part;
    size_t next = 0;
    while (parts >> part) {
        const size_t start = next;
        const bool mayEnd = part[0] == '[';
        if (mayEnd && next + 1 == words.size()) return true;
        part.erase(0, mayEnd ? 1 : 0);
        part.erase(std::min(part.find(']'), part.size()));
        const std::string wanted = readPart(part, words, next, said);
        if (wanted.empty()) continue;
        note(fault, words, start, (mayEnd ? "nothing more|" : "") + wanted);
        return false;
    }
    if (next + 1 == words.size()) return true;
    note(fault, words, next, "nothing more");
    return false;
}

// "up|down|tap" as "up, down or tap".
static std::string spoken(const std::string& choices) {
    const size_t last = choices.rfind('|');
    std::string result;
    for (size_t i = 0; i < choices.size(); i++)
        result += choices[i] != '|' ? std::string(1, choices[i]) : i == last ? " or " : ", ";
    return result;
}

std::string misfit(const std::vector<Word>& words, const Fault& fault) {
    const std::string found = words[fault.word].text;
    return "expected " + (fault.word == 0 ? "a command" : spoken(fault.text)) + ", found " +
           (fault.word + 1 == words.size() ? "the line's end" : found);
}
