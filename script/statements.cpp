#include "script/statements.h"

#include <cstdint>

#include "script/errors.h"
#include "script/evaluator.h"
#include "script/functions.h"
#include "script/halt.h"
#include "script/lexer.h"
#include "script/nesting.h"
#include "script/text.h"
#include "script/variables.h"

static int32_t evaluate() {
    int32_t value = 0;
    evalExpression(value);
    return value;
}

static void requireSemicolon() {
    if (!tokenIs(';')) syntaxError(ScriptError::NoSemicolon);
}

// Reads on until as many `close` as `open` have passed; the first `open` has been read.
static void skipBalanced(char open, char close) {
    for (int depth = 1; depth > 0;) {
        getTokenInEndlessLoop();
        if (tokenIs(open)) depth++;
        if (tokenIs(close)) depth--;
    }
}

// Takes the next token for the opening brace, whatever it is.
static void findEndOfBlock() {
    getToken();
    skipBalanced('{', '}');
}

// type name { "," name } ";"
// No initialisers. In the body of a loop every pass pushes new locals until the function returns.
static void declareLocal() {
    getToken();
    ScriptVariable local;
    local.type = static_cast<int32_t>(gKeywordCode);
    do {
        getToken();
        copyName(local.name, gToken);
        pushLocal(local);
        getToken();
    } while (tokenIs(','));
    requireSemicolon();
}

// "if" expression statement [ "else" statement ]
static void execIf() {
    if (evaluate() != 0) {
        interpretBlock();  // the block around us skips the else part when it meets it
        return;
    }
    findEndOfBlock();
    getToken();
    if (gKeywordCode == KeywordCode::Else) {
        interpretBlock();
    } else {
        putBack();
    }
}

// "while" expression statement
static void execWhile() {
    putBack();
    const char* start = gProgramPos;
    getToken();
    if (evaluate() != 0) {
        interpretBlock();
        gProgramPos = start;
    } else {
        findEndOfBlock();
    }
}

// "do" statement "while" expression ";"
static void execDo() {
    putBack();
    const char* start = gProgramPos;
    getToken();
    interpretBlock();
    getToken();
    if (gKeywordCode != KeywordCode::While) syntaxError(ScriptError::NoWhile);
    if (evaluate() != 0) gProgramPos = start;
}

// Evaluates a part of a `for` up to its ";" and steps over the character at the position. That is
// the ";" put back; after an empty part, whose ";" is consumed, it is the character behind it.
static int32_t evaluateForPart() {
    const int32_t value = evaluate();
    requireSemicolon();
    skipCharacter();
    return value;
}

// "for" "(" expression ";" expression ";" expression ")" block
static void execFor() {
    getToken();
    evaluateForPart();
    const char* test = gProgramPos;
    for (;;) {
        const bool goesOn = evaluateForPart() != 0;
        const char* step = gProgramPos;
        skipBalanced('(', ')');
        if (!goesOn) break;
        interpretBlock();
        gProgramPos = step;
        evaluate();
        gProgramPos = test;
    }
    findEndOfBlock();
}

static void execExpression() {
    putBack();
    evaluate();
    requireSemicolon();
}

// Runs the keyword statement of the current token. Returns false for `return`, which ends the
// block.
static bool execKeyword() {
    switch (gKeywordCode) {
        case KeywordCode::Char:
        case KeywordCode::Int:
            putBack();
            declareLocal();
            return true;
        case KeywordCode::If:
            execIf();
            return true;
        case KeywordCode::Else:
            findEndOfBlock();
            return true;
        case KeywordCode::For:
            execFor();
            return true;
        case KeywordCode::Do:
            execDo();
            return true;
        case KeywordCode::While:
            execWhile();
            return true;
        case KeywordCode::Return:
            gReturnValue = evaluate();
            return false;
        case KeywordCode::End:
            endProcess(0);
        default:
            return true;
    }
}

static void runBlock() {
    bool inBlock = false;
    do {
        const char* before = gProgramPos;
        getToken();
        if (inBlock) waitIfStuck(before);
        if (gTokenKind == TokenKind::Identifier) {
            execExpression();
        } else if (tokenIs('{')) {
            inBlock = true;
        } else if (tokenIs('}')) {
            return;
        } else if (!execKeyword()) {
            return;
        }
    } while (inBlock && gKeywordCode != KeywordCode::Finished);
}

void interpretBlock() {
    enterNesting();
    runBlock();
    leaveNesting();
}
