#include "controls/TipPlacement.h"

#include <algorithm>

#include "frame/WindowDpi.h"

namespace {

constexpr int32_t kInset = 2;
constexpr int32_t kExtraWidth = 4;
constexpr int32_t kExtraHeight = 2;
constexpr int32_t kCursorOffsetX = 2;
constexpr int32_t kCursorOffsetY = 20;
constexpr int32_t kGapAboveCursor = 2;

}  // namespace

int32_t TipPlacement::TextWidthLimit(int32_t maxWidth, int32_t dpi) noexcept {
    if (maxWidth <= 0) return 0;
    return std::max(1, maxWidth - 2 * ScaleToDpi(kInset, dpi) - ScaleToDpi(kExtraWidth, dpi));
}

SIZE TipPlacement::WindowSize(SIZE text, int32_t dpi) noexcept {
    return SIZE{text.cx + 2 * ScaleToDpi(kInset, dpi) + ScaleToDpi(kExtraWidth, dpi),
                text.cy + 2 * ScaleToDpi(kInset, dpi) + ScaleToDpi(kExtraHeight, dpi)};
}

RECT TipPlacement::Bounds(RECT workArea, int32_t XMax, int32_t YMax) noexcept {
    if (XMax > 0 && XMax < workArea.right) workArea.right = std::max<LONG>(XMax, workArea.left);
    if (YMax > 0 && YMax < workArea.bottom) workArea.bottom = std::max<LONG>(YMax, workArea.top);
    return workArea;
}

RECT TipPlacement::Place(POINT cursor, SIZE window, const RECT& bounds, int32_t dpi) noexcept {
    const LONG width = std::min<LONG>(window.cx, bounds.right - bounds.left);
    const LONG height = std::min<LONG>(window.cy, bounds.bottom - bounds.top);
    LONG left = cursor.x + ScaleToDpi(kCursorOffsetX, dpi);
    LONG top = cursor.y + ScaleToDpi(kCursorOffsetY, dpi);
    if (left + width > bounds.right) left = bounds.right - width;
    if (left < bounds.left) left = bounds.left;
    if (top + height > bounds.bottom) top = cursor.y - height - ScaleToDpi(kGapAboveCursor, dpi);
    if (top < bounds.top) top = bounds.top;
    return RECT{left, top, left + width, top + height};
}
