#include "check/files.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "app/base/paths.h"
#include "check/scanner.h"

namespace fs = std::filesystem;

// The entry of the folder that differs from the name in letter case only, or "".
static std::string otherCase(const fs::path& folder, const std::string& name) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const std::string known = entry.path().filename().string();
        if (lowerCase(known) == lowerCase(name)) return known;
    }
    return "";
}

std::string spellingOnDisk(const std::string& below, const std::string& name) {
    const fs::path folder = below.empty() ? "." : below;
    std::error_code error;
    fs::path found;
    for (const fs::path& part : fs::path(name)) {
        const bool exists = fs::exists(folder / found / part, error);
        const std::string spelling =
            exists ? part.string() : otherCase(folder / found, part.string());
        if (spelling.empty()) return "";
        found /= spelling;
    }
    return found.string();
}

static void checkFile(const fs::path& folder, const FileUse& use, Findings& findings) {
    const std::string what = use.kind == 'a' ? "font" : "picture";
    std::error_code error;
    if (!use.name.empty() && fs::is_regular_file(folder / use.name, error)) return;
    const std::string spelling = spellingOnDisk(folder, use.name);
    const bool isFile = !spelling.empty() && fs::is_regular_file(folder / spelling, error);
    if (isFile) {
        findings.add(CheckId::FileCase, use.position,
                     "this " + what + " exists as \"" + spelling + "\": letter case counts");
    } else {
        findings.add(CheckId::MissingFile, use.position,
                     "there is no " + what + " " + (folder / use.name).lexically_normal().string());
    }
}

// The folder of the game that the script at this path belongs to, if it is called as the engine
// wants it, in whatever letter case; else nothing.
static std::optional<fs::path> gameFolder(const fs::path& script) {
    const fs::path whole = fs::absolute(script).lexically_normal();
    const fs::path level = whole.parent_path();
    const fs::path levels = level.parent_path();
    const std::string last = (levels.filename() / level.filename() / whole.filename()).string();
    if (lowerCase(last) != std::string(kLevelFolder) + "/script.txt") return {};
    return levels.parent_path();
}

// "name" if the file is not in the game's folder, also if it is there in another letter case.
static std::string missingFile(const fs::path& game, const char* name) {
    std::error_code error;
    if (fs::is_regular_file(game / name, error)) return "";
    const std::string spelling = spellingOnDisk(game, name);
    return name + (spelling.empty() ? "" : " (it exists as " + spelling + ")");
}

// What the engine does not start without.
static void checkGame(const fs::path& script, const fs::path& game, Findings& findings) {
    const std::string wanted = std::string(kLevelFolder) + "/script.txt";
    const fs::path whole = fs::absolute(script).lexically_normal();
    const std::string here = whole.lexically_relative(game).string();
    if (here != wanted) {
        findings.add(CheckId::FileCase, 0,
                     "the engine looks for " + wanted + ": letter case counts, this is " + here,
                     Severity::Error);
    }
    const std::string font = missingFile(game, kFirstFont);
    const std::string box = missingFile(game, kSelectionPicture);
    if (font.empty() && box.empty()) return;
    const bool both = !font.empty() && !box.empty();
    // A game without a font is lent one by zelkit.
    findings.add(CheckId::MissingFile, 0,
                 "the engine does not start without " + font + (both ? " and " : "") + box +
                     " in the game's folder",
                 box.empty() ? Severity::Warning : Severity::Error);
}

void checkFiles(const std::string& scriptPath, const std::vector<FileUse>& files,
                Findings& findings) {
    const fs::path level = fs::path(scriptPath).parent_path();
    const std::optional<fs::path> game = gameFolder(scriptPath);
    if (game) checkGame(scriptPath, *game, findings);
    for (const FileUse& use : files) {
        const fs::path folder = use.kind == 'a' && game ? *game : level;
        checkFile(folder.empty() ? "." : folder, use, findings);
    }
}
