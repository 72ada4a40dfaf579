#include "script/names.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include "script/text.h"

// Nothing moves and nothing is freed while script code runs: the two threads that may run it can
// both come upon a new word, and then the worst is a wrong variable. A standard map would break.
// There cannot be more words than positions of the text, and the built-ins' names besides.
static constexpr size_t kMaxNames = kProgramCapacity + 2 + kMaxBuiltins;
static Name gNames[kMaxNames];
static size_t gNameCount = 0;

// Where a name is found by the hash of its text, or in the next slots. Never full.
static constexpr size_t kNameSlots = 16384;
static_assert(kNameSlots > kMaxNames, "every search must come to an end");
static Name* gNameSlots[kNameSlots];

// The slot that holds the name of `text`, or the free one it belongs into.
static Name*& slotOf(std::string_view text) {
    size_t slot = std::hash<std::string_view>()(text) % kNameSlots;
    while (gNameSlots[slot] != nullptr && text != gNameSlots[slot]->text)
        slot = (slot + 1) % kNameSlots;
    return gNameSlots[slot];
}

static Name* makeName(std::string_view text) {
    const size_t index = std::min(gNameCount, kMaxNames - 1);
    gNameCount = index + 1;
    Name& name = gNames[index];
    std::fill(std::copy(text.begin(), text.end(), name.text), std::end(name.text), '\0');
    return &name;
}

Name* nameOf(std::string_view text) {
    Name*& slot = slotOf(text);
    if (slot == nullptr) slot = makeName(text);
    return slot;
}

Name* findName(std::string_view text) {
    return slotOf(text);
}

void forgetNames() {
    if (gNameCount == 0) return;  // as at the first load: the memory need not even be touched
    std::fill(gNames, gNames + gNameCount, Name());
    std::fill(std::begin(gNameSlots), std::end(gNameSlots), nullptr);
    gNameCount = 0;
}
