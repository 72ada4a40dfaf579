// Plays random levels with random players and checks the engine's registries after every pass.
//
// Each seed has a process of its own, so that a crash and a hang have a name too.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "simulation/folder.h"
#include "simulation/level_writer.h"
#include "simulation/seed_run.h"

struct Options {
    uint64_t seed = 1;       // the first one
    uint64_t count = 1;      // of seeds; 0 for no limit
    double seconds = 0;      // of real time; 0 for no limit
    double hours = 0;        // of the engine's time; 0 for no limit
    bool twice = false;      // every seed is played twice, with the same result
    bool writeOnly = false;  // prints the script and plays nothing
    bool showOutput = false;
};

static Options gOptions;
static const char* gProgram = "simulate";
static std::filesystem::path gStartFolder;
static const auto gStarted = std::chrono::steady_clock::now();

// What all seeds together did.
static uint64_t gSeeds = 0;
static uint64_t gPlayedMs = 0;
static uint64_t gPasses = 0;
static uint64_t gErrors = 0;
static uint64_t gEnds[static_cast<size_t>(LevelEnd::Count)];

static const char kHelp[] =
    "Usage: simulate [--seed N] [--count N | --for SECONDS | --hours H] [--twice] [--script] "
    "[--output]\n\n"
    "Plays random levels from seed N on: one, or COUNT, or as many as there is time for.\n"
    "  --hours   of the engine's time\n"
    "  --twice   plays each level two times and compares\n"
    "  --script  prints the level of the seed and plays nothing\n"
    "  --output  shows what the levels print\n";

// Failures ---------------------------------------------------------------------------------------

static unsigned long long plain(uint64_t number) {
    return number;
}

// Ends the run: names the seed, keeps the script, and says how to see the failure again.
[[noreturn]] static void fail(uint64_t seed, const std::string& what) {
    const std::string kept = "simulation_" + std::to_string(seed) + ".txt";
    std::ofstream(gStartFolder / kept, std::ios::binary) << writeLevel(seed);
    std::fprintf(stderr, "seed %llu: %s\nthe script is in %s; again with: %s --seed %llu%s\n",
                 plain(seed), what.c_str(), (gStartFolder / kept).c_str(), gProgram, plain(seed),
                 gOptions.twice ? " --twice" : "");
    removeLevelFolder();
    std::exit(1);
}

static std::string howItEnded(int status) {
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        if (signal == SIGPROF) return "it hangs: no pass for ten seconds of processor time";
        if (signal == SIGALRM) return "it hangs: the level waits for something that never comes";
        return std::string("it crashed: ") + strsignal(signal);
    }
    if (WEXITSTATUS(status) == kBrokenRuleStatus) return "a rule is broken";
    return "the process ended with status " + std::to_string(WEXITSTATUS(status));
}

// Playing ----------------------------------------------------------------------------------------

static SeedResult play(uint64_t seed) {
    int pipeEnds[2];
    if (pipe(pipeEnds) != 0) fail(seed, "no pipe");
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) playSeed(seed, pipeEnds[1], gOptions.showOutput);
    close(pipeEnds[1]);
    SeedResult result;
    const bool isRead = read(pipeEnds[0], &result, sizeof result) == sizeof result;
    close(pipeEnds[0]);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) fail(seed, "no process");
    if (status != 0 || !isRead) fail(seed, howItEnded(status));
    return result;
}

static void addResult(const SeedResult& result) {
    gSeeds++;
    gPlayedMs += result.playedMs;
    gPasses += result.passes;
    gErrors += result.errors;
    gEnds[static_cast<size_t>(result.end)]++;
}

static void playOne(uint64_t seed) {
    writeLevelFile(writeLevel(seed));
    const SeedResult result = play(seed);
    addResult(result);
    if (gOptions.count == 1) std::printf("seed %llu: %016llx\n", plain(seed), plain(result.hash));
    if (gOptions.twice && play(seed).hash != result.hash) fail(seed, "two runs of it differ");
}

static double secondsSoFar() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - gStarted).count();
}

static double hoursSoFar() {
    return static_cast<double>(gPlayedMs) / 3600000.0;
}

static bool isEnough() {
    return (gOptions.count > 0 && gSeeds >= gOptions.count) ||
           (gOptions.seconds > 0 && secondsSoFar() >= gOptions.seconds) ||
           (gOptions.hours > 0 && hoursSoFar() >= gOptions.hours);
}

static void printSummary() {
    std::printf(
        "%llu seeds from %llu on, %.2f hours of engine time in %.0f s (%.2f a minute), "
        "%llu passes, %llu script errors\n",
        plain(gSeeds), plain(gOptions.seed), hoursSoFar(), secondsSoFar(),
        hoursSoFar() * 60 / secondsSoFar(), plain(gPasses), plain(gErrors));
    std::printf(
        "closed by the player %llu, not loaded %llu, end %llu, unknown function %llu, "
        "remainder by zero %llu\n",
        plain(gEnds[0]), plain(gEnds[1]), plain(gEnds[2]), plain(gEnds[3]), plain(gEnds[4]));
}

// Options ----------------------------------------------------------------------------------------

// Takes the value of an option; the options of length open the number of seeds.
static bool takeNumber(const char* option, const char* value) {
    if (value == nullptr) return false;
    if (std::strcmp(option, "--seed") == 0) {
        gOptions.seed = std::strtoull(value, nullptr, 10);
    } else if (std::strcmp(option, "--count") == 0) {
        gOptions.count = std::strtoull(value, nullptr, 10);
    } else if (std::strcmp(option, "--for") == 0) {
        gOptions.seconds = std::strtod(value, nullptr);
        gOptions.count = 0;
    } else if (std::strcmp(option, "--hours") == 0) {
        gOptions.hours = std::strtod(value, nullptr);
        gOptions.count = 0;
    } else {
        return false;
    }
    return true;
}

static bool readOptions(char** arguments) {
    for (; *arguments != nullptr; arguments++) {
        if (std::strcmp(*arguments, "--twice") == 0) {
            gOptions.twice = true;
        } else if (std::strcmp(*arguments, "--script") == 0) {
            gOptions.writeOnly = true;
        } else if (std::strcmp(*arguments, "--output") == 0) {
            gOptions.showOutput = true;
        } else if (takeNumber(arguments[0], arguments[1])) {
            arguments++;
        } else {
            return false;
        }
    }
    return true;
}

// No window, no sound, and no graphics driver, which would start threads.
static void chooseDrivers() {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    setenv("SDL_FRAMEBUFFER_ACCELERATION", "0", 1);
}

int main(int, char** arguments) {
    gProgram = arguments[0];
    chooseDrivers();
    if (!readOptions(arguments + 1)) {
        std::fputs(kHelp, stderr);
        return 2;
    }
    if (gOptions.writeOnly) {
        std::fputs(writeLevel(gOptions.seed).c_str(), stdout);
        return 0;
    }
    gStartFolder = std::filesystem::current_path();
    makeLevelFolder();
    for (uint64_t seed = gOptions.seed; !isEnough(); seed++)
        playOne(seed);
    removeLevelFolder();
    printSummary();
    return 0;
}
