#include "simulation/hash.h"

#include "app/base/input.h"
#include "app/base/window.h"
#include "images/images.h"
#include "keys/key_bindings.h"
#include "script/run/functions.h"
#include "script/run/variables.h"
#include "texts/fonts.h"
#include "texts/game_texts.h"
#include "timers/timers.h"
#include "units/selection.h"
#include "units/units.h"

static void addNumbers(Hash& hash, std::initializer_list<int64_t> numbers) {
    for (const int64_t number : numbers)
        addNumber(hash, number);
}

static void addRect(Hash& hash, const SDL_Rect& rect) {
    addNumbers(hash, {rect.x, rect.y, rect.w, rect.h});
}

static void addImage(Hash& hash, const Image& image) {
    addRect(hash, image.rect);
    addNumbers(hash, {image.visible, image.texture != nullptr});
    addText(hash, image.path);
}

static void addTimers(Hash& hash) {
    for (const TimerEntry& entry : gTimers) {
        const auto& [key, timer] = entry;
        addText(hash, timer.functionName);
        addNumbers(hash,
                   {key, timer.id, counterOf(entry), timer.interval, timer.paused, timer.oneShot});
    }
    addNumbers(hash, {gNextTimerId, gLastTimerId, gCurrentTimerId});
}

static void addKeys(Hash& hash) {
    for (const auto& [key, names] : gKeyBindings) {
        addNumber(hash, key);
        for (const std::string& name : names)
            addText(hash, name);
    }
    addBytes(hash, gKeyHasBindings, sizeof gKeyHasBindings);
    addNumber(hash, gCurrentKey);
}

static void addTexts(Hash& hash) {
    for (const auto& [key, text] : gGameTexts) {
        addText(hash, text.text);
        addRect(hash, text.rect);
        addNumbers(hash, {key, text.number, text.hidden});
    }
    addNumbers(hash,
               {gNextTextNumber, gLastTextNumber, gTextColour.r, gTextColour.g, gTextColour.b});
}

static void addUnits(Hash& hash) {
    for (const auto& [id, unit] : gUnits) {
        addNumbers(hash, {id, unit.targetX, unit.targetY, unit.moveState, unit.typeIndex});
        addRect(hash, unit.rect);
        addImage(hash, unit.image);
    }
    for (const Unit* unit : gSelectedUnits)
        addRect(hash, unit->rect);
    addNumbers(hash, {gNextUnitId, gLastUnitId, gHoveredUnit != nullptr});
}

void addRegistries(Hash& hash) {
    for (const Image& image : gImages)
        addImage(hash, image);
    addImage(hash, selectionFrame());
    addTimers(hash);
    addKeys(hash);
    addTexts(hash);
    addUnits(hash);
    for (int32_t i = 0; i < gGlobalCount; i++)
        addNumber(hash, gGlobalVars[i].value);
    addNumbers(hash, {gReturnValue, gEngineClosed, gLeftButtonDown, gRightButtonDown});
}
