#include "script/program.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "script/errors.h"
#include "script/functions.h"
#include "script/halt.h"
#include "script/lexer.h"
#include "script/recovery.h"
#include "script/text.h"
#include "script/variables.h"

// Pre-scan ------------------------------------------------------------------------------------

// type name { "," name } ";"
// Any token serves as a name. No initialisers.
static void declareGlobal() {
    getToken();
    ScriptVariable global;
    global.type = static_cast<int32_t>(gKeywordCode);
    do {
        getToken();
        copyName(global.name, gToken);
        declareGlobalVariable(global);
        getToken();
    } while (tokenIs(','));
    if (!tokenIs(';')) syntaxError(ScriptError::NoSemicolon);
}

// The current token is the type word that stands at `start`. Parameters are read when the function
// is called, not here.
static void declareFunctionOrGlobal(const char* start) {
    ScriptFunction function;
    function.returnType = static_cast<int32_t>(gKeywordCode);
    getToken();
    if (gTokenKind != TokenKind::Identifier) return;
    copyName(function.name, gToken);
    getToken();
    if (tokenIs('(')) {
        function.location = gProgramPos;
        recordFunction(function);
        skipPastCloseParen();
    } else {
        gProgramPos = start;
        declareGlobal();
    }
}

static void skipBlock() {
    for (int depth = 1; depth > 0;) {
        getTokenInEndlessLoop();
        if (tokenIs('{')) depth++;
        if (tokenIs('}')) depth--;
    }
}

static void prescan() {
    const char* start = gProgramPos;
    gFunctionCount = 0;
    do {
        const char* before = gProgramPos;
        getToken();
        waitIfStuck(before);
        if (gKeywordCode == KeywordCode::Char || gKeywordCode == KeywordCode::Int) {
            declareFunctionOrGlobal(before);
        } else if (tokenIs('{')) {
            skipBlock();
        }
    } while (gKeywordCode != KeywordCode::Finished);
    gProgramPos = start;
}

// Entries -------------------------------------------------------------------------------------

static void prescanText(const void*) {
    gGlobalCount = 0;
    prescan();
    gLocalTop = 0;
    gCallDepth = 0;
}

bool loadScript(const char* path) {
    char* buffer = static_cast<char*>(std::calloc(kProgramCapacity, 1));
    if (buffer == nullptr) {
        std::puts("Cant use memory!");
        return false;
    }
    if (!readProgramFile(buffer, path)) {
        std::free(buffer);
        std::printf("Cant open file: %s", path);
        return false;
    }
    setProgramText(buffer, path);
    return runGuarded(prescanText, nullptr);
}

// The call reads its argument list from the definition's own parentheses: they must be empty.
static void callAtDefinition(const char* name, const char* location) {
    setToken(name);
    gProgramPos = location - 1;
    callFunction();
}

static void callMain(const void*) {
    const char* location = findFunction("main");
    if (location == nullptr) {
        std::puts("main() not found!");
        endProcess(1);
    }
    callAtDefinition("main", location);
}

void runMain() {
    runGuarded(callMain, nullptr);
}

void callScriptFunction(const char* name) {
    const char* location = findFunction(name);
    if (location == nullptr) {
        std::printf("%s() not found!\n", name);
        endProcess(1);
    }
    callAtDefinition(name, location);
}

static void callNamed(const void* name) {
    callScriptFunction(static_cast<const char*>(name));
}

void callScriptFunctionGuarded(const char* name) {
    runGuarded(callNamed, name);
}
