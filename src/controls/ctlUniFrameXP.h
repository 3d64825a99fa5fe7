// ctlUniFrameXP: a container box with a Unicode title, in a title-bar look or a classic groove.
#pragma once

#include <cstdint>

#include "frame/ControlFrame.h"
#include "frame/PropertyBag.h"

using ctlUniFrameXPEvents = ControlEvents;

// A container: the host puts the child controls' windows inside the surface's window. It never
// takes the focus and has no access key (the title is drawn without prefix processing).
// `Enabled` is kept apart from the surface: at run time the surface follows it (so the children
// are disabled with the frame); in design mode the surface stays enabled so that the designer can
// still select the frame, and only the drawing greys.
class ctlUniFrameXP final : public ControlFrame {
public:
    static constexpr int32_t kDefaultFrameForeColor = static_cast<int32_t>(0x80000006u);

    explicit ctlUniFrameXP(ControlSurface& surface, ctlUniFrameXPEvents* events = nullptr);

    void Advise(ctlUniFrameXPEvents* events) noexcept { SetEvents(events); }

    // ---- host entry points ----
    void InitProperties();
    void ReadProperties(PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    // ---- public members ----
    int32_t BackColor() const noexcept { return m_lBackColor; }
    void BackColor(int32_t value);
    int32_t ForeColor() const noexcept { return m_lForeColor; }
    void ForeColor(int32_t value);
    int32_t BorderColor() const noexcept { return m_lBorderColor; }
    void BorderColor(int32_t value);
    bool Enabled() const noexcept { return m_bEnabled; }
    void Enabled(bool value);
    bool VistaStyle() const noexcept { return m_bVistaStyle; }
    void VistaStyle(bool value);
    const CtlString& Caption() const noexcept { return m_sCaption; }
    void Caption(const CtlString& value);
    using ControlFrame::Tip;
    int32_t BackColorOut() const noexcept { return m_lBackColorOut; }
    void BackColorOut(int32_t value);
    int32_t TitleBackColor() const noexcept { return m_lTitleBackColor; }
    void TitleBackColor(int32_t value);
    bool UseShadow() const noexcept { return m_bUseShadow; }
    void UseShadow(bool value);
    using ControlFrame::ApplyFontChanges;
    using ControlFrame::Font;
    using ControlFrame::Hwnd;
    using ControlFrame::MouseIcon;
    using ControlFrame::MousePointer;
    using ControlFrame::OLEDrag;
    using ControlFrame::OLEDropMode;

    // A grouping named by its caption as drawn ("&" stays), unavailable while Enabled is false.
    int32_t AccessibleRole(int32_t child) const override;
    CtlString AccessibleName(int32_t child) const override;
    int32_t AccessibleState(int32_t child) const override;

    // The shadow colour of a title in `textColor`: white-ish under dark text, darker under light.
    static int32_t ShadowColor(int32_t textColor);

protected:
    void DrawControl(HDC hdc) override;

private:
    void syncSurfaceEnabled();
    void clipChildren() const;
    void drawTitle(HDC hdc, CTL_RECT area, int32_t flags, int32_t textColor) const;
    void drawBarLook(HDC hdc, const CTL_RECT& whole, int32_t border, int32_t textColor, const CtlString& title);
    void drawGrooveLook(HDC hdc, const CTL_RECT& whole, int32_t border, int32_t textColor, const CtlString& title);
    void cutCorners(HDC hdc, const CTL_RECT& whole, int32_t border) const;

    int32_t m_lBackColor = kDefaultBackColor;
    int32_t m_lForeColor = kDefaultFrameForeColor;
    int32_t m_lBorderColor = -1;
    int32_t m_lBackColorOut = -1;
    int32_t m_lTitleBackColor = -1;
    CtlString m_sCaption;
    bool m_bVistaStyle = true;
    bool m_bUseShadow = false;
    bool m_bEnabled = true;
};
