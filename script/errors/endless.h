// Calls into the script that never end: the maker is told where the script is.
//
// When one call from the engine into the script has used two seconds of processor time, one line on
// standard error, once a run, says so:
//
//     levels/level1/script.txt:12:5: tick() has used 2 s of processor time: an endless loop? ...
//
// Nothing else changes. Waiting, in getche or for the other thread, uses no processor time.
//
// Each thread that runs script code gets a signal for every quarter second of processor time that
// it uses. The handler counts the signals that one call has lasted. It cannot know where the script
// is, as the functions that run it keep that in their arguments. So it forgets the kept tokens
// (script/source/tokens.h), and the next one that the thread reads is the answer. Until then
// reading costs what it always does.
#pragma once

#include <time.h>

struct Place;
struct Symbol;

// Calls ---------------------------------------------------------------------------------------

// The engine calls `function`, which the symbol names, on this thread; the call has
// ended, or an error ended it. The engine makes no call within a call; the inner one would count.
void beginCall(const Symbol* function);
void endCall();

// Where the script is -------------------------------------------------------------------------

// The next token that this thread reads is handed to `answer`, once. For signal handlers.
void askForPlace(void (*answer)(const Place* token));

// Answers a question, if there is one, with the token that has been read.
void answerWithPlace(const Place* token);

// Timers --------------------------------------------------------------------------------------

// A timer on the processor time of the thread that starts it. It ends with its owner.
struct ThreadTimer {
    timer_t id = nullptr;
    bool runs = false;
    ThreadTimer() = default;
    ThreadTimer(const ThreadTimer&) = delete;
    ThreadTimer& operator=(const ThreadTimer&) = delete;
    ~ThreadTimer();
};

// Makes the timer send `signal` to the calling thread, whose handler then is `handler`. Where the
// system has no more timers, it never does.
void startThreadTimer(ThreadTimer& timer, int signal, void (*handler)(int));

// Sends the signal after `firstMs` and then, unless `everyMs` is 0, again and again. For signal
// handlers too.
void setThreadTimer(const ThreadTimer& timer, int firstMs, int everyMs);
