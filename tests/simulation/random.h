// A small random source of our own: a seed gives the same numbers on every machine and with every
// library.
#pragma once

#include <cstddef>
#include <cstdint>

struct Random {
    uint64_t state = 0;
};

// SplitMix64: every state gives a good next number, so any seed will do.
inline uint64_t nextRandom(Random& random) {
    random.state += 0x9E3779B97F4A7C15U;
    uint64_t mixed = random.state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31);
}

// 0 to limit - 1; `limit` is above 0.
inline int32_t randomBelow(Random& random, int32_t limit) {
    return static_cast<int32_t>(nextRandom(random) % static_cast<uint64_t>(limit));
}

// `from` to `to`, both included.
inline int32_t randomBetween(Random& random, int32_t from, int32_t to) {
    return from + randomBelow(random, to - from + 1);
}

inline bool randomChance(Random& random, int32_t ofThousand) {
    return randomBelow(random, 1000) < ofThousand;
}

template <typename Item, size_t count>
const Item& pickFrom(Random& random, const Item (&items)[count]) {
    return items[static_cast<size_t>(randomBelow(random, static_cast<int32_t>(count)))];
}
