// Braces that do not match: where, most likely, one is missing or one is too many.
//
// Counting tells that braces do not match, but not where: a missing "}" is missed at the end of the
// text only. The indentation tells more: a "}" that begins a line closes a block that began in a
// line indented as far, and a function begins at the left margin, outside of all blocks.
#pragma once

#include "check/scanner.h"

bool bracesMatch(const Scanner& scanner);

// The "{" that most likely has no "}"; `otherwise` if the indentation tells nothing.
size_t likelyOpenBrace(const Scanner& scanner, size_t otherwise);

// For a "}" that closes nothing: the "}" that most likely is too many, or the place before which a
// "{" most likely is missing.
struct ExtraBrace {
    size_t position;
    bool isMissing;
};
ExtraBrace likelyExtraBrace(const Scanner& scanner, size_t otherwise);
