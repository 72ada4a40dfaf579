// The files that a script names: pictures beside the script, fonts in the game's folder.
#pragma once

#include <string>
#include <vector>

#include "check/findings.h"
#include "check/survey.h"

// `scriptPath` is the path of the script's file. For a script in GAME/levels/level1/ fonts are
// looked for in GAME, else beside the script.
void checkFiles(const std::string& scriptPath, const std::vector<FileUse>& files,
                Findings& findings);
