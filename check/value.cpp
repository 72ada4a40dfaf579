#include "check/value.h"

#include "script/run/arithmetic.h"

Value calculate(char operation, Value left, Value right) {
    if (!left.known || !right.known) return {};
    const int32_t a = left.number;
    const int32_t b = right.number;
    switch (operation) {
        case '+':
            return knownValue(wrapAdd(a, b));
        case '-':
            return knownValue(wrapSubtract(a, b));
        case '*':
            return knownValue(wrapMultiply(a, b));
        case '/':
            return b == 0 ? Value() : knownValue(wrapDivide(a, b));
        default:
            return b == 0 ? Value() : knownValue(wrapRemainder(a, b));
    }
}

Value compare(char relation, Value left, Value right) {
    if (!left.known || !right.known) return {};
    return knownValue(compareValues(relation, left.number, right.number) ? 1 : 0);
}
