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

// The value that `percent` of the sorted ones do not exceed.
static double percentile(const std::vector<double>& sorted, size_t percent) {
    const size_t rank = (sorted.size() * percent + 99) / 100;
    return sorted[std::max<size_t>(rank, 1) - 1];
}

static std::string row(const char* name, std::vector<double> costs) {
    std::sort(costs.begin(), costs.end());
    char text[120];
    std::snprintf(text, sizeof text, "%-10s %9.3f %9.3f %9.3f %9.3f\n", name, percentile(costs, 50),
                  percentile(costs, 95), percentile(costs, 99), costs.back());
    return text;
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
