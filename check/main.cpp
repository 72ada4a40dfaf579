// zelcheck: finds mistakes in level scripts before the engine runs them.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "check/check.h"
#include "check/files.h"
#include "check/ids.h"
#include "check/line_ends.h"
#include "check/report.h"
#include "check/room.h"
#include "check/scanner.h"

namespace fs = std::filesystem;

static const char kDefaultScript[] = "levels/level1/script.txt";

// Exit statuses; the highest of all files counts.
static constexpr int kNothingFound = 0;
static constexpr int kOnlyWarnings = 1;
static constexpr int kErrors = 2;
static constexpr int kCannotRead = 3;

struct Options {
    bool fix = false;
    bool room = false;
    ReportForm form = ReportForm::Plain;
    std::vector<std::string> paths;
};

static void showHelp() {
    std::printf(
        "Usage: zelcheck [--fix] [--json|--room] [FILE|FOLDER]...\n"
        "\n"
        "Finds mistakes in level scripts before the engine meets them. A folder is searched\n"
        "for files called script.txt; without arguments %s is checked.\n"
        "\n"
        "    --fix      rewrites bare line feeds to CR LF, and nothing else, before the check\n"
        "    --json     writes one JSON object a line for each finding\n"
        "    --room     says how much of the engine's room a script uses, and checks nothing\n"
        "    --ids      lists what can be found\n"
        "    --help     shows this text\n"
        "    --version  shows the version\n"
        "\n"
        "An error is what the engine certainly refuses, hangs on or ends on; a warning is what\n"
        "is probably not meant, or goes wrong only on some ways through the script.\n"
        "\n"
        "Exit status: 0 nothing found, 1 warnings only, 2 errors, 3 a file cannot be read.\n",
        kDefaultScript);
}

static void showIds() {
    for (size_t i = 0; i < static_cast<size_t>(CheckId::Count); i++) {
        const CheckIdInfo& info = infoOf(static_cast<CheckId>(i));
        const char* severity = info.confirmed == Severity::Error ? "error" : "warning";
        std::printf("%-26s %-8s %s\n", info.name, severity, info.meaning);
    }
}

static bool wantsColour() {
    const char* terminal = std::getenv("TERM");
    const bool dumb = terminal == nullptr || std::strcmp(terminal, "dumb") == 0;
    const char* noColour = std::getenv("NO_COLOR");
    const bool refused = noColour != nullptr && noColour[0] != '\0';
    return isatty(STDOUT_FILENO) == 1 && !dumb && !refused;
}

static void complain(const std::string& path, const std::string& reason) {
    std::fflush(stdout);
    std::fprintf(stderr, "zelcheck: %s: %s\n", path.c_str(), reason.c_str());
}

// Files -----------------------------------------------------------------------------------------

// The level scripts below a folder, in the order of their names.
static std::vector<std::string> findScripts(const std::string& folder, std::error_code& error) {
    std::vector<std::string> scripts;
    fs::recursive_directory_iterator entry(folder, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        std::error_code unknown;
        const std::string name = lowerCase(entry->path().filename().string());
        if (name == "script.txt" && entry->is_regular_file(unknown)) {
            scripts.push_back(entry->path().string());
        }
    }
    std::sort(scripts.begin(), scripts.end());
    return scripts;
}

// Rewrites the line ends of the file whose content is `bytes`.
static bool fixFile(const std::string& path, std::string& bytes) {
    const size_t count = countBadLineEnds(bytes);
    if (count == 0) return true;
    std::string fixed = withCrLf(bytes);
    std::string reason;
    if (!replaceFile(path, fixed, reason)) {
        complain(path, reason);
        return false;
    }
    bytes = std::move(fixed);
    std::fprintf(stderr, "zelcheck: %s: %zu line ends rewritten\n", path.c_str(), count);
    return true;
}

// The path as it is shown: from where the user is, if the file is below that.
static std::string shownPath(const std::string& path) {
    std::error_code error;
    const fs::path here = fs::current_path(error);
    const fs::path relative = fs::path(path).lexically_relative(here);
    const bool isBelow =
        fs::path(path).is_absolute() && !error && !relative.empty() && *relative.begin() != "..";
    return isBelow ? relative.string() : path;
}

static int showFindings(const CheckResult& result, ReportForm form) {
    int status = kNothingFound;
    for (const Finding& finding : result.findings) {
        const std::string report = reportOf(result.source, finding, form);
        std::fwrite(report.data(), 1, report.size(), stdout);
        const bool error = finding.severity == Severity::Error;
        status = std::max(status, error ? kErrors : kOnlyWarnings);
    }
    return status;
}

static int checkFile(const std::string& path, const Options& options) {
    std::string bytes;
    std::string reason;
    if (!readFile(path, bytes, reason)) {
        const std::string spelling = spellingOnDisk("", path);
        const bool otherCase = !spelling.empty() && spelling != path;
        complain(path, reason + (otherCase ? ", but it exists as " + spelling : ""));
        return kCannotRead;
    }
    if (options.fix && !fixFile(path, bytes)) return kCannotRead;
    if (!options.room) return showFindings(checkScript(shownPath(path), bytes, true), options.form);
    std::printf("%s\n", roomLine(bytes).c_str());
    return kNothingFound;
}

static int checkFolder(const std::string& path, const Options& options) {
    std::error_code error;
    const std::vector<std::string> scripts = findScripts(path, error);
    if (error || scripts.empty()) {
        complain(path, error ? error.message() : "no script.txt in this folder");
        return kCannotRead;
    }
    int status = kNothingFound;
    for (const std::string& script : scripts) {
        if (options.room && scripts.size() > 1) std::printf("%s: ", script.c_str());
        status = std::max(status, checkFile(script, options));
    }
    return status;
}

static int checkPaths(const Options& options) {
    int status = kNothingFound;
    for (const std::string& path : options.paths) {
        std::error_code error;
        const bool folder = fs::is_directory(path, error);
        status = std::max(status, folder ? checkFolder(path, options) : checkFile(path, options));
    }
    return status;
}

// Arguments -------------------------------------------------------------------------------------

static int refuse(const char* argument) {
    std::fprintf(stderr, "zelcheck: unknown option: %s\nTry zelcheck --help\n", argument);
    return kCannotRead;
}

int main(int count, char** arguments) {
    Options options;
    if (wantsColour()) options.form = ReportForm::Colour;
    bool onlyPaths = false;
    for (int i = 1; i < count; i++) {
        const std::string argument = arguments[i];
        if (onlyPaths || argument.size() < 2 || argument[0] != '-') {
            options.paths.push_back(argument);
        } else if (argument == "--") {
            onlyPaths = true;
        } else if (argument == "--help" || argument == "-h") {
            showHelp();
            return kNothingFound;
        } else if (argument == "--version") {
            std::puts("zelcheck (Zel) " ZEL_VERSION);
            return kNothingFound;
        } else if (argument == "--ids") {
            showIds();
            return kNothingFound;
        } else if (argument == "--json") {
            options.form = ReportForm::Json;
        } else if (argument == "--room") {
            options.room = true;
        } else if (argument == "--fix") {
            options.fix = true;
        } else {
            return refuse(arguments[i]);
        }
    }
    if (options.paths.empty()) options.paths.push_back(kDefaultScript);
    return checkPaths(options);
}
