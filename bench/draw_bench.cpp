// Measures drawing a frame against bare SDL calls that draw the same.
//
// Each frame ends in a read of one pixel: it waits for the drawing, which a driver without a screen
// would drop otherwise. The two kinds of frames take turns, and the least of each counts: the
// processor time of the whole process, as a software renderer draws on threads of its own.
#include <SDL_image.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "app/base/window.h"
#include "app/frame.h"
#include "bench/allocations.h"
#include "bench/level.h"
#include "images/images.h"
#include "texts/fonts.h"
#include "texts/game_texts.h"
#include "units/units.h"

static void finishFrame() {
    const SDL_Rect corner = {0, 0, 1, 1};
    Uint32 pixel = 0;
    require(SDL_RenderReadPixels(gRenderer, &corner, SDL_PIXELFORMAT_ARGB8888, &pixel,
                                 sizeof pixel) == 0,
            "a frame cannot be read");
    benchmark::DoNotOptimize(pixel);
}

static std::vector<Uint32> pixelsOf(void (*drawOnce)()) {
    std::vector<Uint32> pixels(static_cast<size_t>(SCREEN_WIDTH) * SCREEN_HEIGHT);
    drawOnce();
    require(SDL_RenderReadPixels(gRenderer, nullptr, SDL_PIXELFORMAT_ARGB8888, pixels.data(),
                                 SCREEN_WIDTH * static_cast<int>(sizeof(Uint32))) == 0,
            "a frame cannot be read");
    return pixels;
}

// What is compared must be the same picture, and something must be on it.
static void requireSamePicture(void (*drawBare)()) {
    const std::vector<Uint32> bare = pixelsOf(drawBare);
    require(bare == pixelsOf(composeFrame), "the two frames are not the same");
    require(std::count(bare.begin(), bare.end(), bare.back()) < static_cast<int64_t>(bare.size()),
            "nothing is drawn");
}

static double secondsOfFrame(void (*drawOnce)()) {
    const double started = processorSeconds();
    drawOnce();
    finishFrame();
    return processorSeconds() - started;
}

// Reports both times in seconds, and what one of the engine's frames took from the heap.
static void compareFrames(benchmark::State& state, void (*drawBare)()) {
    requireSamePicture(drawBare);
    double bare = 1e9;
    double engine = 1e9;
    int64_t allocations = 0;
    for (auto _ : state) {
        bare = std::min(bare, secondsOfFrame(drawBare));
        const int64_t before = allocationCount();
        engine = std::min(engine, secondsOfFrame(composeFrame));
        allocations += allocationCount() - before;
    }
    state.counters["bare"] = bare;
    state.counters["engine"] = engine;
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(allocations), benchmark::Counter::kAvgIterations);
}

static SDL_Rect scatteredRect(int32_t i) {
    return {i * 37 % SCREEN_WIDTH, i * 53 % SCREEN_HEIGHT, 15, 15};
}

// Images ------------------------------------------------------------------------------------------

// What the bare calls draw: the same pictures at the same rectangles, in the same order, from
// textures of their own.
struct BareImage {
    SDL_Texture* texture;
    SDL_Rect rect;
};
static std::vector<BareImage> gBareImages;

static const char kPicture[] = "SysPics/select.bmp";
static const char kUnitPicture[] = "levels/level1/img/peon.bmp";

static SDL_Texture* addBareImage(const char* path, const SDL_Rect& rect) {
    SDL_Texture* texture = IMG_LoadTexture(gRenderer, path);
    require(texture != nullptr, "a picture does not load");
    gBareImages.push_back({texture, rect});
    return texture;
}

static void addImage(Image image, const SDL_Rect& rect) {
    image.rect = rect;
    setVisible(image, true);
    gImages.push_back(image);
}

static void drawBareImages() {
    SDL_RenderClear(gRenderer);
    for (const BareImage& image : gBareImages)
        SDL_RenderCopy(gRenderer, image.texture, nullptr, &image.rect);
}

