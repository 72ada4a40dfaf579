// The built-ins that read standard input and write standard output. Everything the engine prints
// goes through the same C stream, so it appears in the order in which it was printed.
#pragma once

#include <cstdint>

// getche(): waits for one byte of standard input and returns it, -128..127; -1 at the end of the
// input. Whatever is in the parentheses is skipped unread.
int32_t builtinGetche();

// putch(value): writes the value as a decimal number, not as a character; returns it.
int32_t builtinPutch();

// puts("text"); writes the text and a line end. Must end its statement.
int32_t builtinPuts();

// print("text"); writes a line feed and then the text. print(value); writes the value, no more.
// Must end its statement.
int32_t builtinPrint();

// getnum(): 0. Reads no input; whatever is in the parentheses is skipped unread.
int32_t builtinGetnum();
