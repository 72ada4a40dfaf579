#include "check/survey.h"

#include <algorithm>
#include <unordered_set>

#include "check/names.h"
#include "check/reader.h"
#include "keys/key_bindings.h"
#include "script/variables.h"

static constexpr size_t kNowhere = static_cast<size_t>(-1);

static bool isType(const Lexeme& token) {
    return token.keyword == KeywordCode::Char || token.keyword == KeywordCode::Int;
}

static std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

class Survey : public Reader {
public:
    Survey(const Program& program, Findings& findings)
        : Reader(program), findings_(findings), globalUsed_(program.globals.size()) {
        constexpr int64_t kBudget = 1000000;  // every token is read a few times at most
        budget_ = kBudget;
    }

    void run();

    std::vector<FileUse> files;

private:
    struct Local {
        std::string_view name;
        size_t start;
        bool isParameter;
        bool isUsed;
        bool isOpen;  // the block of its declaration is not over
    };

    // What stands around a statement.
    struct Context {
        int blocks = 0;       // blocks around, the function's own not counted
        bool inLoop = false;
    };

    void add(CheckId id, size_t position, std::string text) {
        findings_.add(id, position, std::move(text));
    }
    void report(const Problem& problem);

    // Names ------
    bool isVariable(const Lexeme& name) override;
    Value valueOf(const Lexeme& name) override;
    void assign(const Lexeme&, Value) override {}
    Value callUser(const CheckedFunction& function, const Lexeme& name,
                   const std::vector<Value>& arguments) override;
    Value callBuiltin(const BuiltinCall& call) override;
    void noteGap(const Lexeme& gap) override;
    void noteOpenCall(const Lexeme& token) override;
    void noteSeparator(const BuiltinSignature& builtin) override;
    void noteArgument(const BuiltinSignature& builtin, char kind) override;

    bool useVariable(std::string_view name);
    std::vector<std::string_view> knownNames() const;
    std::string suggestionFor(std::string_view name);
    void declare(const Lexeme& name, bool isParameter);
    void checkCallback(const Lexeme& name);
    void checkText(size_t position);
    void skipUnknownCall();

    // Statements ------
    void surveyFunction(const CheckedFunction& function);
    void readParameters();
    void readFunctionBody(const CheckedFunction& function);
    void readBlock(Context context);
    void readStatement(Context context);
    void readStatementOf(Context context);
    void readKeyword(Context context);
    void readBody(Context context, CheckId unbraced);
    void readLoopBody(Context context, size_t start, Value test);
    void readDeclaration(Context context);
    void readIf(Context context);
    void readElse(Context context);
    void readWhile(Context context);
    void readDo(Context context);
    void readDoEnd(size_t start);
    void readFor(Context context);
    Value readForHead();
    Value readForPart(bool isTest);
    void readForStep();
    void readReturn(Context context);
    void readOther();
    Value readHead();

    void resumeBehindStatement(const Problem& problem, size_t start);
    void resumeBehindHead(size_t start);
    void reportUnused();

    Findings& findings_;
    std::vector<Local> locals_;
    std::vector<bool> globalUsed_;
    std::unordered_set<std::string_view> functionsUsed_;
    std::unordered_set<std::string_view> unknownNames_;  // reported in this function
    size_t leading_ = kNowhere;   // where the statement or step begins: a call there needs no value
    size_t return_ = kNowhere;    // a return whose block is not over
    int returnBlocks_ = 0;        // Context::blocks of that return
    size_t lastText_ = kNowhere;  // the last createtext, if no timer may have been made since
    int timersMade_ = 0;          // what may have made timers
    int suggestions_ = 0;         // made so far
    int exits_ = 0;               // what may have ended the process
    size_t skippedTo_ = kNowhere; // behind the last token that was skipped without effect
};

// Names -----------------------------------------------------------------------------------------

void Survey::report(const Problem& problem) {
    if (!problem.text.empty()) add(problem.id, problem.position, problem.text);
    if (problem.id == CheckId::NestedTooDeeply) budget_ = 0;  // there is no end of such problems
}

bool Survey::useVariable(std::string_view name) {
    for (auto local = locals_.rbegin(); local != locals_.rend(); ++local) {
        if (local->name != name) continue;
        local->isUsed = true;
        return true;
    }
    const int32_t global = program_.findGlobal(name);
    if (global >= 0) globalUsed_[static_cast<size_t>(global)] = true;
    return global >= 0;
}