// After a measurement, as releaseTexts: its textures must not weigh on the next. The engine's own
// textures stay, for loads to come.
static void compareAndRelease(benchmark::State& state) {
    compareFrames(state, drawBareImages);
    gImages.clear();
    gUnits.clear();
    for (const BareImage& image : gBareImages)
        SDL_DestroyTexture(image.texture);
    gBareImages.clear();
}

// Images that are given the textures of the bare calls: what the engine adds to them.
static void images(benchmark::State& state) {
    requireEngine();
    for (int32_t i = 0; i < state.range(0); i++) {
        Image image;
        setTexture(image, addBareImage(kPicture, scatteredRect(i)));
        addImage(image, scatteredRect(i));
    }
    compareAndRelease(state);
}

// One picture loaded again and again, as a level does it.
static void copies(benchmark::State& state) {
    requireEngine();
    for (int32_t i = 0; i < state.range(0); i++) {
        addBareImage(kPicture, scatteredRect(i));
        addImage(makeImage(kPicture), scatteredRect(i));
    }
    compareAndRelease(state);
}

static void units(benchmark::State& state) {
    requireEngine();
    for (int32_t i = 0; i < state.range(0); i++) {
        const SDL_Rect rect = scatteredRect(i);
        addBareImage(kUnitPicture, rect);
        createUnit(0, rect.x, rect.y);
    }
    compareAndRelease(state);
}

// One load more of a picture that is there.
static void loadAgain(benchmark::State& state) {
    requireEngine();
    loadImageFile(kPicture);
    for (auto _ : state) {
        benchmark::DoNotOptimize(loadImageFile(kPicture));
    }
    gImages.clear();
}

// Texts -------------------------------------------------------------------------------------------

// The bare calls' own copy of a text, rendered afresh for each frame as the engine does.
struct BareText {
    std::string text;
    SDL_Rect rect;
    SDL_Surface* surface;
    SDL_Texture* texture;
};
static std::vector<BareText> gBareTexts;

static void requireTexts(int64_t count) {
    requireEngine();
    for (int32_t i = 0; i < count; i++) {
        const std::string words = "Score: " + std::to_string(i);
        const SDL_Rect rect = scatteredRect(i);
        GameText& text = findOrCreateGameText(i);
        text.text = words;
        text.rect = rect;
        text.hidden = false;
        gBareTexts.push_back({words, rect, nullptr, nullptr});
    }
}

static void releaseTexts() {
    for (auto& entry : gGameTexts) {
        SDL_DestroyTexture(entry.second.texture);
        SDL_FreeSurface(entry.second.surface);
    }
    gGameTexts.clear();
    for (const BareText& text : gBareTexts) {
        SDL_DestroyTexture(text.texture);
        SDL_FreeSurface(text.surface);
    }
    gBareTexts.clear();
}

static void drawBareTexts() {
    SDL_RenderClear(gRenderer);
    for (BareText& text : gBareTexts) {
        if (text.texture != nullptr) SDL_DestroyTexture(text.texture);
        SDL_FreeSurface(text.surface);
        text.surface = TTF_RenderUTF8_Solid(gFont, text.text.c_str(), gTextColour);
        text.texture = SDL_CreateTextureFromSurface(gRenderer, text.surface);
        SDL_RenderCopy(gRenderer, text.texture, nullptr, &text.rect);
    }
}

static void texts(benchmark::State& state) {
    requireTexts(state.range(0));
    compareFrames(state, drawBareTexts);
    releaseTexts();
}

BENCHMARK(images)->Arg(100)->Arg(1000)->Arg(5000)->Iterations(60);
BENCHMARK(copies)->Arg(1000)->Arg(5000)->Iterations(60);
BENCHMARK(units)->Arg(1000)->Arg(5000)->Iterations(60);
BENCHMARK(loadAgain)->Iterations(1000);
BENCHMARK(texts)->Arg(10)->Arg(100)->Arg(1000)->Iterations(60);

BENCHMARK_MAIN();
