// What tests of the engine share: scripts given as text, standard output caught, pixels read.
//
// Every test runs in a process of its own, so the engine's global state is fresh in each.
#pragma once

#include <SDL.h>

#include <string>

// Loads `script` as the engine loads a level script. Bare line feeds in it become CR LF, so that
// tests can be written readably; `raw` keeps the bytes. Returns what loadScript returns.
bool loadLevel(const std::string& script, bool raw = false);

// Loads `script`, runs its main and returns everything printed meanwhile.
std::string runLevel(const std::string& script);

// Runs `action` and returns what it printed on standard output.
std::string outputOf(void (*action)());

// The value of `expression` in a main that declares int a, b, c first, as runLevel prints it.
std::string valueOf(const std::string& expression);

// Brings the engine up in the offscreen driver; fails the test if that fails.
void startEngine();

// Composes a frame and returns its pixel at x, y as 0xRRGGBB.
Uint32 framePixel(int x, int y);

// Writes a picture of one colour (0xRRGGBB), w by h pixels, as BMP; folders are made as needed.
void writePicture(const std::string& path, int w, int h, Uint32 colour);

// Writes bytes to a file; folders are made as needed.
void writeFile(const std::string& path, const std::string& bytes);
