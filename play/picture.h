// The frame as the play sees it: read, saved, compared. Colours are 0xRRGGBB.
#pragma once

#include <SDL.h>

#include <string>
#include <vector>

// The frame's pixels, row by row, 640 by 480.
using Frame = std::vector<Uint32>;

// Composes the frame and reads it. Returns false if the engine is shut down.
bool readFrame(Frame& frame);

Uint32 pixelAt(const Frame& frame, int x, int y);

// Pixels of the colour in the rectangle, which lies in the frame.
int countPixels(const Frame& frame, const SDL_Rect& rect, Uint32 colour);

// Saves the frame as PNG. Returns false, with SDL's reason, if it cannot be written.
bool saveFrame(const Frame& frame, const std::string& path);

// Loads a picture of the frame's size. Returns false if there is none.
bool loadFrame(const std::string& path, Frame& frame);

// How many pixels differ.
int differingPixels(const Frame& one, const Frame& other);
