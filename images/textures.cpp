#include "images/textures.h"

#include <SDL_image.h>

#include <cstdio>
#include <cstdlib>

#include "app/base/main_thread.h"
#include "app/base/window.h"

// Little-endian, as the numbers of a BMP file are.
static int64_t numberAt(const unsigned char* bytes, int size) {
    uint32_t number = 0;
    for (int i = 0; i < size; i++)
        number |= static_cast<uint32_t>(bytes[i]) << (8 * i);
    return size == 4 ? static_cast<int32_t>(number) : static_cast<int64_t>(number);
}

// Reads the size that the header of a BMP file declares. Returns false for other files. The layout
// is that of BITMAPFILEHEADER with BITMAPCOREHEADER (12 bytes long) or BITMAPINFOHEADER after it;
// a negative height means rows from the top.
static bool readBmpSize(const char* path, int64_t& w, int64_t& h) {
    unsigned char head[26] = {};
    SDL_RWops* file = SDL_RWFromFile(path, "rb");
    if (file == nullptr) return false;
    const bool isRead = SDL_RWread(file, head, sizeof head, 1) == 1;
    SDL_RWclose(file);
    if (!isRead || head[0] != 'B' || head[1] != 'M') return false;
    const bool isOld = numberAt(head + 14, 4) == 12;
    w = isOld ? numberAt(head + 18, 2) : numberAt(head + 18, 4);
    h = isOld ? numberAt(head + 20, 2) : std::abs(numberAt(head + 22, 4));
    return true;
}

// Refuses, with SDL's words for it, a BMP file that declares more pixels than a texture can have:
// SDL_image would fill the memory for them before it found out.
static bool fitsATexture(const char* path) {
    int64_t w = 0, h = 0;
    SDL_RendererInfo info;
    if (SDL_GetRendererInfo(gRenderer, &info) != 0 || !readBmpSize(path, w, h)) return true;
    const int maxW = info.max_texture_width, maxH = info.max_texture_height;
    if ((maxW == 0 || w <= maxW) && (maxH == 0 || h <= maxH)) return true;
    SDL_SetError("Texture dimensions are limited to %dx%d", maxW, maxH);
    return false;
}

static SDL_Texture* loadIfPossible(const char* path) {
    if (gEngineClosed) {
        SDL_SetError("the engine is closed");
        return nullptr;
    }
    if (!fitsATexture(path)) return nullptr;
    return IMG_LoadTexture(gRenderer, path);
}

bool loadIsGivenUp() {
    return mainThreadIsClosing() && !onMainThread();
}

SDL_Texture* loadTexture(const std::string& path) {
    SDL_Texture* texture = loadIfPossible(path.c_str());
    if (texture == nullptr && !loadIsGivenUp()) {
        std::printf("\n1Unable to load image %s! SDL Error: %s", path.c_str(), SDL_GetError());
    }
    return texture;
}
