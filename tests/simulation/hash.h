// A running hash (FNV-1a) of what a level printed and of what its registries hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

struct Hash {
    uint64_t value = 0xCBF29CE484222325U;
};

inline void addBytes(Hash& hash, const void* bytes, size_t size) {
    const unsigned char* byte = static_cast<const unsigned char*>(bytes);
    for (size_t i = 0; i < size; i++)
        hash.value = (hash.value ^ byte[i]) * 0x100000001B3U;
}

inline void addNumber(Hash& hash, int64_t number) {
    addBytes(hash, &number, sizeof number);
}

inline void addText(Hash& hash, const std::string& text) {
    addBytes(hash, text.c_str(), text.size() + 1);
}

// Adds all registries and counters, and the script's globals.
void addRegistries(Hash& hash);
