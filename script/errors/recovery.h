// Recovery points: how the engine enters the interpreter and gets back after a script error.
//
// Every way into the interpreter - the load, the run of main, one pass over the held keys, one
// timer call - goes through runGuarded. Errors leave by longjmp, so neither the operation nor
// anything it calls may keep an object with a destructor on its stack while script code runs.
#pragma once

#include <cstdint>

// How deep script code is. An error puts all of them back, with gNestingDepth
// (script/errors/nesting.h), to what they were when the engine entered the interpreter, so that
// repeated errors never exhaust the stacks. The stacks themselves are in script/run/variables,
// which moves both tops with script/run/functions; script/run/program clears them before a load,
// and app/window_builtins puts them back after a close.
extern int32_t gLocalTop;   // locals and arguments of all active calls
extern int32_t gCallDepth;  // active calls

// Runs operation(argument). Returns true when it came to its end; after a script error prints
// "Error buffer long jump" and returns false. Each thread has its own recovery points; they nest.
bool runGuarded(void (*operation)(const void*), const void* argument);

// Jumps to the calling thread's innermost recovery point. Without one the process is aborted:
// the interpreter was entered past runGuarded.
[[noreturn]] void leaveToRecoveryPoint();

// Called with true when a thread enters the interpreter, with false when it is out again. Does
// nothing, unless another program measures the script: play/costs puts its function in before the
// engine starts.
extern void (*gOnScript)(bool enters);
