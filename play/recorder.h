// The recorder: someone plays in the real window, and what they do becomes a play.
//
// What the window's events say is written as commands and run as commands, so the level sees
// exactly what it will see when the play is played. Between them real time passes in whole passes.
#pragma once

#include <cstdio>

// Plays the started level in real time until its window is closed or it ends by itself, and writes
// the play to `file`, ready to be played.
void record(std::FILE* file);
