#include "units/unit_builtins.h"

#include "script/arguments.h"
#include "script/waiting.h"
#include "units/units.h"

int32_t builtinCreateUnit() {
    int32_t typeIndex = 0, x = 0, y = 0;
    openArguments();
    readIntegers({&typeIndex, &x, &y});
    const ScriptState state = saveScriptState();     // a timer function waits for the main thread
    const int32_t id = createUnit(typeIndex, x, y);  // even if the ")" is missing
    restoreScriptState(state);
    expectCloseParen();
    return id;
}

int32_t builtinMoveUnit() {
    int32_t id = 0, x = 0, y = 0;
    openArguments();
    readIntegers({&id, &x, &y});
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
