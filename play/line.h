// A line of a play: its words, and the form that a command wants them in.
//
// Words are separated by blanks; a text in quotes is one word and may hold \n \r \t \" \\. Two
// slashes where a word could begin start a comment.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Word {
    std::string text;  // empty for the line's end
    bool inQuotes = false;
    int column = 1;  // where it starts, counted from 1, in bytes
};

// What is wrong with a line; of a line in no known form, what would have been taken by those forms
// that it follows furthest.
struct Fault {
    std::string text;  // empty if nothing is wrong; choices are separated by "|"
    size_t word = 0;
    int column = 1;
};

// The words of a line, and its end as the last one.
std::vector<Word> splitLine(const std::string& line, Fault& fault);

// What the words of a line mean, in their order.
struct Arguments {
    std::vector<int64_t> numbers;    // also colours 0xRRGGBB, scancodes, the indices of choices
    std::vector<std::string> texts;  // also files
};

// Reads words in a form like "mouse down|up BUTTON" or "expect TEXT [within MS]": words as they
// are, choices, kinds in capitals (line.cpp lists them), and what may be left out. Returns false,
// and notes what it would have taken, if the words have another form.
bool readForm(const std::vector<Word>& words, const char* form, Arguments& said, Fault& fault);

// The sentence about words that have none of the forms that were tried.
std::string misfit(const std::vector<Word>& words, const Fault& fault);
