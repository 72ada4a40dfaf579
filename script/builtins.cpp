#include "script/builtins.h"

#include <iterator>

#include "app/window_builtins.h"
#include "images/image_builtins.h"
#include "keys/key_builtins.h"
#include "script/builtin_list.h"
#include "script/console_builtins.h"
#include "script/names.h"
#include "texts/text_builtins.h"
#include "timers/timer_builtins.h"
#include "units/unit_builtins.h"

// The one place where script/ knows the other folders: their handlers.
const BuiltinFunction gBuiltins[] = {
#define ZEL_ROW(name, handler, ...) {#name, handler},
    ZEL_BUILTINS(ZEL_ROW)
#undef ZEL_ROW
        {"", nullptr},
};
static_assert(std::size(gBuiltins) <= kMaxBuiltins, "the names have room for them");

void declareBuiltins() {
    for (const BuiltinFunction* builtin = gBuiltins; builtin->name[0] != '\0'; builtin++)
        nameOf(builtin->name)->builtin = builtin;
}

int32_t findBuiltin(std::string_view name) {
    for (int32_t i = 0; gBuiltins[i].name[0] != '\0'; i++) {
        if (name == gBuiltins[i].name) return i;
    }
    return -1;
}
