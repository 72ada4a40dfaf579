#include "play/costs.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "play/level.h"
#include "script/errors/recovery.h"

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

static constexpr size_t kParts = static_cast<size_t>(PassPart::Count);
static bool gMeasuring = false;
static std::vector<double> gCosts[kParts];  // milliseconds, one entry a pass
static std::vector<double> gWholes;         // the sums of the parts
static Clock::time_point gPartStart;
static Clock::time_point gScriptStart;
static double gScriptMs = 0;  // in the present part

static double msSince(Clock::time_point start) {
    return Milliseconds(Clock::now() - start).count();
}

static void noteScript(bool enters) {
    if (enters)
        gScriptStart = Clock::now();
    else
        gScriptMs += msSince(gScriptStart);
}

void measureCosts() {
    gMeasuring = true;
    gOnScript = noteScript;
}

void startCosts() {
    if (!gMeasuring) return;
    for (std::vector<double>& costs : gCosts)
        costs.push_back(0);
    gWholes.push_back(0);
    gScriptMs = 0;
    gPartStart = Clock::now();
}

void noteCost(PassPart part) {
    if (!gMeasuring) return;
    const double ms = msSince(gPartStart);
    gCosts[static_cast<size_t>(part)].back() = ms - gScriptMs;
    gCosts[static_cast<size_t>(PassPart::Script)].back() += gScriptMs;
    gWholes.back() += ms;
    gScriptMs = 0;
    gPartStart = Clock::now();
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
                  gWholes.size(), static_cast<double>(levelTimeMs()) / 1000, "ms a pass", "median",
                  "95th", "99th", "worst");
    if (gWholes.empty()) return head;
    return head + row("whole", gWholes) + row("script", gCosts[3]) + row("ticks", gCosts[1]) +
           row("drawing", gCosts[2]) + row("events", gCosts[0]);
}
