#include "timers/timer_builtins.h"

#include "script/host/arguments.h"
#include "timers/timers.h"

int32_t builtinCreateTimer() {
    openArguments();
    const bool oneShot = readInteger() != 0;
    nextArgument();
    const int32_t interval = readInteger();
    nextArgument();
    ArgumentText functionName;
    readText(functionName);
    createTimer(oneShot, interval, functionName);  // even if the ")" is missing
    expectCloseParen();
    return gNextTimerId;
}

int32_t builtinPauseTimer() {
    openArguments();
    const int32_t id = readInteger();
    nextArgument();
    const bool paused = readInteger() != 0;
    expectCloseParen();
    pauseTimer(id, paused);
    return 0;
}

int32_t builtinDeleteTimer() {
    deleteTimer(onlyInteger());
    return 0;
}

int32_t builtinGetLastTimer() {
    noArguments();
    return gLastTimerId;
}

int32_t builtinGetCurrentTimer() {
    noArguments();
    return gCurrentTimerId;
}
