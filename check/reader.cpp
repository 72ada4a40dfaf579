#include "check/reader.h"

#include <cctype>
#include <cstdlib>

#include "script/errors/nesting.h"
#include "script/run/functions.h"

// Tokens ----------------------------------------------------------------------------------------

void Reader::read() {
    const bool wasPutBack = position_ < token_.next;
    if (!token_.isEmpty() && !wasPutBack) previous_ = token_;
    token_ = scanner_.read(position_);
    constexpr size_t kBytesOfGap = 64;
    budget_ -= 1 + static_cast<int64_t>((token_.next - position_) / kBytesOfGap);
    if (budget_ < 0) throw OutOfBudget();
    position_ = token_.next;
    if (token_.fault != TokenFault::None) fail(CheckId::Syntax, token_.start, "");
}

void Reader::putBack() {
    position_ -= token_.text.size();
}

void Reader::enter() {
    if (depth_ >= kMaxNesting) {
        fail(CheckId::NestedTooDeeply, token_.start,
             "at most " + std::to_string(kMaxNesting) +
                 " parentheses, blocks and calls may be inside each other");
    }
    depth_++;
}

// Explanations ----------------------------------------------------------------------------------

std::string onlyOneLineEnd(const std::string& before, const std::string& after) {
    return "only blanks and one line end are allowed between " + before + " and " + after +
           ", no empty line and no comment";
}

void Reader::fail(CheckId id, size_t position, std::string text) const {
    throw Problem{id, position, std::move(text)};
}

std::string Reader::shownToken() const {
    if (token_.isFinished()) return "the end of the text";
    return "\"" + std::string(scanner_.source(token_)) + "\"";
}

static bool isSign(const Lexeme& token) {
    return token.is('+') || token.is('-');
}

static bool isOperator(const Lexeme& token) {
    return isSign(token) || token.is('*') || token.is('/') || token.is('%') || token.is('=') ||
           token.isRelation();
}

// Empty tokens: a line end or a blank where the lexer expects a token at once.
void Reader::failGap(const Lexeme& gap) const {
    if (token_.is('{')) {
        fail(CheckId::GapBeforeBrace, token_.start, onlyOneLineEnd(")", "{"));
    }
    const char c = scanner_.byteAt(gap.start);
    if (gap.afterComment) {
        fail(CheckId::CommentInExpression, gap.start, kCommentGap);
    }
    if (c == '\r') {
        fail(CheckId::EmptyLineInExpression, gap.start, kLineGap);
    }
    fail(CheckId::Syntax, gap.start, "");
}

// "score = score + 10" for the "score += 10" whose operator is at the position.
std::string Reader::writtenOut(size_t position) const {
    const char sign = scanner_.byteAt(position);
    size_t end = position;
    while (end > 0 && scanner_.byteAt(end - 1) == ' ')
        end--;
    size_t start = end;
    while (start > 0 && std::isalnum(static_cast<unsigned char>(scanner_.byteAt(start - 1))) != 0)
        start--;
    const std::string name(start < end ? scanner_.source(start, end) : "x");
    const Lexeme right = scanner_.readReal(position + 2);
    std::string value = "1";
    if (scanner_.byteAt(position + 1) == '=') {
        const bool isWhole = scanner_.readReal(right.next).is(';');
        value = isWhole ? std::string(scanner_.source(right)) : "(...)";
    }
    return name + " = " + name + " " + sign + " " + value;
}

void Reader::failSign() const {
    const char sign = scanner_.byteAt(previous_.start);
    const bool doubled = previous_.start > 0 && scanner_.byteAt(previous_.start - 1) == sign;
    const bool adjacent = token_.is(sign) && token_.start == previous_.next;
    if (doubled || adjacent) {
        const size_t first = doubled ? previous_.start - 1 : previous_.start;
        fail(CheckId::NoSuchOperator, first,
             "there is no " + std::string(2, sign) + ": write " + writtenOut(first));
    }
    fail(CheckId::Syntax, token_.start, "two signs in a row: put the second one in parentheses");
}

void Reader::failAtom() const {
    if (gap_.next == token_.from && gap_.isNothing() && gap_.next > 0) failGap(gap_);
    if (token_.isNothing()) failGap(token_);
    if (token_.is('=') && isOperator(previous_)) {
        const std::string name = std::string(scanner_.source(previous_)) + "=";
        fail(CheckId::NoSuchOperator, previous_.start,
             "there is no operator " + name + ": write " + writtenOut(previous_.start));
    }
    if (isSign(previous_) && (isSign(token_) || token_.is(';') || token_.is(','))) failSign();
    if (token_.kind == TokenKind::String) {
        fail(CheckId::Syntax, token_.start, "an expression cannot hold a text");
    }
    if (token_.is(';') || token_.is(',') || token_.is('}') || token_.isFinished()) {
        fail(CheckId::EmptyExpression, token_.start, "a value expected before " + shownToken());
    }
    fail(CheckId::Syntax, token_.start, shownToken() + " does not belong in an expression");
}

