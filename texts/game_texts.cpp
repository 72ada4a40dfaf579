#include "texts/game_texts.h"

#include "app/base/main_thread.h"
#include "app/base/window.h"
#include "script/source/lexer.h"
#include "texts/fonts.h"
#include "timers/timers.h"

std::map<int32_t, GameText> gGameTexts;
int32_t gNextTextNumber = 0;
int32_t gLastTextNumber = 0;

// A timer function may rewrite the text while the main thread renders it. So it gets all the memory
// that a script can fill at once, and zeros in it: what is read meanwhile is some text that ends.
GameText::GameText() : text(kTokenCapacity, '\0'), number(gNextTextNumber) {
    text.clear();
    gLastTextNumber = number;
    gNextTextNumber = number + 1;
}

GameText& findOrCreateGameText(int32_t key) {
    return gGameTexts[key];
}

int32_t createGameText(const char* text, const SDL_Rect& rect) {
    GameText& record = findOrCreateGameText(gNextTimerId);
    record.text = text;
    record.rect = rect;
    record.hidden = false;
    return gLastTextNumber;
}

using ErasedText = std::map<int32_t, GameText>::node_type;

static void destroyErasedText(void* data) {
    ErasedText* erased = static_cast<ErasedText*>(data);
    // After the close the texture is gone already, with its renderer.
    SDL_Texture* texture = erased->mapped().texture;
    if (texture != nullptr && !gEngineClosed) SDL_DestroyTexture(texture);
    SDL_FreeSurface(erased->mapped().surface);
    delete erased;
}

// The record is taken out at once and ends on the main thread, which may be drawing it.
void removeGameText(GameText& text) {
    text.hidden = true;
    const auto entry = gGameTexts.find(text.number);
    if (entry == gGameTexts.end()) return;
    postToMainThread(destroyErasedText, new ErasedText(gGameTexts.extract(entry)));
}

void setTextPosition(GameText& text, int32_t x, int32_t y) {
    text.rect.x = x;
    text.rect.y = y;
}

void setTextSize(GameText& text, int32_t w, int32_t h) {
    text.rect.w = w;
    text.rect.h = h;
}

// Puts this frame's surface and texture in place of the last one's.
static void renderText(GameText& text) {
    if (text.texture != nullptr) SDL_DestroyTexture(text.texture);
    SDL_FreeSurface(text.surface);
    text.texture = nullptr;
    text.surface = TTF_RenderUTF8_Solid(gFont, text.text.c_str(), gTextColour);
    if (text.surface == nullptr) return;
    text.texture = SDL_CreateTextureFromSurface(gRenderer, text.surface);
}

void drawGameText(GameText& text) {
    if (text.hidden) return;
    renderText(text);
    if (text.texture != nullptr) SDL_RenderCopy(gRenderer, text.texture, nullptr, &text.rect);
}

void drawGameTexts() {
    for (auto& [key, text] : gGameTexts)
        drawGameText(text);
}

void closeGameTexts() {
    for (auto& [key, text] : gGameTexts) {
        SDL_FreeSurface(text.surface);
        text.surface = nullptr;
        text.texture = nullptr;
    }
}
