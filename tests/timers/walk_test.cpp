// Random timers against a model that steps every one of them at every tick.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/engine_test.h"
#include "timers/timers.h"

// What a timer function does once in a tick, besides telling which timer fires.
enum Deed { kNothing, kCreate, kDelete, kPause, kResume, kDeedCount };

struct Plan {
    int32_t deed = kNothing;
    int32_t key = 0;
    int32_t once = 0;
    int32_t interval = 0;
};

// The script's globals are those of a plan, in the same order.
static const char kScript[] =
    "int deed, key, once, interval;\n"
    "int tell() { print(getcurrenttimer()); puts(\"\"); }\n"
    "int act() { int now; tell(); now = deed; deed = 0;\n"
    "  if (now == 1) { createtimer(once, interval, \"act\"); }\n"
    "  if (now == 2) { deletetimer(key); }\n"
    "  if (now == 3) { pausetimer(key, 1); }\n"
    "  if (now == 4) { pausetimer(key, 0); }\n"
    "}\n"
    "int main() { }\n";

static void givePlan(const Plan& plan) {
    const int32_t values[] = {plan.deed, plan.key, plan.once, plan.interval};
    for (size_t i = 0; i < std::size(values); i++)
        gGlobalVars[i].value = values[i];
}

// The model -------------------------------------------------------------------------------------

struct ModelTimer {
    int32_t id = 0;
    uint32_t counter = 0;
    uint32_t interval = 0;
    bool paused = true;
    bool oneShot = true;
};
static std::map<int32_t, ModelTimer> gModel;
static int32_t gModelNextId = 0;
static Plan gModelPlan;

static ModelTimer& modelTimer(int32_t key) {
    if (gModel.count(key) == 0) gModel[key].id = gModelNextId++;
    return gModel.at(key);
}

static void carryOut(const Plan& plan) {
    if (plan.deed == kCreate) {
        ModelTimer& timer = modelTimer(gModelNextId);
        timer.interval = static_cast<uint32_t>(plan.interval);
        timer.oneShot = plan.once != 0;
        timer.paused = false;
    } else if (plan.deed != kNothing) {
        modelTimer(plan.key).paused = plan.deed != kResume;
        if (plan.deed == kDelete) gModel.erase(plan.key);
    }
}

static std::string fireModel(int32_t key) {
    const int32_t id = gModel.at(key).id;
    gModel.at(key).counter = 0;
    carryOut(std::exchange(gModelPlan, Plan()));
    const auto timer = gModel.find(key);
    if (timer != gModel.end() && timer->second.id == id) {
        timer->second.paused |= timer->second.oneShot;
        if (timer->second.oneShot) {
            gModel.erase(id);
        } else {
            timer->second.counter += 10;
        }
    }
    return std::to_string(id) + "\n";
}

static std::string tickModel() {
    std::string fired;
    for (auto timer = gModel.begin(); timer != gModel.end();) {
        const int32_t key = timer->first;
        if (!timer->second.paused) {
            if (timer->second.counter >= timer->second.interval) {
                fired += fireModel(key);
            } else {
                timer->second.counter += 10;
            }
        }
        timer = gModel.upper_bound(key);
    }
    return fired;
}

// Both ------------------------------------------------------------------------------------------

static std::mt19937 gDice(1);

static int32_t below(int32_t bound) {
    return static_cast<int32_t>(gDice() % static_cast<uint32_t>(bound));
}

// Mostly timers that wait, many for longer than a group ever rests; some are never due.
static int32_t anyInterval() {
    if (below(30) == 0) return below(40);
    const int32_t choices[] = {below(3000), below(30000), -1 - below(9)};
    return choices[below(static_cast<int32_t>(std::size(choices)))];
}

static int32_t anyKey() {
    if (gModel.empty() || below(20) == 0) return below(200) - 100;
    return std::next(gModel.begin(), below(static_cast<int32_t>(gModel.size())))->first;
}

