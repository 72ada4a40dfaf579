#include "play/records.h"

#include <algorithm>

#include "images/images.h"
#include "play/output.h"
#include "texts/game_texts.h"
#include "timers/timers.h"
#include "units/selection.h"
#include "units/units.h"

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
    for (const auto& [key, timer] : gTimers) {
        records.push_back("timer" + field("key", key) + field("id", timer.id) +
                          field("function", timer.functionName) +
                          field("interval", timer.interval) + field("counter", timer.counter) +
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