void Reader::failUnexpected(char expected) const {
    if (token_.isNothing()) failGap(token_);
    if (token_.isRelation()) {
        fail(CheckId::ChainedComparison, token_.start,
             "comparisons cannot be chained: put the first one in parentheses, or compare twice");
    }
    if (token_.is('^')) fail(CheckId::NoSuchOperator, token_.start, "there is no operator ^");
    if (token_.is('=')) fail(CheckId::Syntax, token_.start, "only a variable can be assigned");
    if (expected == ';' && token_.is(')')) {
        fail(CheckId::Parentheses, token_.start, "this ) has no (");
    }
    if (expected == ')') {
        fail(CheckId::Parentheses, token_.start, ") expected before " + shownToken());
    }
    fail(CheckId::MissingSemicolon, previous_.next, "; expected before " + shownToken());
}

void Reader::failArguments(const BuiltinSignature& builtin) const {
    if (token_.is('\'')) {
        fail(CheckId::BuiltinArguments, token_.start, "a text is put in double quotes");
    }
    if (builtin.arguments == "s" && !token_.isEmpty() && !token_.is(')') && !token_.is(';')) {
        fail(CheckId::BuiltinArguments, token_.start,
             std::string(builtin.name) + " shows one text in quotes; " + howToShowNumber(token_));
    }
    fail(CheckId::BuiltinArguments, token_.start,
         "wrong arguments: the call is " + callForm(builtin) + (builtin.endsStatement ? ";" : ""));
}

std::string Reader::howToShowNumber(const Lexeme& number) const {
    const bool isWord = number.isIdentifier() || number.kind == TokenKind::Number;
    const std::string shown = isWord ? std::string(scanner_.source(number)) : "value";
    return "to show a number write print(" + shown + "); as a statement of its own";
}

// Operands --------------------------------------------------------------------------------------

Value Reader::readCharacter() {
    const size_t quote = token_.start;
    const char c = scanner_.byteAt(position_);
    if (c == '\0' || scanner_.byteAt(position_ + 1) != '\'') {
        fail(CheckId::CharacterLiteral, quote,
             "exactly one character is put between apostrophes; there are no escapes");
    }
    position_ += 2;
    return knownValue(static_cast<signed char>(c));
}

Value Reader::readUserCall(const CheckedFunction& function) {
    const Lexeme name = token_;
    std::vector<Value> arguments;
    read();
    if (!token_.is('(')) {
        fail(CheckId::Parentheses, name.next,
             "\"" + std::string(name.text) + "\" is a function: ( expected after it");
    }
    do {
        if (arguments.size() == kMaxArguments) {
            fail(CheckId::TooManyArguments, token_.start,
                 "a call has at most " + std::to_string(kMaxArguments) + " arguments");
        }
        arguments.push_back(expression());
        read();
    } while (token_.is(','));
    if (!token_.is(')')) noteOpenCall(token_);
    return callUser(function, name, arguments);
}

void Reader::readArgument(BuiltinCall& call, char kind) {
    if (!call.values.empty()) {
        read();  // any token will do for the engine
        if (!token_.is(',')) noteSeparator(call.builtin);
    }
    read();
    noteArgument(call.builtin, kind);
    Value value;
    Lexeme text;
    if (kind == 'i' || kind == 'k') {
        putBack();
        value = expression();
    } else {
        text = token_;
    }
    call.values.push_back(value);
    call.tokens.push_back(text);
}

void Reader::readArguments(BuiltinCall& call) {
    read();
    if (!token_.is('(')) failArguments(call.builtin);
    for (char kind : call.builtin.arguments)
        readArgument(call, kind);
    read();
    if (!token_.is(')')) failArguments(call.builtin);
    read();  // one token of look-ahead: it skips a line end
    putBack();
}

// puts and print read their ";" themselves.
void Reader::readOutput(BuiltinCall& call) {
    read();
    if (!token_.is('(')) failArguments(call.builtin);
    read();
    const bool isText = token_.kind == TokenKind::String;
    if (!isText) {
        if (call.builtin.arguments == "s") failArguments(call.builtin);
        putBack();
        expression();
    }
    read();
    if (isText && isSign(token_)) {
        fail(CheckId::BuiltinArguments, token_.start,
             "nothing can be added to a text; " + howToShowNumber(scanner_.readReal(token_.next)));
    }
    if (token_.is(',')) failArguments(call.builtin);
    if (!token_.is(')')) failUnexpected(')');
    read();
    const bool inside = isOperator(token_) || token_.is(')') || token_.is(',');
    if (inside) {
        fail(CheckId::OutputInExpression, call.name.start,
             std::string(call.name.text) + " has no value: it must be a statement of its own");
    }
    if (!token_.is(';')) failUnexpected(';');
    putBack();
}

// The parentheses are those of an expression: putch(1) + 2 writes 3.
Value Reader::readPutch(const BuiltinSignature& builtin) {
    try {
        return expression();
    } catch (Problem& problem) {
        if (problem.id == CheckId::Parentheses && token_.is(',')) failArguments(builtin);
        throw;
    }
}

