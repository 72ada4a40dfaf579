// Key bindings: the script functions that a key calls.
//
// A key code is an SDL scancode, 0 to 299 (kKeyCodes); other codes are accepted and ignored.
// Nothing is fired by holding a key alone: the main loop fires every held key at every keyboard
// event. Unlocked: shared by the main thread and, through the built-ins, the timer thread.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

constexpr int32_t kKeyCodes = 300;

// Names of script functions in the order they were bound; a name may be there more than once.
using KeyBinding = std::vector<std::string>;

// The lists are kept by the low byte of the key code, the flags by the whole code: the codes 256 to
// 299 share the lists of 0 to 43, while each has a flag of its own. Levels rely on it.
extern std::map<uint8_t, KeyBinding> gKeyBindings;

// Non-zero for a key code that has had a function bound and has not lost its last one.
extern uint8_t gKeyHasBindings[kKeyCodes];

// The key code whose functions were called latest; 0 before any.
extern int32_t gCurrentKey;

// The list under `key`; a missing one is created empty.
KeyBinding& findOrCreateBinding(uint8_t key);

// Calls the functions bound to `key`, in order. The list is read afresh before every call: a
// function may append to it, shorten it or empty it. Script errors jump: called inside runGuarded.
// A name that is no function of the script ends the process. Main thread.
void fireKey(int32_t key);

// Appends `name` to the functions of `key`.
void addKeyBinding(int32_t key, const char* name);

// Replaces every `oldName` among the functions of `key` by `newName`, in place.
void changeKeyBinding(int32_t key, const char* oldName, const char* newName);

// Removes the last `name` among the functions of `key`. Keys without bindings and names that are
// not bound change nothing, here and in changeKeyBinding.
void removeKeyBinding(int32_t key, const char* name);
