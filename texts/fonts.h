// The one font and the one colour of all texts on the screen.
#pragma once

#include <SDL_ttf.h>

#include <cstdint>

// The current font; null until initFonts. Replaced by openFont, closed by closeFont.
extern TTF_Font* gFont;

// Red, green, blue, alpha. Alpha is never written: it stays 0 and goes to SDL_ttf as it is.
extern SDL_Color gTextColour;

// Starts SDL_ttf and opens "arial.ttf" of the working directory at 12 points, in grey. Returns
// false, with the reason on standard output, if the font cannot be opened. Needs no SDL yet.
bool initFonts();

// Makes the font at `fileName` the current one, at `pointSize`; what is drawn from then on uses it.
// If it cannot be opened, says so on standard output and keeps the current one. Any thread: the
// font it replaces is closed on the main thread, which may be drawing with it.
void openFont(const char* fileName, int32_t pointSize);

// Sets the colour of all texts; of each value the low 8 bits count.
void setTextColour(int32_t red, int32_t green, int32_t blue);

// Closes the current font, for shutdown. Main thread.
void closeFont();
