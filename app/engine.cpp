#include "app/engine.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>

#include <cstdio>

#include "app/base/input.h"
#include "app/base/main_thread.h"
#include "app/base/window.h"
#include "app/signals.h"
#include "app/ticks.h"
#include "images/images.h"
#include "texts/fonts.h"
#include "texts/game_texts.h"
#include "units/units.h"

static bool initSdl() {
    constexpr Uint32 kSubsystems = SDL_INIT_TIMER | SDL_INIT_AUDIO | SDL_INIT_VIDEO |
                                   SDL_INIT_JOYSTICK | SDL_INIT_HAPTIC | SDL_INIT_GAMECONTROLLER |
                                   SDL_INIT_EVENTS;
    if (SDL_Init(kSubsystems) < 0) {
        std::printf("SDL could not initialize! SDL_Error: %s\n", SDL_GetError());
        return false;
    }
    endProcessOnSecondSignal();
    watchForQuit();
    initMainThread();
    return true;
}

// The refused hint is fatal although its message calls itself a warning: levels are drawn to be
// seen with linear filtering.
static bool initHints() {
    // Unless asked to, SDL does not collect draw calls when a driver is chosen by index. A refusal
    // costs speed only.
    SDL_SetHint(SDL_HINT_RENDER_BATCHING, "1");
    if (SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "1") == SDL_FALSE) {
        std::fputs("\nWarning: Linear texture filtering not enabled!", stdout);
        return false;
    }
    return true;
}

static bool initWindow() {
    gWindow = SDL_CreateWindow("Zel", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                               SCREEN_WIDTH, SCREEN_HEIGHT, SDL_WINDOW_SHOWN);
    if (gWindow == nullptr) {
        std::printf("Window could not be created! SDL_Error: %s\n", SDL_GetError());
        return false;
    }
    return true;
}

// Asks for the second driver of SDL's list, not for the first suitable one: this is meant.
static bool initRenderer() {
    constexpr int kDriverIndex = 1;
    gRenderer = SDL_CreateRenderer(gWindow, kDriverIndex,
                                   SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC);
    if (gRenderer == nullptr) {
        std::printf("\nRender is not loaded! SDL_Error: %s", SDL_GetError());
        return false;
    }
    SDL_SetRenderDrawColor(gRenderer, 255, 255, 255, 255);
    return true;
}

// Prints the message of a step that reports nothing itself.
static bool require(bool succeeded, const char* message) {
    if (!succeeded) std::fputs(message, stdout);
    return succeeded;
}

bool initEngine() {
    return require(initFonts(), "\nCant load font!") &&
           require(loadUnitTypes(), "\nCant load units!") && initSdl() && initHints() &&
           initWindow() && initRenderer() && require(loadSystemPictures(), "Cant load SysPics");
}

void closeEngine() {
    if (gEngineClosed) return;
    gEngineClosed = true;
    stopMainThreadCalls();
    stopTicks();
    endMainThreadCalls();
    closeImages();
    SDL_DestroyRenderer(gRenderer);
    SDL_DestroyWindow(gWindow);
    closeGameTexts();
    closeFont();
    TTF_Quit();
    IMG_Quit();
    SDL_Quit();
    endProcessOnNextSignal();  // nobody reads quit events any more
}
