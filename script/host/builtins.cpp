#include "script/host/builtins.h"

#include <iterator>

#include "script/host/builtin_list.h"
#include "script/host/console_builtins.h"
#include "script/source/symbols.h"

// The subsystems above define their handlers; naming them here keeps the table below them.
#define ZEL_DECLARE(name, handler, ...) int32_t handler();
ZEL_BUILTINS(ZEL_DECLARE)
#undef ZEL_DECLARE

const BuiltinFunction gBuiltins[] = {
#define ZEL_ROW(name, handler, ...) {#name, handler},
    ZEL_BUILTINS(ZEL_ROW)
#undef ZEL_ROW
        {"", nullptr},
};
static_assert(std::size(gBuiltins) <= kMaxBuiltins, "the symbols have room for them");

void declareBuiltins() {
    for (const BuiltinFunction* builtin = gBuiltins; builtin->name[0] != '\0'; builtin++)
        internSymbol(builtin->name)->builtin = builtin;
}

int32_t findBuiltin(std::string_view name) {
    for (int32_t i = 0; gBuiltins[i].name[0] != '\0'; i++) {
        if (name == gBuiltins[i].name) return i;
    }
    return -1;
}
