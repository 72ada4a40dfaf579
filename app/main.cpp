#include <cstdio>

#include "app/engine.h"
#include "app/globals.h"
#include "app/main_loop.h"
#include "app/ticks.h"
#include "script/program.h"

// Starts the engine, plays the level, and shuts down; the way past whatever failed leads there too.
static void play() {
    if (!initEngine()) {
        std::fputs("\nFailed to initialize!", stdout);
        return;
    }
    if (!loadScript(gScriptPath.c_str())) {
        std::fputs("\nFailed to load script.txt", stdout);
        return;
    }
    runMain();
    refreshKeyboardState();
    startTicks();
    runMainLoop();
}

int main(int, char**) {
    play();
    closeEngine();
    return 0;
}
