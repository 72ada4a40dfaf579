// Images: pictures in window rectangles, and the registries that hold them.
//
// Scripts know an image by its index in gImages; entries are never removed, so an identifier stays
// good for the whole run. Positions and sizes are window pixels, origin top left. Images of one
// file share a texture (images/textures.h), which is made on the main thread whichever thread asks
// (app/base/main_thread.h).
#pragma once

#include <SDL.h>

#include <cstdint>
#include <string>
#include <vector>

struct Image {
    SDL_Rect rect = {0, 0, 0, 0};  // where it is drawn; the whole texture is stretched to it
    int32_t spareX = 0;            // three spare values: kept on purpose, nothing reads them
    int32_t spareY = 0;
    int32_t spare = 0;
    bool visible = false;            // drawn only when true
    std::string path;                // the file it came from
    SDL_Texture* texture = nullptr;  // null if loading failed; others may share it
};

// The images of the script, by identifier, from 0 on in order of loading. Only grows, and only on
// the main thread between two frames, but growing moves the records: room for kRoomForImages is
// kept in advance, so that a level that stays below moves none that a timer function is changing.
// The textures are destroyed by closeImages.
extern std::vector<Image> gImages;
constexpr size_t kRoomForImages = 16384;

// The engine's own pictures: one element, that of the selection box. Filled at start-up; the
// textures go with the renderer.
extern std::vector<Image> gSystemPictures;

// Operations of an image --------------------------------------------------------------------------
//
// The set is complete on purpose: the engine needs no setSpare, setSparePair, getPath, isVisible,
// getTexture, getW or getH.

// A hidden image at 0, 0 with the picture of the file at `path` in its natural size. If the picture
// cannot be loaded that is reported, and the image has no texture and the size 0 by 0.
Image makeImage(const std::string& path);

inline void setPath(Image& image, const std::string& path) {
    image.path = path;
}
inline void setVisible(Image& image, bool visible) {
    image.visible = visible;
}
inline void setSpare(Image& image, int32_t value) {
    image.spare = value;
}
void setSparePair(Image& image, int32_t x, int32_t y);
void setPosition(Image& image, int32_t x, int32_t y);
void setSize(Image& image, int32_t w,
             int32_t h);  // 0 and negative sizes are kept; they draw nothing

// Attaches a texture: takes over its natural size and copies it once to the renderer. A null
// texture leaves the size as it was.
void setTexture(Image& image, SDL_Texture* texture);

// Copies the texture to the renderer if the image is visible. Main thread.
void draw(const Image& image);

inline std::string getPath(const Image& image) {
    return image.path;
}
inline bool isVisible(const Image& image) {
    return image.visible;
}
inline SDL_Texture* getTexture(const Image& image) {
    return image.texture;
}
inline int32_t getX(const Image& image) {
    return image.rect.x;
}
inline int32_t getY(const Image& image) {
    return image.rect.y;
}
inline int32_t getW(const Image& image) {
    return image.rect.w;
}
inline int32_t getH(const Image& image) {
    return image.rect.h;
}
inline const SDL_Rect& getRect(const Image& image) {
    return image.rect;
}

// Loading -----------------------------------------------------------------------------------------

// Loads a picture into a new entry of gImages and returns its identifier. A picture that cannot be
// loaded is reported and takes its identifier all the same. Any thread; waits for the main thread.
int32_t loadImageFile(const char* path);

// Loads the picture of the selection box, "SysPics/select.bmp" of the working directory. A failure
// is reported but does not count: always returns true.
bool loadSystemPictures();

// The selection box that the mouse draws (units/selection.h), element 0 of gSystemPictures; it
// exists once loadSystemPictures has run.
Image& selectionFrame();

// The image under `id`, or null for an identifier that no load has returned.
Image* findImage(int32_t id);

// Picture list ------------------------------------------------------------------------------------
//
// Kept on purpose: start-up does not read the list.

// Reads gPicturesListPath: one path per line, taken whole. Prints each line and appends an image
// without texture for it. Returns false, with a message, if the file cannot be opened.
bool loadPictureList();

// Loads the picture of every entry of gImages and hides the entries. Stops at the first that cannot
// be loaded, reports it and returns false.
bool loadListedTextures();

// Shutdown ----------------------------------------------------------------------------------------

// Destroys the textures of gImages, each once, in order of the images. Main thread, before the
// renderer goes.
void closeImages();
