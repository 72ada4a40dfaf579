// The level under the play: its start, its passes, its end, on a clock of its own.
//
// The clock stands still but for the passes: each moves it on, then does what a pass of the main
// loop does. Everything is on one thread. A script that would end the process leaves by longjmp to
// the pass (or the start) it ran in, so no frame between may hold an object with a destructor.
#pragma once

#include <cstdint>
#include <string>

enum class LevelEnd {
    None,     // the level goes on
    Closed,   // by the window's close button
    Exited,   // exitgame: the engine is shut down
    Ended,    // `end`, status 0
    Failed,   // status 1: no main, or an unknown function was to be called
    Aborted,  // SIGABRT: a name that is too long
    Divided,  // SIGFPE: % by zero
    Stuck,    // a text whose reading never ends
    Count
};

// How the level has ended.
extern LevelEnd gLevelEnd;

// Of a level that is stuck: where and why, in the interpreter's words.
extern std::string gStuckReason;

// The length of a pass of runLevel, and whether it draws: without that only the frames that are
// looked at are composed. Set by the options.
extern uint32_t gPassMs;  // 1 to 250, the most that the engine makes up in one pass
extern bool gDrawPasses;

// Starts the engine and the level of the working directory as `zel` does, with its messages on
// standard output, at time 0. Returns false if the engine or the script does not load. The level
// may have ended already. Once.
bool startLevel();

// Milliseconds since the start, by the level's clock.
uint64_t levelTimeMs();

// Moves the clock on by `ms` (1 to 250) and runs a pass: the events of the hands, the ticks that
// are due, and, if `draw`, the frame. Does nothing once the level has ended.
void runLevelPass(uint32_t ms, bool draw);

// Runs passes of gPassMs until the clock has moved on by `ms` or the level has ended; the last pass
// may be shorter.
void runLevel(uint64_t ms);

// The word for an end in a play ("closed", "0"), and a sentence about it.
const char* endWord(LevelEnd end);
std::string endSentence();

// Ends the level from inside the script.
[[noreturn]] void leaveLevel(LevelEnd end);
