// What the passes of a play cost, in real time.
#pragma once

#include <string>

// Measures the passes from now on. After the start of the level, before its first pass.
void measureCosts();

// The table of all passes: median, 95th and 99th percentile and worst, in milliseconds a pass. What
// script code takes counts as script, wherever it runs.
std::string costTable();
