#include "simulation/folder.h"

#include <SDL.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/base/paths.h"

static std::filesystem::path gFolder;

static void writePicture(const std::string& path, int w, int h, Uint8 red, Uint8 green) {
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormat(0, w, h, 24, SDL_PIXELFORMAT_RGB24);
    SDL_FillRect(surface, nullptr, SDL_MapRGB(surface->format, red, green, 80));
    SDL_SaveBMP(surface, path.c_str());
    SDL_FreeSurface(surface);
}

void makeLevelFolder() {
    char name[] = "/tmp/zel_simulation_XXXXXX";
    if (mkdtemp(name) == nullptr) std::abort();
    gFolder = name;
    std::filesystem::current_path(gFolder);
    std::filesystem::create_directories("SysPics");
    std::filesystem::create_directories(gLevelDir + "img");
    std::filesystem::create_symlink(ZEL_FONT_FILE, "arial.ttf");
    writePicture("SysPics/select.bmp", 8, 8, 255, 0);
    writePicture(gLevelDir + "img/peon.bmp", 20, 30, 0, 0);
    writePicture(gLevelDir + "red.bmp", 50, 50, 255, 0);
    writePicture(gLevelDir + "wide.bmp", 300, 2, 0, 255);
    std::ofstream(gLevelDir + "broken.bmp") << "BM and nothing that a picture could be";
}

void writeLevelFile(const std::string& script) {
    std::ofstream(gScriptPath, std::ios::binary) << script;
}

void removeLevelFolder() {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(gFolder);
}
