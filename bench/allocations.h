// Counts what C++ code takes from the heap: the engine's share, and that of libraries in C++.
#pragma once

#include <cstdint>

// Calls of operator new so far, on all threads.
int64_t allocationCount();
