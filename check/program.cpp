#include "check/program.h"

#include "check/braces.h"
#include "check/names.h"
#include "check/tokens.h"
#include "script/run/functions.h"
#include "script/run/variables.h"

const CheckedFunction* Program::findFunction(std::string_view name) const {
    const auto found = functionIndex.find(name);
    return found == functionIndex.end() ? nullptr : &functions[found->second];
}

int32_t Program::findGlobal(std::string_view name) const {
    const auto found = globalIndex.find(name);
    return found == globalIndex.end() ? -1 : static_cast<int32_t>(found->second);
}

// The engine's pre-scan, step by step (script/run/program.cpp).
class Loader {
public:
    Loader(Program& program, Findings& findings) : program_(program), findings_(findings) {}

    void run() {
        passByteOrderMark();
        do {
            const size_t before = position_;
            read();
            if (token_.isType()) {
                endIgnored();
                declareFunctionOrGlobal(before);
            } else if (token_.is('{')) {
                skipBlock();
            } else {
                passOver();
            }
        } while (!token_.isFinished());
        endIgnored();
    }

private:
    void fail(CheckId id, size_t position, const std::string& text) {
        findings_.add(id, position, text, Severity::Error);
        program_.loads = false;
    }

    void passByteOrderMark() {
        static constexpr std::string_view kMark = "\xEF\xBB\xBF";
        if (program_.scanner.source(0, kMark.size()) != kMark) return;
        fail(CheckId::BadCharacter, 0,
             "the file begins with a byte order mark, and the load never ends: save it as UTF-8 "
             "without one");
        position_ = kMark.size();
    }

    // Reads a token for the loops that never get past one that moves nothing, and passes it.
    void read() {
        for (;;) {
            readOnce();
            const bool stuck = token_.isNothing() && token_.next == token_.from;
            if (!stuck || token_.fault != TokenFault::None) return;
            reportOncePerLine();
            program_.loads = false;
            const char c = program_.scanner.byteAt(position_);
            while (program_.scanner.byteAt(position_) == c)
                position_++;
        }
    }

    void readOnce() {
        token_ = program_.scanner.read(position_);
        if (token_.fault != TokenFault::None) {
            reportFault(program_.scanner, token_, findings_);
            program_.loads = false;
        }
        if (token_.start >= quietUntil_)
            quietUntil_ = inspectToken(program_.scanner, token_, findings_);
        position_ = token_.next;
    }

    // A file without any carriage return has as many bare line feeds as lines: one is enough.
    void reportOncePerLine() {
        const bool lineFeed = program_.scanner.byteAt(position_) == '\n';
        if (lineFeed && foundLineFeed_) return;
        foundLineFeed_ = foundLineFeed_ || lineFeed;
        if (stuckReports_++ < kMaxStuckReports) reportStuck(program_.scanner, position_, findings_);
    }

    void checkName(const Lexeme& token) {
        if (token.text.size() <= kMaxNameLength) return;
        fail(CheckId::NameTooLong, token.start,
             "a name has at most " + std::to_string(kMaxNameLength) +
                 " characters; the engine aborts here");
    }

    void declareGlobal() {
        readOnce();
        do {
            readOnce();
            checkName(token_);
            addGlobal();
            readOnce();
        } while (token_.is(','));
        if (token_.is(';')) return;
        if (token_.is('=')) {
            fail(CheckId::Initialiser, token_.start,
                 "a declaration gives no value: assign it in main");
        } else {
            fail(CheckId::MissingSemicolon, token_.from,
                 "; expected after the names of global variables");
        }
        skipStatement();
    }

    void addGlobal() {
        if (program_.globals.size() == kMaxGlobals) {
            fail(CheckId::TooManyGlobals, token_.start,
                 "at most " + std::to_string(kMaxGlobals) + " global variables");
        }
        program_.globalIndex.emplace(token_.text, program_.globals.size());
        program_.globals.push_back({token_.text, token_.start});
    }

    void skipStatement() {
        while (!token_.is(';') && !token_.is('{') && !token_.is('}') && !token_.isFinished())
            read();
        if (token_.is('{')) skipBlock();
    }

