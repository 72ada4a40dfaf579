// The interpreter: every entry and every call leave it level, and the program never changes.
#include <cstdint>
#include <vector>

#include "script/errors/errors.h"
#include "script/errors/nesting.h"
#include "script/errors/recovery.h"
#include "script/host/arguments.h"
#include "script/run/functions.h"
#include "script/run/variables.h"
#include "script/source/text.h"
#include "script/source/tokens.h"
#include "simulation/builtin_calls.h"
#include "simulation/hash.h"
#include "simulation/rules.h"
#include "simulation/script_errors.h"
#include "simulation/wrap.h"

WRAP_FUNCTION("_Z10runGuardedPFvPKvES0_", bool, RunGuarded, (void (*)(const void*), const void*));
WRAP_FUNCTION("_Z12callFunctionP5PlaceS0_", Place*, CallFunction, (Place*, Place*));
WRAP_FUNCTION("_Z11syntaxError11ScriptErrorPK5Place", void, SyntaxError,
              (ScriptError, const Place*));

// The program as it was loaded.
static uint64_t gTextHash = 0;
static int32_t gFunctions = 0;
static int32_t gGlobals = 0;
static std::vector<ScriptFunction> gLoadedFunctions;
static std::vector<Symbol*> gGlobalNames;

static int64_t gErrors = 0;      // raised
static int64_t gRecoveries = 0;  // entries that an error has ended
static bool gIsLoaded = false;

static uint64_t hashOfText() {
    Hash hash;
    addBytes(hash, gProgramBuffer, static_cast<size_t>(gProgramEnd - gProgramBuffer) + 1);
    return hash.value;
}

void startScriptRules() {
    gTextHash = hashOfText();
    gFunctions = gFunctionCount;
    gGlobals = gGlobalCount;
    gLoadedFunctions.assign(gFunctionTable, gFunctionTable + gFunctionCount);
    for (int32_t i = 0; i < gGlobalCount; i++)
        gGlobalNames.push_back(gGlobalVars[i].name);
    gIsLoaded = true;
}

int64_t scriptErrors() {
    return gErrors;
}

static bool isInText(const Place* place) {
    return place >= gPlaces && place <= gPlaces + (gProgramEnd - gProgramBuffer) + 1;
}

// An entry leaves the stacks as it found them, whether it came to its end or to an error; and every
// error ends the innermost entry.
bool wrapRunGuarded(void (*operation)(const void*), const void* argument) {
    const int32_t localTop = gLocalTop, callDepth = gCallDepth, nesting = gNestingDepth;
    const int32_t builtins = builtinDepth();
    const bool finished = realRunGuarded(operation, argument);
    if (!finished) gRecoveries++;
    leaveBuiltinCalls(builtins);
    requireRule(gErrors == gRecoveries, "every error ends one entry into the interpreter");
    if (!gIsLoaded) return finished;
    requireRule(gLocalTop == localTop, "an entry leaves the local stack level");
    requireRule(gCallDepth == callDepth, "an entry leaves the call depth level");
    requireRule(gNestingDepth == nesting, "an entry leaves the nesting depth level");
    return finished;
}

void wrapSyntaxError(ScriptError error, const Place* position) {
    gErrors++;
    requireRule(error >= ScriptError::Syntax && error < ScriptError::Count, "errors have a number");
    realSyntaxError(error, position);
}

// A call drops its locals and goes on after its arguments. Errors jump over this function.
Place* wrapCallFunction(Place* location, Place* position) {
    const int32_t localTop = gLocalTop, callDepth = gCallDepth, nesting = gNestingDepth;
    const Symbol* const newest = localTop > 0 ? gLocalStack[localTop - 1].name : nullptr;
    requireRule(localTop >= 0 && localTop <= kMaxLocals, "the local stack is not exceeded");
    requireRule(callDepth >= 0 && callDepth <= kMaxCalls, "the call stack is not exceeded");
    requireRule(nesting >= 0 && nesting <= kMaxNesting, "the nesting is bounded");
    Place* const after = realCallFunction(location, position);
    requireRule(gLocalTop == localTop, "a call leaves the local stack level");
    requireRule(gCallDepth == callDepth, "a call leaves the call depth level");
    requireRule(gNestingDepth == nesting, "a call leaves the nesting depth level");
    requireRule(localTop == 0 || gLocalStack[localTop - 1].name == newest,
                "a call leaves its caller's locals alone");
    requireRule(isInText(after), "a call goes on in the text");
    return after;
}

static bool functionsAreUnchanged() {
    for (size_t i = 0; i < gLoadedFunctions.size(); i++) {
        if (gFunctionTable[i].name != gLoadedFunctions[i].name) return false;
        if (gFunctionTable[i].location != gLoadedFunctions[i].location) return false;
    }
    return gFunctionCount == gFunctions;
}

static bool globalsAreUnchanged() {
    for (size_t i = 0; i < gGlobalNames.size(); i++) {
        if (gGlobalVars[i].name != gGlobalNames[i]) return false;
    }
    return gGlobalCount == gGlobals;
}

void checkScriptRules() {
    requireRule(gLocalTop == 0, "no local outlives the calls");
    requireRule(gCallDepth == 0, "no call is active between two passes");
    requireRule(gNestingDepth == 0, "nothing is nested between two passes");
    requireRule(isInText(gProgramPos), "the position is in the text");
    requireRule(isInText(gToken), "the token is in the text");
    requireRule(functionsAreUnchanged(), "the functions are those of the pre-scan");
    requireRule(globalsAreUnchanged(), "the globals are those of the pre-scan");
    // Now and then: this is the longest look of all.
    static int32_t passes = 0;
    requireRule(passes++ % 64 != 0 || hashOfText() == gTextHash, "the text never changes");
}
