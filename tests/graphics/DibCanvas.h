// DibCanvas: a 32-bpp DIB section with a DC, for drawing and reading pixels back as OLE colours.
#pragma once

#include <cstdint>
#include <vector>

#include "graphics/clsDIBSection.h"

class DibCanvas {
public:
    DibCanvas(int32_t width, int32_t height, int32_t fill = 0x00123456) {
        m_dib.Create(width, height, 32);
        Fill(fill);
    }

    HDC dc() const { return m_dib.hDC(); }
    int32_t width() const { return m_dib.Width(); }
    int32_t height() const { return m_dib.Height(); }

    void Fill(int32_t ole) {
        ::GdiFlush();
        const auto c = static_cast<uint32_t>(ole);
        const uint32_t word = ((c & 0xFFu) << 16) | (c & 0xFF00u) | ((c >> 16) & 0xFFu);
        for (int32_t y = 0; y < height(); ++y)
            for (int32_t x = 0; x < width(); ++x) m_dib.Row(y)[x] = word;
    }
    // The pixel as an OLE colour (red in the low byte).
    int32_t At(int32_t x, int32_t y) const {
        ::GdiFlush();
        const uint32_t word = m_dib.Row(y)[x];
        return static_cast<int32_t>(((word >> 16) & 0xFFu) | (word & 0xFF00u) | ((word & 0xFFu) << 16));
    }
    std::vector<int32_t> Snapshot() const {
        std::vector<int32_t> all;
        for (int32_t y = 0; y < height(); ++y)
            for (int32_t x = 0; x < width(); ++x) all.push_back(At(x, y));
        return all;
    }

private:
    mutable clsDIBSection m_dib;  // its pixel view is not const
};
