// Fuzz target over the script text: loads the bytes as a level script, runs main, then a few ticks
// and key presses. Whatever the script does, the process must survive: an error report, an exit or
// a hang that the language asks for all lead back here.
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "app/base/window.h"
#include "images/images.h"
#include "keys/key_bindings.h"
#include "script/errors/halt.h"
#include "script/errors/recovery.h"
#include "script/run/functions.h"
#include "script/run/program.h"
#include "script/source/lexer.h"
#include "script/source/text.h"
#include "texts/game_texts.h"
#include "timers/timers.h"
#include "units/unit_movement.h"
#include "units/units.h"

static constexpr int kStepBudget = 20000;  // tokens that one input may read

static std::jmp_buf gScriptOver;
static int gStepsLeft = 0;

// In place of script/errors/halt.cpp: the process goes on with the next input.
void endProcess(int) {
    std::longjmp(gScriptOver, 1);
}
void abortProcess() {
    std::longjmp(gScriptOver, 1);
}
void raiseDivisionFault() {
    std::longjmp(gScriptOver, 1);
}
void waitEndlessly(const char*, const Place*) {
    std::longjmp(gScriptOver, 1);
}

void countStep() {
    if (--gStepsLeft < 0) std::longjmp(gScriptOver, 1);
}

static void forgetLevel() {
    std::free(const_cast<char*>(gProgramBuffer));
    gProgramBuffer = nullptr;
    for (ScriptVariable& global : gGlobalVars)
        global = ScriptVariable();
    gLocalTop = gCallDepth = gReturnValue = 0;
    gImages.clear();
    gTimers.clear();
    gGameTexts.clear();
    gUnits.clear();
    gKeyBindings.clear();
    for (uint8_t& flag : gKeyHasBindings)
        flag = 0;
    gNextTimerId = gLastTimerId = gCurrentTimerId = 0;
    gNextTextNumber = gLastTextNumber = gNextUnitId = gLastUnitId = gCurrentKey = 0;
    gEngineClosed = false;
}

static void fireAllKeys(const void*) {
    for (int32_t key = 0; key < kKeyCodes; key++)
        fireKey(key);
}

static void playLevel(const char* path) {
    gStepsLeft = kStepBudget;
    if (setjmp(gScriptOver) != 0) return;
    if (!loadScript(path)) return;
    runMain();
    for (int tick = 0; tick < 5; tick++) {
        stepAllTimers(1, nullptr);
        stepAllUnits(10, nullptr);
        runGuarded(fireAllKeys, nullptr);
    }
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    if (std::freopen("/dev/null", "w", stdout) == nullptr) std::abort();
    if (std::freopen("/dev/null", "r", stdin) == nullptr) std::abort();
    loadUnitTypes();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const char path[] = "fuzz_script.txt";
    std::FILE* file = std::fopen(path, "wb");
    if (file == nullptr) std::abort();
    std::fwrite(data, 1, size, file);
    std::fclose(file);
    playLevel(path);
    forgetLevel();
    return 0;
}
