// TipPlacement: the tip window's size from its text, and its place beside the cursor on the screen.
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

// The tip label draws its text inside a border inset of 2 (at 96 DPI); the window adds 4 to the
// right and 2 below, so that the text has as much room after it as the leading blank gives
// before it. The window goes 2 right of and 20 below the cursor's hot spot (below the arrow),
// and moves left, or above the cursor, where it would leave `bounds`.
struct TipPlacement {
    // The width the text may take before it wraps, for a window of at most `maxWidth` (0: none).
    static int32_t TextWidthLimit(int32_t maxWidth, int32_t dpi) noexcept;
    static SIZE WindowSize(SIZE text, int32_t dpi) noexcept;
    // `bounds`: the work area, with its right and bottom pulled in to XMax and YMax where given.
    static RECT Bounds(RECT workArea, int32_t XMax, int32_t YMax) noexcept;
    static RECT Place(POINT cursor, SIZE window, const RECT& bounds, int32_t dpi) noexcept;
};
