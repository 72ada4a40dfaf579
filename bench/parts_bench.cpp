// Measures the parts of the interpreter, the two ticks and the checker.
//
// The figures are processor times of one visit. A place of the text is visited again and again, as
// a running level does; the "first" rows measure what is paid once.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "bench/level.h"
#include "check/check.h"
#include "script/host/arguments.h"
#include "script/host/expression.h"
#include "script/run/functions.h"
#include "script/run/program.h"
#include "script/run/variables.h"
#include "script/source/lexer.h"
#include "script/source/text.h"
#include "script/source/tokens.h"
#include "timers/timers.h"
#include "units/unit_movement.h"
#include "units/units.h"

// The interpreter ---------------------------------------------------------------------------------

static const char kText[] =
    "int g;\n"
    "int add(int a, int b) { return a + b; }\n"
    "int nothing() { }\n"
    "int main() { }\n";

// The first position of `piece` in the text just loaded.
static Place* placeOf(const std::string& piece) {
    const char* found = std::strstr(gProgramBuffer, piece.c_str());
    if (found == nullptr) std::abort();
    return placeAt(found);
}

// Loads kText with `expression` as the body of a function, and returns the expression's position.
static Place* placeOfExpression(const std::string& expression) {
    loadLevelText(std::string(kText) + "int here() {\n  " + expression + ";\n}\n");
    gGlobalVars[0].value = 5;  // the "g" of the text
    return placeOf(expression);
}

static void evaluateAt(benchmark::State& state, Place* place, int32_t value) {
    require(evalExpression(place).value == value, "an expression has another value");
    for (auto _ : state) {
        benchmark::DoNotOptimize(evalExpression(place));
    }
}

static int64_t readAllTokens() {
    int64_t count = 0;
    gProgramPos = gPlaces;
    do {
        getToken();
        count++;
    } while (gToken->token.keyword != KeywordCode::Finished);
    return count;
}

// Both report how many tokens one visit of the text reads. The words in it stay known.
static void tokenFirstRead(benchmark::State& state) {
    loadLevelText(kText);
    Place* end = placeAt(gProgramEnd);
    int64_t count = 0;
    for (auto _ : state) {
        for (Place* place = gPlaces; place <= end; place++)
            place->state = PlaceState::Unread;
        count = readAllTokens();
    }
    state.counters["tokens"] = static_cast<double>(count);
}

static void tokenReadAgain(benchmark::State& state) {
    loadLevelText(kText);
    int64_t count = 0;
    for (auto _ : state) {
        count = readAllTokens();
        benchmark::DoNotOptimize(count);
    }
    state.counters["tokens"] = static_cast<double>(count);
}

static void expression(benchmark::State& state) {
    evaluateAt(state, placeOfExpression("(g * 3 + 7) % 1000 - g / (g + 2)"), 22);
}

static void call(benchmark::State& state) {
    evaluateAt(state, placeOfExpression("add(g, 1)"), 6);
}

static void lookUpVariableAgain(benchmark::State& state) {
    loadLevelText(kText);
    Symbol* name = internSymbol("g");
    for (auto _ : state) {
        benchmark::DoNotOptimize(name);
        benchmark::DoNotOptimize(lookUpVariable(name));
    }
}

// Enters a call with the locals "other1" to "other`count`".
static void enterCallWithLocals(int64_t count) {
    pushCall(gLocalTop, gPlaces);
    for (int64_t i = 1; i <= count; i++)
        pushLocal(internSymbol("other" + std::to_string(i)), kArgumentType, gPlaces);
}

static void searchAgain(benchmark::State& state, Symbol* name) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(name);
        benchmark::DoNotOptimize(searchVariable(name));
    }
    gLocalTop = popCall(gPlaces);
}

// The search passes all `range` locals.
static void searchGlobal(benchmark::State& state) {
    loadLevelText(kText);
    enterCallWithLocals(state.range(0));
    searchAgain(state, internSymbol("g"));
}

// The one wanted is the oldest of `range` locals.
static void searchLocal(benchmark::State& state) {
    loadLevelText(kText);
    enterCallWithLocals(state.range(0));
    searchAgain(state, internSymbol("other1"));
}

static void builtinCall(benchmark::State& state) {
    evaluateAt(state, placeOfExpression("getlasttimer()"), gLastTimerId);
}

