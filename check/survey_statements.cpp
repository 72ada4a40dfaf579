#include "check/names.h"
#include "check/survey_reader.h"
#include "script/run/variables.h"

// "( name =" begins an assignment where a comparison is more likely.
void Survey::checkCondition() {
    const Lexeme open = scanner_.read(position_);
    const Lexeme name = scanner_.read(open.next);
    const Lexeme sign = scanner_.read(name.next);
    if (!open.is('(') || !name.isIdentifier() || !sign.is('=')) return;
    if (scanner_.byteAt(sign.next) == '=') return;
    add(CheckId::AssignedCondition, sign.start,
        "this assigns a value to " + quoted(name.text) + ": == compares");
}

// The condition after a keyword.
Value Survey::readHead() {
    const size_t start = token_.start;
    checkCondition();
    const int32_t depth = depth_;
    try {
        return expression();
    } catch (const Problem& problem) {
        depth_ = depth;
        report(problem, start);
        resumeAfterHead(start);
        useNames(start, position_);
        return {};
    }
}

// Statements ------------------------------------------------------------------------------------

void Survey::readBlock(Context context) {
    enter();
    const size_t outside = locals_.size();
    for (;;) {
        read();
        if (token_.is('}') || token_.isFinished()) break;
        if (token_.isNothing() && token_.next == token_.from) position_++;  // reported by the load
        readStatement(context);
    }
    for (size_t i = outside; i < locals_.size(); i++)
        locals_[i].isOpen = false;
    // What comes after the block runs too, unless that is the function's own.
    if (return_ != kNowhere && context.blocks < 2) return_ = kNowhere;
    leave();
}

// The current token begins the statement; afterwards the position is after it.
void Survey::readStatement(Context context) {
    const size_t start = token_.start;
    const int32_t depth = depth_;
    if (return_ != kNowhere && !token_.is(';') && !token_.isEmpty()) {
        add(CheckId::ReturnNotLast, return_,
            returnBlocks_ == 0 ? "nothing after this return is ever run"
                               : "what comes after this return is run all the same");
        return_ = kNowhere;
    }
    try {
        readStatementOf(context);
    } catch (const Problem& problem) {
        depth_ = depth;
        report(problem, start);
        resumeAfterStatement(problem, start);
        useNames(start, position_);
    }
}

void Survey::readStatementOf(Context context) {
    if (token_.isIdentifier()) {
        leading_ = token_.start;
        position_ = token_.start;
        expression();
        requireSemicolon();
        position_ = token_.next;
    } else if (token_.is('{')) {
        add(CheckId::BareBlock, token_.start,
            "a block of its own ends the block around it at its }: put an if (1) before it");
        context.blocks++;
        readBlock(context);
    } else if (token_.kind == TokenKind::Keyword) {
        readKeyword(context);
    } else {
        readOther();
    }
}

void Survey::readOther() {
    const bool continued = token_.from == skippedTo_;
    if (token_.isEmpty() || token_.is(';')) return;
    skippedTo_ = token_.next;
    if (continued || findings_.anyTrap(token_.start, token_.next)) return;
    add(CheckId::NoEffect, token_.start,
        shownToken() + " is skipped: a statement begins with a name or a keyword");
}

void Survey::readKeyword(Context context) {
    switch (token_.keyword) {
        case KeywordCode::Char:
        case KeywordCode::Int:
            return readDeclaration(context);
        case KeywordCode::If:
            return readIf(context);
        case KeywordCode::Else:
            add(CheckId::LoneElse, token_.start, "this else has no if; it is skipped");
            return readElse(context);
        case KeywordCode::For:
            return readFor(context);
        case KeywordCode::Do:
            return readDo(context);
        case KeywordCode::While:
            return readWhile(context);
        case KeywordCode::Return:
            return readReturn(context);
        case KeywordCode::End:
            exits_++;
            return;
        default:
            return;
    }
}

// The body of an if, an else or a loop. A return is looked for in it on its own.
void Survey::readBody(Context context, CheckId unbraced) {
    context.blocks++;
    const Lexeme next = scanner_.read(position_);
    const Lexeme real = scanner_.readReal(position_);
    if (real.is('{')) {
        if (!next.is('{')) {
            add(CheckId::GapBeforeBrace, real.start, onlyOneLineEnd(")", "{"));
        }
        token_ = real;
        position_ = real.next;
        return readBlock(context);
    }
    if (unbraced == CheckId::UnbracedBody) {
        add(unbraced, real.start,
            "a body that is skipped must be in braces: without them the engine skips up to the "
            "end of the function");
    } else {
        add(unbraced, real.start, "the body of do must be in braces");
    }
    token_ = real;
    position_ = real.next;
    if (!real.is('}')) readStatement(context);
}

