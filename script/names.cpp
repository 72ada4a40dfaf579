#include "script/names.h"

#include <functional>
#include <map>
#include <string>

#include "script/builtins.h"

static std::map<std::string, Name, std::less<>> gNames;

Name* nameOf(std::string_view text) {
    if (Name* name = findName(text)) return name;
    Name& name = gNames[std::string(text)];
    const int32_t builtin = findBuiltin(text);
    if (builtin >= 0) name.builtin = &gBuiltins[builtin];
    return &name;
}

Name* findName(std::string_view text) {
    const auto entry = gNames.find(text);
    return entry == gNames.end() ? nullptr : &entry->second;
}

void forgetNames() {
    gNames.clear();
}
