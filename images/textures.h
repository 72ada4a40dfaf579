// Textures of picture files.
//
// A file that is loaded again gives the same texture as long as it is the same file, unchanged: a
// level can have a hundred bricks of one picture, and the renderer draws them together. Textures
// belong to gRenderer and are made and destroyed on the main thread. They live until the close:
// the images and units that show them are never removed.
#pragma once

#include <SDL.h>

#include <string>

// The texture of a picture file, loaded now or before. On failure prints "\n1Unable to load image
// ", the path, "! SDL Error: " and SDL's reason, and returns null; after closeEngine always. Main
// thread; on another one, while the engine closes, it fails without a word.
SDL_Texture* loadTexture(const std::string& path);

// True where a load fails without a word: on another thread than the main one, while the engine
// closes. A timer function that loads then has done nothing wrong.
bool loadIsGivenUp();
