#include "controls/ChildImageButton.h"

#include "graphics/DrawButton.h"

namespace {

// Magenta: never part of an arrow, and the pixel at 0,0 that the button leaves out.
constexpr int32_t kArrowBackground = 0x00FF00FF;

}  // namespace

ChildImageButton::ChildImageButton(HWND parent, int32_t x, int32_t y, int32_t width, int32_t height,
                                   std::function<void()> onClick)
    : m_surface(parent, x, y, width, height), m_button(m_surface, &m_events) {
    m_events.onClick = std::move(onClick);
    m_button.InitProperties();
    m_button.Caption(CtlString());
    m_button.Style(iCtlBtnStyle_UseDefault);
    m_button.BorderColor(-1);
}

void ChildImageButton::Move(int32_t x, int32_t y, int32_t width, int32_t height) {
    if (const HWND hwnd = m_surface.hWnd()) {
        ::SetWindowPos(hwnd, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void ChildImageButton::Show(bool visible) {
    if (const HWND hwnd = m_surface.hWnd()) ::ShowWindow(hwnd, visible ? SW_SHOWNA : SW_HIDE);
}

void ChildImageButton::ShowArrow(eArrowDirection direction, int32_t lColor) {
    BitmapOwner bitmap = CreateArrowBitmap(direction, m_surface.Dpi(), lColor, kArrowBackground);
    if (!bitmap) return;
    m_button.TransparencyType(eUniImage_TranspType_ByCoords);
    m_button.xTranspColor(0);
    m_button.yTranspColor(0);
    m_button.ImagePos(eubiip_Centered);
    m_button.Picture(StdPicture::FromBitmap(bitmap.release(), true));
}
