// zelplay: plays a level on a clock of its own.
#include <fcntl.h>
#include <getopt.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "app/engine.h"
#include "play/commands.h"
#include "play/costs.h"
#include "play/level.h"
#include "play/looks.h"
#include "play/output.h"
#include "play/recorder.h"
#include "play/session.h"

namespace fs = std::filesystem;

static const char kHelp[] =
    "Usage: zelplay [OPTIONS] GAME PLAY\n"
    "       zelplay --record FILE GAME\n"
    "\n"
    "Plays the game of a folder on a clock of its own. PLAY is a file of commands, or - for\n"
    "standard input, where each command is answered by a line. docs/play.md tells the commands.\n"
    "\n"
    "    --pass MS      milliseconds a pass of the main loop, 1 to 250; 16 if not given\n"
    "    --draw WHICH   all passes; some, every tenth; or none: but always the frames that a\n"
    "                   command looks at. If not given, all in a window and with --time, else "
    "some\n"
    "    --window       shows the game in a window, in real time\n"
    "    --speed N      shows it N times as fast\n"
    "    --record FILE  plays in a window and writes what the player does as a play\n"
    "    --time         prints what the passes cost in place of what the level prints\n"
    "    --output DIR   where pictures go; if not given, beside the play\n"
    "    --keep         saves at the end, beside the pictures, what was printed (NAME.out), the\n"
    "                   registries (NAME.records) and the last frame (NAME.png)\n"
    "    --help         shows this text\n"
    "    --version      shows the version\n"
    "\n"
    "Exit status: 0 all is as expected, 1 something is not, 2 a bad command or nothing to play,\n"
    "3 the level hangs.\n";

// What zelplay is asked for.
struct Options {
    std::string game;
    std::string play;    // a file, "-", or the file to record to
    std::string output;  // folder for pictures
    bool records = false;
    bool time = false;
    bool keep = false;
};

// Options -----------------------------------------------------------------------------------------

[[noreturn]] static void refuse(const std::string& reason) {
    std::fprintf(stderr, "zelplay: %s\nTry zelplay --help\n", reason.c_str());
    std::exit(kBadPlay);
}

[[noreturn]] static void showAndExit(const char* text) {
    std::exit(std::fputs(text, stdout) < 0 ? kFailed : kPlayed);
}

static double numberFrom(double low, double high) {
    char* end = nullptr;
    const double value = std::strtod(optarg, &end);
    if (end != optarg && *end == '\0' && value >= low && value <= high) return value;
    char reason[100];
    std::snprintf(reason, sizeof reason, "wanted a number from %g to %g, got ", low, high);
    refuse(reason + std::string(optarg));
}

static int drawnPasses() {
    const std::string which = optarg;
    if (which != "all" && which != "some" && which != "none") refuse("no such drawing: " + which);
    return which == "all" ? 1 : which == "some" ? gDrawEvery : 0;
}

// Reads the options; what they set for the level is set. Ends the process if they make no sense.
static Options readOptions(int count, char** words) {
    static const option kOptions[] = {
        {"pass", required_argument, nullptr, 'p'},
        {"draw", required_argument, nullptr, 'd'},
        {"window", no_argument, nullptr, 'w'},
        {"speed", required_argument, nullptr, 's'},
        {"record", required_argument, nullptr, 'r'},
        {"time", no_argument, nullptr, 't'},
        {"output", required_argument, nullptr, 'o'},
        {"keep", no_argument, nullptr, 'k'},
        {"help", no_argument, nullptr, 'h'},
        {"version", no_argument, nullptr, 'v'},
        {nullptr, 0, nullptr, 0},
    };
    Options options;
    int drawEvery = -1;  // not said
    for (int c; (c = getopt_long(count, words, "", kOptions, nullptr)) != -1;) {
        if (c == '?') refuse("these options make no sense");
        if (c == 'p') gPassMs = static_cast<uint32_t>(numberFrom(1, 250));
        if (c == 'd') drawEvery = drawnPasses();
        if (c == 'w' || c == 's') gSpeed = c == 's' ? numberFrom(0.01, 1000) : 1;
        if (c == 'r') options.play = optarg;
        if (c == 'o') options.output = optarg;
        options.records |= c == 'r';
        options.time |= c == 't';
        options.keep |= c == 'k';
        if (c == 'h') showAndExit(kHelp);
        if (c == 'v') showAndExit("zelplay (Zel) " ZEL_VERSION "\n");
    }
    if (count - optind != (options.records ? 1 : 2)) refuse("a game and a play are wanted");
    if (options.records && gPassMs != 16) refuse("the passes of a recording have 16 ms");
    if (options.records) gSpeed = 1;
    options.game = words[optind];
    if (!options.records) options.play = words[optind + 1];
    gDrawEvery = drawEvery >= 0 ? drawEvery : gSpeed > 0 || options.time ? 1 : gDrawEvery;
    return options;
}

// Preparation -------------------------------------------------------------------------------------

// Opens the play or the recording; a play that comes as it goes is the standard input of now.
static std::FILE* openPlay(const Options& options) {
    const std::string& path = options.play;
    if (fs::is_directory(path)) refuse(path + ": " + std::strerror(EISDIR));
    std::FILE* file = path == "-" ? fdopen(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3), "r")
                                  : std::fopen(path.c_str(), options.records ? "w" : "r");
    if (file == nullptr) refuse(path + ": " + std::strerror(errno));
    return file;
}

static void settleFolders(const Options& options) {
    std::error_code error;
    gPlayFolder = fs::absolute(options.play).parent_path().string() + '/';
    gOutputFolder =
        options.output.empty() ? gPlayFolder : fs::absolute(options.output).string() + '/';
    fs::create_directories(gOutputFolder, error);
    if (error) refuse(gOutputFolder + ": " + error.message());
    fs::current_path(options.game, error);
    if (error) refuse(options.game + ": " + error.message());
}

// The play ----------------------------------------------------------------------------------------

static int play(const Options& options, std::FILE* file) {
    if (options.time) measureCosts();
    if (options.records) {
        record(file);
        return kPlayed;
    }
    return options.play == "-" ? playInput(file) : playFile(file, options.play);
}

static void saveText(const std::string& path, const std::string& text) {
    if (!(std::ofstream(path) << text)) refuse(path + ": " + std::strerror(errno));
}

// Saves what the play has left.
static void keep(const Options& options) {
    const std::string stem = gOutputFolder + fs::path(options.play).stem().string();
    const Picture frame = readFrame();
    if (frame != nullptr) savePicture(*frame, stem + ".png");
    std::string records;
    for (auto* list : kRecordLists) {
        for (const std::string& record : list())
            records += record + '\n';
    }
    saveText(stem + ".out", gPrinted);
    saveText(stem + ".records", records);
}

int main(int count, char** words) {
    const Options options = readOptions(count, words);
    std::FILE* file = openPlay(options);
    settleFolders(options);
    if (gSpeed == 0) setenv("SDL_VIDEODRIVER", "offscreen", 1);
    if (gSpeed == 0) setenv("SDL_AUDIODRIVER", "dummy", 1);
    if (!catchOutput(options.play != "-" && !options.time)) refuse(std::strerror(errno));
    int status = kFailed;
    if (startLevel()) {
        status = play(options, file);
        if (options.time) writeOut(costTable());
        if (options.keep) keep(options);
    } else {
        std::fprintf(stderr, "zelplay: the level does not start: %s\n", escaped(gPrinted).c_str());
    }
    closeEngine();
    std::fclose(file);
    return status;
}
