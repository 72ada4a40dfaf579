// The reader of the survey (check/survey.h). Its parts: what names and calls mean
// (survey_names.cpp), statements (survey_statements.cpp), functions and the whole (survey.cpp).
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "check/findings.h"
#include "check/reader.h"
#include "check/survey.h"

class Survey : public Reader {
public:
    static constexpr size_t kNowhere = static_cast<size_t>(-1);

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

    // What is around a statement.
    struct Context {
        int blocks = 0;  // blocks around, the function's own not counted
        bool inLoop = false;
    };

    void add(CheckId id, size_t position, std::string text) {
        findings_.add(id, position, std::move(text));
    }
    void report(const Problem& problem, size_t start);

    // Names ------
    bool isVariable(const Lexeme& name) override;
    Value valueOf(const Lexeme& name) override;
    void assign(const Lexeme&, Value) override {}
    Value callUser(const CheckedFunction& function, const Lexeme& name,
                   const std::vector<Value>& arguments) override;
    Value callBuiltin(const BuiltinCall& call) override;
    void noteGap(const Lexeme& gap) override;
    void noteOpenCall(const Lexeme& token) override;
    void noteMissingOperand() override;
    void noteSeparator(const BuiltinSignature& builtin) override;
    void noteArgument(const BuiltinSignature& builtin, char kind) override;

    bool useVariable(std::string_view name);
    void useNames(size_t from, size_t to);
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
    void readFor(Context context);
    Value readForHead();
    Value readForPart(bool isTest);
    void readForStep();
    void readReturn(Context context);
    void readOther();
    Value readHead();
    void checkCondition();

    void reportUnused();
    void reportHidden();

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
    bool makesUnits_ = false;
    int exits_ = 0;                // what may have ended the process
    size_t skippedTo_ = kNowhere;  // after the last token that was skipped without effect
};
