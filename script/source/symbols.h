// Symbols: every distinct word of the script once, with what it names.
//
// Two tokens with the same text have the same Symbol, so symbols are compared by address and what
// one means is found without a search. Symbols live until the next program text is loaded.
#pragma once

#include <cstdint>
#include <string_view>

#include "script/source/lexer.h"

struct BuiltinFunction;
struct Place;
struct ScriptVariable;

constexpr int32_t kMaxBuiltins = 64;  // symbols that the engine itself may declare

struct Symbol {
    char text[kTokenCapacity] = "";            // of its tokens, zero-terminated
    const BuiltinFunction* builtin = nullptr;  // the engine's function of this name
    Place* function = nullptr;                 // location of the first user function of this name
    ScriptVariable* global = nullptr;          // the first global variable of this name
    ScriptVariable* variable = nullptr;        // what it stood for when it was last found,
    uint64_t call = 0;                         // and in which call (script/run/variables.h)
};

// The Symbol of `text`, the text of a token: made on first use. Any thread.
Symbol* internSymbol(std::string_view text);

// The Symbol of `text` if the script has used that word, else null. Any thread.
Symbol* findSymbol(std::string_view text);

// Forgets all symbols, for a new program text. Only while no script code runs.
void forgetSymbols();
