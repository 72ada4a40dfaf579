#include "images/image_builtins.h"

#include "app/globals.h"
#include "images/images.h"
#include "script/arguments.h"
#include "script/waiting.h"

int32_t builtinShowImage() {
    openArguments();
    const int32_t id = readInteger();
    nextArgument();
    const bool visible = readInteger() != 0;
    expectCloseParen();
    if (Image* image = findImage(id)) setVisible(*image, visible);
    return 0;
}

int32_t builtinMoveImage() {
    int32_t id = 0, x = 0, y = 0;
    openArguments();
    readIntegers({&id, &x, &y});
    expectCloseParen();
    if (Image* image = findImage(id)) setPosition(*image, x, y);
    return 0;
}

int32_t builtinGetImageX() {
    const Image* image = findImage(onlyInteger());
    return image == nullptr ? 0 : getX(*image);
}

int32_t builtinGetImageY() {
    const Image* image = findImage(onlyInteger());
    return image == nullptr ? 0 : getY(*image);
}

int32_t builtinChangeSizeImage() {
    int32_t id = 0, w = 0, h = 0;
    openArguments();
    readIntegers({&id, &w, &h});
    expectCloseParen();
    if (Image* image = findImage(id)) setSize(*image, w, h);
    return 0;
}

// The path is put together only when no error can jump over the string any more.
static int32_t loadFromLevel(const char* name) {
    return loadImageFile((gLevelDir + name).c_str());
}

int32_t builtinLoadImage() {
    openArguments();
    ArgumentText name;
    readText(name);
    expectCloseParen();
    const ScriptState state = saveScriptState();  // a timer function waits for the main thread
    const int32_t id = loadFromLevel(name);
    restoreScriptState(state);
    return id;
}
