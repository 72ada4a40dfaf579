#include "script/nesting.h"

#include <pthread.h>

#include <cstddef>

#include "script/errors.h"
#include "script/tokens.h"

__thread int32_t gNestingDepth = 0;

// The lowest address that script code may use on this thread's stack; null until it is first asked
// for.
static thread_local const char* gStackFloor = nullptr;

// What the levels between two checks, an error report and a library call may need on top.
static constexpr size_t kStackReserve = 256 * 1024;

static void findStackFloor() {
    pthread_attr_t attributes;
    void* lowest = nullptr;
    size_t size = 0;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        pthread_attr_getstack(&attributes, &lowest, &size);
        pthread_attr_destroy(&attributes);
    }
    gStackFloor = static_cast<const char*>(lowest) + kStackReserve;
}

void checkNesting(Place* position) {
    if (gStackFloor == nullptr) findStackFloor();
    const char* here = static_cast<const char*>(__builtin_frame_address(0));
    if (gNestingDepth >= kMaxNesting || here < gStackFloor) {
        syntaxError(ScriptError::NestedTooDeeply, position);
    }
}
