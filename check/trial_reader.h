// The reader of the trial (check/trial.h). Its parts: variables, calls and the entries
// (trial.cpp), statements (trial_statements.cpp), what is certain (trial_certainty.cpp).
#pragma once

#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "check/findings.h"
#include "check/reader.h"

// Thrown where nothing more is certain: an unknown condition, or `end`.
struct Uncertain {};

// Thrown when a problem was confirmed and the engine's way on is not known: it leaves the function.
struct GivenUp {};

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
    bool isVariable(const Lexeme& name) override {
        return findVariable(name.text) != nullptr || assumed_.count(name.text) > 0;
    }
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
    void runSimple();
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
    void forgetFrom(size_t start);
    void watchLoop(size_t start);
    void confirmEndless();
    size_t stateHash() const;

    // Entries ------
    void enterAt(const CheckedFunction& function);
    bool tryFunction(const CheckedFunction& function);
    void confirm(const Problem& problem);
    void tryCallbacks();
    void noteTaken(std::string_view builtin);
    void addCallback(const Lexeme& name);
    void confirmMissing();
    bool mentions(std::string_view word) const;

    Findings& findings_;
    std::vector<Value> globals_;
    std::vector<Variable> locals_;
    std::vector<size_t> frames_;   // for each call the size of locals_ at its start
    std::vector<size_t> returns_;  // for each call the position after it
    std::vector<const CheckedFunction*> callbacks_;
    std::vector<Lexeme> missing_;  // call-back names of timers that no function has
    std::unordered_set<std::string_view> assumed_;  // unknown names, once they are reported
    std::optional<size_t> endless_;                 // where a loop begins whose test is always true
    std::unordered_map<size_t, size_t> loopStates_;  // hash of the state at the last pass
    std::optional<Trap> trap_;
    Value returnValue_ = knownValue(0);
    size_t statement_ = 0;        // start of the statement being run
    bool wholeStatement_ = true;  // every active call is the first thing in its statement
    bool inMain_ = true;
    bool mayCallBack_ = true;  // main does not end the game
    int failures_ = 0;         // problems after which the trial went on
};
