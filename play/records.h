// What the registries hold, a line for each record: its kind, then name=value, separated by blanks.
// Texts are in quotes, yes and no are 1 and 0.
#pragma once

#include <string>
#include <vector>

// Of the timers, the images, the texts and the units.
extern std::vector<std::string> (*const kRecordLists[4])();
