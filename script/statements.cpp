#include "script/statements.h"

#include <cstdint>

#include "script/errors.h"
#include "script/evaluator.h"
#include "script/functions.h"
#include "script/halt.h"
#include "script/nesting.h"
#include "script/tokens.h"
#include "script/variables.h"

// Takes the next token for the opening brace, whatever it is.
static Place* findEndOfBlock(Place* position) {
    const Place* opening = tokenAt(position);
    return findBalance(opening->next, '{', '}')->next;
}

// type name { "," name } ";"
// No initialisers. In the body of a loop every pass pushes new locals until the function returns.
// Not compiled into runBlock, like the other statements that run seldom: it stays the smaller.
[[gnu::noinline]] static Place* declareLocal(const Place* type) {
    const Place* token = type;
    do {
        Place* name = tokenAt(token->next);
        Name* declared = declaredName(name);
        gProgramPos = name->next;  // for an error's report
        pushLocal(declared, static_cast<int32_t>(type->keyword));
        token = tokenAt(name->next);
    } while (token->symbol == ',');
    if (token->symbol != ';') syntaxErrorBehind(token, ScriptError::NoSemicolon);
    return token->next;
}

// "if" expression statement [ "else" statement ]
static Place* execIf(const Place* word) {
    const Evaluated test = evalExpression(word->next);
    // After the statement the block around us skips the else part when it meets it.
    if (test.value != 0) return interpretBlock(test.place);
    Place* next = tokenAt(findEndOfBlock(test.place));
    gToken = next;
    return next->keyword == KeywordCode::Else ? interpretBlock(next->next) : next->back;
}

// "while" expression statement
static Place* execWhile(const Place* word) {
    const Evaluated test = evalExpression(word->next);
    if (test.value == 0) return findEndOfBlock(test.place);
    interpretBlock(test.place);
    return word->back;  // the word itself
}

// "do" statement "while" expression ";"
[[gnu::noinline]] static Place* execDo(const Place* word) {
    const Place* next = tokenAt(interpretBlock(word->next));
    if (next->keyword != KeywordCode::While) syntaxErrorBehind(next, ScriptError::NoWhile);
    const Evaluated test = evalExpression(next->next);
    return test.value != 0 ? word->back : test.place;
}

// Evaluates a part of a `for` up to its ";" and steps over the character at the position. That is
// the ";" put back; after an empty part, whose ";" is consumed, it is the character behind it.
static Evaluated evaluateForPart(Place* position) {
    const Evaluated part = evalExpression(position);
    if (gToken->symbol != ';') {
        gProgramPos = part.place;
        syntaxError(ScriptError::NoSemicolon);
    }
    return {part.value, behindCharacter(part.place)};
}

// "for" "(" expression ";" expression ";" expression ")" block
[[gnu::noinline]] static Place* execFor(const Place* word) {
    Place* test = evaluateForPart(tokenAt(word->next)->next).place;
    for (;;) {
        const Evaluated tested = evaluateForPart(test);
        Place* step = tested.place;
        Place* body = findBalance(step, '(', ')')->next;
        if (tested.value == 0) return findEndOfBlock(body);
        interpretBlock(body);
        evalExpression(step);
    }
}

// The ";" behind the expression is left to be read as a statement of its own; in a block, where
// that does nothing, it is read here.
static Place* execExpression(Place* token, bool inBlock) {
    Place* end = evalExpressionFrom(token).place;
    gToken = end;
    if (end->symbol == ';' && inBlock) return end->next;
    if (end->symbol == ';') return end->back;
    gProgramPos = end->back;
    syntaxError(ScriptError::NoSemicolon);
}

// Runs the keyword statement of `word`, and returns the position behind it.
static Place* execKeyword(Place* word) {
    switch (word->keyword) {
        case KeywordCode::Char:
        case KeywordCode::Int:
            return declareLocal(word);
        case KeywordCode::If:
            return execIf(word);
        case KeywordCode::Else:
            return findEndOfBlock(word->next);
        case KeywordCode::For:
            return execFor(word);
        case KeywordCode::Do:
            return execDo(word);
        case KeywordCode::While:
            return execWhile(word);
        case KeywordCode::End:
            endProcess(0);
        default:
            return word->next;
    }
}

static Place* runBlock(Place* position) {
    bool inBlock = false;
    do {
        Place* token = gToken = tokenAt(position);
        if (token->kind == TokenKind::Identifier) {
            position = execExpression(token, inBlock);
        } else if (token->kind == TokenKind::Block) {
            position = token->next;
            if (token->symbol == '}') return position;
            inBlock = true;
        } else if (token->keyword == KeywordCode::Return) {
            const Evaluated result = evalExpression(token->next);
            gReturnValue = result.value;
            return result.place;
        } else {
            if (inBlock) waitIfStuck(token);
            position = execKeyword(token);
        }
        // Not `token`: the end of the text may have been met by a block inside this one.
    } while (inBlock && gToken->keyword != KeywordCode::Finished);
    return position;
}

Place* interpretBlock(Place* position) {
    enterNesting(position);
    position = runBlock(position);
    leaveNesting();
    return position;
}
