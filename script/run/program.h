// The level script as a program: loading, the pre-scan, and the engine's entries into it.
//
// The script's text is read once, at start-up. One pass over it - the pre-scan - records the global
// variables and the functions; everything else is read when it runs. Afterwards the engine enters
// the script by running its main once and by calling functions by name from timers and keys.
//
// The interpreter has one state for the whole process. By default the timer thread may enter it
// while the main thread is in it: values may mix then, though nothing leaves its array. With
// ZEL_TICKS=main every entry is on one thread.
#pragma once

// Reads and pre-scans the script at `path`; the path must live as long as the process. Returns
// false, with the reason on standard output, if there is no memory ("Cant use memory!"), if the
// file cannot be opened ("Cant open file: ") or if the pre-scan meets an error. For a text with
// bare line feeds, or with more "{" than "}", it never returns (script/errors/halt.h). Main thread.
bool loadScript(const char* path);

// Runs the script's main() to its end, on the calling thread. Script errors are reported and end
// the run. Without a main prints "main() not found!" and ends the process with status 1.
void runMain();

// Runs the script function `name` with an empty argument list and drops its result. Names are
// compared exactly, and the script's are lower case: any other name prints itself and
// "() not found!" and ends the process with status 1.
// To be called inside runGuarded: script errors jump. `name` is not used any more once script code
// runs, so its owner may go away meanwhile.
void callScriptFunction(const char* name);

// callScriptFunction with a recovery point of its own.
void callScriptFunctionGuarded(const char* name);
