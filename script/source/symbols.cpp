#include "script/source/symbols.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include "script/source/text.h"

// Nothing moves and nothing is freed while script code runs. Both threads may insert at once; the
// worst outcome is a wrong variable. A standard map would break.
// There cannot be more words than positions of the text, and the built-ins' names besides.
static constexpr size_t kMaxSymbols = kProgramCapacity + 2 + kMaxBuiltins;
static Symbol gSymbols[kMaxSymbols];
static size_t gSymbolCount = 0;

// Where a name is found by the hash of its text, or in the next slots. Never full.
static constexpr size_t kSymbolSlots = 16384;
static_assert(kSymbolSlots > kMaxSymbols, "every search must come to an end");
static Symbol* gSymbolSlots[kSymbolSlots];

// The slot that holds the name of `text`, or the free one it belongs into.
static Symbol*& slotOf(std::string_view text) {
    size_t slot = std::hash<std::string_view>()(text) % kSymbolSlots;
    while (gSymbolSlots[slot] != nullptr && text != gSymbolSlots[slot]->text)
        slot = (slot + 1) % kSymbolSlots;
    return gSymbolSlots[slot];
}

static Symbol* makeSymbol(std::string_view text) {
    const size_t index = std::min(gSymbolCount, kMaxSymbols - 1);
    gSymbolCount = index + 1;
    Symbol& name = gSymbols[index];
    std::fill(std::copy(text.begin(), text.end(), name.text), std::end(name.text), '\0');
    return &name;
}

Symbol* internSymbol(std::string_view text) {
    Symbol*& slot = slotOf(text);
    if (slot == nullptr) slot = makeSymbol(text);
    return slot;
}

Symbol* findSymbol(std::string_view text) {
    return slotOf(text);
}

void forgetSymbols() {
    if (gSymbolCount == 0) return;  // as at the first load: the memory need not even be touched
    std::fill(gSymbols, gSymbols + gSymbolCount, Symbol());
    std::fill(std::begin(gSymbolSlots), std::end(gSymbolSlots), nullptr);
    gSymbolCount = 0;
}
