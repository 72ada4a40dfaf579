#include "app/signals.h"

#include <csignal>

// SDL's own handlers of SIGINT and SIGTERM; what it had not caught stays uncaught here.
static void (*gSdlInterruptHandler)(int) = nullptr;

static void askToQuitOnce(int signal);

static constexpr int kQuitSignals[] = {SIGINT, SIGTERM};

// Gives both signals back to their default, which ends the process, if the engine has them.
void endProcessOnNextSignal() {
    for (const int signal : kQuitSignals) {
        struct sigaction action;
        if (sigaction(signal, nullptr, &action) != 0) continue;
        if (action.sa_handler == askToQuitOnce) std::signal(signal, SIG_DFL);
    }
}

// SDL catches Ctrl-C and SIGTERM and turns them into a quit event. A script in an endless loop
// never reads that event, so the second signal must end the process, wherever it hangs and
// whichever of the two came first. SDL's handler sets itself up again (SDL_quit.c): undone here.
static void askToQuitOnce(int signal) {
    endProcessOnNextSignal();
    gSdlInterruptHandler(signal);
    std::signal(signal, SIG_DFL);
}

void endProcessOnSecondSignal() {
    for (const int signal : kQuitSignals) {
        struct sigaction action;
        if (sigaction(signal, nullptr, &action) != 0) continue;
        if (action.sa_handler == SIG_DFL || action.sa_handler == SIG_IGN) continue;
        gSdlInterruptHandler = action.sa_handler;
        action.sa_handler = askToQuitOnce;
        sigaction(signal, &action, nullptr);
    }
}
