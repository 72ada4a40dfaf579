// What is to be seen of the level: its frame, and what its registries hold.
//
// Pictures have the frame's size; colours are 0xRRGGBB.
#pragma once

#include <SDL.h>

#include <memory>
#include <string>
#include <vector>

struct FreeSurface {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using Picture = std::unique_ptr<SDL_Surface, FreeSurface>;

// Composes the frame and reads it. Null if the engine is shut down.
Picture readFrame();

// Saves as PNG. Returns false, with SDL's reason, if it cannot be written.
bool savePicture(SDL_Surface& picture, const std::string& path);

// Null if there is no picture of the frame's size.
Picture loadPicture(const std::string& path);

int pixelAt(const SDL_Surface& picture, int x, int y);
int differingPixels(const SDL_Surface& one, const SDL_Surface& other);

// What the timers, the images, the texts and the units are, a line for each record: its kind, then
// name=value, separated by blanks. Texts are in quotes, yes and no are 1 and 0.
extern std::vector<std::string> (*const kRecordLists[4])();
