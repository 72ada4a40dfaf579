// A value of the script, if it is known before the script runs. Arithmetic is the engine's:
// 32 bits, wrapping.
#pragma once

#include <cstdint>

struct Value {
    bool known = false;
    int32_t number = 0;

    bool isZero() const { return known && number == 0; }
};

inline Value knownValue(int64_t number) {
    return {true, static_cast<int32_t>(static_cast<uint32_t>(number))};
}

// The operation of the one-character operator; the divisor of "/" and "%" is not zero.
Value calculate(char operation, Value left, Value right);

// The comparison of an operator's code (script/source/lexer.h): 1 or 0.
Value compare(char relation, Value left, Value right);
