#include "script/nesting.h"

#include <pthread.h>

#include <cstddef>

#include "script/errors.h"

thread_local int32_t gNestingDepth = 0;

// The lowest address the interpreter may use on this thread; null until it is first asked for.
static thread_local const char* gStackFloor = nullptr;

// What an error report, a library call of a built-in and a signal handler may need on top.
static constexpr size_t kStackReserve = 256 * 1024;

static const char* findStackFloor() {
    pthread_attr_t attributes;
    void* lowest = nullptr;
    size_t size = 0;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        pthread_attr_getstack(&attributes, &lowest, &size);
        pthread_attr_destroy(&attributes);
    }
    return static_cast<const char*>(lowest) + kStackReserve;
}

void enterNesting() {
    if (gStackFloor == nullptr) gStackFloor = findStackFloor();
    const char* here = static_cast<const char*>(__builtin_frame_address(0));
    if (gNestingDepth >= kMaxNesting || here < gStackFloor) {
        syntaxError(ScriptError::NestedTooDeeply);
    }
    gNestingDepth++;
}
