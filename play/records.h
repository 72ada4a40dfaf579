// What the registries hold, a line for each record: its kind, then name=value, separated by blanks.
// Texts are in quotes, yes and no are 1 and 0.
#pragma once

#include <string>
#include <vector>

std::vector<std::string> timerRecords();
std::vector<std::string> imageRecords();
std::vector<std::string> textRecords();
std::vector<std::string> unitRecords();
