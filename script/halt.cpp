#include "script/halt.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "script/text.h"
#include "script/tokens.h"

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

void waitForEver(const char* reason, const Place* position) {
    const char* place = std::min(textAt(position), gProgramEnd);
    const long line = 1 + std::count(static_cast<const char*>(gProgramBuffer), place, '\n');
    const char* lineStart = place;
    while (lineStart > gProgramBuffer && lineStart[-1] != '\n')
        lineStart--;

    std::fflush(stdout);
    std::fprintf(stderr,
                 "%s:%ld:%ld: %s; the engine now waits for ever, stop it with Ctrl-C twice\n",
                 gProgramPath, line, static_cast<long>(place - lineStart) + 1, reason);
    for (;;)
        pause();
}
