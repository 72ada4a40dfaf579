// The world outside a play: how fast it goes, and whether someone wants it to stop.
#pragma once

// Shows the level in a real window and plays it `speed` times as fast as real time. Called before
// the level starts; without it nothing is shown and nothing waits.
void showWindow(double speed);
bool isWindowShown();

// Starts the pace: the level's clock stands at 0 now.
void startPace();

// Waits, with a window, until real time has caught up with the level's clock. Reads the real
// window's events and drops them; closing that window, or Ctrl-C, stops the play.
void keepPace();

// A shown level is behind the real time by more than a frame: it should draw less.
bool isLate();

// Someone wants the play to stop.
extern bool gStopped;
