// Loads the longest script in a fresh process, as the engine does once, and prints the seconds of
// processor time that it took.
#include <cstdio>

#include "app/base/paths.h"
#include "bench/level.h"
#include "script/run/program.h"

int main() {
    writeLevelText(longestLevelText());
    const double started = processorSeconds();
    const bool isLoaded = loadScript(gScriptPath.c_str());
    const double seconds = processorSeconds() - started;
    require(isLoaded, "the script does not load");
    std::printf("%.9f\n", seconds);
    return 0;
}
