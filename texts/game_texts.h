// Game texts: the texts that a script puts on the screen.
//
// A text is stretched to the rectangle the script gave, in window pixels. It is rendered afresh for
// every frame, in the font and the colour that are current then (texts/fonts.h).
// Unlocked: script code on either thread and the drawing share the registry.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <map>
#include <string>

struct GameText {
    SDL_Surface* surface = nullptr;  // as rendered for the last frame that showed it; owned
    SDL_Texture* texture = nullptr;  // made from the surface; owned
    SDL_Rect rect = {0, 0, 0, 0};
    bool hidden = true;
    std::string text;  // UTF-8; up to kTokenCapacity - 1 bytes it stays where it is in memory
    int32_t number;    // the record's own number; not the key it is found under

    // Takes the next text number; copies keep theirs.
    GameText();
};

// All texts, drawn in ascending order of keys. A text is keyed by the id that the next timer will
// get, not by its number: without timers in between a second createText rewrites the first text.
extern std::map<int32_t, GameText> gGameTexts;

extern int32_t gNextTextNumber;  // taken by the next construction; only grows
extern int32_t gLastTextNumber;  // taken by the latest construction; 0 before any

// The text under `key`; an unknown key gets a hidden, empty text, which takes a number.
GameText& findOrCreateGameText(int32_t key);

// Shows `text` in `rect`, under the key gNextTimerId: a new text, or the one that is there
// already. Returns gLastTextNumber.
int32_t createGameText(const char* text, const SDL_Rect& rect);

// Hides the text and erases the entry whose key equals the text's own number, which may be another
// one. The erased entry's surface and texture are released on the main thread.
void removeGameText(GameText& text);

void setTextPosition(GameText& text, int32_t x, int32_t y);
void setTextSize(GameText& text, int32_t w, int32_t h);  // 0 and negative sizes draw nothing

// Renders the text and copies it into its rectangle, unless it is hidden; releases what the frame
// before rendered. A text that SDL_ttf cannot render (an empty one) draws nothing. Main thread.
void drawGameText(GameText& text);

// Draws all texts in order. Main thread.
void drawGameTexts();

// Frees what the texts rendered last, for shutdown; their textures go with the renderer. Main
// thread.
void closeGameTexts();
