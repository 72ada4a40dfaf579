// The script's arithmetic: the operations of a 32-bit processor, which wrap, without what C++
// leaves undefined. Pure functions, for the evaluator and for the checker, which foretells its
// results.
#pragma once

#include <cstdint>

#include "script/source/lexer.h"

inline int32_t wrapAdd(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

inline int32_t wrapSubtract(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

inline int32_t wrapMultiply(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

// Rounds towards zero. `b` is not zero.
inline int32_t wrapDivide(int32_t a, int32_t b) {
    return b == -1 ? wrapSubtract(0, a) : a / b;
}

// Has the sign of `a`. `b` is not zero.
inline int32_t wrapRemainder(int32_t a, int32_t b) {
    return b == -1 ? 0 : a % b;
}

// `relation` is the code of a relational operator (script/source/lexer.h).
inline bool compareValues(char relation, int32_t a, int32_t b) {
    switch (relation) {
        case kLess:
            return a < b;
        case kLessOrEqual:
            return a <= b;
        case kGreater:
            return a > b;
        case kGreaterOrEqual:
            return a >= b;
        case kEqual:
            return a == b;
        default:
            return a != b;
    }
}
