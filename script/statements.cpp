#include "script/statements.h"

#include <cstdint>

#include "script/errors.h"
#include "script/evaluator.h"
#include "script/functions.h"
#include "script/halt.h"
#include "script/nesting.h"
#include "script/tokens.h"
#include "script/variables.h"

static void requireSemicolon() {
    if (!tokenIs(';')) syntaxError(ScriptError::NoSemicolon);
}

// Takes the next token for the opening brace, whatever it is.
static void findEndOfBlock() {
    getToken();
    skipBalanced('{', '}');
}

// type name { "," name } ";"
// No initialisers. In the body of a loop every pass pushes new locals until the function returns.
static void declareLocal() {
    ScriptVariable local;
    local.type = static_cast<int32_t>(gToken->keyword);
    do {
        getToken();
        local.name = declaredName();
        pushLocal(local);
        getToken();
    } while (tokenIs(','));
    requireSemicolon();
}

// "if" expression statement [ "else" statement ]
static void execIf() {
    if (evalExpression() != 0) {
        interpretBlock();  // the block around us skips the else part when it meets it
        return;
    }
    findEndOfBlock();
    getToken();
    if (gToken->keyword == KeywordCode::Else) {
        interpretBlock();
    } else {
        putBack();
    }
}

// "while" expression statement
static void execWhile() {
    Place* start = gToken->back;  // the word itself
    if (evalExpression() != 0) {
        interpretBlock();
        gProgramPos = start;
    } else {
        findEndOfBlock();
    }
}

// "do" statement "while" expression ";"
static void execDo() {
    Place* start = gToken->back;
    interpretBlock();
    getToken();
    if (gToken->keyword != KeywordCode::While) syntaxError(ScriptError::NoWhile);
    if (evalExpression() != 0) gProgramPos = start;
}

// Evaluates a part of a `for` up to its ";" and steps over the character at the position. That is
// the ";" put back; after an empty part, whose ";" is consumed, it is the character behind it.
static int32_t evaluateForPart() {
    const int32_t value = evalExpression();
    requireSemicolon();
    skipCharacter();
    return value;
}

// "for" "(" expression ";" expression ";" expression ")" block
static void execFor() {
    getToken();
    evaluateForPart();
    Place* test = gProgramPos;
    for (;;) {
        const bool goesOn = evaluateForPart() != 0;
        Place* step = gProgramPos;
        skipBalanced('(', ')');
        if (!goesOn) break;
        interpretBlock();
        gProgramPos = step;
        evalExpression();
        gProgramPos = test;
    }
    findEndOfBlock();
}

// The current token is the first of the expression. In a block the ";" need not be left for the
// block to read and skip.
static void execExpression(bool inBlock) {
    evalCurrentExpression();
    if (inBlock && tokenIs(';')) return;
    putBack();
    requireSemicolon();
}

// Runs the keyword statement of the current token. Returns false for `return`, which ends the
// block.
static bool execKeyword() {
    switch (gToken->keyword) {
        case KeywordCode::Char:
        case KeywordCode::Int:
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
            gReturnValue = evalExpression();
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
        getToken();
        if (inBlock) waitIfStuck();
        if (gToken->kind == TokenKind::Identifier) {
            execExpression(inBlock);
        } else if (tokenIs('{')) {
            inBlock = true;
        } else if (tokenIs('}')) {
            return;
        } else if (!execKeyword()) {
            return;
        }
    } while (inBlock && gToken->keyword != KeywordCode::Finished);
}

void interpretBlock() {
    enterNesting();
    runBlock();
    leaveNesting();
}