std::vector<std::string_view> Survey::knownNames() const {
    std::vector<std::string_view> names;
    for (const Local& local : locals_)
        names.push_back(local.name);
    for (const CheckedGlobal& global : program_.globals)
        names.push_back(global.name);
    for (const CheckedFunction& function : program_.functions)
        names.push_back(function.name);
    for (const BuiltinSignature* row = gBuiltinSignatures; !row->name.empty(); row++)
        names.push_back(row->name);
    for (const KeywordName& keyword : gKeywords)
        names.push_back(keyword.name);
    return names;
}

// The search takes time: a text of unknown words is no script with slips of the pen.
std::string Survey::suggestionFor(std::string_view name) {
    constexpr int kMostSuggestions = 20;
    if (suggestions_++ >= kMostSuggestions) return "";
    return didYouMean(name, knownNames());
}

// An unknown name is reported once in a function and then taken for a variable, so that what
// stands behind it is looked at too.
bool Survey::isVariable(const Lexeme& name) {
    if (useVariable(name.text)) return true;
    if (findBuiltinSignature(name.text) != nullptr) return false;
    if (program_.findFunction(name.text) != nullptr) return false;
    if (scanner_.read(name.next).is('(')) return false;
    if (!unknownNames_.insert(name.text).second) return true;
    if (findings_.anyTrap(name.start, name.next)) return true;  // a word that swallowed something
    add(CheckId::UnknownVariable, name.start,
        quoted(name.text) + " is not declared here" + suggestionFor(name.text));
    return true;
}

// Only unknown functions and names that no declaration reaches come here.
Value Survey::valueOf(const Lexeme& name) {
    if (useVariable(name.text) || unknownNames_.count(name.text) > 0) {
        if (!scanner_.read(name.next).is('(')) return {};
    }
    add(CheckId::UnknownFunction, name.start,
        "there is no function " + quoted(name.text) + suggestionFor(name.text));
    skipUnknownCall();
    return {};
}

void Survey::skipUnknownCall() {
    read();
    do {
        expression();
        read();
    } while (token_.is(','));
    if (!token_.is(')')) failUnexpected(')');
}

static std::string counted(size_t n, const char* what) {
    return std::to_string(n) + " " + what + (n == 1 ? "" : "s");
}

Value Survey::callUser(const CheckedFunction& function, const Lexeme& name,
                       const std::vector<Value>& arguments) {
    functionsUsed_.insert(function.name);
    timersMade_++;
    lastText_ = kNowhere;
    if (program_.usesEnd) exits_++;
    const bool empty = arguments.size() == 1 && scanner_.readReal(name.next + 1).is(')');
    const size_t given = empty ? 0 : arguments.size();
    if (given != function.parameters.size()) {
        add(CheckId::ArgumentCount, name.start,
            quoted(function.name) + " has " + counted(function.parameters.size(), "parameter") +
                ", " + counted(given, "argument") + " given");
    }
    const Lexeme next = scanner_.readReal(position_);
    const bool dropped = name.start == leading_ && (next.is(';') || next.is(')'));
    if (!function.hasReturn && !dropped) {
        add(CheckId::NoReturnValue, name.start,
            quoted(function.name) + " has no return: its value is that of the last return that "
                                    "any function executed");
    }
    return {};
}

void Survey::checkCallback(const Lexeme& name) {
    const CheckedFunction* function = program_.findFunction(name.text);
    const std::string lowered = lowerCase(name.text);
    if (function == nullptr && program_.findFunction(lowered) != nullptr) {
        functionsUsed_.insert(program_.findFunction(lowered)->name);
        add(CheckId::CallbackCase, name.start,
            "the engine knows this function as " + quoted(lowered) +
                ": with capital letters here the game ends when it is called");
    } else if (function == nullptr) {
        add(CheckId::CallbackUnknown, name.start,
            "no function is called " + quoted(name.text) +
                ": the game ends when it is called" + suggestionFor(lowered));
    } else {
        functionsUsed_.insert(function->name);
        if (!scanner_.read(function->location).is(')') && function->name != "main") {
            add(CheckId::CallbackParameters, name.start,
                quoted(name.text) + " has parameters: the engine calls it with none, and fails");
        }
    }
}

// While no timer is made, every createtext writes into the same text.
void Survey::checkText(size_t position) {
    if (lastText_ != kNowhere) {
        add(CheckId::TextRewritten, position,
            "with no timer made since the last createtext this one rewrites its text");
    }
    lastText_ = position;
}

