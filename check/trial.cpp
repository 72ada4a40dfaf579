#include "check/trial.h"

#include <algorithm>

#include "check/names.h"
#include "check/trial_reader.h"
#include "script/run/variables.h"

// Variables -------------------------------------------------------------------------------------

Value* Trial::findVariable(std::string_view name) {
    const size_t base = frames_.empty() ? 0 : frames_.back();
    for (size_t i = locals_.size(); i > base; i--) {
        if (locals_[i - 1].name == name) return &locals_[i - 1].value;
    }
    const int32_t global = program_.findGlobal(name);
    return global < 0 ? nullptr : &globals_[static_cast<size_t>(global)];
}

Value Trial::valueOf(const Lexeme& name) {
    const Value* value = findVariable(name.text);
    if (value != nullptr) return *value;
    if (!assumed_.insert(name.text).second) return {};
    const bool isCall = scanner_.read(position_).is('(');
    fail(isCall ? CheckId::UnknownFunction : CheckId::UnknownVariable, name.start,
         quoted(name.text) + " is not declared where the engine gets here");
}

void Trial::assign(const Lexeme& name, Value value) {
    Value* variable = findVariable(name.text);
    if (variable != nullptr) *variable = value;
}

void Trial::pushLocal(std::string_view name, Value value) {
    if (locals_.size() >= static_cast<size_t>(kMaxLocals)) {
        fail(CheckId::TooManyLocals, token_.start,
             "here the stack of " + std::to_string(kMaxLocals) +
                 " local variables and arguments, of all active calls together, is full");
    }
    locals_.push_back({name, value});
}

void Trial::checkName(const Lexeme& name) const {
    if (name.text.size() <= kMaxNameLength) return;
    fail(CheckId::NameTooLong, name.start, "this name is too long");
}

// Calls -----------------------------------------------------------------------------------------

// Parameters without an argument are locals of the callee with the value 0.
void Trial::nameParameters(size_t base) {
    size_t slot = locals_.size();
    do {
        read();
        if (token_.is(')')) return;
        if (!token_.isType()) {
            fail(CheckId::ParameterList, token_.start, kTypeExpected);
        }
        read();
        checkName(token_);
        if (slot > base) {
            locals_[--slot].name = token_.text;
        } else {
            pushLocal(token_.text, knownValue(0));
        }
        read();
    } while (token_.is(','));
    if (!token_.is(')')) {
        fail(CheckId::ParameterList, token_.start, ", or ) expected before " + shownToken());
    }
}

Value Trial::callUser(const CheckedFunction& function, const Lexeme& name,
                      const std::vector<Value>& arguments) {
    const size_t base = locals_.size();
    const size_t after = position_;
    const size_t statement = statement_;
    const bool whole = wholeStatement_;
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
        pushLocal("", *argument);
    if (frames_.size() >= static_cast<size_t>(kMaxCalls)) {
        fail(CheckId::TooManyCalls, name.start,
             "here " + std::to_string(kMaxCalls) + " calls are active: no more are possible");
    }
    frames_.push_back(base);
    returns_.push_back(after);
    wholeStatement_ = whole && name.start == statement;
    position_ = function.location;
    nameParameters(base);
    interpretBlock();
    wholeStatement_ = whole;
    statement_ = statement;
    position_ = after;
    token_ = name;
    locals_.resize(base);
    frames_.pop_back();
    returns_.pop_back();
    return returnValue_;
}

void Trial::addCallback(const Lexeme& name) {
    const CheckedFunction* function = program_.findFunction(name.text);
    if (function == nullptr || !scanner_.read(function->location).is(')')) return;
    if (std::find(callbacks_.begin(), callbacks_.end(), function) == callbacks_.end()) {
        callbacks_.push_back(function);
    }
}

