// The files that a script names: pictures beside the script, fonts in the game's folder.
#pragma once

#include <string>
#include <vector>

#include "check/findings.h"
#include "check/survey.h"

// The path `name` below the folder as it is on the disk, whatever its letter case, or "" if there
// is none.
std::string spellingOnDisk(const std::string& below, const std::string& name);

// `scriptPath` is the path of the script's file. For a script in GAME/levels/level1/ fonts are
// looked for in GAME, else beside the script.
void checkFiles(const std::string& scriptPath, const std::vector<FileUse>& files,
                Findings& findings);
