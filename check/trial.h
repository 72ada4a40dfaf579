// The trial: the checker follows the road that the engine takes through the script, with all values
// that are known before it runs, to find out which places the engine certainly reaches.
//
// It goes through main and then through the functions that main has certainly made call-backs of.
// Where a condition is not known it goes on after the branches, if they can do no more than change
// variables; else it stops there. It also stops after a fixed number of tokens.
#pragma once

#include "check/findings.h"
#include "check/program.h"

// Only for a program that loads. What the survey has found is in the findings already.
void tryProgram(const Program& program, Findings& findings);
