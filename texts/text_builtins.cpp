#include "texts/text_builtins.h"

#include "script/arguments.h"
#include "texts/fonts.h"
#include "texts/game_texts.h"

int32_t builtinChangeAllFont() {
    openArguments();
    ArgumentText fileName;
    readText(fileName);
    nextArgument();
    const int32_t pointSize = readInteger();
    expectCloseParen();
    openFont(fileName, pointSize);
    return 0;
}

int32_t builtinChangeAllColorFont() {
    openArguments();
    const int32_t red = readInteger();
    nextArgument();
    const int32_t green = readInteger();
    nextArgument();
    const int32_t blue = readInteger();
    expectCloseParen();
    setTextColour(red, green, blue);
    return 0;
}

int32_t builtinCreateText() {
    openArguments();
    ArgumentText text;
    readText(text);
    SDL_Rect rect;
    for (int* value : {&rect.x, &rect.y, &rect.w, &rect.h}) {
        nextArgument();
        *value = readInteger();
    }
    const int32_t number = createGameText(text, rect);
    expectCloseParen();
    return number;
}

// What changes a text does so before the ")" is looked at: without it the change still holds.

int32_t builtinDeleteText() {
    openArguments();
    removeGameText(findOrCreateGameText(readInteger()));
    expectCloseParen();
    return 0;
}

int32_t builtinHideText() {
    openArguments();
    const int32_t id = readInteger();
    nextArgument();
    const bool hidden = readInteger() != 0;
    findOrCreateGameText(id).hidden = hidden;
    expectCloseParen();
    return 0;
}

int32_t builtinGetLastGameText() {
    noArguments();
    return gLastTextNumber;
}

int32_t builtinMoveGameText() {
    openArguments();
    const int32_t id = readInteger();
    nextArgument();
    const int32_t x = readInteger();
    nextArgument();
    const int32_t y = readInteger();
    setTextPosition(findOrCreateGameText(id), x, y);
    expectCloseParen();
    return 0;
}

int32_t builtinGetGameTextX() {
    return findOrCreateGameText(onlyInteger()).rect.x;
}

int32_t builtinGetGameTextY() {
    return findOrCreateGameText(onlyInteger()).rect.y;
}

int32_t builtinSetGameTextWh() {
    openArguments();
    const int32_t id = readInteger();
    nextArgument();
    const int32_t w = readInteger();
    nextArgument();
    const int32_t h = readInteger();
    setTextSize(findOrCreateGameText(id), w, h);
    expectCloseParen();
    return 0;
}
