// The look at every function of the script, whether the engine ever gets there or not: what it
// would refuse at each place, and the traps that it meets in silence.
//
// Everything found here is a warning, until the trial (check/trial.h) finds out which of it the
// engine certainly reaches.
#pragma once

#include <string>
#include <vector>

#include "check/findings.h"
#include "check/program.h"

// A file that the script names in a literal.
struct FileUse {
    char kind;  // as in script/host/builtin_list.h
    std::string name;
    size_t position;
};

std::vector<FileUse> surveyProgram(const Program& program, Findings& findings);
