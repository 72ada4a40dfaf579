// The built-in functions, one row for each: what the engine's table, the script checker and the
// editors' colouring are made from.
//
// X(name, handler, arguments, argument names, must end its statement)
//
// The arguments are one letter each:
//   i  an integer expression
//   k  an integer expression that is a key code
//   t  one token taken as a text
//   f  one token taken as the name of a script function
//   p  one token taken as the file of a picture, beside the script
//   a  one token taken as the file of a font, in the working directory
// and for the console, whose calls are read in ways of their own:
//   *  anything up to the first ")", unread
//   e  an expression that begins with its parenthesis
//   s  a string and nothing else
//   v  a string or an integer expression
#pragma once

// clang-format off
#define ZEL_BUILTINS(X)                                                                           \
    X(getche, builtinGetche, "*", "", false)                                                      \
    X(putch, builtinPutch, "e", "value", false)                                                   \
    X(puts, builtinPuts, "s", "\"text\"", true)                                                   \
    X(print, builtinPrint, "v", "value or \"text\"", true)                                        \
    X(getnum, builtinGetnum, "*", "", false)                                                      \
    X(showimage, builtinShowImage, "ii", "image, visible", false)                                 \
    X(moveimage, builtinMoveImage, "iii", "image, x, y", false)                                   \
    X(getimagex, builtinGetImageX, "i", "image", false)                                           \
    X(getimagey, builtinGetImageY, "i", "image", false)                                           \
    X(changesizeimage, builtinChangeSizeImage, "iii", "image, w, h", false)                       \
    X(loadimage, builtinLoadImage, "p", "\"file\"", false)                                        \
    X(createtimer, builtinCreateTimer, "iif", "once, interval, \"function\"", false)              \
    X(addexectfunckey, builtinAddExectFuncKey, "ikf", "0, key, \"function\"", false)              \
    X(changewindowname, builtinChangeWindowName, "t", "\"text\"", false)                          \
    X(fullscreen, builtinFullscreen, "i", "mode", false)                                          \
    X(pausetimer, builtinPauseTimer, "ii", "timer, pause", false)                                 \
    X(deletetimer, builtinDeleteTimer, "i", "timer", false)                                       \
    X(getlasttimer, builtinGetLastTimer, "", "", false)                                           \
    X(getcurrenttimer, builtinGetCurrentTimer, "", "", false)                                     \
    X(getcurrentkey, builtinGetCurrentKey, "", "", false)                                         \
    X(changefunckey, builtinChangeFuncKey, "kff", "key, \"function\", \"function\"", false)       \
    X(deletefunckey, builtinDeleteFuncKey, "kf", "key, \"function\"", false)                      \
    X(exitgame, builtinExitGame, "", "", false)                                                   \
    X(getmousex, builtinGetMouseX, "", "", false)                                                 \
    X(getmousey, builtinGetMouseY, "", "", false)                                                 \
    X(changeallfont, builtinChangeAllFont, "ai", "\"file\", size", false)                         \
    X(changeallcolorfont, builtinChangeAllColorFont, "iii", "red, green, blue", false)            \
    X(createtext, builtinCreateText, "tiiii", "\"text\", x, y, w, h", false)                      \
    X(deletetext, builtinDeleteText, "i", "text", false)                                          \
    X(hidetext, builtinHideText, "ii", "text, hidden", false)                                     \
    X(getlastgametext, builtinGetLastGameText, "", "", false)                                     \
    X(movegametext, builtinMoveGameText, "iii", "text, x, y", false)                              \
    X(getgametextx, builtinGetGameTextX, "i", "text", false)                                      \
    X(getgametexty, builtinGetGameTextY, "i", "text", false)                                      \
    X(setgametextwh, builtinSetGameTextWh, "iii", "text, w, h", false)                            \
    X(createunit, builtinCreateUnit, "iii", "type, x, y", false)                                  \
    X(moveunit, builtinMoveUnit, "iii", "unit, x, y", false)                                      \
    X(getunitx, builtinGetUnitX, "i", "unit", false)                                              \
    X(getunity, builtinGetUnitY, "i", "unit", false)                                              \
    X(getlastcreatedunit, builtinGetLastCreatedUnit, "", "", false)
// clang-format on
