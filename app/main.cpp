#include <malloc.h>

#include <cstdio>

#include "app/base/paths.h"
#include "app/engine.h"
#include "app/main_loop.h"
#include "app/ticks.h"
#include "script/run/program.h"

// Starts the engine and plays the level; ends at the first step that fails. The caller shuts down.
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

// The OpenGL driver gives its memory for a frame back and asks for it again with the next: kept in
// the process, it need not be mapped anew sixty times a second.
static void keepFreedMemory() {
    constexpr int kTrimThreshold = 64 * 1024 * 1024;
    mallopt(M_TRIM_THRESHOLD, kTrimThreshold);
}

// What a level printed before it hangs can be read wherever it goes, not on a terminal only.
static void flushEveryLine() {
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

int main(int, char**) {
    flushEveryLine();
    keepFreedMemory();
    play();
    closeEngine();
    return 0;
}
