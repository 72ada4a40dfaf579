#include "play/picture.h"

#include <SDL_image.h>

#include "app/base/window.h"
#include "app/frame.h"

static constexpr Uint32 kFormat = SDL_PIXELFORMAT_RGB24;

Picture readFrame() {
    if (gEngineClosed) return nullptr;
    composeFrame();
    Picture frame(SDL_CreateRGBSurfaceWithFormat(0, SCREEN_WIDTH, SCREEN_HEIGHT, 24, kFormat));
    const bool isRead = frame != nullptr && SDL_RenderReadPixels(gRenderer, nullptr, kFormat,
                                                                 frame->pixels, frame->pitch) == 0;
    return isRead ? std::move(frame) : nullptr;
}

bool savePicture(SDL_Surface& picture, const std::string& path) {
    return IMG_SavePNG(&picture, path.c_str()) == 0;
}

Picture loadPicture(const std::string& path) {
    const Picture loaded(IMG_Load(path.c_str()));
    Picture picture(SDL_ConvertSurfaceFormat(loaded.get(), kFormat, 0));
    const bool fits =
        picture != nullptr && picture->w == SCREEN_WIDTH && picture->h == SCREEN_HEIGHT;
    return fits ? std::move(picture) : nullptr;
}

int pixelAt(const SDL_Surface& picture, int x, int y) {
    const auto* bytes = static_cast<const Uint8*>(picture.pixels) + y * picture.pitch + x * 3;
    return bytes[0] << 16 | bytes[1] << 8 | bytes[2];
}

int differingPixels(const SDL_Surface& one, const SDL_Surface& other) {
    int count = 0;
    for (int y = 0; y < SCREEN_HEIGHT; y++) {
        for (int x = 0; x < SCREEN_WIDTH; x++)
            count += pixelAt(one, x, y) != pixelAt(other, x, y) ? 1 : 0;
    }
    return count;
}
