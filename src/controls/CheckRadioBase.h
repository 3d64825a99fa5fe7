// CheckRadioBase: what ctlUniCheckXP and ctlUniRadioXP share: fields, lets, persistence, the click
// arbitration, the layout of box and caption, focus, and what screen readers read.
#pragma once

#include <cstdint>

#include "frame/ClickArbiter.h"
#include "frame/ControlFrame.h"
#include "frame/LateBoundControl.h"
#include "frame/PropertyBag.h"

class CheckRadioBase : public ControlFrame, public LateBoundControl {
public:
    // Window background and window text: the box's default colours.
    static constexpr int32_t kDefaultBoxBackColor = static_cast<int32_t>(0x80000005u);
    static constexpr int32_t kDefaultBoxForeColor = static_cast<int32_t>(0x80000008u);

    // `boxKey` names the box's two colours in the bag and the members: u"Check" or u"Radio".
    CheckRadioBase(ControlSurface& surface, ControlKeyEvents* events, const char16_t* boxKey);

    // ---- host entry points ----
    void InitProperties();
    void ReadProperties(PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    // ---- members both have ----
    const CtlString& Caption() const noexcept { return m_sCaption; }
    void Caption(const CtlString& value);
    int32_t BackColor() const noexcept { return m_lBackColor; }
    void BackColor(int32_t value);
    int32_t ForeColor() const noexcept { return m_lForeColor; }
    void ForeColor(int32_t value);
    int32_t BorderColor() const noexcept { return m_lBorderColor; }
    void BorderColor(int32_t value);
    int32_t Style() const noexcept { return m_iStyle; }
    void Style(int32_t value);
    // 0: the box at the left of the text; 1: at the right.
    int32_t Align() const noexcept { return m_iAlign; }
    void Align(int32_t value);
    bool Pressed() const noexcept { return m_bPressed; }
    using ControlFrame::Tip;
    bool ShowFocus() const noexcept { return m_bShowFocus; }
    void ShowFocus(bool value);
    using ControlFrame::ApplyFontChanges;
    using ControlFrame::Enabled;
    using ControlFrame::Font;
    using ControlFrame::Hwnd;
    using ControlFrame::MouseIcon;
    using ControlFrame::MousePointer;
    using ControlFrame::OLEDrag;
    using ControlFrame::OLEDropMode;

    // ---- surface events: the click arbitration ----
    void Click() override;
    void MouseDown(int16_t& Button, int16_t& Shift, float& x, float& y) override;
    void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
    void KeyPress(int16_t& KeyAscii) override;
    void KeyUp(int16_t& KeyCode, int16_t& Shift) override;
    void AccessKeyPress(int16_t& KeyAscii) override;

    // ---- screen readers: checked while pressed, focusable, the default action clicks ----
    int32_t AccessibleState(int32_t child) const override;
    bool AccessibleDoDefaultAction(int32_t child) override;

    // ---- late binding: methods the control has none of by default ----
    CtlVariant CallByName(const CtlString& member, const std::vector<CtlVariant>& args) override;

protected:
    int32_t BoxBackColor() const noexcept { return m_lBoxBackColor; }
    void BoxBackColor(int32_t value);
    int32_t BoxForeColor() const noexcept { return m_lBoxForeColor; }
    // The box's fore colour shows only in a pressed box: the let redraws only then.
    void BoxForeColor(int32_t value);

    // The Click handler, reached from the surface's Click, Space, Enter, the access key and the
    // accessible default action; it acts only while ClickEnabled().
    virtual void ClickHandler() = 0;
    bool ClickEnabled() const noexcept { return m_arbiter.ClickEnabled(); }
    ClickArbiter& Arbiter() noexcept { return m_arbiter; }
    // Raises the host's Click and DblClick events.
    void RaiseClick() { ControlFrame::Click(); }
    void RaiseDblClick() { ControlFrame::DblClick(); }
    // Stores a new state, tells screen readers and asks for a repaint. False when unchanged.
    bool ChangePressed(bool value);

    // The box and its mark (steps 3 and 4 of the drawing) inside `box`, side ScaledBoxSize().
    virtual void DrawBox(HDC hdc, const CTL_RECT& box, bool bEnabled) = 0;
    // The box's side: 15 pixels at 96 DPI.
    int32_t ScaledBoxSize() const { return ScaleByDpi(15); }
    // Paints one corner pixel (a square of ScaleByDpi(1) at DPIs above) in the back colour.
    void PaintCornerPixel(HDC hdc, int32_t x, int32_t y) const;

    void DrawControl(HDC hdc) override;
    bool RedrawsOnFocus() const override { return m_bShowFocus; }
    bool TakesFocus() const override { return true; }
    CtlString AccessibleCaption() const override { return m_sCaption; }

private:
    void drawCaption(HDC hdc, const CTL_RECT& whole, bool bEnabled);

    const char16_t* m_boxKey;
    ControlKeyEvents* m_keyEvents;
    ClickArbiter m_arbiter;
    CtlString m_sCaption;
    int32_t m_lBoxBackColor = kDefaultBoxBackColor;
    int32_t m_lBoxForeColor = kDefaultBoxForeColor;
    int32_t m_lBackColor = kDefaultBackColor;
    int32_t m_lForeColor = kDefaultForeColor;
    int32_t m_lBorderColor = -1;
    int32_t m_iAlign = 0;
    int32_t m_iStyle = -1;
    bool m_bPressed = false;
    bool m_bShowFocus = true;
};
