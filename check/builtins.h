// The built-in functions as the checker knows them: the rows of script/host/builtin_list.h.
#pragma once

#include <string>
#include <string_view>

struct BuiltinSignature {
    std::string_view name;
    std::string_view arguments;      // one letter each, see script/host/builtin_list.h
    std::string_view argumentNames;  // for people
    bool endsStatement;              // must be followed by ";"
};

// The built-in of that name, which is in lower case, or null.
const BuiltinSignature* findBuiltinSignature(std::string_view name);

// All rows, ended by one with an empty name.
extern const BuiltinSignature gBuiltinSignatures[];

// "moveimage(image, x, y)"
std::string callForm(const BuiltinSignature& builtin);
