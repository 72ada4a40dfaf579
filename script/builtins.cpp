#include "script/builtins.h"

#include <cstring>

#include "script/console_builtins.h"

// The one place where script/ knows the other folders: their handlers.
const BuiltinFunction gBuiltins[] = {
    {"getche", builtinGetche}, {"putch", builtinPutch},   {"puts", builtinPuts},
    {"print", builtinPrint},   {"getnum", builtinGetnum}, {"", nullptr},
};

int32_t findBuiltin(const char* name) {
    for (int32_t i = 0; gBuiltins[i].name[0] != '\0'; i++) {
        if (std::strcmp(gBuiltins[i].name, name) == 0) return i;
    }
    return -1;
}
