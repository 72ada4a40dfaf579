// One level, played to its end in this process.
#pragma once

#include <cstdint>
#include <string>

// How a level ended. All of these are as they should be.
enum class LevelEnd : int32_t {
    Closed,         // by the player
    NotLoaded,      // an error in its declarations
    Ended,          // by the script's `end`
    UnknownName,    // a timer or key named a function that there is not
    DivisionFault,  // a remainder by zero
    Count
};

struct SeedResult {
    uint64_t seed = 0;
    uint64_t hash = 0;  // of the output and the registries
    uint64_t playedMs = 0;
    uint64_t passes = 0;
    uint64_t errors = 0;  // of the script
    LevelEnd end = LevelEnd::Closed;
};

// Plays the level in the working directory and ends the process with status 0: the result has been
// written to the descriptor `resultFile`. A broken rule ends it with kBrokenRuleStatus; a pass that
// takes too long ends it by SIGPROF or SIGALRM.
[[noreturn]] void playSeed(uint64_t seed, int resultFile, bool showOutput);

constexpr int kBrokenRuleStatus = 3;
