// ArrowPictures: the up, down, left and right triangles of scroll and drop-down buttons, drawn at a DPI.
#pragma once

#include <cstdint>

#include "graphics/GdiRaii.h"
#include "platform/win32/WinApi.h"

enum class eArrowDirection : int32_t { Up = 0, Down = 1, Left = 2, Right = 3 };

// The triangle's height (4 at 96 DPI, scaled) and its base, 2 x height - 1, so that the apex is
// one pixel wide at every DPI.
int32_t ArrowGlyphHeight(int32_t dpi) noexcept;
// The side of the square bitmap: the base plus one pixel of background on each side, so that
// the pixel at 0,0 is always background (the image button's default see-through colour).
int32_t ArrowBitmapSide(int32_t dpi) noexcept;

// A bitmap of ArrowBitmapSide square, filled with lBackColor, with the triangle in lColor centred
// in it, pointing in `direction`. Colours are OLE colours. Empty when the system refuses.
BitmapOwner CreateArrowBitmap(eArrowDirection direction, int32_t dpi, int32_t lColor, int32_t lBackColor);
