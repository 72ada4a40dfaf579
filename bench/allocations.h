// Counts what C++ code takes from the heap: the engine's own share, not the libraries'.
#pragma once

#include <cstdint>

// Calls of operator new so far, on all threads.
int64_t allocationCount();
