#include "app/frame.h"

#include <SDL.h>

#include <cstring>
#include <vector>

#include "app/base/window.h"
#include "images/images.h"
#include "texts/game_texts.h"
#include "units/units.h"

static constexpr Uint32 kFrameMs = 16;

// The size is read again after each image: a timer function may load one meanwhile.
static void drawImages(const std::vector<Image>& images) {
    for (size_t i = 0; i < images.size(); i++)
        draw(images[i]);
}

void composeFrame() {
    SDL_RenderClear(gRenderer);
    drawImages(gImages);
    drawGameTexts();
    drawUnits();
    drawImages(gSystemPictures);
}

// A hidden window on Wayland ----------------------------------------------------------------------

// A Wayland compositor answers no present of a window that nobody sees, and SDL waits a second for
// it. Ticks on the main thread would stop meanwhile. Such a window is presented without waiting,
// until it gets keys or mouse again. Nothing else tells that it is hidden.
static bool gPresentsWait = true;  // for the display
static bool gHadFocus = false;     // when the last frame was drawn

static bool isOnWayland() {
    const char* driver = SDL_GetCurrentVideoDriver();
    return driver != nullptr && std::strcmp(driver, "wayland") == 0;
}

static void letPresentsWait(bool wait) {
    if (SDL_RenderSetVSync(gRenderer, wait ? 1 : 0) == 0) gPresentsWait = wait;
}

static void presentOnWayland() {
    constexpr Uint32 kHiddenMs = 500;  // no shown window waits that long
    constexpr Uint32 kFocus = SDL_WINDOW_INPUT_FOCUS | SDL_WINDOW_MOUSE_FOCUS;
    const bool hasFocus = (SDL_GetWindowFlags(gWindow) & kFocus) != 0;
    if (hasFocus && !gHadFocus && !gPresentsWait) letPresentsWait(true);
    gHadFocus = hasFocus;
    const Uint32 startedMs = SDL_GetTicks();
    SDL_RenderPresent(gRenderer);
    if (!gPresentsWait) SDL_Delay(kFrameMs);
    if (gPresentsWait && SDL_GetTicks() - startedMs >= kHiddenMs) letPresentsWait(false);
}

void drawFrame() {
    if (gEngineClosed) {
        SDL_Delay(kFrameMs);
        return;
    }
    composeFrame();
    if (isOnWayland()) {
        presentOnWayland();
    } else {
        SDL_RenderPresent(gRenderer);
    }
}
