#include "keys/key_builtins.h"

#include "keys/key_bindings.h"
#include "script/host/arguments.h"

int32_t builtinAddExectFuncKey() {
    openArguments();
    readInteger();  // has always been there, has never meant anything
    nextArgument();
    const int32_t key = readInteger();
    nextArgument();
    ArgumentText name;
    readText(name);
    expectCloseParen();
    addKeyBinding(key, name);
    return 0;
}

int32_t builtinChangeFuncKey() {
    openArguments();
    const int32_t key = readInteger();
    nextArgument();
    ArgumentText oldName;
    readText(oldName);
    nextArgument();
    ArgumentText newName;
    readText(newName);
    expectCloseParen();
    changeKeyBinding(key, oldName, newName);
    return 0;
}

int32_t builtinDeleteFuncKey() {
    openArguments();
    const int32_t key = readInteger();
    nextArgument();
    ArgumentText name;
    readText(name);
    expectCloseParen();
    removeKeyBinding(key, name);
    return 0;
}

int32_t builtinGetCurrentKey() {
    noArguments();
    return gCurrentKey;
}
