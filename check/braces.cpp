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

    // The first wanted brace without a partner, if there is one.
    std::optional<size_t> run() {
        for (size_t position = 0; position < scanner_.size() && !found_;) {
            token_ = scanner_.readReal(position);
            position = std::max(token_.next, position + 1);  // a faulty token may have no length
            if (token_.is('{')) open_.push_back({token_.start, indentOf(token_.start)});
            if (token_.is('}')) close();
            if (token_.isType()) passType();
            if (token_.kind == TokenKind::Keyword) passKeyword();
            if (!token_.isEmpty()) previous_ = token_;
        }
        return found_;
    }

    // Where a "{" is missing that the "}" found would close.
    std::optional<size_t> missingBefore() const {
        const size_t indent = indentOf(*found_);
        for (auto head = heads_.rbegin(); head != heads_.rend(); ++head) {
            if (head->indent == indent && head->start < *found_) return head->start;
        }
        return {};
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

    bool sameLine(size_t position) const { return lineStart(position) == lineStart(token_.start); }

    bool beginsLine(size_t position) const {
        const size_t start = lineStart(position);
        const std::string_view before = scanner_.source(start, position);
        return before.find_first_not_of(" \t") == std::string_view::npos;
    }

    // Whether the "}" closes another block than the one that is open, by its place.
    bool isMisplaced() const {
        const size_t indent = indentOf(token_.start);
        const bool afterBrace = previous_.is('}') && sameLine(previous_.start);
        if (beginsLine(token_.start) || afterBrace) {
            return wanted_ == '}' ? indent > open_.back().indent
                                  : indent < open_.back().indent && open_.size() > 1;
        }
        const bool endsStatement = previous_.is(';') || previous_.is('{') || previous_.is('}');
        return wanted_ == '}' && !endsStatement;
    }

    void close() {
        if (open_.empty() || isMisplaced()) {
            if (wanted_ == '}') found_ = token_.start;
            if (wanted_ == '{' && !open_.empty()) found_ = open_.back().start;
            return;
        }
        open_.pop_back();
        const size_t indent = indentOf(token_.start);
        while (!heads_.empty() && heads_.back().indent >= indent)
            heads_.pop_back();
    }

    // A function at the left margin in the middle of a block: the block had to end before.
    void passType() {
        const Lexeme name = scanner_.readReal(token_.next);
        const bool isFunction = name.isIdentifier() && scanner_.readReal(name.next).is('(');
        if (!isFunction || !beginsLine(token_.start) || indentOf(token_.start) > 0) return;
        if (wanted_ == '{' && !open_.empty()) found_ = open_.back().start;
        passHead(afterParentheses(name.next));
    }

    void passKeyword() {
        const KeywordCode word = token_.keyword;
        if (word == KeywordCode::Else) passHead(token_.next);
        if (word == KeywordCode::If || word == KeywordCode::For || word == KeywordCode::While) {
            passHead(afterParentheses(token_.next));
        }
    }

    // Notes what follows the head of a body, up to `end`, if it is not the "{" that belongs there.
    void passHead(size_t end) {
        const Lexeme body = scanner_.readReal(end);
        const bool isBare = !body.is('{') && !body.is(';') && body.keyword != KeywordCode::If;
        if (isBare) heads_.push_back({body.start, indentOf(token_.start)});
    }

    // After the parentheses that begin at the position; the end of the text if they do not match.
    size_t afterParentheses(size_t position) const {
        int depth = 0;
        for (;;) {
            const Lexeme token = scanner_.readReal(position);
            position = std::max(token.next, position + 1);
            if (token.isFinished() || token.is('{') || token.is('}')) return scanner_.size();
            if (token.is('(')) depth++;
            if (token.is(')') && --depth <= 0) return position;
        }
    }

    const Scanner& scanner_;
    const char wanted_;
    Lexeme token_;
    Lexeme previous_;
    std::vector<Brace> open_;
    std::vector<Brace>
        heads_;  // where bodies begin without a brace, with the indent of their heads
    std::optional<size_t> found_;
};

size_t likelyOpenBrace(const Scanner& scanner, size_t otherwise) {
    return BraceWalk(scanner, '{').run().value_or(otherwise);
}

ExtraBrace likelyExtraBrace(const Scanner& scanner, size_t otherwise) {
    BraceWalk walk(scanner, '}');
    const std::optional<size_t> found = walk.run();
    if (!found) return {otherwise, false};
    const std::optional<size_t> missing = walk.missingBefore();
    return {missing.value_or(*found), missing.has_value()};
}

bool bracesMatch(const Scanner& scanner) {
    int depth = 0;
    for (size_t position = 0; position < scanner.size() && depth >= 0;) {
        const Lexeme token = scanner.readReal(position);
        position = std::max(token.next, position + 1);
        if (token.is('{')) depth++;
        if (token.is('}')) depth--;
    }
    return depth == 0;
}
