// The built-ins of images. An identifier that no loadimage has returned is ignored; the getters
// then return 0.
#pragma once

#include <cstdint>

// showimage(id, flag): shows the image, or hides it if the flag is 0. Returns 0.
int32_t builtinShowImage();

// moveimage(id, x, y): puts the image's top left corner at x, y in window pixels. Returns 0.
int32_t builtinMoveImage();

// getimagex(id), getimagey(id): the image's left and top edge.
int32_t builtinGetImageX();
int32_t builtinGetImageY();

// changesizeimage(id, w, h): stretches the image to w by h pixels. Returns 0.
int32_t builtinChangeSizeImage();

// loadimage("name"): loads the picture, named from the level folder, and returns its identifier.
// The image starts hidden at 0, 0 in the picture's own size.
int32_t builtinLoadImage();
