// The whole check of one script.
#pragma once

#include <string>
#include <vector>

#include "check/findings.h"
#include "check/source.h"

struct CheckResult {
    // What the findings' positions belong to. For a text with bare line feeds it is the text with
    // its line ends fixed: lines and columns are the same.
    Source source;
    std::vector<Finding> findings;  // in text order
};

// Checks the bytes of a script file. The files that the script names are looked for if `onDisk`.
CheckResult checkScript(const std::string& path, const std::string& bytes, bool onDisk);
