#include "script/host/arguments.h"

#include "script/errors/errors.h"
#include "script/errors/token_reader.h"
#include "script/host/expression.h"

static Place gNoPlace;
Place* gProgramPos = &gNoPlace;
Place* gToken = &gNoPlace;

void resetCursor() {
    gProgramPos = gToken = gPlaces;
}

TokenKind getToken() {
    gToken = tokenAt(gProgramPos);
    gProgramPos = gToken->next;
    return gToken->token.kind;
}

void putBack() {
    gProgramPos = gToken->back;
}

bool tokenIs(char c) {
    return holds(gToken, c);
}

void argumentError(ScriptError error) {
    syntaxError(error, gProgramPos);
}

static void requireToken(char c, ScriptError error) {
    getToken();
    if (!tokenIs(c)) argumentError(error);
}

int32_t readExpression() {
    Place* const position = gProgramPos;
    const Result result = evalExpression(position);
    gToken = result.end;
    gProgramPos = positionAfter(position, result);
    return result.value;
}

void openArguments() {
    requireToken('(', ScriptError::NoParens);
}

int32_t readInteger() {
    getToken();
    putBack();
    return readExpression();
}

void nextArgument() {
    getToken();
}

void readIntegers(std::initializer_list<int32_t*> targets) {
    bool isFirst = true;
    for (int32_t* target : targets) {
        if (!isFirst) nextArgument();
        *target = readInteger();
        isFirst = false;
    }
}

void readText(ArgumentText& text) {
    getToken();
    copyText(gToken->token, text);
}

void expectCloseParen() {
    requireToken(')', ScriptError::NoParens);
    // One token of look-ahead: of several line ends after the call the first is skipped here.
    getToken();
    putBack();
}

void noArguments() {
    openArguments();
    expectCloseParen();
}

int32_t onlyInteger() {
    openArguments();
    const int32_t value = readInteger();
    expectCloseParen();
    return value;
}

void closeStatement() {
    requireToken(')', ScriptError::NoParens);
    requireToken(';', ScriptError::NoSemicolon);
    putBack();
}
