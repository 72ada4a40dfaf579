// Textures of picture files.
//
// Textures belong to gRenderer, and SDL wants them made and destroyed on the main thread.
#pragma once

#include <SDL.h>

#include <string>

// Loads a picture file into a texture of gRenderer. On failure prints "\n1Unable to load image ",
// the path, "! SDL Error: " and SDL's reason, and returns null; after closeEngine always. Main
// thread; on another one, while the engine closes, it fails without a word.
SDL_Texture* loadTexture(const std::string& path);

// True where a load fails without a word: on another thread than the main one, while the engine
// closes. A timer function that loads then has done nothing wrong.
bool loadIsGivenUp();
