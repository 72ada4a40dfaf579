// Measures drawing a frame against bare SDL calls that draw the same.
//
// Each frame ends in a read of one pixel: it waits for the drawing, which a driver without a screen
// would drop otherwise. The two kinds of frames take turns, and the least of each counts: the
// processor time of the whole process, as a software renderer draws on threads of its own.
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

// What the bare calls draw: the same textures at the same rectangles, in the same order.
struct BareImage {
    SDL_Texture* texture;
    SDL_Rect rect;
};
static std::vector<BareImage> gBareImages;

static const char kPicture[] = "SysPics/select.bmp";

// Each image has a texture of its own, as in a level.
static void requireImages(int64_t count) {
    requireEngine();
    for (int32_t i = 0; i < count; i++) {
        Image image = makeImage(kPicture);
        image.rect = scatteredRect(i);
        setVisible(image, true);
        gImages.push_back(image);
        gBareImages.push_back({image.texture, image.rect});
    }
}

// Behind a measurement, as releaseTexts: its textures must not weigh on the next.
static void releaseImages() {
    for (const Image& image : gImages)
        SDL_DestroyTexture(image.texture);
    gImages.clear();
    gBareImages.clear();
}

static void drawBareImages() {
    SDL_RenderClear(gRenderer);
    for (const BareImage& image : gBareImages)
        SDL_RenderCopy(gRenderer, image.texture, nullptr, &image.rect);
}

static void images(benchmark::State& state) {
    requireImages(state.range(0));
    compareFrames(state, drawBareImages);
    releaseImages();
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
BENCHMARK(texts)->Arg(10)->Arg(100)->Arg(1000)->Iterations(60);

BENCHMARK_MAIN();
