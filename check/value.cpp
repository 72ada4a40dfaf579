#include "check/value.h"

#include "script/lexer.h"

Value calculate(char operation, Value left, Value right) {
    if (!left.known || !right.known) return {};
    const int64_t a = left.number;
    const int64_t b = right.number;
    switch (operation) {
        case '+':
            return knownValue(a + b);
        case '-':
            return knownValue(a - b);
        case '*':
            return knownValue(a * b);
        case '/':
            return b == 0 ? Value() : knownValue(a / b);
        default:
            return b == 0 ? Value() : knownValue(a % b);
    }
}

static bool holds(char relation, int32_t a, int32_t b) {
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

Value compare(char relation, Value left, Value right) {
    if (!left.known || !right.known) return {};
    return knownValue(holds(relation, left.number, right.number) ? 1 : 0);
}
