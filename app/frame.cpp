#include "app/frame.h"

#include <SDL.h>

#include <vector>

#include "app/base/window.h"
#include "images/images.h"
#include "texts/game_texts.h"
#include "units/units.h"

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

void drawFrame() {
    if (gEngineClosed) {
        constexpr Uint32 kFrameMs = 16;
        SDL_Delay(kFrameMs);
        return;
    }
    composeFrame();
    SDL_RenderPresent(gRenderer);
}
