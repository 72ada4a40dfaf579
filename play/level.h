// The level under the play: its start, its passes, its end, on a clock of its own.
//
// The clock moves only with the passes: each moves it on and then is a pass of the main loop.
// Everything is on one thread. A script that would end the process leaves by longjmp to the pass
// (or the start) it ran in, so no stack frame between may hold an object with a destructor.
#pragma once

#include <SDL.h>

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

// Someone wants the play to stop: Ctrl-C, or the close button of a window that shows it.
extern bool gStopped;

// Set by the options (play/main), before the start.
extern uint32_t gPassMs;  // length of a pass, 1 to 250, the most that the engine makes up in one
extern int gDrawEvery;    // which passes of runLevel are drawn: every so many, or none if 0
extern double gSpeed;     // of a level shown in a window, against real time; 0 if none shows it

// What becomes of the events of the real window, between the passes of runLevel. Unless
// play/recorder puts its function in, the close button and Ctrl-C stop the play and all others are
// dropped.
extern void (*gOnRealEvent)(const SDL_Event& event);

// Starts the engine and the level of the working directory as `zel` does, with its messages on
// standard output, at time 0. Returns false if the engine or the script does not load. The level
// may have ended already. Once.
bool startLevel();

// Milliseconds since the start, by the level's clock.
uint64_t levelTimeMs();

// Moves the clock on by `ms` (1 to 250) and runs a pass: the events of the hands, the ticks that
// are due, and, if `draws`, the frame. Does nothing once the level has ended.
void runLevelPass(uint32_t ms, bool draws);

// Runs passes of gPassMs until the clock has moved on by `ms`, or the level has ended, or someone
// wants to stop; the last pass may be shorter. In a window it takes its time.
void runLevel(uint64_t ms);

// The word for an end in a play ("closed", "0"), and a sentence about how the level has ended.
const char* endWord(LevelEnd end);
std::string endSentence();
