#include "graphics/FocusRect.h"

#include <algorithm>

namespace {

// One pixel at 96 DPI at `dpi`, rounded like every other scaled size of the library.
int32_t dotSize(int32_t dpi) noexcept { return dpi <= 96 ? 1 : ::MulDiv(1, dpi, 96); }

// The dots form a checkerboard of dot-sized squares counted from the rectangle's corner, the corner
// square clear as DrawFocusRect leaves it: a square is inverted when its column and row add up odd.
// A strip lies in one row (top, bottom) or one column (sides), `across` steps from the corner;
// along it, the squares are counted from `origin`. Only the squares inside `visible` are drawn,
// so a huge rectangle costs no more than the part of it that can show.
void invertDashes(HDC hdc, const RECT& strip, int32_t dot, bool alongX, int32_t origin, int64_t across,
                  const RECT& visible) noexcept {
    if (strip.right <= strip.left || strip.bottom <= strip.top) return;
    const int64_t from = std::max<int64_t>(alongX ? strip.left : strip.top, alongX ? visible.left : visible.top);
    const int64_t to = std::min<int64_t>(alongX ? strip.right : strip.bottom, alongX ? visible.right : visible.bottom);
    if (to <= from) return;
    const int64_t period = 2 * static_cast<int64_t>(dot);
    const int64_t firstOn = origin + (across % 2 == 0 ? dot : 0);
    for (int64_t a = firstOn + ((from - origin) / period) * period - period; a < to; a += period) {
        const auto lo = static_cast<int32_t>(std::max(a, from));
        const auto hi = static_cast<int32_t>(std::min(a + dot, to));
        if (hi <= lo) continue;
        if (alongX) {
            ::PatBlt(hdc, lo, strip.top, hi - lo, strip.bottom - strip.top, DSTINVERT);
        } else {
            ::PatBlt(hdc, strip.left, lo, strip.right - strip.left, hi - lo, DSTINVERT);
        }
    }
}

}  // namespace

void DrawFocusRectDpi(HDC hdc, const RECT& rc, int32_t iDpi) noexcept {
    if (hdc == nullptr) return;
    const int32_t dot = dotSize(iDpi);
    if (dot <= 1) {
        ::DrawFocusRect(hdc, &rc);
        return;
    }
    if (rc.right <= rc.left || rc.bottom <= rc.top) return;
    // Top and bottom strips take the corners; the sides fill what is between, so that no pixel is
    // inverted twice in one call.
    RECT visible{};
    if (::GetClipBox(hdc, &visible) == ERROR) return;
    const int32_t top = rc.top;
    const int32_t bottom = rc.bottom;
    const int32_t topEnd = static_cast<int32_t>(std::min<int64_t>(int64_t{top} + dot, bottom));
    const int32_t bottomStart = static_cast<int32_t>(std::max<int64_t>(int64_t{bottom} - dot, topEnd));
    const int32_t leftEnd = static_cast<int32_t>(std::min<int64_t>(int64_t{rc.left} + dot, rc.right));
    const int32_t rightStart = static_cast<int32_t>(std::max<int64_t>(int64_t{rc.right} - dot, leftEnd));
    // The far row and column: the whole number of squares nearest to the extent less one square.
    const auto farStep = [dot](int64_t extent) { return std::max<int64_t>(0, (extent - dot + dot / 2) / dot); };
    const int64_t lastRow = farStep(int64_t{bottom} - top);
    const int64_t lastColumn = farStep(int64_t{rc.right} - rc.left);
    invertDashes(hdc, RECT{rc.left, top, rc.right, topEnd}, dot, true, rc.left, 0, visible);
    invertDashes(hdc, RECT{rc.left, bottomStart, rc.right, bottom}, dot, true, rc.left, lastRow, visible);
    invertDashes(hdc, RECT{rc.left, topEnd, leftEnd, bottomStart}, dot, false, top, 0, visible);
    invertDashes(hdc, RECT{rightStart, topEnd, rc.right, bottomStart}, dot, false, top, lastColumn, visible);
}
