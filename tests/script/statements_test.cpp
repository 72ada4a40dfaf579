#include <gtest/gtest.h>

#include "support/level.h"

TEST(Statements, FirstParameterNamesFirstArgument) {
    EXPECT_EQ("3", runLevel("int f(int a, int b) { return a - b; }\n"
                            "int main() { print(f(5, 2)); }"));
}
