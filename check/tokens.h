// Findings about single tokens: characters that start nothing, words that have swallowed what
// comes after them, comments after comments.
#pragma once

#include "check/findings.h"
#include "check/scanner.h"

// What the engine makes of a character that starts nothing: it never gets past it.
void reportStuck(const Scanner& scanner, size_t position, Findings& findings);

// A string or comment that is not closed, a token that is too long: the load fails.
void reportFault(const Scanner& scanner, const Lexeme& token, Findings& findings);

// Oddities that do not stop the load. Returns the position up to which tokens need no look: what is
// odd there comes of what was found.
size_t inspectToken(const Scanner& scanner, const Lexeme& token, Findings& findings);