static void lookUpFunction(benchmark::State& state) {
    loadLevelText(kText);
    const char* name = "nothing";
    for (auto _ : state) {
        benchmark::DoNotOptimize(name);
        benchmark::DoNotOptimize(findFunction(name));
    }
}

BENCHMARK(tokenFirstRead);
BENCHMARK(tokenReadAgain);
BENCHMARK(expression);
BENCHMARK(call);
BENCHMARK(lookUpVariableAgain);
BENCHMARK(searchGlobal)->Arg(0)->Arg(10);
BENCHMARK(searchLocal)->Arg(1)->Arg(10);
BENCHMARK(builtinCall);
BENCHMARK(lookUpFunction);

// The ticks ---------------------------------------------------------------------------------------

static void tickTimers(benchmark::State& state, int32_t interval) {
    loadLevelText(kText);
    gTimers.clear();
    for (int64_t i = 0; i < state.range(0); i++)
        createTimer(false, interval, "nothing");
    gCurrentTimerId = 0;
    for (auto _ : state) {
        stepAllTimers(1, nullptr);
    }
    const bool haveFired = gCurrentTimerId > 0;
    require(haveFired == (interval == 0 && state.range(0) > 0), "timers fire when they should not");
    gTimers.clear();
}

// A negative interval is a huge one: it is not reached within any run.
static void tickIdleTimers(benchmark::State& state) {
    tickTimers(state, -1);
}

static void tickFiringTimers(benchmark::State& state) {
    tickTimers(state, 0);
}

// Timers of a second each that began one after the other: a thousandth of them fires at every tick.
static void tickTimersInTurn(benchmark::State& state) {
    constexpr int32_t kSecond = 10000;
    loadLevelText(kText);
    gTimers.clear();
    const int32_t first = gNextTimerId;
    for (int32_t i = 0; i < state.range(0); i++) {
        createTimer(false, kSecond, "nothing");
        findOrCreateTimer(first + i).counter = static_cast<uint32_t>(i % 1000 * 10);
    }
    for (auto _ : state) {
        stepAllTimers(1, nullptr);
    }
    gTimers.clear();
}

// Units without a picture: the tick does not look at it.
static void fillUnits(int64_t count) {
    if (gUnitTypes.empty()) loadUnitTypes();
    gUnits.clear();
    for (int32_t id = 0; id < count; id++)
        findOrCreateUnit(id);
}

static void tickIdleUnits(benchmark::State& state) {
    fillUnits(state.range(0));
    for (auto _ : state) {
        stepAllUnits(10, nullptr);
    }
    gUnits.clear();
}

// Giving the orders is part of the time: an order is carried out within one tick.
static void tickOrderedUnits(benchmark::State& state) {
    fillUnits(state.range(0));
    int32_t x = 0;
    for (auto _ : state) {
        x = x == 0 ? 500 : 0;
        for (auto& entry : gUnits)
            orderUnitMove(entry.second, x, 300);
        stepAllUnits(10, nullptr);
    }
    require(gUnits.begin()->second.image.rect.x == x, "the units do not move");
    gUnits.clear();
}

BENCHMARK(tickIdleTimers)->Arg(0)->Arg(10)->Arg(1000)->Arg(10000);
BENCHMARK(tickFiringTimers)->Arg(0)->Arg(10)->Arg(1000)->Arg(10000);
BENCHMARK(tickTimersInTurn)->Arg(10000);
BENCHMARK(tickIdleUnits)->Arg(10000);
BENCHMARK(tickOrderedUnits)->Arg(10000);

// The checker -------------------------------------------------------------------------------------

// A script as long as the engine reads, of statements such as games are made of.
static void checkFullScript(benchmark::State& state) {
    std::string script = "int x, y; int step(int n) { return n + 1; } int main() {\r\n";
    while (script.size() < 9900)
        script += "    if (x < 100) { x = step(x) * 2 - y; } else { moveimage(0, x, y); }\r\n";
    script += "}\r\n";
    for (auto _ : state) {
        require(checkScript("script.txt", script, false).findings.empty(),
                "the full script has findings");
    }
}

BENCHMARK(checkFullScript)->MeasureProcessCPUTime();  // it works on a thread of its own

BENCHMARK_MAIN();
