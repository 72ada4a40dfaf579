// zelplay: plays a level on a clock of its own.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "app/engine.h"
#include "play/commands.h"
#include "play/costs.h"
#include "play/level.h"
#include "play/looks.h"
#include "play/options.h"
#include "play/output.h"
#include "play/pace.h"
#include "play/picture.h"
#include "play/recorder.h"
#include "play/records.h"
#include "play/session.h"

namespace fs = std::filesystem;

static std::string asFolder(const fs::path& path) {
    return path.empty() ? "" : fs::absolute(path).string() + '/';
}

// Opens the play or the recording; a play that comes as it goes is the standard input of now.
static std::FILE* openPlay(const Options& options) {
    const bool records = !options.record.empty();
    const std::string& path = records ? options.record : options.play;
    std::FILE* file = path == "-" ? fdopen(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3), "r")
                                  : std::fopen(path.c_str(), records ? "w" : "r");
    if (file == nullptr) refuse(path + ": " + std::strerror(errno));
    if (fs::is_directory(path)) refuse(path + ": " + std::strerror(EISDIR));
    return file;
}

static void settleFolders(const Options& options) {
    const std::string& play = options.record.empty() ? options.play : options.record;
    gPlayFolder = asFolder(fs::absolute(play).parent_path());
    gOutputFolder = options.output.empty() ? gPlayFolder : asFolder(options.output);
    std::error_code error;
    fs::create_directories(gOutputFolder, error);
    if (error) refuse(gOutputFolder + ": " + error.message());
    fs::current_path(options.game, error);
    if (error) refuse(options.game + ": " + error.message());
}

static void settleLevel(const Options& options) {
    const bool shows = options.window || !options.record.empty();
    gPassMs = static_cast<uint32_t>(options.passMs);
    gDrawPasses = options.drawing;
    if (options.time) measureCosts();
    if (shows) {
        showWindow(options.speed);
    } else {
        setenv("SDL_VIDEODRIVER", "offscreen", 1);
        setenv("SDL_AUDIODRIVER", "dummy", 1);
    }
    const bool answers = options.play == "-";
    if (!catchOutput(!answers && !options.time)) refuse(std::strerror(errno));
}

static int play(const Options& options, std::FILE* file) {
    startPace();
    if (options.play == "-") return playInput(file);
    if (options.record.empty()) return playFile(file, options.play);
    record(file);
    return kPlayed;
}

// Saves what the play has left.
static void keep(const Options& options) {
    const std::string& path = options.record.empty() ? options.play : options.record;
    const std::string stem = gOutputFolder + fs::path(path).stem().string();
    Frame frame;
    if (readFrame(frame)) saveFrame(frame, stem + ".png");
    std::FILE* printed = std::fopen((stem + ".out").c_str(), "w");
    std::FILE* records = std::fopen((stem + ".records").c_str(), "w");
    if (printed == nullptr || records == nullptr) refuse(stem + ".out: " + std::strerror(errno));
    std::fwrite(gPrinted.data(), 1, gPrinted.size(), printed);
    for (auto* list : {timerRecords, imageRecords, textRecords, unitRecords}) {
        for (const std::string& record : list())
            std::fprintf(records, "%s\n", record.c_str());
    }
    std::fclose(printed);
    std::fclose(records);
}

int main(int count, char** words) {
    const Options options = readOptions(count, words);
    std::FILE* file = openPlay(options);
    settleFolders(options);
    settleLevel(options);
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
