#include "app/ticks.h"

void startTicks() {}

void runDueTicks(uint64_t) {}

void runTicksOnMainThread(uint64_t) {}
