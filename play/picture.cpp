#include "play/picture.h"

#include <SDL_image.h>

#include <cstring>

#include "app/base/window.h"
#include "app/frame.h"

static constexpr Uint32 kFormat = SDL_PIXELFORMAT_ARGB8888;
static constexpr Uint32 kColourBits = 0xFFFFFF;
static constexpr int kPitch = SCREEN_WIDTH * static_cast<int>(sizeof(Uint32));
static constexpr size_t kPixels = static_cast<size_t>(SCREEN_WIDTH) * SCREEN_HEIGHT;

bool readFrame(Frame& frame) {
    if (gEngineClosed) return false;
    composeFrame();
    frame.assign(kPixels, 0);
    const SDL_Rect whole = {0, 0, SCREEN_WIDTH, SCREEN_HEIGHT};
    if (SDL_RenderReadPixels(gRenderer, &whole, kFormat, frame.data(), kPitch) != 0) return false;
    for (Uint32& pixel : frame)
        pixel &= kColourBits;
    return true;
}

Uint32 pixelAt(const Frame& frame, int x, int y) {
    return frame[static_cast<size_t>(y) * SCREEN_WIDTH + static_cast<size_t>(x)];
}

int countPixels(const Frame& frame, const SDL_Rect& rect, Uint32 colour) {
    int count = 0;
    for (int y = rect.y; y < rect.y + rect.h; y++) {
        for (int x = rect.x; x < rect.x + rect.w; x++)
            count += pixelAt(frame, x, y) == colour ? 1 : 0;
    }
    return count;
}

bool saveFrame(const Frame& frame, const std::string& path) {
    SDL_Surface* surface =
        SDL_CreateRGBSurfaceWithFormat(0, SCREEN_WIDTH, SCREEN_HEIGHT, 24, SDL_PIXELFORMAT_RGB24);
    if (surface == nullptr) return false;
    SDL_ConvertPixels(SCREEN_WIDTH, SCREEN_HEIGHT, SDL_PIXELFORMAT_RGB888, frame.data(), kPitch,
                      SDL_PIXELFORMAT_RGB24, surface->pixels, surface->pitch);
    const bool saved = IMG_SavePNG(surface, path.c_str()) == 0;
    SDL_FreeSurface(surface);
    return saved;
}

bool loadFrame(const std::string& path, Frame& frame) {
    SDL_Surface* loaded = IMG_Load(path.c_str());
    SDL_Surface* surface = SDL_ConvertSurfaceFormat(loaded, kFormat, 0);
    SDL_FreeSurface(loaded);
    const bool fits =
        surface != nullptr && surface->w == SCREEN_WIDTH && surface->h == SCREEN_HEIGHT;
    if (fits) {
        frame.resize(kPixels);
        std::memcpy(frame.data(), surface->pixels, kPixels * sizeof(Uint32));
        for (Uint32& pixel : frame)
            pixel &= kColourBits;
    }
    SDL_FreeSurface(surface);
    return fits;
}

int differingPixels(const Frame& one, const Frame& other) {
    int count = 0;
    for (size_t i = 0; i < kPixels; i++)
        count += one[i] != other[i] ? 1 : 0;
    return count;
}
