// vba_cMemDC: growing scratch DC on the display.
#include "graphics/vba_cMemDC.h"

#include "graphics/GdiRaii.h"

void vba_cMemDC::Width(int32_t value) noexcept {
    if (value > m_lWidth) recreate(value, m_lHeight);
}

void vba_cMemDC::Height(int32_t value) noexcept {
    if (value > m_lHeight) recreate(m_lWidth, value);
}

void vba_cMemDC::recreate(int32_t width, int32_t height) noexcept {
    release();
    const MemoryDCOwner display(::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr));
    if (!display) return;
    m_hDC = ::CreateCompatibleDC(display.get());
    if (m_hDC != nullptr) m_hBmp = ::CreateCompatibleBitmap(display.get(), width, height);
    if (m_hBmp != nullptr) {
        m_hOldBmp = ::SelectObject(m_hDC, m_hBmp);
        if (m_hOldBmp != nullptr && m_hOldBmp != HGDI_ERROR) {
            m_lWidth = width;
            m_lHeight = height;
            return;
        }
        m_hOldBmp = nullptr;
    }
    release();
}

void vba_cMemDC::release() noexcept {
    if (m_hDC != nullptr && m_hOldBmp != nullptr) ::SelectObject(m_hDC, m_hOldBmp);
    m_hOldBmp = nullptr;
    if (m_hBmp != nullptr) ::DeleteObject(m_hBmp);
    m_hBmp = nullptr;
    if (m_hDC != nullptr) ::DeleteDC(m_hDC);
    m_hDC = nullptr;
    m_lWidth = 0;
    m_lHeight = 0;
}

void vba_cMemDC::CreateFromPicture(HBITMAP hBmp) noexcept {
    BITMAP info{};
    if (hBmp == nullptr || ::GetObjectW(hBmp, sizeof(info), &info) == 0) return;
    Width(info.bmWidth);
    Height(info.bmHeight);
    if (m_hDC == nullptr) return;
    const MemoryDCOwner display(::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr));
    if (!display) return;
    const MemoryDCOwner source(::CreateCompatibleDC(display.get()));
    if (!source) return;
    const ScopedSelect select(source.get(), hBmp);
    if (select.selected()) ::BitBlt(m_hDC, 0, 0, info.bmWidth, info.bmHeight, source.get(), 0, 0, SRCCOPY);
}
