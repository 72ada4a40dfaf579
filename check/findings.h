// What was found in one script.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "check/ids.h"

struct Finding {
    CheckId id = CheckId::Syntax;
    Severity severity = Severity::Warning;
    size_t position = 0;  // in Source::text
    std::string text;
};

class Findings {
public:
    // Adds a finding, unless there is one of the same id on the same place.
    void add(CheckId id, size_t position, std::string text, Severity severity = Severity::Warning);

    // The engine certainly fails at the position, or because of something from..to around it: the
    // finding there that explains it becomes an error. Without one, `text` is added.
    void confirm(CheckId id, size_t position, size_t from, size_t to, const std::string& text);

    // True if something that may stop the engine, or lead it astray, was found from..to.
    bool anyTrap(size_t from, size_t to) const;

    // True if from..to there is a character or word that is no part of the language.
    bool anyOddToken(size_t from, size_t to) const;

    // True if there is such a finding at the position.
    bool has(CheckId id, size_t position) const;

    // A comment or a brace that does not match throws everything else out of step: with one of
    // them found, the others go. What is kept is an error if any of them was. Returns true if
    // there was one. Braces that match if they are counted are no cause, whatever was found.
    bool keepRootAlone(bool bracesMatch);

    const std::vector<Finding>& all() const { return findings_; }

    // In the order of the text, as they are shown. Places that only may be reached say so, and of
    // the warnings of one id only the first ones are there.
    std::vector<Finding> sorted() const;

private:
    std::vector<Finding> findings_;
    std::unordered_map<size_t, size_t> index_;  // of each finding, by its id and position
};
