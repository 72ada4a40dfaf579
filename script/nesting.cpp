#include "script/nesting.h"

#include <pthread.h>

#include <cstddef>

__thread int32_t gNestingDepth = 0;
__thread const char* gStackFloor = nullptr;

// What an error report, a library call of a built-in and a signal handler may need on top.
static constexpr size_t kStackReserve = 256 * 1024;

void findStackFloor() {
    if (gStackFloor != nullptr) return;
    pthread_attr_t attributes;
    void* lowest = nullptr;
    size_t size = 0;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        pthread_attr_getstack(&attributes, &lowest, &size);
        pthread_attr_destroy(&attributes);
    }
    gStackFloor = static_cast<const char*>(lowest) + kStackReserve;
}
