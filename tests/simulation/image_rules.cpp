// Images: identifiers are dense and never used twice, and nobody but the built-ins changes one.
#include <string>
#include <vector>

#include "app/base/window.h"
#include "images/images.h"
#include "simulation/builtin_calls.h"
#include "simulation/rules.h"
#include "simulation/wrap.h"

WRAP_FUNCTION("_Z13loadImageFilePKc", int32_t, LoadImageFile, (const char*));

// The images as the built-ins have left them.
static std::vector<Image> gKnownImages;

static bool isSameRect(const SDL_Rect& a, const SDL_Rect& b) {
    return a.x == b.x && a.y == b.y && a.w == b.w && a.h == b.h;
}

// Unchanged are the path, the texture and the spare values, always.
static bool isSameImage(const Image& a, const Image& b) {
    return isSameRect(a.rect, b.rect) && a.visible == b.visible && a.path == b.path &&
           a.texture == b.texture && a.spare == 0 && a.spareX == 0 && a.spareY == 0;
}

// A load takes the next identifier, also if it fails, and gives a hidden image at 0, 0 in the
// picture's own size.
int32_t wrapLoadImageFile(const char* path) {
    const size_t before = gImages.size();
    const int32_t id = realLoadImageFile(path);
    requireRule(id == static_cast<int32_t>(before), "a load takes the next identifier");
    requireRule(gImages.size() == before + 1, "a load adds one image");
    const Image& image = gImages.back();
    int w = 0, h = 0;
    if (image.texture != nullptr) SDL_QueryTexture(image.texture, nullptr, nullptr, &w, &h);
    requireRule(image.path == path && !image.visible, "a fresh image is hidden");
    requireRule(isSameRect(image.rect, {0, 0, w, h}), "a fresh image has its picture's size");
    const bool isGood = std::string(path).find("red.bmp") != std::string::npos;
    requireRule(!isGood || gEngineClosed || image.texture != nullptr, "good pictures load");
    gKnownImages.push_back(image);
    return id;
}

static Image* knownImage(int32_t id) {
    const bool exists = id >= 0 && static_cast<size_t>(id) < gKnownImages.size();
    return exists ? &gKnownImages[static_cast<size_t>(id)] : nullptr;
}

static void afterShowImage(const BuiltinCall& call, int32_t) {
    if (Image* image = knownImage(call.values[0])) image->visible = call.values[1] != 0;
}

static void afterMoveImage(const BuiltinCall& call, int32_t) {
    Image* image = knownImage(call.values[0]);
    if (image == nullptr) return;
    image->rect.x = call.values[1];
    image->rect.y = call.values[2];
}

static void afterChangeSizeImage(const BuiltinCall& call, int32_t) {
    Image* image = knownImage(call.values[0]);
    if (image == nullptr) return;
    image->rect.w = call.values[1];
    image->rect.h = call.values[2];
}

static void afterGetImageX(const BuiltinCall& call, int32_t result) {
    const Image* image = knownImage(call.values[0]);
    requireRule(result == (image == nullptr ? 0 : image->rect.x), "getimagex tells the left edge");
}

static void afterGetImageY(const BuiltinCall& call, int32_t result) {
    const Image* image = knownImage(call.values[0]);
    requireRule(result == (image == nullptr ? 0 : image->rect.y), "getimagey tells the top edge");
}

void setImageBuiltinRules() {
    setBuiltinRule("showimage", afterShowImage);
    setBuiltinRule("moveimage", afterMoveImage);
    setBuiltinRule("changesizeimage", afterChangeSizeImage);
    setBuiltinRule("getimagex", afterGetImageX);
    setBuiltinRule("getimagey", afterGetImageY);
}

void checkImageRules() {
    requireRule(gImages.size() == gKnownImages.size(), "images are added by loads only");
    for (size_t i = 0; i < gImages.size(); i++)
        requireRule(isSameImage(gImages[i], gKnownImages[i]), "images change by built-ins only");
}
