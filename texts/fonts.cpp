#include "texts/fonts.h"

#include <cstdio>

#include "app/base/main_thread.h"
#include "app/base/paths.h"

TTF_Font* gFont = nullptr;
SDL_Color gTextColour = {0, 0, 0, 0};

static constexpr int kFirstPointSize = 12;
static constexpr Uint8 kFirstGrey = 100;

bool initFonts() {
    TTF_Init();
    gFont = TTF_OpenFont(kFirstFont, kFirstPointSize);
    if (gFont == nullptr) {
        std::printf("Cant load %s font!", kFirstFont);
        return false;
    }
    gTextColour.r = gTextColour.g = gTextColour.b = kFirstGrey;
    return true;
}

static void closeReplacedFont(void* font) {
    TTF_CloseFont(static_cast<TTF_Font*>(font));
}

void openFont(const char* fileName, int32_t pointSize) {
    TTF_Font* font = TTF_OpenFont(fileName, pointSize);
    if (font == nullptr) {
        std::printf("Cant load %s font!", fileName);
        return;
    }
    TTF_Font* replaced = gFont;
    gFont = font;
    postToMainThread(closeReplacedFont, replaced);
}

void setTextColour(int32_t red, int32_t green, int32_t blue) {
    gTextColour.r = static_cast<Uint8>(red);
    gTextColour.g = static_cast<Uint8>(green);
    gTextColour.b = static_cast<Uint8>(blue);
}

void closeFont() {
    if (gFont != nullptr) TTF_CloseFont(gFont);
}
