// What must always hold, whatever a level and its player do.
//
// Each subsystem of the engine has a file of rules. Some rules are looked at after every pass of
// the main loop; others wrap the engine's functions, which the linker leads through the
// functions here (simulation/wrap.h), and compare what a call did with what it has to do. Where it
// is simple, a file keeps a copy of its registry that it changes by the rules only.
//
// A broken rule ends the process: every level has a process of its own.
#pragma once

#include <SDL.h>

#include <cstdint>

// Tells standard error which rule is broken and when, and ends the process.
[[noreturn]] void reportBrokenRule(const char* rule);

inline void requireRule(bool holds, const char* rule) {
    if (!holds) reportBrokenRule(rule);
}

// Called by seed_run.cpp: when the script has been loaded, before and after each pass, and when the
// process ends because of an unknown function.
void startResourceRules();
void startScriptRules();
void startUnitRules();
void startSelectionRules();
void checkAppRules(bool quitSeen);
void checkScriptRules();
void checkImageRules();
void checkTimerRules();
void checkKeyRules();
void checkTextRules();
void checkUnitRules();
void checkSelectionRules();
void checkResourceRules();
void checkClosedRules();
void checkUnknownFunction();

// Ticks: the clock of the level started, a pass begins.
void startTickRules(uint64_t nowMs);
void beginPassOfTickRules();
void checkTickRules();

// Called by player.cpp when an event has been dispatched.
void checkEventRules(const SDL_Event& event);
void followSelection(const SDL_Event& event);
void checkKeysOfEvent(const SDL_Event& event);

// The ticks of this pass run in real time that passes: some may be left for the next one.
extern bool gPassIsSlow;
