// A script as the engine's pre-scan sees it: its functions and globals, and whether it loads.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "check/findings.h"
#include "check/scanner.h"
#include "check/source.h"

struct CheckedFunction {
    std::string_view name;
    size_t start = 0;     // of the name
    size_t location = 0;  // after the "(" of the definition
    std::vector<std::string_view> parameters;
    bool hasReturn = false;
    bool hasBlock = false;  // its body is a braced block
};

struct CheckedGlobal {
    std::string_view name;
    size_t start = 0;
};

class Program {
public:
    // Keeps a reference to the source.
    explicit Program(const Source& source) : scanner(source.text) {}

    // The first function of that name, or null.
    const CheckedFunction* findFunction(std::string_view name) const;
    // The index of the first global of that name, or -1.
    int32_t findGlobal(std::string_view name) const;

    Scanner scanner;
    std::vector<CheckedFunction> functions;  // in text order
    std::vector<CheckedGlobal> globals;      // in text order
    std::unordered_map<std::string_view, size_t> functionIndex;
    std::unordered_map<std::string_view, size_t> globalIndex;
    bool loads = true;         // the engine's load comes to an end without an error
    bool ignoresText = false;  // outside of all functions there is what the engine passes over
    bool usesEnd = false;      // the word `end` is somewhere
};

// Does what the engine's load does, but goes on where the engine would stop: what it would stop at
// is added to the findings as errors. Oddities of single tokens are found on the way.
void loadProgram(Program& program, Findings& findings);