void Survey::readIf(Context context) {
    readHead();
    const size_t textBefore = lastText_;
    readBody(context, CheckId::UnbracedBody);
    const size_t textAfter = lastText_;
    lastText_ = textBefore;
    const Lexeme next = scanner_.read(position_);
    const Lexeme real = scanner_.readReal(position_);
    if (real.keyword == KeywordCode::Else) {
        if (next.isNothing()) {
            add(CheckId::GapBeforeElse, real.start,
                onlyOneLineEnd("}", "else") + ": this else is never run");
        }
        token_ = real;
        position_ = real.next;
        readElse(context);
    }
    // A text counts as the last one only if it is that on both paths.
    if (textAfter == kNowhere) lastText_ = kNowhere;
}

// The current token is the else.
void Survey::readElse(Context context) {
    const Lexeme next = scanner_.readReal(position_);
    if (next.keyword != KeywordCode::If) return readBody(context, CheckId::UnbracedBody);
    add(CheckId::ElseIf, next.start,
        "else if works only while the first condition is false: put the second if in braces");
    token_ = next;
    position_ = next.next;
    context.blocks++;
    readIf(context);
}

void Survey::readLoopBody(Context context, size_t start, Value test) {
    const int timersBefore = timersMade_;
    const int exitsBefore = exits_;
    context.inLoop = true;
    readBody(context, CheckId::UnbracedBody);
    const bool written = lastText_ != kNowhere && lastText_ > start;
    if (written && timersMade_ == timersBefore) {
        add(CheckId::TextRewritten, lastText_,
            "with no timer made in this loop every pass rewrites the same text");
    }
    if (test.known && test.number != 0 && exits_ == exitsBefore) {
        add(CheckId::EndlessLoop, start, "nothing ends this loop, also no return");
    }
}

void Survey::readWhile(Context context) {
    const size_t start = token_.start;
    const Value test = readHead();
    readLoopBody(context, start, test);
}

void Survey::readDo(Context context) {
    const size_t start = token_.start;
    const int exitsBefore = exits_;
    context.inLoop = true;
    readBody(context, CheckId::DoWithoutWhile);
    const Lexeme next = scanner_.read(position_);
    const Lexeme real = scanner_.readReal(position_);
    if (real.keyword != KeywordCode::While) {
        add(CheckId::DoWithoutWhile, real.start, "while expected after the body of do");
        return;
    }
    if (next.isNothing()) {
        add(CheckId::DoWithoutWhile, real.start, onlyOneLineEnd("}", "while"));
    }
    token_ = real;
    position_ = real.next;
    const Value test = readHead();
    if (test.known && test.number != 0 && exits_ == exitsBefore) {
        add(CheckId::EndlessLoop, start, "nothing ends this loop, also no return");
    }
}

// One of the first two parts of a for. The engine steps over the ";" by one character, and over one
// more if the part is empty.
Value Survey::readForPart(bool isTest) {
    const Lexeme first = scanner_.read(position_);
    if (first.isType()) {
        fail(CheckId::Syntax, first.start, "a for declares nothing: declare before the loop");
    }
    const Value value = expression();
    requireSemicolon();
    const bool isEmpty = position_ == token_.next;
    if (isEmpty) {
        const char skipped = scanner_.byteAt(position_);
        if (skipped != ' ' && skipped != '\t') {
            add(CheckId::ForEmptyPart, token_.start,
                "after an empty part of a for one character is skipped: write a blank there");
        }
        if (isTest) {
            add(CheckId::ForEmptyTest, token_.start,
                "an empty test counts as zero: this loop never runs");
        }
    }
    position_++;
    return value;
}

void Survey::readForStep() {
    const Lexeme first = scanner_.read(position_);
    if (first.is(')')) {
        position_ = first.next;
        return;
    }
    leading_ = first.start;
    expression();
    read();
    if (!token_.is(')')) failUnexpected(')');
}

Value Survey::readForHead() {
    read();
    if (!token_.is('(')) fail(CheckId::Parentheses, token_.start, "( expected after for");
    leading_ = scanner_.readReal(position_).start;
    readForPart(false);
    const Value test = readForPart(true);
    readForStep();
    return test;
}

void Survey::readFor(Context context) {
    const size_t start = token_.start;
    const int32_t depth = depth_;
    Value test;
    try {
        test = readForHead();
    } catch (const Problem& problem) {
        depth_ = depth;
        report(problem, start);
        resumeAfterHead(start);
        useNames(start, position_);
    }
    readLoopBody(context, start, test);
}

void Survey::readReturn(Context context) {
    const size_t start = token_.start;
    expression();
    if (token_.is(';')) position_ = token_.next;
    if (context.inLoop) {
        add(CheckId::ReturnInLoop, start,
            "a return inside a loop ends neither the loop nor the function: the loop goes on");
    } else {
        return_ = start;
        returnBlocks_ = context.blocks;
    }
}
