#include "frame/MaskRegion.h"

#include <cstring>
#include <vector>

#include "graphics/GdiRaii.h"

HRGN CreateRegionFromMask(HBITMAP hMask, COLORREF holeColor) {
    BITMAP info{};
    if (hMask == nullptr || ::GetObjectW(hMask, sizeof(info), &info) == 0 || info.bmWidth <= 0 || info.bmHeight <= 0) {
        return ::CreateRectRgn(0, 0, 0, 0);
    }
    const LONG width = info.bmWidth;
    const LONG height = info.bmHeight;

    BITMAPINFO request{};
    request.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    request.bmiHeader.biWidth = width;
    request.bmiHeader.biHeight = -height;  // top-down rows
    request.bmiHeader.biPlanes = 1;
    request.bmiHeader.biBitCount = 32;
    request.bmiHeader.biCompression = BI_RGB;
    std::vector<uint32_t> pixels(static_cast<size_t>(width) * static_cast<size_t>(height));
    int rows = 0;
    {
        const WindowDCGuard screen(nullptr);
        if (screen.get() != nullptr) {
            rows = ::GetDIBits(screen.get(), hMask, 0, static_cast<UINT>(height), pixels.data(), &request,
                               DIB_RGB_COLORS);
        }
    }
    if (rows == 0) return ::CreateRectRgn(0, 0, 0, 0);

    // DIB pixels are 0x00RRGGBB; the colour is 0x00BBGGRR.
    const uint32_t hole = (static_cast<uint32_t>(GetRValue(holeColor)) << 16) |
                          (static_cast<uint32_t>(GetGValue(holeColor)) << 8) | GetBValue(holeColor);

    // One rectangle per horizontal run of kept pixels, handed to ExtCreateRegion in one go.
    std::vector<RECT> runs;
    for (LONG y = 0; y < height; ++y) {
        const uint32_t* row = pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(width);
        LONG x = 0;
        while (x < width) {
            while (x < width && (row[x] & 0x00FFFFFFU) == hole) ++x;
            const LONG start = x;
            while (x < width && (row[x] & 0x00FFFFFFU) != hole) ++x;
            if (x > start) runs.push_back(RECT{start, y, x, y + 1});
        }
    }
    if (runs.empty()) return ::CreateRectRgn(0, 0, 0, 0);

    std::vector<uint8_t> data(sizeof(RGNDATAHEADER) + runs.size() * sizeof(RECT));
    RGNDATAHEADER header{};
    header.dwSize = sizeof(RGNDATAHEADER);
    header.iType = RDH_RECTANGLES;
    header.nCount = static_cast<DWORD>(runs.size());
    header.nRgnSize = static_cast<DWORD>(runs.size() * sizeof(RECT));
    header.rcBound = RECT{0, 0, width, height};
    std::memcpy(data.data(), &header, sizeof(header));
    std::memcpy(data.data() + sizeof(header), runs.data(), runs.size() * sizeof(RECT));
    const HRGN region = ::ExtCreateRegion(nullptr, static_cast<DWORD>(data.size()),
                                          reinterpret_cast<const RGNDATA*>(data.data()));
    return region != nullptr ? region : ::CreateRectRgn(0, 0, 0, 0);
}
