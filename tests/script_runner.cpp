// Loads the level script of the working directory and runs its main as the engine does, but without
// a window: for tests that run thousands of scripts.
#include <cstdio>

#include "app/base/paths.h"
#include "script/run/program.h"
#include "units/units.h"

int main() {
    loadUnitTypes();
    if (!loadScript(gScriptPath.c_str())) {
        std::fputs("\nFailed to load script.txt", stdout);
        return 0;
    }
    runMain();
    return 0;
}
