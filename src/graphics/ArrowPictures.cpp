#include "graphics/ArrowPictures.h"

#include "graphics/modCommonDraw.h"

int32_t ArrowGlyphHeight(int32_t dpi) noexcept {
    // MulDiv rounds a half away from zero, as every other size scaled from 96 DPI.
    const int32_t height = ::MulDiv(4, dpi > 0 ? dpi : 96, 96);
    return height > 0 ? height : 1;
}

int32_t ArrowBitmapSide(int32_t dpi) noexcept { return 2 * ArrowGlyphHeight(dpi) - 1 + 2; }

BitmapOwner CreateArrowBitmap(eArrowDirection direction, int32_t dpi, int32_t lColor, int32_t lBackColor) {
    const int32_t h = ArrowGlyphHeight(dpi);
    const int32_t side = ArrowBitmapSide(dpi);
    const WindowDCGuard screen(nullptr);
    BitmapOwner bitmap(::CreateCompatibleBitmap(screen.get(), side, side));
    const MemoryDCOwner dc(::CreateCompatibleDC(screen.get()));
    if (!bitmap || !dc) return BitmapOwner();
    const ScopedSelect target(dc.get(), bitmap.get());
    if (!target.selected()) return BitmapOwner();
    DrawRectCoords(dc.get(), 0, 0, side, side, lBackColor, true);
    // Row i of the triangle, counted from its base, spans the base less i pixels at each end.
    const int32_t baseStart = 1;
    const int32_t apexSpan = (side - h) / 2;  // where the glyph's depth begins across the arrow's axis
    for (int32_t i = 0; i < h; ++i) {
        const int32_t from = baseStart + i;
        const int32_t to = side - 1 - i;  // exclusive
        int32_t line = 0;
        switch (direction) {
            case eArrowDirection::Down: line = apexSpan + i; break;          // base on top
            case eArrowDirection::Up: line = apexSpan + h - 1 - i; break;    // base below
            case eArrowDirection::Right: line = apexSpan + i; break;         // base on the left
            case eArrowDirection::Left: line = apexSpan + h - 1 - i; break;  // base on the right
        }
        if (direction == eArrowDirection::Up || direction == eArrowDirection::Down) {
            DrawRectCoords(dc.get(), from, line, to, line + 1, lColor, true);
        } else {
            DrawRectCoords(dc.get(), line, from, line + 1, to, lColor, true);
        }
    }
    return bitmap;
}
