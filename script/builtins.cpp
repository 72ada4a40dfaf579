#include "script/builtins.h"

#include "app/window_builtins.h"
#include "images/image_builtins.h"
#include "keys/key_builtins.h"
#include "script/console_builtins.h"
#include "texts/text_builtins.h"
#include "timers/timer_builtins.h"
#include "units/unit_builtins.h"

// The one place where script/ knows the other folders: their handlers.
const BuiltinFunction gBuiltins[] = {
    {"getche", builtinGetche},
    {"putch", builtinPutch},
    {"puts", builtinPuts},
    {"print", builtinPrint},
    {"getnum", builtinGetnum},
    {"showimage", builtinShowImage},
    {"moveimage", builtinMoveImage},
    {"getimagex", builtinGetImageX},
    {"getimagey", builtinGetImageY},
    {"changesizeimage", builtinChangeSizeImage},
    {"loadimage", builtinLoadImage},
    {"createtimer", builtinCreateTimer},
    {"addexectfunckey", builtinAddExectFuncKey},
    {"changewindowname", builtinChangeWindowName},
    {"fullscreen", builtinFullscreen},
    {"pausetimer", builtinPauseTimer},
    {"deletetimer", builtinDeleteTimer},
    {"getlasttimer", builtinGetLastTimer},
    {"getcurrenttimer", builtinGetCurrentTimer},
    {"getcurrentkey", builtinGetCurrentKey},
    {"changefunckey", builtinChangeFuncKey},
    {"deletefunckey", builtinDeleteFuncKey},
    {"exitgame", builtinExitGame},
    {"getmousex", builtinGetMouseX},
    {"getmousey", builtinGetMouseY},
    {"changeallfont", builtinChangeAllFont},
    {"changeallcolorfont", builtinChangeAllColorFont},
    {"createtext", builtinCreateText},
    {"deletetext", builtinDeleteText},
    {"hidetext", builtinHideText},
    {"getlastgametext", builtinGetLastGameText},
    {"movegametext", builtinMoveGameText},
    {"getgametextx", builtinGetGameTextX},
    {"getgametexty", builtinGetGameTextY},
    {"setgametextwh", builtinSetGameTextWh},
    {"createunit", builtinCreateUnit},
    {"moveunit", builtinMoveUnit},
    {"getunitx", builtinGetUnitX},
    {"getunity", builtinGetUnitY},
    {"getlastcreatedunit", builtinGetLastCreatedUnit},
    {"", nullptr},
};

int32_t findBuiltin(std::string_view name) {
    for (int32_t i = 0; gBuiltins[i].name[0] != '\0'; i++) {
        if (name == gBuiltins[i].name) return i;
    }
    return -1;
}
