#include <algorithm>

#include "app/base/paths.h"
#include "check/names.h"
#include "check/survey_reader.h"
#include "keys/key_bindings.h"
#include "script/run/variables.h"

// Names -----------------------------------------------------------------------------------------

// What goes wrong in a statement has its cause in the odd tokens in it, if there are any.
void Survey::report(const Problem& problem, size_t start) {
    const bool explained = findings_.anyOddToken(start, token_.next);
    if (!problem.text.empty() && !explained) add(problem.id, problem.position, problem.text);
    if (problem.id == CheckId::NestedTooDeeply) budget_ = 0;  // there is no end of such problems
}

// Text that was not read on account of a problem: nobody knows that its names are not used.
void Survey::useNames(size_t from, size_t to) {
    for (size_t position = from; position < to;) {
        const Lexeme token = scanner_.readReal(position);
        position = std::max(token.next, position + 1);
        if (!token.isIdentifier()) continue;
        useVariable(token.text);
        functionsUsed_.insert(token.text);
    }
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

// The search takes time: a text of unknown words is no script with slips of the pen. What is
// suggested counts as used: it was meant.
std::string Survey::suggestionFor(std::string_view name) {
    constexpr int kMostSuggestions = 20;
    if (suggestions_++ >= kMostSuggestions) return "";
    const std::string_view nearest = nearestName(name, knownNames());
    useVariable(nearest);
    functionsUsed_.insert(nearest);
    return didYouMean(nearest);
}

// An unknown name is reported once in a function and then counts as a variable, so that the
// text after it is checked too.
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

// What an unknown function would take is unknown too.
void Survey::skipUnknownCall() {
    const size_t from = position_;
    if (!scanner_.read(from).is('(')) return;
    int depth = 0;
    do {
        read();
        if (token_.is('(')) depth++;
        if (token_.is(')')) depth--;
    } while (depth > 0 && !token_.is(';') && !token_.is('{') && !token_.isFinished());
    useNames(from, position_);
    if (depth > 0) failUnexpected(')');
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
            quoted(function.name) +
                " has no return: its value is that of the last return that "
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
            "no function is called " + quoted(name.text) + ": the game ends when it is called" +
                suggestionFor(lowered));
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
    if (call.builtin.name == "createtimer" && call.values[0].isZero() && call.values[1].isZero()) {
        add(CheckId::TimerInterval, call.name.start,
            "with the interval 0 the function is called a thousand times a second");
    }
    if (call.builtin.name == "createunit" && !makesUnits_) {
        makesUnits_ = true;
        files.push_back({'p', kUnitPicture, call.name.start});
    }
    for (size_t i = 0; i < call.values.size(); i++) {
        const char kind = call.builtin.arguments[i];
        const Lexeme& token = call.tokens[i];
        const Value value = call.values[i];
        if (kind == 'f') checkCallback(token);
        if ((kind == 'p' || kind == 'a') && token.kind == TokenKind::String)
            files.push_back({kind, std::string(token.text), token.start});
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
        add(CheckId::CommentInExpression, gap.start, kCommentGap);
    } else if (scanner_.byteAt(gap.start) == '\r') {
        add(CheckId::EmptyLineInExpression, gap.start, kLineGap);
    }
}

void Survey::noteOpenCall(const Lexeme&) {
    failUnexpected(')');
}

// An operand that is missing before a ")" counts as 0 without a word.
void Survey::noteMissingOperand() {
    const char sign = scanner_.byteAt(previous_.start);
    const bool doubled = previous_.start > 0 && scanner_.byteAt(previous_.start - 1) == sign;
    if (doubled && (sign == '+' || sign == '-')) {
        add(CheckId::NoSuchOperator, previous_.start - 1,
            "there is no " + std::string(2, sign) + ": write " + writtenOut(previous_.start - 1));
    } else {
        add(CheckId::EmptyExpression, token_.start, "a value expected before )");
    }
}

void Survey::noteSeparator(const BuiltinSignature& builtin) {
    fail(CheckId::BuiltinArguments, token_.start,
         "wrong arguments: the call is " + callForm(builtin));
}

void Survey::noteArgument(const BuiltinSignature& builtin, char kind) {
    const bool isString = token_.kind == TokenKind::String;
    const bool number = kind == 'i' || kind == 'k';
    if (token_.is(')') || token_.is(';') || (number && isString)) noteSeparator(builtin);
    if (number || isString) return;
    if (kind != 'f' || !token_.isIdentifier()) {
        add(CheckId::TextArgument, token_.start,
            shownToken() + " is used as the text itself: put texts in quotes");
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
        if (!token_.isType()) {
            fail(CheckId::ParameterList, token_.start, kTypeExpected);
        }
        read();
        declare(token_, true);
        read();
    } while (token_.is(','));
    if (!token_.is(')')) {
        fail(CheckId::ParameterList, token_.start, ", or ) expected before " + shownToken());
    }
}
