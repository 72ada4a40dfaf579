#include "units/unit_builtins.h"

#include "script/arguments.h"
#include "units/units.h"

int32_t builtinCreateUnit() {
    openArguments();
    const int32_t typeIndex = readInteger();
    nextArgument();
    const int32_t x = readInteger();
    nextArgument();
    const int32_t y = readInteger();
    const int32_t id = createUnit(typeIndex, x, y);  // even if the ")" is missing
    expectCloseParen();
    return id;
}

int32_t builtinMoveUnit() {
    openArguments();
    const int32_t id = readInteger();
    nextArgument();
    const int32_t x = readInteger();
    nextArgument();
    const int32_t y = readInteger();
    expectCloseParen();
    setUnitPosition(findOrCreateUnit(id), x, y);
    return 0;
}

int32_t builtinGetUnitX() {
    return findOrCreateUnit(onlyInteger()).rect.x;
}

int32_t builtinGetUnitY() {
    return findOrCreateUnit(onlyInteger()).rect.y;
}

int32_t builtinGetLastCreatedUnit() {
    noArguments();
    return gLastUnitId;
}
