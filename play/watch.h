// The watch over a level that hangs: ten seconds of processor time without the end of a pass.
#pragma once

#include <string>

struct Place;

// Sets the watch to ten seconds again. When they have passed, a signal handler says where the
// script is and ends the process with status 3.
void restartWatch();

// What the report of a hang begins with: where the play is.
void setWatchPlace(const std::string& place);

// A place in the script: file:line:column, counted from 1.
std::string scriptPlace(const Place* place);
