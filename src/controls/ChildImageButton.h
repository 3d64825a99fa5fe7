// ChildImageButton: an image button in a child window of another control (scroll and drop-down arrows, tool buttons).
#pragma once

#include <cstdint>
#include <functional>

#include "controls/ctlUniButtonImageXP.h"
#include "frame/Win32Surface.h"
#include "graphics/ArrowPictures.h"

// Owns the child window and the button on it; its Click reaches the owner's handler. Destroyed
// button first, then the window, so the button never outlives its surface. Other events are the
// owner's to ask for through Button().Advise with a sink of its own.
class ChildImageButton {
public:
    // In pixels of `parent`'s client area. The new button is flat, without focus rectangle,
    // with the parent's font where the owner sets none.
    ChildImageButton(HWND parent, int32_t x, int32_t y, int32_t width, int32_t height,
                     std::function<void()> onClick = {});
    ~ChildImageButton() = default;
    // Owns a window and a control registered with it by address.
    ChildImageButton(const ChildImageButton&) = delete;
    ChildImageButton& operator=(const ChildImageButton&) = delete;

    ctlUniButtonImageXP& Button() noexcept { return m_button; }
    Win32Surface& Surface() noexcept { return m_surface; }
    HWND Hwnd() const noexcept { return m_surface.hWnd(); }
    void OnClick(std::function<void()> handler) { m_events.onClick = std::move(handler); }
    void Move(int32_t x, int32_t y, int32_t width, int32_t height);
    void Show(bool visible);
    // A generated arrow at the surface's DPI as the picture, its background see-through by the
    // button's default rule (the pixel at 0,0).
    void ShowArrow(eArrowDirection direction, int32_t lColor);

private:
    class ClickForwarder final : public ctlUniButtonImageXPEvents {
    public:
        std::function<void()> onClick;
        void Click() override {
            if (onClick) onClick();
        }
    };

    ClickForwarder m_events;
    Win32Surface m_surface;
    ctlUniButtonImageXP m_button;
};
