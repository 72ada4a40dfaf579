#include "bench/level.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>

#include "app/base/paths.h"
#include "app/engine.h"
#include "script/run/program.h"
#include "script/source/text.h"

void require(bool succeeded, const char* what) {
    if (succeeded) return;
    std::fprintf(stderr, "\nThe measurement cannot go on: %s\n", what);
    std::exit(1);
}

double processorSeconds() {
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void writeLevelText(const std::string& text) {
    std::ofstream file(gScriptPath, std::ios::binary);
    for (const char c : text) {
        if (c == '\n') file << '\r';
        file << c;
    }
}

void loadLevelText(const std::string& text) {
    writeLevelText(text);
    require(loadScript(gScriptPath.c_str()), "the script does not load");
}

std::string longestLevelText() {
    constexpr size_t kBytes = kProgramCapacity - 1;
    std::string text = "int main() { }\n";
    size_t stored = text.size() + 1;
    for (int i = 0; i < 90; i++) {
        const std::string number = std::to_string(i);
        const std::string function = "int step" + number + "(int a, int b) { int c; c = a * " +
                                     number +
                                     " + b; if (c > 100) { c = c % 100; } moveimage(0, c, a); }\n";
        if (stored + function.size() + 1 > kBytes) break;
        text += function;
        stored += function.size() + 1;
    }
    return text + std::string(kBytes - stored, ' ');
}

void requireEngine() {
    static bool started = false;
    if (started) return;
    require(initEngine(), "the engine does not start");
    started = true;
}
