#include "check/survey.h"

#include "check/names.h"
#include "check/survey_reader.h"

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
        position_ = scanner_.afterCloseParen(function.location);
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
