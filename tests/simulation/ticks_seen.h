// The rules of timers and units tell those of the ticks that a tick begins.
#pragma once

void noteTimerTick();
void noteUnitTick();
