#include "images/images.h"

#include <cstdio>
#include <fstream>
#include <set>

#include "app/base/input.h"
#include "app/base/main_thread.h"
#include "app/base/paths.h"
#include "app/base/window.h"
#include "images/textures.h"

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

void setTexture(Image& image, SDL_Texture* texture) {
    image.texture = texture;
    SDL_QueryTexture(texture, nullptr, nullptr, &image.rect.w, &image.rect.h);
    // Attaching draws: whoever attaches a texture between two frames finds it in the render target
    // until the next frame is begun.
    if (!gEngineClosed) copyToRenderer(texture, image.rect);
}

void draw(const Image& image) {
    if (image.visible) copyToRenderer(image.texture, image.rect);
}

// Loading -----------------------------------------------------------------------------------------

// Reports an image that has no texture, in the words of its registry.
static void reportMissing(const char* message, const Image& image) {
    std::printf("%s%s.   %s", message, image.path.c_str(), SDL_GetError());
}

struct ImageLoad {
    const char* path;
    int32_t id;
};

static void runImageLoad(void* data) {
    ImageLoad* load = static_cast<ImageLoad*>(data);
    load->id = static_cast<int32_t>(gImages.size());
    gImages.push_back(makeImage(load->path));
    const Image& image = gImages.back();
    if (image.texture == nullptr && !loadIsGivenUp()) {
        reportMissing("\nCant load image: ", image);
        // Kept on purpose and without effect: the main loop reads the type of fresh events only.
        gEvent.type = SDL_QUIT;
    }
}

// The load runs as a whole on the main thread: no frame is being drawn while the registry grows,
// and no key function can load between the picture and its identifier.
int32_t loadImageFile(const char* path) {
    ImageLoad load = {path, 0};
    callOnMainThread(runImageLoad, &load);
    return load.id;
}

bool loadSystemPictures() {
    gSystemPictures.push_back(makeImage(kSelectionPicture));
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
    std::set<SDL_Texture*> destroyed;  // several images may share one
    for (const Image& image : gImages) {
        if (image.texture != nullptr && !destroyed.insert(image.texture).second) continue;
        SDL_DestroyTexture(image.texture);
    }
}
