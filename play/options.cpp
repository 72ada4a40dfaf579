#include "play/options.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "play/session.h"

static const char kHelp[] =
    "Usage: zelplay [OPTIONS] GAME PLAY\n"
    "       zelplay --record FILE GAME\n"
    "\n"
    "Plays the game of a folder on a clock of its own. PLAY is a file of commands, or - for\n"
    "standard input, where each command is answered by a line. docs/play.md tells the commands.\n"
    "\n"
    "    --pass MS      milliseconds a pass of the main loop, 1 to 250; 16 if not given\n"
    "    --no-drawing   draws only the frames that a command looks at\n"
    "    --window       shows the game in a window, in real time\n"
    "    --speed N      with --window: N times as fast\n"
    "    --record FILE  plays in a window and writes what the player does as a play\n"
    "    --time         prints what the passes cost in place of what the level prints\n"
    "    --output DIR   where pictures go; if not given, beside the play\n"
    "    --keep         saves at the end, beside the pictures, what was printed (NAME.out), the\n"
    "                   registries (NAME.records) and the last frame (NAME.png)\n"
    "    --help         shows this text\n"
    "\n"
    "Exit status: 0 all is as expected, 1 something is not, 2 a bad command or nothing to play,\n"
    "3 the level hangs.\n";

void refuse(const std::string& reason) {
    std::fprintf(stderr, "zelplay: %s\nTry zelplay --help\n", reason.c_str());
    std::exit(kBadPlay);
}

// The number behind an option, from low to high.
static double numberOf(const char* option, const char* text, double low, double high) {
    char* end = nullptr;
    const double value = std::strtod(text, &end);
    if (end == text || *end != '\0' || !(value >= low && value <= high)) {
        refuse(std::string(option) + " wants a number from " + std::to_string(low) + " to " +
               std::to_string(high));
    }
    return value;
}

// Takes an option that has a value behind it. Returns false if it is no such option.
static bool takeValue(Options& options, const char* option, const char* value) {
    const auto is = [option](const char* name) { return std::strcmp(option, name) == 0; };
    if (!is("--pass") && !is("--speed") && !is("--record") && !is("--output")) return false;
    if (value == nullptr) refuse(std::string(option) + " wants a value behind it");
    if (is("--pass")) options.passMs = static_cast<int>(numberOf(option, value, 1, 250));
    if (is("--speed")) options.speed = numberOf(option, value, 0.01, 1000);
    if (is("--record")) options.record = value;
    if (is("--output")) options.output = value;
    return true;
}

static bool takeFlag(Options& options, const std::string& option) {
    if (option == "--window")
        options.window = true;
    else if (option == "--time")
        options.time = true;
    else if (option == "--no-drawing")
        options.drawing = false;
    else if (option == "--keep")
        options.keep = true;
    else
        return false;
    return true;
}

static void takeName(Options& options, const char* name) {
    if (options.game.empty())
        options.game = name;
    else if (options.play.empty() && options.record.empty())
        options.play = name;
    else
        refuse(std::string("one name too many: ") + name);
}

static void checkTogether(const Options& options) {
    if (options.game.empty()) refuse("no game is named");
    if (options.record.empty() && options.play.empty()) refuse("no play is named");
    if (!options.record.empty() && !options.play.empty()) refuse("a recording needs no play");
    if (!options.record.empty() &&
        (options.passMs != 16 || !options.drawing || options.time || options.speed != 1)) {
        refuse("--record goes without --pass, --no-drawing, --time and --speed");
    }
    if (options.speed != 1 && !options.window) refuse("--speed goes with --window");
}

Options readOptions(int count, char** words) {
    Options options;
    for (int i = 1; i < count; i++) {
        if (std::strcmp(words[i], "--help") == 0) {
            std::fputs(kHelp, stdout);
            std::exit(kPlayed);
        }
        const char* value = i + 1 < count ? words[i + 1] : nullptr;
        if (takeValue(options, words[i], value)) {
            i++;
        } else if (std::strncmp(words[i], "--", 2) != 0) {
            takeName(options, words[i]);
        } else if (!takeFlag(options, words[i])) {
            refuse(std::string("there is no option ") + words[i]);
        }
    }
    checkTogether(options);
    return options;
}
