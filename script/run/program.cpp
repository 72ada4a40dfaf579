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
    global.type = static_cast<int32_t>(type->keyword);
    Place* token = type;
    do {
        Place* name = tokenAt(token->next);
        global.name = declaredSymbol(name);
        declareGlobalVariable(global, name->next);
        token = tokenAt(name->next);
    } while (token->punctuator == ',');
    if (token->punctuator != ';') syntaxError(ScriptError::NoSemicolon, token->next);
    return token->next;
}

// Records what the type word begins, if a name follows it. Parameters are read when the function is
// called, not here. Returns the position after the declaration, which is before a function's body.
static Place* declareFunctionOrGlobals(Place* type) {
    Place* name = tokenAt(type->next);
    if (name->kind != TokenKind::Identifier) return name->next;
    ScriptFunction function;
    function.returnType = static_cast<int32_t>(type->keyword);
    function.name = declaredSymbol(name);
    Place* token = tokenAt(name->next);
    if (token->punctuator != '(') return declareGlobals(type);
    function.location = token->next;
    recordFunction(function);
    Place* end = afterCloseParen(function.location);
    keepTokens(function.location, end);
    return end;
}

// Declares what `token`, outside of all braces, begins. Returns the position to go on from.
static Place* prescanFrom(Place* token) {
    if (token->keyword == KeywordCode::Char || token->keyword == KeywordCode::Int) {
        return declareFunctionOrGlobals(token);
    }
    return token->punctuator == '{' ? findBalance(token->next, '{', '}')->next : token->next;
}

static void prescan() {
    gFunctionCount = 0;
    Place* token = tokenAt(gPlaces);
    while (token->keyword != KeywordCode::Finished) {
        waitIfStuck(token);
        token = tokenAt(prescanFrom(token));
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
