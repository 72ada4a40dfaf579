// What a command answers.
#pragma once

#include <string>
#include <vector>

#include "play/words.h"

struct Answer {
    enum class Kind { Ok, Failed, Error };
    Kind kind = Kind::Ok;
    std::string text;                  // of Ok: a value or nothing; else what is wrong
    std::vector<std::string> records;  // lines that follow
    int column = 1;                    // of Error: where in the line
};

Answer ok(const std::string& value = "");
Answer failed(const std::string& reason);

// The error of a line that is not as the command wants it.
Answer faultOf(const Words& words);