// A record made by a look-up has no function: to let it run ends the process.
static bool mayRun(int32_t key) {
    const auto timer = gModel.find(key);
    return timer != gModel.end() && !timer->second.oneShot;
}

static Plan anyPlan() {
    Plan plan = {below(kDeedCount), anyKey(), below(3) == 0 ? 1 : 0, anyInterval()};
    if (plan.deed == kResume && !mayRun(plan.key)) plan.deed = kPause;
    return plan;
}

// Does what is planned to the registry directly, as a key function would.
static void carryOutForReal(const Plan& plan) {
    if (plan.deed == kCreate) createTimer(plan.once != 0, plan.interval, "act");
    if (plan.deed == kDelete) deleteTimer(plan.key);
    if (plan.deed == kPause || plan.deed == kResume) pauseTimer(plan.key, plan.deed == kPause);
    carryOut(plan);
}

static void setCounter(int32_t key, uint32_t counter) {
    findOrCreateTimer(key).counter = modelTimer(key).counter = counter;
}

static std::string shown(int32_t key, int32_t id, uint32_t counter, bool paused) {
    return std::to_string(key) + ":" + std::to_string(id) + ":" + std::to_string(counter) +
           (paused ? "p " : " ");
}

static void expectSameRegistries() {
    std::string real, model;
    for (const TimerEntry& entry : gTimers)
        real += shown(entry.first, entry.second.id, counterOf(entry), entry.second.paused);
    for (const auto& [key, timer] : gModel)
        model += shown(key, timer.id, timer.counter, timer.paused);
    ASSERT_EQ(model, real);
    ASSERT_EQ(gModelNextId, gNextTimerId);
}

static void fillRegistry(int32_t count) {
    for (int32_t i = 0; i < count; i++)
        carryOutForReal({kCreate, 0, 0, anyInterval()});
    setCounter(anyKey(), 0xFFFFFF00);
}

TEST(TimerWalk, RandomTimersFireAsIfEachWereSteppedAtEveryTick) {
    ASSERT_TRUE(loadLevel(kScript));
    fillRegistry(300);
    int fired = 0;
    for (int i = 0; i < 2500; i++) {
        if (below(20) == 0) carryOutForReal(anyPlan());
        gModelPlan = below(4) == 0 ? anyPlan() : Plan();
        givePlan(gModelPlan);
        const std::string expected = tickModel();
        ASSERT_EQ(expected, tick()) << "tick " << i;
        fired += expected.empty() ? 0 : 1;
        if (i % 29 == 0) expectSameRegistries();
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(fired, 500);
}

// Here most ticks find no timer due.
TEST(TimerWalk, WaitingTimersFireAtTheirTicks) {
    ASSERT_TRUE(loadLevel(kScript));
    for (int32_t i = 0; i < 200; i++)
        carryOutForReal({kCreate, 0, 0, 5000 + below(30000)});
    for (int i = 0; i < 3000; i++) {
        givePlan(gModelPlan = Plan());
        ASSERT_EQ(tickModel(), tick()) << "tick " << i;
        if (i % 101 == 0) expectSameRegistries();
        if (HasFatalFailure()) return;
    }
}

// What the main thread leaves that adds a timer while the tick takes out its empty group.
static void addBesideTheTick(int32_t key) {
    ScriptTimer timer;
    timer.functionName = "tell";
    timer.interval = 50;
    timer.paused = timer.oneShot = false;
    gTimers.emplace(key, timer);
}

static bool fires(const std::string& printed, int32_t key) {
    return printed.find(std::to_string(gTimers.at(key).id) + "\n") != std::string::npos;
}

TEST(TimerWalk, NoTimerIsLostThatWasAddedBesideTheTick) {
    ASSERT_TRUE(loadLevel(kScript));
    for (const int32_t key : {1000, 5000, -3000, 3000}) {
        addBesideTheTick(key);
        EXPECT_TRUE(fires(tick(200), key)) << key;
    }
}
