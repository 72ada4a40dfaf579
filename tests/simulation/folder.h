// The working directory that all levels are played in, one after the other.
#pragma once

#include <string>

// Makes a folder with the font and the pictures and enters it. Before SDL is started: only files
// and surfaces are used.
void makeLevelFolder();

// Puts the script of the next level in its place.
void writeLevelFile(const std::string& script);

// Leaves the folder and deletes it.
void removeLevelFolder();
