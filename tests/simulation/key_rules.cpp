// Keys: the lists and flags are what the calls make of them, and every held key fires what is
// bound.
#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "keys/key_bindings.h"
#include "script/run/program.h"
#include "simulation/player.h"
#include "simulation/rules.h"
#include "simulation/script_errors.h"
#include "simulation/wrap.h"

WRAP_FUNCTION("_Z13addKeyBindingiPKc", void, AddKeyBinding, (int32_t, const char*));
WRAP_FUNCTION("_Z16changeKeyBindingiPKcS0_", void, ChangeKeyBinding,
              (int32_t, const char*, const char*));
WRAP_FUNCTION("_Z16removeKeyBindingiPKc", void, RemoveKeyBinding, (int32_t, const char*));
WRAP_FUNCTION("_Z7fireKeyi", void, FireKey, (int32_t));
WRAP_FUNCTION("_Z18callScriptFunctionPKc", void, CallScriptFunction, (const char*));

// The bindings as the rules have it. The codes from 256 on share the lists of those from 0 on, but
// each code has a flag of its own.
static std::map<uint8_t, std::vector<std::string>> gLists;
static uint8_t gFlags[kKeyCodes];

// The firing under way.
static int32_t gFiredKeys = 0;    // since the last event
static int32_t gLastFired = -1;   // the key
static size_t gNextPosition = 0;  // in its list
static int64_t gErrorsBefore = 0;

static std::vector<std::string>& listOf(int32_t key) {
    return gLists[static_cast<uint8_t>(key)];
}

static bool isCode(int32_t key) {
    return key >= 0 && key < kKeyCodes;
}

void wrapAddKeyBinding(int32_t key, const char* name) {
    if (isCode(key)) {
        listOf(key).push_back(name);
        gFlags[key] = 1;
    }
    realAddKeyBinding(key, name);
}

void wrapChangeKeyBinding(int32_t key, const char* oldName, const char* newName) {
    if (isCode(key) && gFlags[key] != 0) {
        for (std::string& name : listOf(key))
            if (name == oldName) name = newName;
    }
    realChangeKeyBinding(key, oldName, newName);
}

// The last one of that name goes; a list that becomes empty takes the flag of this code with it.
void wrapRemoveKeyBinding(int32_t key, const char* name) {
    if (isCode(key) && gFlags[key] != 0) {
        std::vector<std::string>& list = listOf(key);
        size_t last = list.size();
        for (size_t i = 0; i < list.size(); i++)
            if (list[i] == name) last = i;
        if (last < list.size()) {
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(last));
            if (list.empty()) gFlags[key] = 0;
        }
    }
    realRemoveKeyBinding(key, name);
}

// The keys fire in ascending order, each once an event. Errors jump over this function.
void wrapFireKey(int32_t key) {
    requireRule(isCode(key) && isHeld(key), "only held keys fire");
    requireRule(key > gLastFired, "keys fire in ascending order");
    gLastFired = key;
    gFiredKeys++;
    gNextPosition = 0;
    realFireKey(key);
    requireRule(gFlags[key] == 0 || gNextPosition >= listOf(key).size(),
                "a key calls all its functions");
}

// Called for keys only: the list is read afresh before each call.
void wrapCallScriptFunction(const char* name) {
    requireRule(gLastFired >= 0 && gCurrentKey == gLastFired,
                "the current key is the one that fires");
    const std::vector<std::string>& list = listOf(gLastFired);
    requireRule(gNextPosition < list.size() && list[gNextPosition] == name,
                "a key calls its functions in order");
    gNextPosition++;
    realCallScriptFunction(name);
}

void checkKeysOfEvent(const SDL_Event& event) {
    const bool isKeyEvent = event.type == SDL_KEYDOWN || event.type == SDL_KEYUP;
    const int32_t expected = isKeyEvent ? heldKeys() : 0;
    requireRule(gFiredKeys == expected || (isKeyEvent && scriptErrors() > gErrorsBefore),
                "at a keyboard event every held key fires, and at no other");
    gFiredKeys = 0;
    gLastFired = -1;
    gErrorsBefore = scriptErrors();
}

// Firing creates lists that are empty: they count for nothing.
static bool isSameList(uint8_t key) {
    const auto known = gLists.find(key);
    const auto kept = gKeyBindings.find(key);
    const bool knownIsEmpty = known == gLists.end() || known->second.empty();
    const bool keptIsEmpty = kept == gKeyBindings.end() || kept->second.empty();
    if (knownIsEmpty || keptIsEmpty) return knownIsEmpty == keptIsEmpty;
    return known->second == kept->second;
}

void checkKeyRules() {
    gErrorsBefore = scriptErrors();  // those of timers count for no key
    requireRule(std::memcmp(gFlags, gKeyHasBindings, sizeof gFlags) == 0,
                "flags are set by a first binding and cleared with the last");
    for (const auto& [key, list] : gLists)
        requireRule(isSameList(key), "lists change by built-ins only");
    for (const auto& [key, list] : gKeyBindings)
        requireRule(isSameList(key), "lists change by built-ins only");
    requireRule(gCurrentKey >= 0 && gCurrentKey < kKeyCodes, "the current key is a key code");
}

bool unknownNameIsBound(bool (*isKnown)(const std::string&)) {
    for (const auto& [key, list] : gLists) {
        if (!std::all_of(list.begin(), list.end(), isKnown)) return true;
    }
    return false;
}