Value Reader::readBuiltinCall(const BuiltinSignature& builtin) {
    BuiltinCall call = {builtin, token_, {}, {}};
    if (builtin.arguments == "*") {
        if (!scanner_.read(position_).is('(')) noteSeparator(builtin);
        position_ = scanner_.afterCloseParen(position_);
        return builtin.name == "getnum" ? knownValue(0) : Value();
    }
    if (builtin.arguments == "e") return readPutch(builtin);
    if (builtin.arguments == "s" || builtin.arguments == "v") {
        readOutput(call);
        return knownValue(0);
    }
    readArguments(call);
    return callBuiltin(call);
}

Value Reader::readName() {
    if (const BuiltinSignature* builtin = findBuiltinSignature(token_.text)) {
        return readBuiltinCall(*builtin);
    }
    if (const CheckedFunction* function = program_.findFunction(token_.text)) {
        return readUserCall(*function);
    }
    return valueOf(token_);
}

Value Reader::readAtom() {
    Value value = knownValue(0);
    if (token_.isIdentifier()) {
        value = readName();
    } else if (token_.kind == TokenKind::Number) {
        value = knownValue(std::strtol(std::string(token_.text).c_str(), nullptr, 10));
    } else if (token_.is('\'')) {
        value = readCharacter();
    } else if (token_.is(')')) {
        if (isOperator(previous_)) noteMissingOperand();
        return value;
    } else {
        failAtom();
    }
    read();
    return value;
}

// Operators -------------------------------------------------------------------------------------

Value Reader::readParen() {
    if (!token_.is('(')) return readAtom();
    read();
    const Value value = readAssignment();
    if (!token_.is(')')) failUnexpected(')');
    read();
    return value;
}

Value Reader::readUnary() {
    const bool minus = token_.is('-');
    if (isSign(token_)) read();
    const Value value = readParen();
    return minus ? calculate('-', knownValue(0), value) : value;
}

Value Reader::readProduct() {
    Value value = readUnary();
    while (token_.is('*') || token_.is('/') || token_.is('%')) {
        const char operation = token_.text[0];
        read();
        const size_t divisor = token_.start;
        const Value right = readUnary();
        if (operation != '*' && right.isZero()) {
            fail(CheckId::DivisionByZero, divisor, "division by zero");
        }
        value = calculate(operation, value, right);
    }
    return value;
}

Value Reader::readSum() {
    Value value = readProduct();
    while (isSign(token_)) {
        const char operation = token_.text[0];
        read();
        value = calculate(operation, value, readProduct());
    }
    return value;
}

// An empty token counts as an operator: its right operand is read and dropped.
Value Reader::readRelation() {
    const Value value = readSum();
    if (!token_.isEmpty() && !token_.isRelation()) return value;
    const Lexeme relation = token_;
    if (relation.isEmpty()) {
        noteGap(relation);
        gap_ = relation;
    }
    read();
    const Value right = readSum();
    return relation.isEmpty() ? value : compare(relation.text[0], value, right);
}

Value Reader::readAssignment() {
    enter();
    if (token_.isIdentifier() && isVariable(token_)) {
        const Lexeme name = token_;
        const Lexeme before = previous_;
        read();
        if (token_.is('=')) {
            read();
            const Value value = readAssignment();
            assign(name, value);
            leave();
            return value;
        }
        if (token_.isNothing()) noteGap(token_);
        putBack();
        token_ = name;
        previous_ = before;
    }
    const Value value = readRelation();
    leave();
    return value;
}

Value Reader::expression() {
    read();
    if (token_.isEmpty()) failAtom();
    if (token_.is(';')) return knownValue(0);
    const Value value = readAssignment();
    putBack();
    return value;
}

void Reader::requireSemicolon() {
    if (!token_.is(';')) failUnexpected(';');
}

void Reader::requireDeclarationEnd() {
    if (token_.is('=')) {
        fail(CheckId::Initialiser, token_.start,
             "a declaration gives no value: assign it in a statement of its own");
    }
    requireSemicolon();
}

// Going on after a problem ------------------------------------------------------------------------

static bool beginsStatement(const Lexeme& token) {
    return token.kind == TokenKind::Keyword || token.kind == TokenKind::Block;
}

void Reader::resumeAfterStatement(const Problem& problem, size_t start) {
    const bool atNext = problem.id == CheckId::MissingSemicolon || beginsStatement(token_);
    if (atNext && token_.start > start) {
        position_ = token_.start;
        return;
    }
    Lexeme token = token_;
    while (!token.is(';') && !token.isFinished()) {
        token = scanner_.readReal(token.next);
        if (beginsStatement(token)) {
            position_ = token.start;
            return;
        }
    }
    position_ = token.next;
}

// After the parentheses that follow a keyword, or after the keyword alone.
void Reader::resumeAfterHead(size_t start) {
    Lexeme token = scanner_.readReal(scanner_.read(start).next);
    position_ = token.start;
    int depth = 0;
    while (!token.isFinished() && !token.is('{') && !token.is('}')) {
        if (token.is('(')) depth++;
        if (token.is(')') && --depth <= 0) {
            position_ = token.next;
            return;
        }
        token = scanner_.readReal(token.next);
    }
    position_ = token.start;
}
