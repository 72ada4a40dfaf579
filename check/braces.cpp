#include "check/braces.h"

#include <algorithm>
#include <optional>
#include <vector>

struct Brace {
    size_t start;
    size_t indent;  // of its line
};

// A walk over the braces of the text, with those that are open. What is looked for decides which
// brace pays for an indentation that does not fit.
class BraceWalk {
public:
    BraceWalk(const Scanner& scanner, char wanted) : scanner_(scanner), wanted_(wanted) {}

    // The first wanted brace without a partner, if the indentation shows one.
    std::optional<size_t> run() {
        for (size_t position = 0; position < scanner_.size() && !found_;) {
            const Lexeme token = scanner_.readReal(position);
            position = std::max(token.next, position + 1);  // a faulty token may have no length
            if (token.is('{')) open_.push_back({token.start, indentOf(token.start)});
            if (token.is('}')) close(token.start);
            if (token.isType() && wanted_ == '{') passType(token);
        }
        return found_;
    }

private:
    size_t lineStart(size_t position) const {
        while (position > 0 && scanner_.byteAt(position - 1) != '\n')
            position--;
        return position;
    }

    // A tab is as wide as four blanks.
    size_t indentOf(size_t position) const {
        size_t indent = 0;
        for (size_t i = lineStart(position);; i++) {
            const char c = scanner_.byteAt(i);
            if (c != ' ' && c != '\t') return indent;
            indent += c == '\t' ? 4 : 1;
        }
    }

    bool beginsLine(size_t position) const {
        const size_t start = lineStart(position);
        const std::string_view before = scanner_.source(start, position);
        return before.find_first_not_of(" \t") == std::string_view::npos;
    }

    void close(size_t position) {
        const bool counts = beginsLine(position);
        const size_t indent = indentOf(position);
        if (open_.empty()) {
            if (wanted_ == '}') found_ = position;
            return;
        }
        if (counts && wanted_ == '}' && indent > open_.back().indent) {
            found_ = position;
            return;
        }
        if (counts && wanted_ == '{' && open_.size() > 1 && indent < open_.back().indent) {
            found_ = open_.back().start;
            return;
        }
        open_.pop_back();
    }

    // A function at the left margin in the middle of a block: the block had to end before.
    void passType(const Lexeme& type) {
        const Lexeme name = scanner_.readReal(type.next);
        const bool isFunction = name.isIdentifier() && scanner_.readReal(name.next).is('(');
        const bool atMargin = beginsLine(type.start) && indentOf(type.start) == 0;
        if (isFunction && atMargin && !open_.empty()) found_ = open_.back().start;
    }

    const Scanner& scanner_;
    char wanted_;
    std::vector<Brace> open_;
    std::optional<size_t> found_;
};

size_t likelyOpenBrace(const Scanner& scanner, size_t otherwise) {
    return BraceWalk(scanner, '{').run().value_or(otherwise);
}

size_t likelyExtraBrace(const Scanner& scanner, size_t otherwise) {
    return BraceWalk(scanner, '}').run().value_or(otherwise);
}
