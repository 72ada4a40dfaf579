// The built-ins of key bindings. Key codes are SDL scancodes.
#pragma once

#include <cstdint>

// addexectfunckey(anything, key, "function"): calls the function at every keyboard event while the
// key is held. The first argument is evaluated and ignored. Returns 0.
int32_t builtinAddExectFuncKey();

// changefunckey(key, "old", "new"): binds the new function in place of the old one. Returns 0.
int32_t builtinChangeFuncKey();

// deletefunckey(key, "function"): takes back the last binding of the function. Returns 0.
int32_t builtinDeleteFuncKey();

// getcurrentkey(): the key that is being fired, or was latest.
int32_t builtinGetCurrentKey();
