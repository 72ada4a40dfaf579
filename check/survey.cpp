#include "check/survey.h"

#include <algorithm>
#include <unordered_map>

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
                onlyOneLineEnd(")", "{") + ": the function does nothing");
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
        report(problem, function.location);
        position_ = scanner_.afterCloseParen(function.location);
        useNames(function.location, position_);
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

// Without a main, or with text outside of all functions, too much is unused to say.
void Survey::reportUnused() {
    if (program_.ignoresText || program_.findFunction("main") == nullptr) return;
    for (const CheckedFunction& function : program_.functions) {
        if (function.name == "main" || functionsUsed_.count(function.name) > 0) continue;
        add(CheckId::UnusedFunction, function.start,
            quoted(function.name) + " is never called and is no call-back");
    }
    for (size_t i = 0; i < program_.globals.size(); i++) {
        const CheckedGlobal& global = program_.globals[i];
        if (globalUsed_[i] || findings_.anyTrap(global.start, global.start + global.name.size())) {
            continue;
        }
        add(CheckId::UnusedVariable, global.start, quoted(global.name) + " is never used");
    }
}

// Pictures are hidden until they are shown. "tree = loadimage(...)" is reported if nothing else is
// done with the variable, or if the script shows no picture at all.
void Survey::reportHidden() {
    if (findings_.anyTrap(0, scanner_.size())) return;  // a word too much or too little may hide it
    struct Load {
        Lexeme call;
        Lexeme variable;  // an empty one: the result is used in another way
    };
    std::vector<Load> loads;
    std::unordered_map<std::string_view, int> mentions;
    bool shows = false;
    Lexeme before, previous;
    for (size_t position = 0; position < scanner_.size();) {
        const Lexeme token = scanner_.readReal(position);
        position = std::max(token.next, position + 1);
        if (token.isIdentifier()) mentions[token.text]++;
        if (token.text == "showimage") shows = true;
        if (token.isIdentifier() && token.text == "loadimage") {
            loads.push_back({token, previous.is('=') ? before : Lexeme()});
        }
        before = previous;
        previous = token;
    }
    for (const Load& load : loads) {
        const bool isDropped = !load.variable.isEmpty() && mentions[load.variable.text] <= 2;
        if (shows && !isDropped) continue;
        add(CheckId::NeverShown, load.call.start,
            "this picture is never shown: showimage(image, 1) shows it");
    }
}

void Survey::run() {
    checkDefinitions(program_, findings_);
    try {
        for (const CheckedFunction& function : program_.functions) {
            try {
                surveyFunction(function);
            } catch (const Problem& problem) {
                report(problem, function.start);
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
    reportHidden();
}

std::vector<FileUse> surveyProgram(const Program& program, Findings& findings) {
    Survey survey(program, findings);
    survey.run();
    return survey.files;
}
