#include "check/names.h"

#include <algorithm>

std::string quoted(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::vector<size_t>> rows(a.size() + 1, std::vector<size_t>(b.size() + 1));
    for (size_t i = 0; i <= a.size(); i++) {
        for (size_t k = 0; k <= b.size(); k++) {
            size_t& best = rows[i][k];
            if (i == 0 || k == 0) {
                best = i + k;
                continue;
            }
            const size_t change = a[i - 1] == b[k - 1] ? 0 : 1;
            best = std::min({rows[i - 1][k] + 1, rows[i][k - 1] + 1, rows[i - 1][k - 1] + change});
            const bool swapped = i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1];
            if (swapped) best = std::min(best, rows[i - 2][k - 2] + 1);
        }
    }
    return rows[a.size()][b.size()];
}

std::string_view nearestName(std::string_view word,
                             const std::vector<std::string_view>& candidates) {
    constexpr size_t kShortest = 3;  // words of one or two letters are like all others
    constexpr size_t kLongest = 40;  // nobody mistypes longer words, and the search is quadratic
    if (word.size() < kShortest || word.size() > kLongest) return "";
    size_t nearest = word.size() == kShortest ? 2 : word.size() / 3 + 1;  // the first one too far
    std::string_view best;
    for (std::string_view candidate : candidates) {
        const size_t longer = std::max(word.size(), candidate.size());
        const size_t shorter = std::min(word.size(), candidate.size());
        if (candidate == word || longer - shorter >= nearest) continue;
        const size_t distance = editDistance(word, candidate);
        if (distance >= nearest || distance >= longer) continue;
        nearest = distance;
        best = candidate;
    }
    return best;
}

std::string didYouMean(std::string_view name) {
    return name.empty() ? "" : ", did you mean " + quoted(name) + "?";
}
