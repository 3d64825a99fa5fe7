// vba_cMemDC: a scratch memory DC that only grows, for painting in a window's frame.
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

class vba_cMemDC {
public:
    vba_cMemDC() noexcept = default;
    ~vba_cMemDC() { release(); }
    // Owns a DC and a bitmap: a copy would delete both twice.
    vba_cMemDC(const vba_cMemDC&) = delete;
    vba_cMemDC& operator=(const vba_cMemDC&) = delete;

    // Grows to the bitmap's size and copies it to 0, 0. The bitmap stays the caller's.
    void CreateFromPicture(HBITMAP hBmp) noexcept;
    HDC hDC() const noexcept { return m_hDC; }
    int32_t Width() const noexcept { return m_lWidth; }
    int32_t Height() const noexcept { return m_lHeight; }
    // Only growing changes anything: the DC is made anew at the larger size (content lost).
    void Width(int32_t value) noexcept;
    void Height(int32_t value) noexcept;

private:
    void recreate(int32_t width, int32_t height) noexcept;
    void release() noexcept;

    HDC m_hDC = nullptr;
    HGDIOBJ m_hOldBmp = nullptr;
    HBITMAP m_hBmp = nullptr;
    int32_t m_lWidth = 0;
    int32_t m_lHeight = 0;
};
