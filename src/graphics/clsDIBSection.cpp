// clsDIBSection: top-down DIB section with a DC.
#include "graphics/clsDIBSection.h"

#include "common/CtlError.h"
#include "graphics/GdiRaii.h"

bool clsDIBSection::Create(int32_t lWidth, int32_t lHeight, int32_t iBitsPerPixel) noexcept {
    if (m_hDib != nullptr && lWidth == m_lWidth && lHeight == m_lHeight && iBitsPerPixel == m_iBitsPerPixel) {
        return true;
    }
    Destroy();
    if (lWidth < 1 || lHeight < 1) return false;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = lWidth;
    info.bmiHeader.biHeight = -lHeight;  // top-down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = static_cast<WORD>(iBitsPerPixel);
    info.bmiHeader.biCompression = BI_RGB;
    m_hDC = ::CreateCompatibleDC(nullptr);
    if (m_hDC == nullptr) return false;
    m_hDib = ::CreateDIBSection(m_hDC, &info, DIB_RGB_COLORS, &m_pBits, nullptr, 0);
    if (m_hDib == nullptr) {
        Destroy();
        return false;
    }
    m_hOldBmp = ::SelectObject(m_hDC, m_hDib);
    m_lWidth = lWidth;
    m_lHeight = lHeight;
    m_iBitsPerPixel = iBitsPerPixel;
    return true;
}

bool clsDIBSection::CreateFromBitmap(HBITMAP hBmp) noexcept {
    BITMAP info{};
    if (hBmp == nullptr || ::GetObjectW(hBmp, sizeof(info), &info) == 0) return false;
    if (!Create(info.bmWidth, info.bmHeight, 32)) return false;
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    format.bmiHeader.biWidth = m_lWidth;
    format.bmiHeader.biHeight = -m_lHeight;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    format.bmiHeader.biCompression = BI_RGB;
    // GetDIBits keeps a 32-bit source's alpha bytes; a copy through BitBlt might not.
    const int rows = ::GetDIBits(m_hDC, hBmp, 0, static_cast<UINT>(m_lHeight), m_pBits, &format, DIB_RGB_COLORS);
    return rows == m_lHeight;
}

void clsDIBSection::Destroy() noexcept {
    if (m_hDC != nullptr) {
        if (m_hOldBmp != nullptr) ::SelectObject(m_hDC, m_hOldBmp);
        ::DeleteDC(m_hDC);
    }
    if (m_hDib != nullptr) ::DeleteObject(m_hDib);
    m_hDC = nullptr;
    m_hDib = nullptr;
    m_hOldBmp = nullptr;
    m_pBits = nullptr;
    m_lWidth = 0;
    m_lHeight = 0;
    m_iBitsPerPixel = 0;
}

uint32_t* clsDIBSection::Pixels32() {
    if (m_iBitsPerPixel != 32 || m_pBits == nullptr) {
        throw CtlError(u"pvBuildSA3D", u"Cannot create Safe Array for this DIB bpp");
    }
    return static_cast<uint32_t*>(m_pBits);
}

void clsDIBSection::PaintTo(HDC hdc, int32_t x, int32_t y, int32_t w, int32_t h, int32_t srcX,
                            int32_t srcY) const noexcept {
    if (hdc == nullptr || m_hDC == nullptr) return;
    ::BitBlt(hdc, x, y, w, h, m_hDC, srcX, srcY, SRCCOPY);
}

void clsDIBSection::CopyFrom(HDC hdc, int32_t x, int32_t y, int32_t w, int32_t h) noexcept {
    if (hdc == nullptr || m_hDC == nullptr) return;
    ::BitBlt(m_hDC, 0, 0, w, h, hdc, x, y, SRCCOPY);
}
