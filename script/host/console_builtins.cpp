#include "script/host/console_builtins.h"

#include <cstdio>

#include "script/errors/errors.h"
#include "script/host/arguments.h"
#include "script/source/tokens.h"

int32_t builtinGetche() {
    std::fflush(stdout);  // the player should see the question before the answer is waited for
    const Place* position = gProgramPos;  // while this thread waits, the other may move the cursor
    const int c = std::getchar();
    gProgramPos = afterCloseParen(position);
    return static_cast<signed char>(c);  // EOF is -1 and stays it
}

int32_t builtinPutch() {
    // The parentheses are those of a parenthesised expression: putch(1, 2) fails on its comma.
    const int32_t value = readExpression();
    std::printf("%d", value);
    return value;
}

int32_t builtinPuts() {
    openArguments();
    if (getToken() != TokenKind::String) argumentError(ScriptError::NoClosingQuote);
    TokenText text;
    copyText(gToken->token, text);
    std::puts(text);
    closeStatement();
    return 0;
}

int32_t builtinPrint() {
    openArguments();
    if (getToken() == TokenKind::String) {
        TokenText text;
        copyText(gToken->token, text);
        std::printf("\n%s", text);
    } else {
        putBack();
        std::printf("%d", readExpression());
    }
    closeStatement();
    return 0;
}

int32_t builtinGetnum() {
    gProgramPos = afterCloseParen(gProgramPos);
    return 0;
}
