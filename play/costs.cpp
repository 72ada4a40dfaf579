#include "play/costs.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "app/main_loop.h"
#include "play/level.h"
#include "script/errors/recovery.h"

using Clock = std::chrono::steady_clock;

enum Part { Whole, Script, Ticks, Drawing, Events, Parts };
static constexpr const char* kNames[Parts] = {"whole", "script", "ticks", "drawing", "events"};

static std::vector<double> gCosts[Parts];  // milliseconds, one entry a pass
static Clock::time_point gScriptStart;
static Pass gMeasured;  // the parts of a pass as they were

static double msSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

static void noteScript(bool enters) {
    if (enters)
        gScriptStart = Clock::now();
    else if (!gCosts[Script].empty())
        gCosts[Script].back() += msSince(gScriptStart);
}

static void notePart(Part part, Clock::time_point start, double scriptBefore) {
    const double ms = msSince(start);
    gCosts[Whole].back() += ms;
    gCosts[part].back() = ms - (gCosts[Script].back() - scriptBefore);
}

static bool measureEvents() {
    for (std::vector<double>& costs : gCosts)
        costs.push_back(0);
    const Clock::time_point start = Clock::now();
    const bool quit = gMeasured.readEvents();
    notePart(Events, start, 0);
    return quit;
}

static void measureTicks() {
    const Clock::time_point start = Clock::now();
    const double script = gCosts[Script].back();
    gMeasured.runTicks();
    notePart(Ticks, start, script);
}

static void measureDrawing() {
    const Clock::time_point start = Clock::now();
    gMeasured.draw();
    notePart(Drawing, start, gCosts[Script].back());
}

void measureCosts() {
    gMeasured = gPass;
    gPass = {measureEvents, measureTicks, measureDrawing};
    gOnScript = noteScript;
}

// The values that 50, 95, 99 and 100 of 100 costs do not exceed.
static std::string row(const char* name, std::vector<double> costs) {
    std::sort(costs.begin(), costs.end());
    char text[80];
    std::snprintf(text, sizeof text, "%-10s", name);
    std::string result = text;
    for (const size_t percent : {50u, 95u, 99u, 100u}) {
        const size_t rank = std::max<size_t>((costs.size() * percent + 99) / 100, 1);
        std::snprintf(text, sizeof text, " %9.3f", costs[rank - 1]);
        result += text;
    }
    return result + '\n';
}

std::string costTable() {
    char head[160];
    std::snprintf(head, sizeof head, "%zu passes, %.3f s of engine time\n%-10s %9s %9s %9s %9s\n",
                  gCosts[Whole].size(), static_cast<double>(levelTimeMs()) / 1000, "ms a pass",
                  "median", "95th", "99th", "worst");
    std::string table = head;
    for (size_t part = 0; part < Parts && !gCosts[Whole].empty(); part++)
        table += row(kNames[part], gCosts[part]);
    return table;
}