Value Survey::callBuiltin(const BuiltinCall& call) {
    if (call.builtin.name == "createtext") checkText(call.name.start);
    if (call.builtin.name.find("timer") != std::string_view::npos &&
        call.builtin.name.substr(0, 3) != "get") {
        timersMade_++;
        lastText_ = kNowhere;
    }
    for (size_t i = 0; i < call.values.size(); i++) {
        const char kind = call.builtin.arguments[i];
        const Lexeme& token = call.tokens[i];
        const Value value = call.values[i];
        if (kind == 'f') checkCallback(token);
        if (kind == 'p' || kind == 'a') files.push_back({kind, std::string(token.text), token.start});
        if (kind == 'k' && value.known && (value.number < 0 || value.number >= kKeyCodes)) {
            add(CheckId::KeyCode, call.name.start,
                "no key has the code " + std::to_string(value.number) + ": they are 0 to " +
                    std::to_string(kKeyCodes - 1));
        }
    }
    return {};
}

// What is reported as a failure of its own is not noted.
void Survey::noteGap(const Lexeme& gap) {
    if (!gap.isNothing() || scanner_.readReal(gap.next).is('{')) return;
    if (gap.afterComment) {
        add(CheckId::CommentInExpression, gap.start,
            "inside an expression a comment must touch the token behind it: a blank there "
            "counts as an operator");
    } else if (scanner_.byteAt(gap.start) == '\r') {
        add(CheckId::EmptyLineInExpression, gap.start,
            "an empty line inside an expression counts as an operator");
    }
}

void Survey::noteOpenCall(const Lexeme&) {
    failUnexpected(')');
}

void Survey::noteSeparator(const BuiltinSignature& builtin) {
    fail(CheckId::BuiltinArguments, token_.start, "wrong arguments: the call is " + callForm(builtin));
}

void Survey::noteArgument(const BuiltinSignature& builtin, char kind) {
    const bool isString = token_.kind == TokenKind::String;
    const bool number = kind == 'i' || kind == 'k';
    if (token_.is(')') || token_.is(';') || (number && isString)) noteSeparator(builtin);
    if (number || isString) return;
    if (kind != 'f' || !token_.isIdentifier()) {
        add(CheckId::TextArgument, token_.start,
            shownToken() + " is taken for the text itself: put texts in quotes");
    }
}

// Declarations ----------------------------------------------------------------------------------

void Survey::declare(const Lexeme& name, bool isParameter) {
    if (name.text.size() > kMaxNameLength) {
        add(CheckId::NameTooLong, name.start,
            "a name has at most " + std::to_string(kMaxNameLength) +
                " characters; the engine aborts here");
    }
    if (!name.isIdentifier()) {
        add(CheckId::BadName, name.start, "a name expected here");
    } else if (findBuiltinSignature(name.text) != nullptr) {
        add(CheckId::HiddenName, name.start,
            quoted(name.text) + " is a built-in, which hides this variable");
    } else if (program_.findFunction(name.text) != nullptr) {
        add(CheckId::DuplicateName, name.start,
            quoted(name.text) + " is a function too, which hides this variable");
    }
    for (const Local& local : locals_) {
        if (local.name != name.text || !local.isOpen) continue;
        add(CheckId::DuplicateName, name.start,
            quoted(name.text) + " is declared in this function already: this is a new variable");
        break;
    }
    locals_.push_back({name.text, name.start, isParameter, false, true});
}

void Survey::readDeclaration(Context context) {
    if (context.inLoop) {
        add(CheckId::DeclarationInLoop, token_.start,
            "every pass takes new room on the stack of " + std::to_string(kMaxLocals) +
                " variables: declare before the loop");
    }
    do {
        read();
        declare(token_, false);
        read();
    } while (token_.is(','));
    requireDeclarationEnd();
}

void Survey::readParameters() {
    do {
        read();
        if (token_.is(')')) return;
        if (!isType(token_)) {
            fail(CheckId::ParameterList, token_.start, "int or char expected before a parameter");
        }
        read();
        declare(token_, true);
        read();
    } while (token_.is(','));
    if (!token_.is(')')) {
        fail(CheckId::ParameterList, token_.start, ", or ) expected before " + shownToken());
    }
}

// Going on after a problem ------------------------------------------------------------------------

