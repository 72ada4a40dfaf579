#include "keys/key_bindings.h"

#include <algorithm>
#include <iterator>

#include "script/run/program.h"
#include "script/source/lexer.h"

std::map<uint8_t, KeyBinding> gKeyBindings;
uint8_t gKeyHasBindings[kKeyCodes];
int32_t gCurrentKey = 0;

static bool isKeyCode(int32_t key) {
    return key >= 0 && key < kKeyCodes;
}

static bool hasBindings(int32_t key) {
    return isKeyCode(key) && gKeyHasBindings[key] != 0;
}

KeyBinding& findOrCreateBinding(uint8_t key) {
    return gKeyBindings[key];
}

static KeyBinding& bindingsOf(int32_t key) {
    return findOrCreateBinding(static_cast<uint8_t>(key));
}

// Copies the name at `position` of the key's list; false past its end. A fixed buffer, because
// the function called by that name may change the list, and may leave by a jump.
static bool copyBoundName(int32_t key, size_t position, char (&name)[kTokenCapacity]) {
    const KeyBinding& names = bindingsOf(key);
    if (position >= names.size()) return false;
    name[names[position].copy(name, sizeof name - 1)] = '\0';
    return true;
}

void fireKey(int32_t key) {
    if (!hasBindings(key)) return;
    char name[kTokenCapacity];
    for (size_t position = 0; copyBoundName(key, position, name); position++) {
        gCurrentKey = key;
        callScriptFunction(name);
    }
}

void addKeyBinding(int32_t key, const char* name) {
    if (!isKeyCode(key)) return;
    bindingsOf(key).push_back(name);
    gKeyHasBindings[key] = 1;
}

void changeKeyBinding(int32_t key, const char* oldName, const char* newName) {
    if (!hasBindings(key)) return;
    KeyBinding& names = bindingsOf(key);
    std::replace(names.begin(), names.end(), std::string(oldName), std::string(newName));
}

void removeKeyBinding(int32_t key, const char* name) {
    if (!hasBindings(key)) return;
    KeyBinding& names = bindingsOf(key);
    const auto last = std::find(names.rbegin(), names.rend(), name);
    if (last == names.rend()) return;
    if (names.size() == 1) gKeyHasBindings[key] = 0;
    names.erase(std::next(last).base());
}
