// The frame as the play sees it: read, saved, compared. Pictures have the frame's size; colours are
// 0xRRGGBB.
#pragma once

#include <SDL.h>

#include <memory>
#include <string>

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
