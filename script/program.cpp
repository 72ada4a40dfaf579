#include "script/program.h"

#include <cstdio>
#include <cstdlib>

#include "script/errors.h"
#include "script/functions.h"
#include "script/halt.h"
#include "script/recovery.h"
#include "script/text.h"
#include "script/tokens.h"
#include "script/variables.h"

// Pre-scan ------------------------------------------------------------------------------------

// type name { "," name } ";"
// Any token serves as a name. No initialisers.
static void declareGlobal() {
    getToken();
    ScriptVariable global;
    global.type = static_cast<int32_t>(gToken->keyword);
    do {
        getToken();
        global.name = declaredName(gToken);
        declareGlobalVariable(global);
        getToken();
    } while (tokenIs(','));
    if (!tokenIs(';')) syntaxError(ScriptError::NoSemicolon);
}

// The current token is the type word that stands at `start`. Parameters are read when the function
// is called, not here.
static void declareFunctionOrGlobal(Place* start) {
    ScriptFunction function;
    function.returnType = static_cast<int32_t>(gToken->keyword);
    getToken();
    if (gToken->kind != TokenKind::Identifier) return;
    function.name = declaredName(gToken);
    getToken();
    if (tokenIs('(')) {
        function.location = gProgramPos;
        recordFunction(function);
        gProgramPos = behindCloseParen(gProgramPos);
        keepTokens(function.location, gProgramPos);
    } else {
        gProgramPos = start;
        declareGlobal();
    }
}

static void prescan() {
    Place* start = gProgramPos;
    gFunctionCount = 0;
    do {
        Place* before = gProgramPos;
        getToken();
        waitIfStuck(gToken);
        if (gToken->keyword == KeywordCode::Char || gToken->keyword == KeywordCode::Int) {
            declareFunctionOrGlobal(before);
        } else if (tokenIs('{')) {
            gProgramPos = findBalance(gProgramPos, '{', '}')->next;
        }
    } while (gToken->keyword != KeywordCode::Finished);
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
    resetTokens();
    return runGuarded(prescanText, nullptr);
}

// The call reads its argument list from the definition's own parentheses: they must be empty.
static void callAtDefinition(Place* location) {
    gProgramPos = callFunction(location, location - 1);
}

static void callMain(const void*) {
    Place* location = findFunction("main");
    if (location == nullptr) {
        std::puts("main() not found!");
        endProcess(1);
    }
    callAtDefinition(location);
}

void runMain() {
    runGuarded(callMain, nullptr);
}

void callScriptFunction(const char* name) {
    Place* location = findFunction(name);
    if (location == nullptr) {
        std::printf("%s() not found!\n", name);
        endProcess(1);
    }
    callAtDefinition(location);
}

static void callNamed(const void* name) {
    callScriptFunction(static_cast<const char*>(name));
}

void callScriptFunctionGuarded(const char* name) {
    runGuarded(callNamed, name);
}
