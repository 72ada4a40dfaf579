#include "check/trial.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "check/reader.h"
#include "script/variables.h"

// Thrown where nothing more is certain: an unknown condition, or `end`.
struct Uncertain {};

class Trial : public Reader {
public:
    Trial(const Program& program, Findings& findings)
        : Reader(program), findings_(findings), globals_(program.globals.size(), knownValue(0)) {}

    void run();

private:
    struct Variable {
        std::string_view name;
        Value value;
    };

    // A skip that began at something else than a "{": what follows is read out of step.
    struct Trap {
        CheckId id;
        size_t position;
    };

    // Names ------
    Value* findVariable(std::string_view name);
    bool isVariable(const Lexeme& name) override { return findVariable(name.text) != nullptr; }
    Value valueOf(const Lexeme& name) override;
    void assign(const Lexeme& name, Value value) override;
    Value callUser(const CheckedFunction& function, const Lexeme& name,
                   const std::vector<Value>& arguments) override;
    Value callBuiltin(const BuiltinCall& call) override;
    void pushLocal(std::string_view name, Value value);
    void nameParameters(size_t base);
    void checkName(const Lexeme& name) const;

    // Statements ------
    void interpretBlock();
    void runBlock();
    bool runKeyword();
    void runDeclaration();
    void runIf();
    void runWhile();
    void runDo();
    void runFor();
    Value readForPart();
    void skipBody(bool isElse);
    void skipBalanced(char open, char close);

    // Certainty ------
    void skipUnknown(size_t from);
    void skipHarmlessBlock();
    void forget(const Lexeme& token);
    void forgetGlobals();
    void watchLoop(size_t start);
    size_t stateHash() const;

    // Entries ------
    void enterAt(const CheckedFunction& function);
    bool tryFunction(const CheckedFunction& function);
    void confirm(const Problem& problem);
    void tryCallbacks();
    void addCallback(const Lexeme& name);

