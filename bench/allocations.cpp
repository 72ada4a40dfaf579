#include "bench/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

static std::atomic<int64_t> gAllocations{0};

int64_t allocationCount() {
    return gAllocations;
}

// In a file of their own: seen from where they are called, compilers take them for a mismatch.
void* operator new(size_t size) {
    gAllocations++;
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) std::abort();
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, size_t) noexcept {
    std::free(memory);
}
