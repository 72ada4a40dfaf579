#include "simulation/seed_run.h"

#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "app/base/input.h"
#include "app/base/paths.h"
#include "app/base/window.h"
#include "app/engine.h"
#include "app/main_loop.h"
#include "app/ticks.h"
#include "script/errors/halt.h"
#include "script/run/functions.h"
#include "script/run/program.h"
#include "simulation/builtin_calls.h"
#include "simulation/hash.h"
#include "simulation/player.h"
#include "simulation/random.h"
#include "simulation/rules.h"
#include "simulation/script_errors.h"

static SeedResult gResult;
static int gResultFile = -1;
static Hash gOutput;
static bool gShowOutput = false;
static bool gPlaying = false;  // the level has been loaded

// Output -----------------------------------------------------------------------------------------

static ssize_t takeOutput(void*, const char* bytes, size_t size) {
    addBytes(gOutput, bytes, size);
    if (gShowOutput && ::write(STDERR_FILENO, bytes, size) < 0) return -1;
    const std::string text(bytes, size);
    requireRule(text.find("WRONG") == std::string::npos, "a call leaves its caller as it was");
    return static_cast<ssize_t>(size);
}

// Standard output is hashed; standard input is the script, and then at its end.
static void redirectStreams() {
    cookie_io_functions_t functions = {nullptr, takeOutput, nullptr, nullptr};
    stdout = fopencookie(nullptr, "w", functions);
    static char buffer[1 << 16];
    std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
    if (std::freopen(gScriptPath.c_str(), "rb", stdin) == nullptr) reportBrokenRule("no script");
}

// Ends -------------------------------------------------------------------------------------------

void reportBrokenRule(const char* rule) {
    std::fprintf(stderr, "seed %llu, pass %llu, after %llu ms: this does not hold: %s\n",
                 static_cast<unsigned long long>(gResult.seed),
                 static_cast<unsigned long long>(gResult.passes),
                 static_cast<unsigned long long>(playedMs()), rule);
    _exit(kBrokenRuleStatus);
}

[[noreturn]] static void finish(LevelEnd end) {
    std::fflush(stdout);
    gResult.end = end;
    gResult.playedMs = playedMs();
    gResult.errors = static_cast<uint64_t>(scriptErrors());
    addRegistries(gOutput);
    gResult.hash = gOutput.value;
    const bool written = ::write(gResultFile, &gResult, sizeof gResult) == sizeof gResult;
    _exit(written ? 0 : 1);
}

static bool isFunction(const std::string& name) {
    return std::any_of(gFunctionTable, gFunctionTable + gFunctionCount,
                       [&](const ScriptFunction& function) { return name == function.name->text; });
}

// In place of script/errors/halt.cpp: what ends a process ends a level here.
void endProcess(int status) {
    if (status == 0) finish(LevelEnd::Ended);
    requireRule(gPlaying, "every level has a main");
    requireRule(unknownNameIsBound(isFunction) || unknownNameIsTimed(isFunction),
                "only an unknown function ends the process");
    finish(LevelEnd::UnknownName);
}
void abortProcess() {
    reportBrokenRule("no level has a name that is too long, and every error has its way back");
}
void raiseDivisionFault() {
    finish(LevelEnd::DivisionFault);
}
void waitEndlessly(const char* reason, const Place*) {
    std::fprintf(stderr, "%s\n", reason);
    reportBrokenRule("no level waits endlessly");
}

// Passes -----------------------------------------------------------------------------------------

// A level may wait for something that never comes: far more than one takes on a busy machine.
static constexpr unsigned kLevelSeconds = 250;

// A pass may take ten seconds of processor time.
static void startAlarm() {
    constexpr time_t kPassSeconds = 10;
    const itimerval alarm = {{0, 0}, {kPassSeconds, 0}};
    setitimer(ITIMER_PROF, &alarm, nullptr);
}

static void checkAllRules(bool quitSeen) {
    checkAppRules(quitSeen);
    checkScriptRules();
    checkImageRules();
    checkTimerRules();
    checkKeyRules();
    checkTextRules();
    checkUnitRules();
    checkSelectionRules();
    checkResourceRules();
}

// SDL's own events have no reader here, and would fill its memory.
static void dropSdlEvents() {
    if (!gEngineClosed) SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
}

static bool playPass() {
    startAlarm();
    beginPassOfTickRules();
    beginPlayersPass();
    const bool quit = runPass();
    checkTickRules();
    checkAllRules(quit);
    dropSdlEvents();
    gResult.passes++;
    return quit;
}

static void startRules() {
    startScriptRules();
    startUnitRules();
    startSelectionRules();
    setImageBuiltinRules();
    setTextBuiltinRules();
    setUnitBuiltinRules();
    watchBuiltins();
}

// As the engine's own main does it.
static void start() {
    requireRule(initEngine(), "the engine starts");
    if (!loadScript(gScriptPath.c_str())) finish(LevelEnd::NotLoaded);
    gPlaying = true;
    startRules();
    runMain();
    refreshKeyboardState();
    const uint64_t nowMs = gInput.nowMs();
    startTickRules(nowMs);
    runTicksOnMainThread(nowMs);
    checkAllRules(false);
}

// Mostly minutes; some levels are closed at once.
static uint64_t lengthMs(uint64_t seed) {
    Random dice = {seed * 3 + 1};
    if (randomChance(dice, 60)) return static_cast<uint64_t>(randomBelow(dice, 2000));
    return static_cast<uint64_t>(randomBetween(dice, 10000, 120000));
}

void playSeed(uint64_t seed, int resultFile, bool showOutput) {
    gResult.seed = seed;
    gResultFile = resultFile;
    gShowOutput = showOutput;
    startAlarm();
    alarm(kLevelSeconds);
    redirectStreams();
    startResourceRules();
    startPlayer(seed);
    start();
    const uint64_t length = lengthMs(seed);
    do {
        if (playedMs() >= length) closeByPlayer();
    } while (!playPass());
    closeEngine();
    closeEngine();
    finish(LevelEnd::Closed);
}
