// What belongs to SDL: every texture, surface and font has an owner, and nothing released is used.
//
// The engine's calls of SDL come through here. Frames are drawn seldom, by a renderer in software:
// the picture is not what is looked at, and drawing takes most of the time.
#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>

#include "app/base/window.h"
#include "app/frame.h"
#include "images/images.h"
#include "simulation/rules.h"
#include "simulation/wrap.h"
#include "texts/fonts.h"
#include "texts/game_texts.h"
#include "units/units.h"

WRAP_FUNCTION("SDL_CreateRenderer", SDL_Renderer*, CreateRenderer, (SDL_Window*, int, Uint32));
WRAP_FUNCTION("SDL_Delay", void, Delay, (Uint32));
WRAP_FUNCTION("IMG_LoadTexture", SDL_Texture*, LoadTexture, (SDL_Renderer*, const char*));
WRAP_FUNCTION("SDL_CreateTextureFromSurface", SDL_Texture*, MakeTexture,
              (SDL_Renderer*, SDL_Surface*));
WRAP_FUNCTION("SDL_DestroyTexture", void, DestroyTexture, (SDL_Texture*));
WRAP_FUNCTION("TTF_RenderUTF8_Solid", SDL_Surface*, RenderText,
              (TTF_Font*, const char*, SDL_Color));
WRAP_FUNCTION("SDL_FreeSurface", void, FreeSurface, (SDL_Surface*));
WRAP_FUNCTION("TTF_OpenFont", TTF_Font*, OpenFont, (const char*, int));
WRAP_FUNCTION("TTF_CloseFont", void, CloseFont, (TTF_Font*));
WRAP_FUNCTION("SDL_RenderCopy", int, RenderCopy,
              (SDL_Renderer*, SDL_Texture*, const SDL_Rect*, const SDL_Rect*));
WRAP_FUNCTION("SDL_RenderPresent", void, Present, (SDL_Renderer*));
WRAP_FUNCTION("SDL_SetWindowTitle", void, SetTitle, (SDL_Window*, const char*));
WRAP_FUNCTION("SDL_SetWindowFullscreen", int, SetFullscreen, (SDL_Window*, Uint32));
WRAP_FUNCTION("_Z9drawFramev", void, DrawFrame, ());
WRAP_FUNCTION("_Z11closeEnginev", void, CloseEngine, ());

// Made by the engine and alive now.
static std::set<SDL_Texture*> gTextures;
static std::set<std::string> gPictureFiles;  // from which a texture was made
static int64_t gSurfaces = 0;
static int64_t gFonts = 0;

static bool gClosed = false;  // closeEngine has come to its end
static int64_t gCopies = 0;   // to the renderer, in this frame
static int32_t gPassesToNextFrame = 0;

// Before the engine starts: what the making of the pictures took does not count.
void startResourceRules() {
    gTextures.clear();
    gPictureFiles.clear();
    gSurfaces = gFonts = 0;
}

static void requireOpen() {
    requireRule(!gClosed, "nothing of SDL's is used after the close");
}

// SDL --------------------------------------------------------------------------------------------

// The renderer without a graphics driver: quick to start, and it keeps no frames that nobody reads.
SDL_Renderer* wrapCreateRenderer(SDL_Window* window, int, Uint32) {
    for (int i = 0; i < SDL_GetNumRenderDrivers(); i++) {
        SDL_RendererInfo info;
        const bool isKnown = SDL_GetRenderDriverInfo(i, &info) == 0;
        if (isKnown && (info.flags & SDL_RENDERER_SOFTWARE) != 0) {
            return realCreateRenderer(window, i, SDL_RENDERER_SOFTWARE);
        }
    }
    return nullptr;
}

void wrapDelay(Uint32) {}

SDL_Texture* wrapLoadTexture(SDL_Renderer* renderer, const char* path) {
    requireOpen();
    SDL_Texture* texture = realLoadTexture(renderer, path);
    if (texture == nullptr) return nullptr;
    gTextures.insert(texture);
    requireRule(gPictureFiles.insert(path).second, "an unchanged file is one texture");
    return texture;
}

SDL_Texture* wrapMakeTexture(SDL_Renderer* renderer, SDL_Surface* surface) {
    requireOpen();
    SDL_Texture* texture = realMakeTexture(renderer, surface);
    if (texture != nullptr) gTextures.insert(texture);
    return texture;
}

void wrapDestroyTexture(SDL_Texture* texture) {
    requireOpen();
    const bool isAlive = gTextures.erase(texture) == 1;
    requireRule(isAlive || texture == nullptr, "a texture is destroyed once");
    realDestroyTexture(texture);
}

SDL_Surface* wrapRenderText(TTF_Font* font, const char* text, SDL_Color colour) {
    requireOpen();
    SDL_Surface* surface = realRenderText(font, text, colour);
    if (surface != nullptr) gSurfaces++;
    return surface;
}

