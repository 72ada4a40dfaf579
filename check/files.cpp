#include "check/files.h"

#include <filesystem>
#include <system_error>

#include "check/scanner.h"

namespace fs = std::filesystem;

static fs::path fontFolder(const fs::path& level) {
    const fs::path whole = fs::absolute(level).lexically_normal();
    const bool isLevel = whole.filename() == "level1" && whole.parent_path().filename() == "levels";
    return isLevel ? whole.parent_path().parent_path() : level;
}

// The entry of the folder that differs from the name in letter case only, or "".
static std::string otherCase(const fs::path& folder, const std::string& name) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const std::string known = entry.path().filename().string();
        if (lowerCase(known) == lowerCase(name)) return known;
    }
    return "";
}

// The path below the folder as it is spelt on the disk, or "" if there is none.
static std::string findSpelling(const fs::path& folder, const std::string& name) {
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
    const std::string spelling = findSpelling(folder, use.name);
    const bool isFile = !spelling.empty() && fs::is_regular_file(folder / spelling, error);
    if (isFile) {
        findings.add(CheckId::FileCase, use.position,
                     "this " + what + " is called \"" + spelling + "\": letter case counts");
    } else {
        findings.add(CheckId::MissingFile, use.position,
                     "there is no " + what + " " + (folder / use.name).lexically_normal().string());
    }
}

void checkFiles(const std::string& scriptPath, const std::vector<FileUse>& files,
                Findings& findings) {
    const fs::path level = fs::path(scriptPath).parent_path();
    for (const FileUse& use : files) {
        const fs::path folder = use.kind == 'a' ? fontFolder(level) : level;
        checkFile(folder.empty() ? "." : folder, use, findings);
    }
}
