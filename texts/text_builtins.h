// The built-ins of texts and their font. A text's id is the key of the registry
// (texts/game_texts.h); an unknown one gets a hidden, empty text at 0, 0.
#pragma once

#include <cstdint>

// changeallfont("file", size): shows all texts in the font of the file, at `size` points. Returns
// 0.
int32_t builtinChangeAllFont();

// changeallcolorfont(red, green, blue): shows all texts in the colour; 0 to 255 each. Returns 0.
int32_t builtinChangeAllColorFont();

// createtext("text", x, y, w, h): shows the text, stretched to w by h pixels. Returns the number of
// the text made latest.
int32_t builtinCreateText();

// deletetext(id): hides the text and erases the one under its number. Returns 0.
int32_t builtinDeleteText();

// hidetext(id, flag): hides the text, or shows it if the flag is 0. Returns 0.
int32_t builtinHideText();

// getlastgametext(): the number of the text made latest.
int32_t builtinGetLastGameText();

// movegametext(id, x, y): puts the text's top left corner at x, y. Returns 0.
int32_t builtinMoveGameText();

// getgametextx(id), getgametexty(id): the text's left and top edge.
int32_t builtinGetGameTextX();
int32_t builtinGetGameTextY();

// setgametextwh(id, w, h): stretches the text to w by h pixels. Returns 0.
int32_t builtinSetGameTextWh();
