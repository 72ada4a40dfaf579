#include "check/trial_reader.h"

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
        fail(CheckId::DoWithoutWhile, token_.start, "while expected after the body of do");
    }
    const Value test = expression();
    if (!test.known) {
        const size_t after = position_;
        position_ = scanner_.read(start).next;
        skipUnknown(start);
        position_ = after;
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

// After these nothing is known of the way on.
static bool endsEverything(CheckId id) {
    return id == CheckId::EndlessLoop || id == CheckId::TooManyLocals ||
           id == CheckId::TooManyCalls || id == CheckId::NestedTooDeeply ||
           id == CheckId::NameTooLong || id == CheckId::OpenBrace;
}

// An expression or a declaration. The engine gives up at the first problem; here the statements
// after it are still looked at, as they are run once this one is fixed.
void Trial::runSimple() {
    const size_t start = token_.start;
    const size_t calls = frames_.size();
    const int32_t depth = depth_;
    try {
        if (token_.isType()) return runDeclaration();
        putBack();
        expression();
        requireSemicolon();
    } catch (const Problem& problem) {
        constexpr int kMostFailures = 50;
        confirm(problem);
        const bool inCallee = statement_ != start || frames_.size() != calls;
        if (trap_ || inCallee || endsEverything(problem.id) || ++failures_ > kMostFailures) {
            throw GivenUp();
        }
        depth_ = depth;
        resumeAfterStatement(problem, start);
        forgetFrom(start);
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
        if (token_.isIdentifier() || token_.isType()) {
            runSimple();
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
