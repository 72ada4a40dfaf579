// How the engine reads an expression, token by token (script/run/evaluator.cpp): with the values
// that are known, and with an explanation where the engine would raise an error.
//
// Two readers are made from it: the survey looks at every place once (check/survey.h), the trial
// follows the engine's road (check/trial.h). They differ in what a name means and what a call does.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "check/builtins.h"
#include "check/program.h"
#include "check/value.h"

// Thrown where the engine would raise an error. A problem without a text has been reported before,
// by the look at the tokens.
struct Problem {
    CheckId id;
    size_t position;
    std::string text;
};

// Thrown when more tokens were read than the reader may read.
struct OutOfBudget {};

// Explanations that both readers give.
constexpr char kCommentGap[] =
    "inside an expression a comment must touch the token after it: a blank there counts as an "
    "operator";
constexpr char kLineGap[] = "an empty line inside an expression counts as an operator";
constexpr char kTypeExpected[] = "int or char expected before a parameter";

// Of a "{", an else or a while that is too far from what is before it.
std::string onlyOneLineEnd(const std::string& before, const std::string& after);

struct BuiltinCall {
    const BuiltinSignature& builtin;
    Lexeme name;
    std::vector<Value> values;   // of each argument; unknown for a text
    std::vector<Lexeme> tokens;  // of each argument; empty for a value
};

class Reader {
public:
    explicit Reader(const Program& program) : program_(program), scanner_(program.scanner) {}
    virtual ~Reader() = default;

protected:
    // Meanings ------

    virtual bool isVariable(const Lexeme& name) = 0;
    virtual Value valueOf(const Lexeme& name) = 0;
    virtual void assign(const Lexeme& name, Value value) = 0;
    virtual Value callUser(const CheckedFunction& function, const Lexeme& name,
                           const std::vector<Value>& arguments) = 0;
    virtual Value callBuiltin(const BuiltinCall&) { return {}; }

    // Called for what the engine takes without an error, but hardly as it is meant.
    virtual void noteGap(const Lexeme&) {}
    virtual void noteOpenCall(const Lexeme&) {}
    virtual void noteMissingOperand() {}
    virtual void noteSeparator(const BuiltinSignature&) {}
    virtual void noteArgument(const BuiltinSignature&, char) {}

    // Tokens ------

    void read();
    void putBack();
    void enter();
    void leave() { depth_--; }

    // Expressions ------

    // Reads one expression; the token that ends it is put back.
    Value expression();

    // Reads a call of the function that the current token names.
    Value readUserCall(const CheckedFunction& function);

    // Requires the current token to be ";", also after the names of a declaration.
    void requireSemicolon();
    void requireDeclarationEnd();

    // Go on after a problem: after the statement that begins at `start`; after the parentheses
    // that follow the keyword there.
    void resumeAfterStatement(const Problem& problem, size_t start);
    void resumeAfterHead(size_t start);

    // Words for what is at the current token.
    std::string shownToken() const;

    // "i = i + 1" for the "i++" whose operator is at the position, and for "i += 1".
    std::string writtenOut(size_t position) const;

    [[noreturn]] void fail(CheckId id, size_t position, std::string text) const;

    // The current token is where `expected` should be: finds the reason.
    [[noreturn]] void failUnexpected(char expected) const;

    const Program& program_;
    const Scanner& scanner_;
    size_t position_ = 0;
    Lexeme token_;
    Lexeme previous_;  // the token before token_, not counting empty ones
    int32_t depth_ = 0;
    int64_t budget_ = 0;  // tokens that may still be read; long gaps between them count too

private:
    Value readAssignment();
    Value readRelation();
    Value readSum();
    Value readProduct();
    Value readUnary();
    Value readParen();
    Value readAtom();
    Value readName();
    Value readCharacter();
    Value readBuiltinCall(const BuiltinSignature& builtin);
    Value readPutch(const BuiltinSignature& builtin);
    void readOutput(BuiltinCall& call);
    void readArguments(BuiltinCall& call);
    void readArgument(BuiltinCall& call, char kind);

    std::string howToShowNumber(const Lexeme& number) const;
    [[noreturn]] void failAtom() const;
    [[noreturn]] void failSign() const;
    [[noreturn]] void failGap(const Lexeme& gap) const;
    [[noreturn]] void failArguments(const BuiltinSignature& builtin) const;

    Lexeme gap_;  // the last empty token that was read as an operator
};
