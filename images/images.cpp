#include "images/images.h"

#include <SDL_image.h>

#include <cstdio>
#include <fstream>

#include "app/globals.h"
#include "app/main_thread.h"

static std::vector<Image> emptyListWithRoom() {
    std::vector<Image> images;
    images.reserve(kRoomForImages);
    return images;
}

std::vector<Image> gImages = emptyListWithRoom();
std::vector<Image> gSystemPictures;

// Operations of an image --------------------------------------------------------------------------

Image makeImage(const std::string& path) {
    Image image;
    setPath(image, path);
    setTexture(image, loadTexture(path));
    return image;
}

void setSparePair(Image& image, int32_t x, int32_t y) {
    image.spareX = x;
    image.spareY = y;
}

void setPosition(Image& image, int32_t x, int32_t y) {
    image.rect.x = x;
    image.rect.y = y;
}

void setSize(Image& image, int32_t w, int32_t h) {
    image.rect.w = w;
    image.rect.h = h;
}

static void copyToRenderer(SDL_Texture* texture, const SDL_Rect& rect) {
    SDL_RenderCopy(gRenderer, texture, nullptr, &rect);
}

// The first copy of a texture attached on another thread, carried to the main thread.
struct FirstCopy {
    SDL_Texture* texture;
    SDL_Rect rect;
};

static void runFirstCopy(void* data) {
    const FirstCopy* copy = static_cast<FirstCopy*>(data);
    copyToRenderer(copy->texture, copy->rect);
    delete copy;
}

void setTexture(Image& image, SDL_Texture* texture) {
    image.texture = texture;
    SDL_QueryTexture(texture, nullptr, nullptr, &image.rect.w, &image.rect.h);
    if (gEngineClosed) return;
    // Attaching draws: whoever attaches a texture between two frames finds it in the render target
    // until the next frame is begun.
    if (onMainThread()) {
        copyToRenderer(texture, image.rect);
    } else if (texture != nullptr) {
        postToMainThread(runFirstCopy, new FirstCopy{texture, image.rect});
    }
}

void draw(const Image& image) {
    if (image.visible) copyToRenderer(image.texture, image.rect);
}

// Loading -----------------------------------------------------------------------------------------

// One load, carried to the main thread and back. SDL keeps its error text per thread.
struct TextureLoad {
    const char* path = nullptr;
    SDL_Texture* texture = nullptr;
    char error[256] = "the engine is closed";
};

static void runTextureLoad(void* data) {
    TextureLoad* load = static_cast<TextureLoad*>(data);
    if (gEngineClosed) return;
    load->texture = IMG_LoadTexture(gRenderer, load->path);
    SDL_strlcpy(load->error, SDL_GetError(), sizeof load->error);
}

SDL_Texture* loadTexture(const std::string& path) {
    TextureLoad load;
    load.path = path.c_str();
    callOnMainThread(runTextureLoad, &load);
    if (load.texture == nullptr) {
        SDL_SetError("%s", load.error);
        std::printf("\n1Unable to load image %s! SDL Error: %s", path.c_str(), SDL_GetError());
    }
    return load.texture;
}

// Reports an image that has no texture, in the words of its registry.
static void reportMissing(const char* message, const Image& image) {
    std::printf("%s%s.   %s", message, image.path.c_str(), SDL_GetError());
}

int32_t loadImageFile(const char* path) {
    // First the picture, then the identifier: on the timer thread the load waits for the main
    // thread, whose key functions may load pictures meanwhile.
    const Image image = makeImage(path);
    const int32_t id = static_cast<int32_t>(gImages.size());
    gImages.push_back(image);
    if (image.texture == nullptr) {
        reportMissing("\nCant load image: ", image);
        // Without effect: the main loop reads the type of fresh events only.
        gEvent.type = SDL_QUIT;
    }
    return id;
}

bool loadSystemPictures() {
    gSystemPictures.push_back(makeImage("SysPics/select.bmp"));
    if (selectionFrame().texture == nullptr) {
        reportMissing("\nCant load SYSimage: ", selectionFrame());
        gEvent.type = SDL_QUIT;
    }
    return true;
}

Image& selectionFrame() {
    return gSystemPictures.front();
}

Image* findImage(int32_t id) {
    const bool exists = id >= 0 && static_cast<size_t>(id) < gImages.size();
    return exists ? &gImages[static_cast<size_t>(id)] : nullptr;
}

// Picture list ------------------------------------------------------------------------------------

bool loadPictureList() {
    std::ifstream list(gPicturesListPath);
    if (!list) {
        std::printf("\nCan't load %s", gPicturesListPath.c_str());
        return false;
    }
    for (std::string line; std::getline(list, line);) {
        std::printf("\n%s", line.c_str());
        Image image;
        setPath(image, line);
        gImages.push_back(image);
    }
    return true;
}

bool loadListedTextures() {
    for (Image& image : gImages) {
        setTexture(image, loadTexture(image.path));
        setVisible(image, false);
        if (image.texture == nullptr) {
            reportMissing("Cant load image: ", image);
            return false;
        }
    }
    return true;
}

// Shutdown ----------------------------------------------------------------------------------------

void closeImages() {
    for (const Image& image : gImages)
        SDL_DestroyTexture(image.texture);
}
