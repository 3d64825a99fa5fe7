// RegionCheck: compares a window's region with a shape that the test draws itself.
#pragma once

#include "platform/win32/WinApi.h"

namespace testsupport {

struct RegionComparison {
    int regionType = ERROR;  // what GetWindowRgn answered
    int shapePixels = 0;     // pixels the drawing painted
    int mismatches = 0;      // pixels in the drawing but not the region, or the other way round
};

// `draw(dc, rect)` paints the expected shape in any colour but black on a black width x height
// bitmap; every pixel is then compared with the window's region.
template <class Draw>
RegionComparison CompareWindowRegion(HWND hwnd, int width, int height, Draw draw) {
    RegionComparison result;
    const HDC screen = ::GetDC(nullptr);
    const HDC reference = ::CreateCompatibleDC(screen);
    const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, width, height);
    ::ReleaseDC(nullptr, screen);
    const HGDIOBJ oldBitmap = ::SelectObject(reference, bitmap);
    RECT all{0, 0, width, height};
    ::FillRect(reference, &all, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
    draw(reference, all);
    const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    result.regionType = ::GetWindowRgn(hwnd, region);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool painted = ::GetPixel(reference, x, y) != RGB(0, 0, 0);
            result.shapePixels += painted ? 1 : 0;
            if (painted != (result.regionType != ERROR && ::PtInRegion(region, x, y) != FALSE)) ++result.mismatches;
        }
    }
    ::DeleteObject(region);
    ::SelectObject(reference, oldBitmap);
    ::DeleteObject(bitmap);
    ::DeleteDC(reference);
    return result;
}

// What GetWindowRgn answers for the window: ERROR when it has no region, NULLREGION when empty.
inline int WindowRegionType(HWND hwnd) {
    const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    const int type = ::GetWindowRgn(hwnd, region);
    ::DeleteObject(region);
    return type;
}

// Draws `text` white, with the platform's own call, in `font` (deleted afterwards).
inline void DrawReferenceText(HDC dc, RECT area, const wchar_t* text, HFONT font) {
    const HGDIOBJ oldFont = ::SelectObject(dc, font);
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, RGB(255, 255, 255));
    ::DrawTextW(dc, text, -1, &area, DT_EXPANDTABS | DT_WORDBREAK);
    ::SelectObject(dc, oldFont);
    ::DeleteObject(font);
}

}  // namespace testsupport
