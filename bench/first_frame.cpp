// The engine up to its first presented frame: what app/main.cpp does, but for its setting of the
// heap, and one pass of the main loop. A level cannot end the engine exactly there by itself.
#include <unistd.h>

#include <cstdio>

#include "app/base/paths.h"
#include "app/engine.h"
#include "app/frame.h"
#include "app/main_loop.h"
#include "app/ticks.h"
#include "script/run/program.h"

int main(int, char**) {
    if (!initEngine() || !loadScript(gScriptPath.c_str())) return 1;
    runMain();
    refreshKeyboardState();
    startTicks();
    drainEvents();
    drawFrame();
    std::fflush(stdout);
    _exit(0);
}
