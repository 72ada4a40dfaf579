// What one file of rules tells another.
#pragma once

#include <cstdint>
#include <string>

// Errors that scripts have raised so far.
int64_t scriptErrors();

// A key is bound to a name that is not known; a timer that runs has such a name.
bool unknownNameIsBound(bool (*isKnown)(const std::string&));
bool unknownNameIsTimed(bool (*isKnown)(const std::string&));
