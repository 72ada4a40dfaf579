#include "script/run/program.h"

#include <cstdio>
#include <cstdlib>

#include "script/errors/endless.h"
#include "script/errors/errors.h"
#include "script/errors/halt.h"
#include "script/errors/recovery.h"
#include "script/errors/token_reader.h"
#include "script/host/arguments.h"
#include "script/host/builtins.h"
#include "script/run/functions.h"
#include "script/run/variables.h"
#include "script/source/symbols.h"
#include "script/source/text.h"

// Pre-scan ------------------------------------------------------------------------------------

// type name { "," name } ";"
// Any token serves as a name. No initialisers. Returns the position after the ";".
static Place* declareGlobals(Place* type) {
    ScriptVariable global;
    global.type = static_cast<int32_t>(type->token.keyword);
    Place* at = type;
    do {
        Place* name = tokenAt(at->next);
        global.name = declaredSymbol(name);
        declareGlobalVariable(global, name->next);
        at = tokenAt(name->next);
    } while (holds(at, ','));
    if (!holds(at, ';')) syntaxError(ScriptError::NoSemicolon, at->next);
    return at->next;
}

// Records what the type word begins, if a name follows it. Parameters are read when the function is
// called, not here. Returns the position after the declaration, which is before a function's body.
static Place* declareFunctionOrGlobals(Place* type) {
    Place* name = tokenAt(type->next);
    if (name->token.kind != TokenKind::Identifier) return name->next;
    ScriptFunction function;
    function.returnType = static_cast<int32_t>(type->token.keyword);
    function.name = declaredSymbol(name);
    Place* at = tokenAt(name->next);
    if (!holds(at, '(')) return declareGlobals(type);
    function.location = at->next;
    recordFunction(function);
    Place* end = afterCloseParen(function.location);
    keepTokens(function.location, end);
    return end;
}

// Declares what `at`, outside of all braces, begins. Returns the position to go on from.
static Place* prescanFrom(Place* at) {
    if (at->token.keyword == KeywordCode::Char || at->token.keyword == KeywordCode::Int) {
        return declareFunctionOrGlobals(at);
    }
    return holds(at, '{') ? findBalance(at->next, '{', '}')->next : at->next;
}

static void prescan() {
    gFunctionCount = 0;
    Place* at = tokenAt(gPlaces);
    while (at->token.keyword != KeywordCode::Finished) {
        waitIfStuck(at);
        at = tokenAt(prescanFrom(at));
    }
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
    declareBuiltins();
    resetCursor();
    return runGuarded(prescanText, nullptr);
}

void callScriptFunction(const char* name) {
    const Symbol* function = findSymbol(name);
    if (function == nullptr || function->function == nullptr) {
        std::printf("%s() not found!\n", name);
        endProcess(1);
    }
    beginCall(function);
    // The call reads its argument list from the definition's own parentheses: they must be empty.
    callFunction(function->function, function->function - 1);
    endCall();
}

static void callNamed(const void* name) {
    callScriptFunction(static_cast<const char*>(name));
}

void callScriptFunctionGuarded(const char* name) {
    runGuarded(callNamed, name);
}

void runMain() {
    callScriptFunctionGuarded("main");
}
