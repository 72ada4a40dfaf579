// The ways in which a script ends or stops the process. All of them flush standard output first,
// so nothing the script printed is lost.
//
// They are in one file so that a harness that runs millions of hostile scripts in one process
// can put its own in their place.
#pragma once

// Ends the process with `status` at once. No static destructor runs: the other thread may be using
// what they would destroy.
[[noreturn]] void endProcess(int status);

// Ends the process with SIGABRT.
[[noreturn]] void abortProcess();

// Ends the process with SIGFPE, as a division by zero in the processor would.
[[noreturn]] void raiseDivisionFault();

struct Place;

// Tells standard error where and why the interpreter will never go on - `reason` is a sentence
// about the character at `position` - and waits endlessly without using the processor. Two
// interrupts (Ctrl-C) end the process: the first one only asks the event loop to quit.
[[noreturn]] void waitEndlessly(const char* reason, const Place* position);
