// Ctrl-C (SIGINT) and SIGTERM. Main thread.
#pragma once

// From now on the first signal of either kind asks the main loop to quit, through SDL's own
// handler, and gives both back to their default: the second one ends the process wherever it hangs.
// After SDL_Init. A signal that was ignored stays ignored.
void endProcessOnSecondSignal();

// From now on a signal ends the process: nobody reads quit events any more.
void endProcessOnNextSignal();