    // The current token is the type word that was read at `start`.
    void declareFunctionOrGlobal(size_t start) {
        readOnce();
        if (!token_.isIdentifier()) {
            findings_.add(CheckId::BadName, token_.start, "a name expected after the type");
            return;
        }
        checkName(token_);
        const Lexeme name = token_;
        readOnce();
        if (token_.is('(')) {
            addFunction(name);
        } else {
            position_ = start;
            declareGlobal();
        }
    }

    void addFunction(const Lexeme& name) {
        if (program_.functions.size() == kMaxFunctions) {
            fail(CheckId::TooManyFunctions, name.start,
                 "at most " + std::to_string(kMaxFunctions) + " functions");
        }
        CheckedFunction function;
        function.name = name.text;
        function.start = name.start;
        function.location = position_;
        readParameters(function);
        program_.functionIndex.emplace(name.text, program_.functions.size());
        program_.functions.push_back(function);
        position_ = program_.scanner.afterCloseParen(position_);
        inFunction_ = true;
    }

    // The names in the parameter list, up to the first that cannot be read.
    void readParameters(CheckedFunction& function) {
        Lexeme token = program_.scanner.read(function.location);
        while (token.isType()) {
            token = program_.scanner.read(token.next);
            function.parameters.push_back(token.text);
            token = program_.scanner.read(token.next);
            if (token.is(',')) token = program_.scanner.read(token.next);
        }
    }

    void skipBlock() {
        CheckedFunction* function = inFunction_ ? &program_.functions.back() : nullptr;
        if (function != nullptr) function->hasBlock = true;
        endIgnored();
        std::vector<size_t> open = {token_.start};
        while (!open.empty()) {
            read();
            if (token_.isFinished() || token_.fault == TokenFault::OpenComment) break;
            if (token_.is('{')) open.push_back(token_.start);
            if (token_.is('}')) open.pop_back();
            noteWord(function);
        }
        inFunction_ = false;
        if (!open.empty() && !token_.isFaulty()) reportOpen(open);
    }

    void noteWord(CheckedFunction* function) {
        if (token_.keyword == KeywordCode::End) program_.usesEnd = true;
        if (token_.keyword == KeywordCode::Return && function != nullptr)
            function->hasReturn = true;
    }

    void reportOpen(const std::vector<size_t>& open) {
        fail(CheckId::OpenBrace, likelyOpenBrace(program_.scanner, open.front()),
             "this { has no }: " + std::to_string(open.size()) +
                 (open.size() == 1 ? " } is" : " } are") +
                 " missing before the end of the text; the load never ends");
    }

    // A token outside braces that the engine passes over. A function's body may be one statement.
    void passOver() {
        if (token_.keyword == KeywordCode::End) program_.usesEnd = true;
        if (token_.keyword == KeywordCode::Return && inFunction_) {
            program_.functions.back().hasReturn = true;
        }
        if (token_.is('}')) {
            if (foundExtra_) return;
            foundExtra_ = true;
            const ExtraBrace extra = likelyExtraBrace(program_.scanner, token_.start);
            findings_.add(CheckId::ExtraBrace, extra.position,
                          extra.isMissing
                              ? "a { is missing before this: a } after it closes nothing"
                              : "this } closes nothing: a { is missing, or there is a } too many");
        } else if (token_.is(';')) {
            inFunction_ = false;
        } else if (!inFunction_ && !token_.isEmpty() && !ignoring_) {
            ignoring_ = true;
            program_.ignoresText = true;
            if (findings_.anyTrap(token_.start, token_.next)) return;  // it was no comment
            findings_.add(CheckId::IgnoredText, token_.start,
                          "there is no " + quoted(program_.scanner.source(token_)) +
                              " here: functions and variables begin with int or char, all else "
                              "is passed over");
        }
    }

    void endIgnored() { ignoring_ = false; }

    static constexpr int kMaxStuckReports = 20;

    Program& program_;
    Findings& findings_;
    size_t position_ = 0;
    Lexeme token_;
    bool inFunction_ = false;  // between a function's parameters and the end of its body
    bool ignoring_ = false;    // within text that was reported as passed over
    bool foundLineFeed_ = false;
    bool foundExtra_ = false;
    size_t quietUntil_ = 0;  // what comes before has its cause in what was found
    int stuckReports_ = 0;
};

void loadProgram(Program& program, Findings& findings) {
    Loader(program, findings).run();
    if (program.findFunction("main") == nullptr) {
        findings.add(CheckId::NoMain, 0, "the script has no function main: the engine ends here",
                     Severity::Error);
    }
}
