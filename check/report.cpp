#include "check/report.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

// Escaping ------------------------------------------------------------------------------------

// The length of the UTF-8 character at i, or 0 if there is none of more than one byte.
static size_t utf8Length(std::string_view text, size_t i) {
    const unsigned char lead = static_cast<unsigned char>(text[i]);
    const size_t length = lead >= 0xC2 && lead < 0xE0 ? 2 : lead >= 0xE1 && lead < 0xF0 ? 3 : 0;
    if (length == 0 || i + length > text.size()) return 0;
    for (size_t k = 1; k < length; k++) {
        if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) return 0;
    }
    // The control characters U+0080 to U+009F would reach the terminal.
    const bool control = lead == 0xC2 && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    return control ? 0 : length;
}

static std::string escapedByte(char c) {
    switch (c) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            break;
    }
    char code[8];
    std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned>(c) & 0xFF);
    return code;
}

// The character at i as it may be shown, and in `length` the bytes it takes in the text.
static std::string shownCharacter(std::string_view text, size_t i, size_t& length) {
    length = std::max<size_t>(1, utf8Length(text, i));
    if (length > 1) return std::string(text.substr(i, length));
    const bool printable = text[i] >= ' ' && text[i] <= '~';
    return printable ? std::string(1, text[i]) : escapedByte(text[i]);
}

static std::string shown(std::string_view text) {
    std::string result;
    for (size_t i = 0, length = 1; i < text.size(); i += length)
        result += shownCharacter(text, i, length);
    return result;
}

// The places that the shown form takes on the screen.
static size_t widthOf(const std::string& shownText) {
    return static_cast<size_t>(std::count_if(shownText.begin(), shownText.end(),
                                             [](char c) { return (c & 0xC0) != 0x80; }));
}

// Text for people -----------------------------------------------------------------------------

// The source line and the caret. Of a long line the part around the place is shown.
static std::string excerpt(const Source& source, size_t position, ReportForm form) {
    constexpr size_t kBefore = 70;
    constexpr size_t kAfter = 40;
    const std::string_view line = source.lineAt(position);
    const size_t column = std::min(source.placeOf(position).column - 1, line.size());
    const size_t from = column > kBefore ? column - kBefore : 0;
    const size_t to = std::min(line.size(), column + kAfter);

    std::string before = (from > 0 ? "..." : "") + shown(line.substr(from, column - from));
    // Tabs before the caret would be a row of escapes.
    for (size_t tab; (tab = before.find("\\t")) != std::string::npos;)
        before.replace(tab, 2, "    ");
    const std::string after = shown(line.substr(column, to - column));
    const std::string caret = form == ReportForm::Colour ? "\033[1;32m^\033[0m" : "^";
    return "    " + before + after + (to < line.size() ? "..." : "") + "\n    " +
           std::string(widthOf(before), ' ') + caret + "\n";
}

static std::string readable(const Source& source, const Finding& finding, ReportForm form) {
    const bool colour = form == ReportForm::Colour;
    const bool error = finding.severity == Severity::Error;
    const TextPlace place = source.placeOf(finding.position);
    std::string head = shown(source.path) + ":" + std::to_string(place.line) + ":" +
                       std::to_string(place.column) + ": ";
    std::string word = error ? "error: " : "warning: ";
    std::string id = std::string(" [") + infoOf(finding.id).name + "]";
    if (colour) {
        head = "\033[1m" + head + "\033[0m";
        word = (error ? "\033[1;31m" : "\033[1;35m") + word + "\033[0m";
        id = "\033[2m" + id + "\033[0m";
    }
    return head + word + shown(finding.text) + id + "\n" + excerpt(source, finding.position, form);
}

// JSON ----------------------------------------------------------------------------------------

// Bytes that are no UTF-8 are escaped as \xNN in the text, for JSON knows characters only.
static std::string jsonString(std::string_view text) {
    std::string result = "\"";
    for (size_t i = 0, length = 1; i < text.size(); i += length) {
        for (char c : shownCharacter(text, i, length)) {
            if (c == '"' || c == '\\') result += '\\';
            result += c;
        }
    }
    return result + "\"";
}

static std::string json(const Source& source, const Finding& finding) {
    const TextPlace place = source.placeOf(finding.position);
    const bool error = finding.severity == Severity::Error;
    return "{\"file\": " + jsonString(source.path) + ", \"line\": " + std::to_string(place.line) +
           ", \"column\": " + std::to_string(place.column) + ", \"severity\": \"" +
           (error ? "error" : "warning") + "\", \"id\": \"" + infoOf(finding.id).name +
           "\", \"text\": " + jsonString(finding.text) + "}\n";
}

std::string reportOf(const Source& source, const Finding& finding, ReportForm form) {
    return form == ReportForm::Json ? json(source, finding) : readable(source, finding, form);
}
