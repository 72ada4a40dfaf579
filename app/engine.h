// Start-up and shutdown of the engine. Main thread only.
#pragma once

// Brings up the font, the unit types, SDL, the window, the renderer and the system pictures, in
// this order. The first step that fails prints its reason on standard output and ends the start-up:
// returns false. What exists by then is left for closeEngine.
bool initEngine();

// Releases everything, in a fixed order, and quits the libraries. No handle is reset, but
// gEngineClosed tells that none may be used any more. A second call does nothing. Waits for the
// script function that the timer thread may be running.
void closeEngine();
