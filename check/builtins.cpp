#include "check/builtins.h"

#include <unordered_map>

#include "script/host/builtin_list.h"

const BuiltinSignature gBuiltinSignatures[] = {
#define ZEL_ROW(name, handler, arguments, argumentNames, endsStatement) \
    {#name, arguments, argumentNames, endsStatement},
    ZEL_BUILTINS(ZEL_ROW)
#undef ZEL_ROW
        {"", "", "", false},
};

using BuiltinIndex = std::unordered_map<std::string_view, const BuiltinSignature*>;

static BuiltinIndex makeIndex() {
    BuiltinIndex index;
    for (const BuiltinSignature* row = gBuiltinSignatures; !row->name.empty(); row++)
        index.emplace(row->name, row);
    return index;
}

const BuiltinSignature* findBuiltinSignature(std::string_view name) {
    static const BuiltinIndex index = makeIndex();
    const auto found = index.find(name);
    return found == index.end() ? nullptr : found->second;
}

std::string callForm(const BuiltinSignature& builtin) {
    return std::string(builtin.name) + "(" + std::string(builtin.argumentNames) + ")";
}
