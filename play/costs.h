// What the passes of a play cost, in real time.
#pragma once

#include <string>

enum class PassPart { Events, Ticks, Drawing, Script, Count };

// Measures the passes from now on. Before it the functions below do nothing.
void measureCosts();

// A pass begins; a part of it has just ended. What script code took in a part counts as script.
void startCosts();
void noteCost(PassPart part);

// The table of all passes: median, 95th and 99th percentile and worst, in milliseconds a pass.
std::string costTable();