static bool beginsStatement(const Lexeme& token) {
    return token.kind == TokenKind::Keyword || token.kind == TokenKind::Block;
}

void Survey::resumeBehindStatement(const Problem& problem, size_t start) {
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

// Behind the parentheses that follow a keyword, or the keyword alone.
void Survey::resumeBehindHead(size_t start) {
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

// The condition behind a keyword.
Value Survey::readHead() {
    const size_t start = token_.start;
    const int32_t depth = depth_;
    try {
        return expression();
    } catch (const Problem& problem) {
        depth_ = depth;
        report(problem);
        resumeBehindHead(start);
        return {};
    }
}

// Statements ------------------------------------------------------------------------------------

void Survey::readBlock(Context context) {
    enter();
    const size_t outside = locals_.size();
    for (;;) {
        read();
        if (token_.is('}') || token_.isFinished()) break;
        if (token_.isNothing() && token_.next == token_.from) position_++;  // reported by the load
        readStatement(context);
    }
    for (size_t i = outside; i < locals_.size(); i++)
        locals_[i].isOpen = false;
    // What stands behind the block runs too, unless that is the function's own.
    if (return_ != kNowhere && context.blocks < 2) return_ = kNowhere;
    leave();
}

// The current token begins the statement; afterwards the position is behind it.
void Survey::readStatement(Context context) {
    const size_t start = token_.start;
    const int32_t depth = depth_;
    if (return_ != kNowhere && !token_.is(';') && !token_.isEmpty()) {
        add(CheckId::ReturnNotLast, return_,
            returnBlocks_ == 0 ? "nothing behind this return is ever run"
                                : "what stands behind this return is run all the same");
        return_ = kNowhere;
    }
    try {
        readStatementOf(context);
    } catch (const Problem& problem) {
        depth_ = depth;
        report(problem);
        resumeBehindStatement(problem, start);
    }
}

void Survey::readStatementOf(Context context) {
    if (token_.isIdentifier()) {
        leading_ = token_.start;
        position_ = token_.start;
        expression();
        requireSemicolon();
        position_ = token_.next;
    } else if (token_.is('{')) {
        add(CheckId::BareBlock, token_.start,
            "a block of its own ends the block around it at its }: put an if (1) before it");
        context.blocks++;
        readBlock(context);
    } else if (token_.kind == TokenKind::Keyword) {
        readKeyword(context);
    } else {
        readOther();
    }
}

void Survey::readOther() {
    const bool continued = token_.from == skippedTo_;
    if (token_.isEmpty() || token_.is(';')) return;
    skippedTo_ = token_.next;
    if (continued || findings_.anyTrap(token_.start, token_.next)) return;
    add(CheckId::NoEffect, token_.start,
        shownToken() + " is skipped: a statement begins with a name or a keyword");
}

void Survey::readKeyword(Context context) {
    switch (token_.keyword) {
        case KeywordCode::Char:
        case KeywordCode::Int:
            return readDeclaration(context);
        case KeywordCode::If:
            return readIf(context);
        case KeywordCode::Else:
            add(CheckId::LoneElse, token_.start, "this else has no if; it is skipped");
            return readElse(context);
        case KeywordCode::For:
            return readFor(context);
        case KeywordCode::Do:
            return readDo(context);
        case KeywordCode::While:
            return readWhile(context);
        case KeywordCode::Return:
            return readReturn(context);
        case KeywordCode::End:
            exits_++;
            return;
        default:
            return;
    }
}

// The body of an if, an else or a loop. A return is looked for in it on its own.
void Survey::readBody(Context context, CheckId unbraced) {
    context.blocks++;
    const Lexeme next = scanner_.read(position_);
    const Lexeme real = scanner_.readReal(position_);
    if (real.is('{')) {
        if (!next.is('{')) {
            add(CheckId::GapBeforeBrace, real.start,
                "between ) and { only blanks and one line end may stand, no empty line, no "
                "comment");
        }
        token_ = real;
        position_ = real.next;
        return readBlock(context);
    }
    if (unbraced == CheckId::UnbracedBody) {
        add(unbraced, real.start,
            "a body that is skipped must be in braces: without them the engine skips up to the "
            "end of the function");
    } else {
        add(unbraced, real.start, "the body of do must be in braces");
    }
    token_ = real;
    position_ = real.next;
    if (!real.is('}')) readStatement(context);
}

void Survey::readIf(Context context) {
    readHead();
    const size_t textBefore = lastText_;
    readBody(context, CheckId::UnbracedBody);
    const size_t textBehind = lastText_;
    lastText_ = textBefore;
    const Lexeme next = scanner_.read(position_);
    const Lexeme real = scanner_.readReal(position_);
    if (real.keyword == KeywordCode::Else) {
        if (next.isNothing()) {
            add(CheckId::GapBeforeElse, real.start,
                "between } and else only blanks and one line end may stand, no empty line, no "
                "comment: this else is never run");
        }
        token_ = real;
        position_ = real.next;
        readElse(context);
    }
    // A text counts as the last one only if it is that on both ways.
    if (textBehind == kNowhere) lastText_ = kNowhere;
}

// The current token is the else.
void Survey::readElse(Context context) {
    const Lexeme next = scanner_.readReal(position_);
    if (next.keyword != KeywordCode::If) return readBody(context, CheckId::UnbracedBody);
    add(CheckId::ElseIf, next.start,
        "else if works only while the first condition is false: put the second if in braces");
    token_ = next;
    position_ = next.next;
    context.blocks++;
    readIf(context);
}

void Survey::readLoopBody(Context context, size_t start, Value test) {
    const int timersBefore = timersMade_;
    const int exitsBefore = exits_;
    context.inLoop = true;
    readBody(context, CheckId::UnbracedBody);
    const bool written = lastText_ != kNowhere && lastText_ > start;
    if (written && timersMade_ == timersBefore) {
        add(CheckId::TextRewritten, lastText_,
            "with no timer made in this loop every pass rewrites the same text");
    }
    if (test.known && test.number != 0 && exits_ == exitsBefore) {
        add(CheckId::EndlessLoop, start, "nothing ends this loop, also no return");
    }
}

void Survey::readWhile(Context context) {
    const size_t start = token_.start;
    const Value test = readHead();
    readLoopBody(context, start, test);
}

void Survey::readDo(Context context) {
    const size_t start = token_.start;
    const int exitsBefore = exits_;
    context.inLoop = true;
    readBody(context, CheckId::DoWithoutWhile);
    const Lexeme next = scanner_.read(position_);
    const Lexeme real = scanner_.readReal(position_);
    if (real.keyword != KeywordCode::While) {
        add(CheckId::DoWithoutWhile, real.start, "while expected behind the body of do");
        return;
    }
    if (next.isNothing()) {
        add(CheckId::DoWithoutWhile, real.start,
            "between } and while only blanks and one line end may stand, no empty line, no "
            "comment");
    }
    token_ = real;
    position_ = real.next;
    const Value test = readHead();
    if (test.known && test.number != 0 && exits_ == exitsBefore) {
        add(CheckId::EndlessLoop, start, "nothing ends this loop, also no return");
    }
}

// One of the first two parts of a for. The engine steps over the ";" by one character, and over one
// more if the part is empty.
Value Survey::readForPart(bool isTest) {
    const Lexeme first = scanner_.read(position_);
    if (isType(first)) {
        fail(CheckId::Syntax, first.start, "a for declares nothing: declare before the loop");
    }
    const Value value = expression();
    requireSemicolon();
    const bool isEmpty = position_ == token_.next;
    if (isEmpty) {
        const char skipped = scanner_.byteAt(position_);
        if (skipped != ' ' && skipped != '\t') {
            add(CheckId::ForEmptyPart, token_.start,
                "behind an empty part of a for one character is skipped: write a blank there");
        }
        if (isTest) {
            add(CheckId::ForEmptyTest, token_.start,
                "an empty test counts as zero: this loop never runs");
        }
    }
    position_++;
    return value;
}

void Survey::readForStep() {
    const Lexeme first = scanner_.read(position_);
    if (first.is(')')) {
        position_ = first.next;
        return;
    }
    leading_ = first.start;
    expression();
    read();
    if (!token_.is(')')) failUnexpected(')');
}

Value Survey::readForHead() {
    read();
    if (!token_.is('(')) fail(CheckId::Parentheses, token_.start, "( expected behind for");
    leading_ = scanner_.readReal(position_).start;
    readForPart(false);
    const Value test = readForPart(true);
    readForStep();
    return test;
}

void Survey::readFor(Context context) {
    const size_t start = token_.start;
    const int32_t depth = depth_;
    Value test;
    try {
        test = readForHead();
    } catch (const Problem& problem) {
        depth_ = depth;
        report(problem);
        resumeBehindHead(start);
    }
    readLoopBody(context, start, test);
}

void Survey::readReturn(Context context) {
    const size_t start = token_.start;
    expression();
    if (token_.is(';')) position_ = token_.next;
    if (context.inLoop) {
        add(CheckId::ReturnInLoop, start,
            "a return inside a loop ends neither the loop nor the function: the loop goes on");
    } else {
        return_ = start;
        returnBlocks_ = context.blocks;
    }
}

// Functions -------------------------------------------------------------------------------------

void Survey::readFunctionBody(const CheckedFunction& function) {
    const Lexeme next = scanner_.read(position_);
    const Lexeme real = scanner_.readReal(position_);
    token_ = real;
    position_ = real.next;
    if (real.is('{')) {
        if (next.isNothing()) {
            add(CheckId::GapBeforeBrace, real.start,
                "between ) and { only blanks and one line end may stand: with an empty line or a "
                "comment there the function does nothing");
        }
        readBlock({});
    } else if (real.is(';')) {
        add(CheckId::NoBody, function.start,
            "the engine takes this for the definition: declare no function before it is defined");
    } else if (!real.is('}') && !real.isFinished()) {
        readStatement({});
    }
}

void Survey::surveyFunction(const CheckedFunction& function) {
    locals_.clear();
    unknownNames_.clear();
    lastText_ = return_ = leading_ = skippedTo_ = kNowhere;
    depth_ = 0;
    position_ = function.location;
    try {
        readParameters();
    } catch (const Problem& problem) {
        report(problem);
        position_ = scanner_.behindCloseParen(function.location);
    }
    readFunctionBody(function);
    for (const Local& local : locals_) {
        if (local.isUsed || local.isParameter) continue;
        add(CheckId::UnusedVariable, local.start, quoted(local.name) + " is never used");
    }
}

static void checkDefinitions(const Program& program, Findings& findings) {
    for (size_t i = 0; i < program.functions.size(); i++) {
        const CheckedFunction& function = program.functions[i];
        if (findBuiltinSignature(function.name) != nullptr) {
            findings.add(CheckId::HiddenName, function.start,
                         quoted(function.name) + " is a built-in, which hides this function");
        }
        if (program.functionIndex.at(function.name) != i) {
            findings.add(CheckId::DuplicateName, function.start,
                         "a function " + quoted(function.name) +
                             " is defined already: the first one is used");
        }
    }
    for (size_t i = 0; i < program.globals.size(); i++) {
        const CheckedGlobal& global = program.globals[i];
        if (findBuiltinSignature(global.name) != nullptr) {
            findings.add(CheckId::HiddenName, global.start,
                         quoted(global.name) + " is a built-in, which hides this variable");
        } else if (program.findFunction(global.name) != nullptr) {
            findings.add(CheckId::DuplicateName, global.start,
                         quoted(global.name) + " is a function too, which hides this variable");
        }
        if (program.globalIndex.at(global.name) != i) {
            findings.add(CheckId::DuplicateName, global.start,
                         quoted(global.name) + " is declared already: the first one is used");
        }
    }
}

void Survey::reportUnused() {
    for (const CheckedFunction& function : program_.functions) {
        if (function.name == "main" || functionsUsed_.count(function.name) > 0) continue;
        add(CheckId::UnusedFunction, function.start,
            quoted(function.name) + " is never called and is no call-back");
    }
    for (size_t i = 0; i < program_.globals.size(); i++) {
        if (globalUsed_[i]) continue;
        add(CheckId::UnusedVariable, program_.globals[i].start,
            quoted(program_.globals[i].name) + " is never used");
    }
}

void Survey::run() {
    checkDefinitions(program_, findings_);
    try {
        for (const CheckedFunction& function : program_.functions) {
            try {
                surveyFunction(function);
            } catch (const Problem& problem) {
                report(problem);
            }
        }
    } catch (const OutOfBudget&) {
        return;  // too odd a text to say what nothing uses
    }
    const CheckedFunction* main = program_.findFunction("main");
    if (main != nullptr && !scanner_.read(main->location).is(')')) {
        add(CheckId::MainParameters, main->location, "main must be declared as main()");
    }
    reportUnused();
}

std::vector<FileUse> surveyProgram(const Program& program, Findings& findings) {
    Survey survey(program, findings);
    survey.run();
    return survey.files;
}
