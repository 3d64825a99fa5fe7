// DrawFocusRectDpi: the dotted focus rectangle, its line width and dot size scaled by DPI.
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

// At a DPI whose scaled line is one pixel (96, and up to 143) exactly DrawFocusRect. Above, a
// dotted frame of lines and dots as wide as one pixel scaled from 96 DPI, drawn by inverting the
// pixels like DrawFocusRect does, so that drawing it twice restores what was there.
void DrawFocusRectDpi(HDC hdc, const RECT& rc, int32_t iDpi) noexcept;