void wrapFreeSurface(SDL_Surface* surface) {
    if (surface != nullptr) gSurfaces--;
    realFreeSurface(surface);
}

TTF_Font* wrapOpenFont(const char* path, int size) {
    TTF_Font* font = realOpenFont(path, size);
    if (font != nullptr) gFonts++;
    return font;
}

void wrapCloseFont(TTF_Font* font) {
    requireOpen();
    gFonts--;
    realCloseFont(font);
}

// SDL stretches in software by way of a picture of the whole rectangle, however little of it is in
// the window: seconds and gigabytes for a large one.
static bool isQuicklyStretched(const SDL_Rect* rect) {
    constexpr int kLargest = 4096;
    return rect->w <= kLargest && rect->h <= kLargest;
}

int wrapRenderCopy(SDL_Renderer* renderer, SDL_Texture* texture, const SDL_Rect* from,
                   const SDL_Rect* to) {
    // Stretching in software takes more time than all the rest: few of the copies are made.
    constexpr int64_t kCopiesPerReal = 16;
    static int64_t all = 0;
    requireOpen();
    gCopies++;
    if (all++ % kCopiesPerReal != 0 || !isQuicklyStretched(to)) return 0;
    return realRenderCopy(renderer, texture, from, to);
}

void wrapPresent(SDL_Renderer* renderer) {
    requireOpen();
    realPresent(renderer);
}

void wrapSetTitle(SDL_Window* window, const char* title) {
    requireOpen();
    realSetTitle(window, title);
}

int wrapSetFullscreen(SDL_Window* window, Uint32 flags) {
    requireOpen();
    return realSetFullscreen(window, flags);
}

// The close --------------------------------------------------------------------------------------

// A second close does nothing.
void wrapCloseEngine() {
    realCloseEngine();
    gClosed = true;
    checkClosedRules();
}

void checkClosedRules() {
    if (!gClosed) return;
    requireRule(gEngineClosed, "a close lasts");
    requireRule(gFonts == 0, "the close closes the font");
    requireRule(gSurfaces == 0, "the close frees what the texts rendered");
}

// Frames -----------------------------------------------------------------------------------------

static int64_t copiesOfFrame() {
    int64_t copies = 0;
    for (const Image& image : gImages)
        copies += image.visible ? 1 : 0;
    for (const auto& [key, text] : gGameTexts)
        copies += !text.hidden && text.texture != nullptr ? 1 : 0;
    for (const auto& [id, unit] : gUnits)
        copies += unit.image.visible ? 1 : 0;
    return copies + (selectionFrame().visible ? 1 : 0);
}

void wrapDrawFrame() {
    if (!gEngineClosed && gPassesToNextFrame-- > 0) return;
    constexpr int32_t kPassesPerFrame = 200;
    gPassesToNextFrame = kPassesPerFrame;
    gCopies = 0;
    realDrawFrame();
    requireRule(gCopies == (gEngineClosed ? 0 : copiesOfFrame()), "a frame shows what is visible");
}

// After a pass -----------------------------------------------------------------------------------

// Images and units of one file may share a texture, texts have one each.
static std::set<SDL_Texture*> ownedTextures() {
    std::set<SDL_Texture*> owned = {selectionFrame().texture};
    for (const Image& image : gImages)
        owned.insert(image.texture);
    for (const auto& [id, unit] : gUnits)
        owned.insert(unit.image.texture);
    for (const auto& [key, text] : gGameTexts) {
        const bool isNew = owned.insert(text.texture).second;
        requireRule(isNew || text.texture == nullptr, "a text shares no texture");
    }
    owned.erase(nullptr);
    return owned;
}

static int64_t ownedSurfaces() {
    return std::count_if(gGameTexts.begin(), gGameTexts.end(),
                         [](const auto& entry) { return entry.second.surface != nullptr; });
}

// Each texture has SDL's record, its pixels and what the renderer keeps: with room to spare.
static void checkAllocations() {
    static const int64_t atFirst = SDL_GetNumAllocations();
    constexpr int64_t kPerTexture = 12, kForTheRest = 400;
    const int64_t owners = static_cast<int64_t>(gTextures.size()) + gSurfaces;
    requireRule(SDL_GetNumAllocations() - atFirst <= kPerTexture * owners + kForTheRest,
                "SDL's memory grows with the textures only");
}

void checkResourceRules() {
    checkClosedRules();
    if (gClosed) return;
    requireRule(gTextures == ownedTextures(), "every texture has its owner");
    requireRule(gSurfaces == ownedSurfaces(), "every surface has its text");
    requireRule(gFonts == 1 && gFont != nullptr, "there is one font");
    checkAllocations();
}
