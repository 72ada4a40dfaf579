// Names in messages, and words that look alike: "did you mean".
#pragma once

#include <string>
#include <string_view>
#include <vector>

// The name in quotes.
std::string quoted(std::string_view name);

// How many single changes make one word of the other; two neighbours swapped count as one.
size_t editDistance(std::string_view a, std::string_view b);

// The candidate most like the word, or nothing if none is like it.
std::string_view nearestName(std::string_view word,
                             const std::vector<std::string_view>& candidates);

// ", did you mean "x"?", or nothing for an empty name.
std::string didYouMean(std::string_view name);
