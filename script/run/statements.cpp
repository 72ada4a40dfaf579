#include "script/run/statements.h"

#include <cstdint>

#include "script/errors/errors.h"
#include "script/errors/halt.h"
#include "script/errors/nesting.h"
#include "script/errors/token_reader.h"
#include "script/host/expression.h"
#include "script/run/functions.h"
#include "script/run/variables.h"

// Takes the next token for the opening brace, whatever it is.
static Place* findEndOfBlock(Place* position) {
    const Place* opening = tokenAt(position);
    return findBalance(opening->next, '{', '}')->next;
}

// What a statement leaves: where to go on, and whether the last token that it read was the end of
// the text. That ends every block around it, whatever the position is.
struct Executed {
    Place* position;
    bool textHasEnded;
};

static Executed execStatement(Place* position);

static bool isEnd(const Place* at) {
    return at->token.keyword == KeywordCode::Finished;
}

// type name { "," name } ";"
// No initialisers. In the body of a loop every pass pushes new locals until the function returns.
// Not compiled into execBlock, like the other statements that run seldom: it stays the smaller.
[[gnu::noinline]] static Executed declareLocal(Place* type) {
    Place* at = type;
    do {
        Place* name = tokenAt(at->next);
        pushLocal(declaredSymbol(name), static_cast<int32_t>(type->token.keyword), name->next);
        at = tokenAt(name->next);
    } while (holds(at, ','));
    if (!holds(at, ';')) syntaxError(ScriptError::NoSemicolon, at->next);
    return {at->next, false};
}

// "if" expression statement [ "else" statement ]
static Executed execIf(Place* word) {
    const Result test = evalExpression(word->next);
    Place* body = positionAfter(word->next, test);
    // After the statement the block around us skips the else part when it meets it.
    if (test.value != 0) return execStatement(body);
    Place* next = tokenAt(findEndOfBlock(body));
    if (next->token.keyword == KeywordCode::Else) return execStatement(next->next);
    return {next->back, isEnd(next)};
}

// "while" expression statement
static Executed execWhile(Place* word) {
    const Result test = evalExpression(word->next);
    Place* body = positionAfter(word->next, test);
    if (test.value == 0) return {findEndOfBlock(body), false};
    return {word->back, execStatement(body).textHasEnded};  // back to the word itself
}

// "do" statement "while" expression ";"
[[gnu::noinline]] static Executed execDo(Place* word) {
    Place* next = tokenAt(execStatement(word->next).position);
    if (next->token.keyword != KeywordCode::While) syntaxError(ScriptError::NoWhile, next->next);
    const Result test = evalExpression(next->next);
    Place* after = positionAfter(next->next, test);
    return {test.value != 0 ? word->back : after, isEnd(test.end)};
}

// A part of a `for` up to its ";": its value, and the position one character further on. That
// character is the ";" put back; after an empty part, whose ";" is used up, it is the one after it.
static Place* evalForPart(Place* position, int32_t& value) {
    const Result part = evalExpression(position);
    Place* after = positionAfter(position, part);
    if (!holds(part.end, ';')) syntaxError(ScriptError::NoSemicolon, after);
    value = part.value;
    return afterCharacter(after);
}

// "for" "(" expression ";" expression ";" expression ")" block
[[gnu::noinline]] static Executed execFor(Place* word) {
    int32_t value = 0;
    Place* test = evalForPart(tokenAt(word->next)->next, value);
    for (;;) {
        Place* step = evalForPart(test, value);
        Place* body = findBalance(step, '(', ')')->next;
        if (value == 0) return {findEndOfBlock(body), false};
        execStatement(body);
        evalExpression(step);
    }
}

// The ";" after the expression is left to be read as a statement of its own; in a block, where
// that does nothing, it is read here.
static Executed execExpression(Place* at, bool inBlock) {
    Place* end = evalExpression(at).end;
    if (!holds(end, ';')) syntaxError(ScriptError::NoSemicolon, end->back);
    return {inBlock ? end->next : end->back, false};
}

// "return" expression
static Executed execReturn(Place* word) {
    const Result result = evalExpression(word->next);
    gReturnValue = result.value;
    return {positionAfter(word->next, result), isEnd(result.end)};
}

// Executes the keyword statement of `word`, or skips a token that is none.
static Executed execKeyword(Place* word, bool inBlock) {
    switch (word->token.keyword) {
        case KeywordCode::Char:
        case KeywordCode::Int:
            return declareLocal(word);
        case KeywordCode::If:
            return execIf(word);
        case KeywordCode::Else:
            return {findEndOfBlock(word->next), false};
        case KeywordCode::For:
            return execFor(word);
        case KeywordCode::Do:
            return execDo(word);
        case KeywordCode::While:
            return execWhile(word);
        case KeywordCode::End:
            endProcess(0);
        default:
            if (inBlock) waitIfStuck(word);
            return {word->next, isEnd(word)};
    }
}

static Executed execBlock(Place* position) {
    bool inBlock = false;
    Executed done = {position, false};
    do {
        Place* at = tokenAt(done.position);
        if (at->token.kind == TokenKind::Identifier) {
            done = execExpression(at, inBlock);
        } else if (at->token.kind == TokenKind::Block) {
            done = {at->next, false};
            if (holds(at, '}')) return done;
            inBlock = true;
        } else if (at->token.keyword == KeywordCode::Return) {
            return execReturn(at);
        } else {
            done = execKeyword(at, inBlock);
        }
    } while (inBlock && !done.textHasEnded);
    return done;
}

static Executed execStatement(Place* position) {
    enterNesting(position);
    const Executed done = execBlock(position);
    leaveNesting();
    return done;
}

void interpretBlock(Place* position) {
    execStatement(position);
}
