#include "play/looks.h"

#include <SDL_image.h>

#include <algorithm>

#include "app/base/window.h"
#include "app/frame.h"
#include "images/images.h"
#include "play/output.h"
#include "texts/game_texts.h"
#include "timers/timers.h"
#include "units/selection.h"
#include "units/units.h"

// The frame ---------------------------------------------------------------------------------------

static constexpr Uint32 kFormat = SDL_PIXELFORMAT_RGB24;

Picture readFrame() {
    if (gEngineClosed) return nullptr;
    composeFrame();
    Picture frame(SDL_CreateRGBSurfaceWithFormat(0, SCREEN_WIDTH, SCREEN_HEIGHT, 24, kFormat));
    const bool isRead = frame != nullptr && SDL_RenderReadPixels(gRenderer, nullptr, kFormat,
                                                                 frame->pixels, frame->pitch) == 0;
    return isRead ? std::move(frame) : nullptr;
}

bool savePicture(SDL_Surface& picture, const std::string& path) {
    return IMG_SavePNG(&picture, path.c_str()) == 0;
}

Picture loadPicture(const std::string& path) {
    const Picture loaded(IMG_Load(path.c_str()));
    Picture picture(SDL_ConvertSurfaceFormat(loaded.get(), kFormat, 0));
    const bool fits =
        picture != nullptr && picture->w == SCREEN_WIDTH && picture->h == SCREEN_HEIGHT;
    return fits ? std::move(picture) : nullptr;
}

int pixelAt(const SDL_Surface& picture, int x, int y) {
    const auto* bytes = static_cast<const Uint8*>(picture.pixels) + y * picture.pitch + x * 3;
    return bytes[0] << 16 | bytes[1] << 8 | bytes[2];
}

int differingPixels(const SDL_Surface& one, const SDL_Surface& other) {
    int count = 0;
    for (int y = 0; y < SCREEN_HEIGHT; y++) {
        for (int x = 0; x < SCREEN_WIDTH; x++)
            count += pixelAt(one, x, y) != pixelAt(other, x, y) ? 1 : 0;
    }
    return count;
}

// The registries ----------------------------------------------------------------------------------

static std::string field(const char* name, int64_t value) {
    return std::string(" ") + name + '=' + std::to_string(value);
}

static std::string field(const char* name, const std::string& text) {
    return std::string(" ") + name + '=' + escaped(text);
}

static std::string fields(const SDL_Rect& rect) {
    return field("x", rect.x) + field("y", rect.y) + field("w", rect.w) + field("h", rect.h);
}

static std::vector<std::string> timerRecords() {
    std::vector<std::string> records;
    for (const TimerEntry& entry : gTimers) {
        const auto& [key, timer] = entry;
        records.push_back("timer" + field("key", key) + field("id", timer.id) +
                          field("function", timer.functionName) +
                          field("interval", timer.interval) + field("counter", counterOf(entry)) +
                          field("paused", timer.paused) + field("once", timer.oneShot));
    }
    return records;
}

static std::vector<std::string> imageRecords() {
    std::vector<std::string> records;
    for (const Image& image : gImages) {
        records.push_back("image" + field("id", static_cast<int64_t>(records.size())) +
                          fields(image.rect) + field("visible", image.visible) +
                          field("loaded", image.texture != nullptr) + field("path", image.path));
    }
    return records;
}

static std::vector<std::string> textRecords() {
    std::vector<std::string> records;
    for (const auto& [key, text] : gGameTexts) {
        records.push_back("text" + field("key", key) + field("number", text.number) +
                          fields(text.rect) + field("visible", !text.hidden) +
                          field("text", text.text));
    }
    return records;
}

static bool isSelected(const Unit& unit) {
    return std::find(gSelectedUnits.begin(), gSelectedUnits.end(), &unit) != gSelectedUnits.end();
}

static std::vector<std::string> unitRecords() {
    std::vector<std::string> records;
    for (const auto& [id, unit] : gUnits) {
        records.push_back("unit" + field("id", id) + field("x", unit.rect.x) +
                          field("y", unit.rect.y) + field("type", unit.typeIndex) +
                          field("moving", unit.moveState == kUnitMoving) +
                          field("targetx", unit.targetX) + field("targety", unit.targetY) +
                          field("selected", isSelected(unit)));
    }
    return records;
}

std::vector<std::string> (*const kRecordLists[4])() = {timerRecords, imageRecords, textRecords,
                                                       unitRecords};