// A built-in that takes call-backs away may take any: none is certain then. After the end of the
// game there are none at all.
void Trial::noteTaken(std::string_view builtin) {
    const bool takesAway = builtin == "deletetimer" || builtin == "pausetimer" ||
                           builtin == "deletefunckey" || builtin == "changefunckey";
    if (takesAway && inMain_) callbacks_.clear();
    if (builtin == "exitgame") mayCallBack_ = mayCallBack_ && !inMain_;
}

Value Trial::callBuiltin(const BuiltinCall& call) {
    const std::string_view name = call.builtin.name;
    noteTaken(name);
    const bool never = name == "createtimer" && call.values[1].known && call.values[1].number < 0;
    if (name == "createtimer" && !never && inMain_) missing_.push_back(call.tokens.back());
    if ((name == "createtimer" && !never) || name == "addexectfunckey") {
        addCallback(call.tokens.back());
    }
    return {};
}

// Entries ---------------------------------------------------------------------------------------

// The call reads its arguments from the definition's own parentheses.
void Trial::enterAt(const CheckedFunction& function) {
    locals_.clear();
    frames_.clear();
    returns_.clear();
    loopStates_.clear();
    trap_.reset();
    endless_.reset();
    wholeStatement_ = true;
    depth_ = 0;
    token_ = scanner_.read(function.start);
    statement_ = function.start;
    position_ = function.location - 1;
    readUserCall(function);
}

void Trial::confirm(const Problem& problem) {
    const std::string text =
        problem.text.empty() ? "the engine gets out of step and fails here" : problem.text;
    if (trap_) {
        findings_.add(trap_->id, trap_->position,
                      "the engine skips this, runs on out of step and fails: put it in braces",
                      Severity::Error);
    } else {
        // What a word has swallowed is found inside the word.
        const size_t end = std::max({problem.position, token_.start, token_.next - 1});
        findings_.confirm(problem.id, problem.position, statement_, end, text);
    }
}

// Returns false if it is not certain that the function comes to its end.
bool Trial::tryFunction(const CheckedFunction& function) {
    try {
        enterAt(function);
    } catch (const Problem& problem) {
        confirm(problem);
    } catch (const GivenUp&) {
        return true;
    } catch (const Uncertain&) {
        return false;
    } catch (const OutOfBudget&) {
        confirmEndless();
        return false;
    }
    return true;
}

bool Trial::mentions(std::string_view word) const {
    for (size_t position = 0; position < scanner_.size();) {
        const Lexeme token = scanner_.readReal(position);
        if (token.isIdentifier() && token.text == word) return true;
        position = std::max(token.next, position + 1);
    }
    return false;
}

// The game ends when a timer calls a function that does not exist, unless something takes the timer
// away before or ends the game in another way.
void Trial::confirmMissing() {
    if (program_.usesEnd) return;
    for (const std::string_view word : {"deletetimer", "pausetimer", "exitgame"}) {
        if (mentions(word)) return;
    }
    for (const Lexeme& name : missing_) {
        for (const CheckId id : {CheckId::CallbackUnknown, CheckId::CallbackCase}) {
            if (findings_.has(id, name.start)) findings_.add(id, name.start, "", Severity::Error);
        }
    }
}

// Nothing is known of the variables when a timer or a key calls. A call-back may make more.
void Trial::tryCallbacks() {
    inMain_ = false;
    for (size_t i = 0; i < callbacks_.size(); i++) {
        forgetGlobals();
        tryFunction(*callbacks_[i]);
    }
}

void Trial::run() {
    constexpr int64_t kMainBudget = 30000;
    constexpr int64_t kCallbackBudget = 15000;
    const CheckedFunction* main = program_.findFunction("main");
    if (main == nullptr) return;
    budget_ = kMainBudget;
    if (!tryFunction(*main) || !mayCallBack_) return;
    confirmMissing();
    budget_ = kCallbackBudget;
    tryCallbacks();
}

void tryProgram(const Program& program, Findings& findings) {
    Trial(program, findings).run();
}
