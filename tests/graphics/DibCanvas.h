// DibCanvas: a 32-bpp top-down DIB section with a DC, for drawing and reading pixels back as OLE colours.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/win32/WinApi.h"

class DibCanvas {
public:
    DibCanvas(int32_t width, int32_t height, int32_t fill = 0x00123456) : m_width(width), m_height(height) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        info.bmiHeader.biCompression = BI_RGB;
        m_dc = ::CreateCompatibleDC(nullptr);
        m_bitmap = ::CreateDIBSection(m_dc, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0);
        m_previous = ::SelectObject(m_dc, m_bitmap);
        Fill(fill);
    }
    ~DibCanvas() {
        ::SelectObject(m_dc, m_previous);
        ::DeleteObject(m_bitmap);
        ::DeleteDC(m_dc);
    }
    // Owns a DC and a DIB: a copy would delete both twice.
    DibCanvas(const DibCanvas&) = delete;
    DibCanvas& operator=(const DibCanvas&) = delete;

    HDC dc() const { return m_dc; }
    int32_t width() const { return m_width; }
    int32_t height() const { return m_height; }

    void Fill(int32_t ole) {
        ::GdiFlush();
        for (int32_t i = 0; i < m_width * m_height; ++i) words()[i] = toWord(ole);
    }
    // The pixel as an OLE colour (red in the low byte).
    int32_t At(int32_t x, int32_t y) const {
        ::GdiFlush();
        const uint32_t word = words()[y * m_width + x];
        return static_cast<int32_t>(((word >> 16) & 0xFFu) | (word & 0xFF00u) | ((word & 0xFFu) << 16));
    }
    std::vector<int32_t> Snapshot() const {
        std::vector<int32_t> all;
        all.reserve(static_cast<size_t>(m_width * m_height));
        for (int32_t y = 0; y < m_height; ++y)
            for (int32_t x = 0; x < m_width; ++x) all.push_back(At(x, y));
        return all;
    }

private:
    static uint32_t toWord(int32_t ole) {
        const auto c = static_cast<uint32_t>(ole);
        return ((c & 0xFFu) << 16) | (c & 0xFF00u) | ((c >> 16) & 0xFFu);
    }
    uint32_t* words() const { return static_cast<uint32_t*>(m_bits); }

    int32_t m_width;
    int32_t m_height;
    HDC m_dc = nullptr;
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_previous = nullptr;
    void* m_bits = nullptr;
};
