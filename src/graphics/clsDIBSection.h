// clsDIBSection: a top-down DIB section with its own DC and direct access to its pixels.
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

// Pixels are 0x00RRGGBB words in memory order B, G, R, A, rows top to bottom.
class clsDIBSection {
public:
    clsDIBSection() noexcept = default;
    ~clsDIBSection() { Destroy(); }
    // Owns a DIB and a DC: a copy would delete both twice.
    clsDIBSection(const clsDIBSection&) = delete;
    clsDIBSection& operator=(const clsDIBSection&) = delete;

    // Makes (or keeps, when the size and depth are already right) a section of that size.
    bool Create(int32_t lWidth, int32_t lHeight, int32_t iBitsPerPixel = 32) noexcept;
    // Takes a bitmap at its own size in 32 bits per pixel; the bitmap stays the caller's.
    bool CreateFromBitmap(HBITMAP hBmp) noexcept;
    void Destroy() noexcept;

    HDC hDC() const noexcept { return m_hDC; }
    HBITMAP hDib() const noexcept { return m_hDib; }
    int32_t Width() const noexcept { return m_lWidth; }
    int32_t Height() const noexcept { return m_lHeight; }
    int32_t BitsPerPixel() const noexcept { return m_iBitsPerPixel; }
    // Raises CtlError "pvBuildSA3D" for anything but 32 bits per pixel: the pixel view
    // indexes whole 32-bit words.
    uint32_t* Pixels32();
    uint32_t* Row(int32_t y) { return Pixels32() + static_cast<ptrdiff_t>(y) * m_lWidth; }

    void PaintTo(HDC hdc, int32_t x, int32_t y, int32_t w, int32_t h, int32_t srcX = 0, int32_t srcY = 0) const noexcept;
    void CopyFrom(HDC hdc, int32_t x, int32_t y, int32_t w, int32_t h) noexcept;

private:
    HDC m_hDC = nullptr;
    HBITMAP m_hDib = nullptr;
    HGDIOBJ m_hOldBmp = nullptr;
    void* m_pBits = nullptr;
    int32_t m_lWidth = 0;
    int32_t m_lHeight = 0;
    int32_t m_iBitsPerPixel = 0;
};
