#include "texts/text_builtins.h"

#include "script/host/arguments.h"
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
    int32_t red = 0, green = 0, blue = 0;
    openArguments();
    readIntegers({&red, &green, &blue});
    expectCloseParen();
    setTextColour(red, green, blue);
    return 0;
}

int32_t builtinCreateText() {
    openArguments();
    ArgumentText text;
    readText(text);
    SDL_Rect rect;
    nextArgument();
    readIntegers({&rect.x, &rect.y, &rect.w, &rect.h});
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
    int32_t id = 0, x = 0, y = 0;
    openArguments();
    readIntegers({&id, &x, &y});
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
    int32_t id = 0, w = 0, h = 0;
    openArguments();
    readIntegers({&id, &w, &h});
    setTextSize(findOrCreateGameText(id), w, h);
    expectCloseParen();
    return 0;
}
