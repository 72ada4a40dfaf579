#include "script/errors/halt.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "script/source/text.h"
#include "script/source/tokens.h"

void endProcess(int status) {
    std::fflush(stdout);
    std::_Exit(status);
}

void abortProcess() {
    std::fflush(stdout);
    std::abort();
}

void raiseDivisionFault() {
    std::fflush(stdout);
    std::raise(SIGFPE);
    std::abort();  // reached only if the signal is blocked or ignored
}

void waitEndlessly(const char* reason, const Place* position) {
    const TextPlace place = textPlaceOf(textAt(position));
    std::fflush(stdout);
    std::fprintf(stderr,
                 "%s:%zu:%zu: %s; the engine now waits endlessly, stop it with Ctrl-C twice\n",
                 gProgramPath, place.line, place.column, reason);
    for (;;)
        pause();
}