    Findings& findings_;
    std::vector<Value> globals_;
    std::vector<Variable> locals_;
    std::vector<size_t> frames_;         // for each call the size of locals_ at its start
    std::vector<size_t> returns_;        // for each call the position behind it
    std::vector<const CheckedFunction*> callbacks_;
    std::unordered_map<size_t, size_t> loopStates_;  // hash of the state at the last pass
    std::optional<Trap> trap_;
    Value returnValue_ = knownValue(0);
    size_t statement_ = 0;       // start of the statement being run
    bool wholeStatement_ = true;  // every active call is the first thing in its statement
    bool inMain_ = true;
};

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
    const bool isCall = scanner_.read(position_).is('(');
    fail(isCall ? CheckId::UnknownFunction : CheckId::UnknownVariable, name.start,
         "\"" + std::string(name.text) + "\" is not declared where the engine gets here");
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
        if (token_.keyword != KeywordCode::Char && token_.keyword != KeywordCode::Int) {
            fail(CheckId::ParameterList, token_.start,
                 "int or char expected before a parameter");
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
    const size_t behind = position_;
    const size_t statement = statement_;
    const bool whole = wholeStatement_;
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
        pushLocal("", *argument);
    if (frames_.size() >= static_cast<size_t>(kMaxCalls)) {
        fail(CheckId::TooManyCalls, name.start,
             "here " + std::to_string(kMaxCalls) + " calls are active: no more are possible");
    }
    frames_.push_back(base);
    returns_.push_back(behind);
    wholeStatement_ = whole && name.start == statement;
    position_ = function.location;
    nameParameters(base);
    interpretBlock();
    wholeStatement_ = whole;
    statement_ = statement;
    position_ = behind;
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

// What takes call-backs away may take any: none is certain then.
Value Trial::callBuiltin(const BuiltinCall& call) {
    const std::string_view name = call.builtin.name;
    const bool takesAway = name == "deletetimer" || name == "pausetimer" ||
                           name == "deletefunckey" || name == "changefunckey";
    if (takesAway && inMain_) callbacks_.clear();
    const bool never = name == "createtimer" && call.values[1].known && call.values[1].number < 0;
    if ((name == "createtimer" && !never) || name == "addexectfunckey") {
        addCallback(call.tokens.back());
    }
    return {};
}

// Certainty -------------------------------------------------------------------------------------

void Trial::forgetGlobals() {
    std::fill(globals_.begin(), globals_.end(), Value());
    returnValue_ = {};
}

// A word in a part that may or may not be run.
void Trial::forget(const Lexeme& token) {
    if (token.kind == TokenKind::Keyword && token.keyword != KeywordCode::If &&
        token.keyword != KeywordCode::Else) {
        throw Uncertain();
    }
    if (!token.isIdentifier()) return;
    const BuiltinSignature* builtin = findBuiltinSignature(token.text);
    if (builtin != nullptr && builtin->name.find("timer") != std::string_view::npos) {
        callbacks_.clear();
    }
    if (builtin != nullptr && builtin->name.find("funckey") != std::string_view::npos) {
        callbacks_.clear();
    }
    if (builtin == nullptr && program_.findFunction(token.text) != nullptr) {
        if (program_.usesEnd) throw Uncertain();
        forgetGlobals();
    }
    Value* variable = findVariable(token.text);
    if (variable != nullptr) *variable = {};
}

// Skips a block whose statements can only change variables, or fail.
void Trial::skipHarmlessBlock() {
    read();
    if (!token_.is('{')) throw Uncertain();
    for (int depth = 1; depth > 0;) {
        read();
        if (token_.isFinished()) throw Uncertain();
        forget(token_);
        if (token_.is('{')) depth++;
        if (token_.is('}')) depth--;
    }
}

// Goes on behind a body that may or may not be run, and behind its else. `from` is where the
// statement begins: what a condition assigns may be assigned again.
void Trial::skipUnknown(size_t from) {
    const size_t body = position_;
    for (Lexeme token = scanner_.read(scanner_.read(from).next); token.start < body;
         token = scanner_.readReal(token.next)) {
        forget(token);
    }
    skipHarmlessBlock();
    const Lexeme next = scanner_.read(position_);
    if (next.keyword == KeywordCode::Else) {
        read();
        skipHarmlessBlock();
    }
    if (findings_.anyTrap(from, position_)) throw Uncertain();
}

static void mix(size_t& hash, size_t value) {
    hash ^= value + 0x9E3779B97F4A7C15U + (hash << 6) + (hash >> 2);
}

size_t Trial::stateHash() const {
    size_t hash = frames_.size();
    const auto mixValue = [&](Value value) {
        mix(hash, value.known ? 1 : 0);
        mix(hash, static_cast<size_t>(value.number));
    };
    for (const Variable& local : locals_) {
        mix(hash, std::hash<std::string_view>()(local.name));
        mixValue(local.value);
    }
    for (Value global : globals_)
        mixValue(global);
    for (size_t position : returns_)
        mix(hash, position);
    mixValue(returnValue_);
    return hash;
}

// Called at each pass of a loop whose test is known. All that has happened since the last pass was
// known too: where nothing has changed, nothing ever will.
void Trial::watchLoop(size_t start) {
    if (!wholeStatement_) return;
    const size_t hash = stateHash();
    const auto [state, isNew] = loopStates_.emplace(start, hash);
    if (!isNew && state->second == hash) {
        fail(CheckId::EndlessLoop, start, "nothing ends this loop: a pass changes nothing");
    }
    state->second = hash;
}

// Statements ------------------------------------------------------------------------------------

void Trial::skipBalanced(char open, char close) {
    for (int depth = 1; depth > 0;) {
        const size_t before = position_;
        read();
        if (token_.isFinished() || (token_.isNothing() && position_ == before)) {
            fail(CheckId::OpenBrace, token_.start,
                 "the engine looks for the end of a part that it skips, and never finds it");
        }
        if (token_.is(open)) depth++;
        if (token_.is(close)) depth--;
    }
}

// The engine takes the next token for the opening brace, whatever it is.
void Trial::skipBody(bool isElse) {
    read();
    if (!token_.is('{') && !trap_) {
        const Lexeme real = scanner_.readReal(token_.start);
        const bool elseIf = isElse && real.keyword == KeywordCode::If;
        const bool gap = token_.isNothing() && real.is('{');
        trap_ = Trap{gap      ? CheckId::GapBeforeBrace
                     : elseIf ? CheckId::ElseIf
                              : CheckId::UnbracedBody,
                     real.start};
    }
    skipBalanced('{', '}');
}

void Trial::runDeclaration() {
    do {
        read();
        checkName(token_);
        pushLocal(token_.text, knownValue(0));
        read();
    } while (token_.is(','));
    requireDeclarationEnd();
}

void Trial::runIf() {
    const size_t start = token_.start;
    const Value test = expression();
    if (!test.known) return skipUnknown(start);
    if (test.number != 0) return interpretBlock();
    skipBody(false);
    read();
    if (token_.keyword == KeywordCode::Else) {
        interpretBlock();
    } else {
        putBack();
    }
}

void Trial::runWhile() {
    const size_t start = token_.start;
    const Value test = expression();
    if (!test.known) return skipUnknown(start);
    if (test.number == 0) return skipBody(false);
    watchLoop(start);
    interpretBlock();
    position_ = start;
}

void Trial::runDo() {
    const size_t start = token_.start;
    watchLoop(start);
    interpretBlock();
    read();
    if (token_.keyword != KeywordCode::While) {
        fail(CheckId::DoWithoutWhile, token_.start, "while expected behind the body of do");
    }
    const Value test = expression();
    if (!test.known) {
        const size_t behind = position_;
        position_ = scanner_.read(start).next;
        skipUnknown(start);
        position_ = behind;
    } else if (test.number != 0) {
        position_ = start;
    }
}

Value Trial::readForPart() {
    const Value value = expression();
    requireSemicolon();
    if (position_ <= scanner_.size()) position_++;
    return value;
}

void Trial::runFor() {
    const size_t start = token_.start;
    read();
    readForPart();
    const size_t test = position_;
    for (;;) {
        const Value goesOn = readForPart();
        const size_t step = position_;
        skipBalanced('(', ')');
        if (!goesOn.known) return skipUnknown(start);
        if (goesOn.number == 0) break;
        watchLoop(start);
        interpretBlock();
        position_ = step;
        statement_ = start;
        expression();
        position_ = test;
    }
    skipBody(false);
}

// False for `return`, which ends the block.
bool Trial::runKeyword() {
    switch (token_.keyword) {
        case KeywordCode::Char:
        case KeywordCode::Int:
            runDeclaration();
            return true;
        case KeywordCode::If:
            runIf();
            return true;
        case KeywordCode::Else:
            skipBody(true);
            return true;
        case KeywordCode::For:
            runFor();
            return true;
        case KeywordCode::Do:
            runDo();
            return true;
        case KeywordCode::While:
            runWhile();
            return true;
        case KeywordCode::Return:
            returnValue_ = expression();
            return false;
        case KeywordCode::End:
            callbacks_.clear();
            throw Uncertain();
        default:
            return true;
    }
}

void Trial::runBlock() {
    bool inBlock = false;
    do {
        const size_t before = position_;
        read();
        if (inBlock && token_.isNothing() && position_ == before) {
            fail(CheckId::BadCharacter, position_, "the engine never gets past this character");
        }
        statement_ = token_.start;
        if (token_.isIdentifier()) {
            putBack();
            expression();
            requireSemicolon();
        } else if (token_.is('{')) {
            inBlock = true;
        } else if (token_.is('}') || !runKeyword()) {
            return;
        }
    } while (inBlock && !token_.isFinished());
}

void Trial::interpretBlock() {
    enter();
    runBlock();
    leave();
}

// Entries ---------------------------------------------------------------------------------------

// The call reads its arguments from the definition's own parentheses.
void Trial::enterAt(const CheckedFunction& function) {
    locals_.clear();
    frames_.clear();
    returns_.clear();
    loopStates_.clear();
    trap_.reset();
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
    } catch (const Uncertain&) {
        return false;
    } catch (const OutOfBudget&) {
        return false;
    }
    return true;
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
    if (!tryFunction(*main)) return;
    budget_ = kCallbackBudget;
    tryCallbacks();
}

void tryProgram(const Program& program, Findings& findings) {
    Trial(program, findings).run();
}
