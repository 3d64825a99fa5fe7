// ctlUniButtonImageXP: the push button: a DrawButton background, a picture and a Unicode caption in
// one of eleven arrangements, sticking in under Tristate; its transparency enumeration and events.
#pragma once

#include <cstdint>
#include <memory>

#include "controls/ImageButtonLayout.h"
#include "frame/ControlFrame.h"
#include "frame/PropertyBag.h"
#include "graphics/clsMEMDC.h"

enum eUniImage_TranspType : int32_t {
    eUniImage_TranspType_NoTransp = -1,
    eUniImage_TranspType_ByCoords = 0,
    eUniImage_TranspType_ByColor = 1,
};

class ctlUniButtonImageXPEvents : public ControlKeyEvents {
public:
    virtual void Resize() {}
};

class ctlUniButtonImageXP final : public ControlFrame {
public:
    explicit ctlUniButtonImageXP(ControlSurface& surface, ctlUniButtonImageXPEvents* events = nullptr);

    // The host's event sink; nullptr stops the events.
    void Advise(ctlUniButtonImageXPEvents* events) noexcept;

    // ---- host entry points ----
    // A new button: Caption from Extender.Name, the usual colours, and the zero value of every
    // other field (Style 0 flat, a black border, no focus rectangle, square corners).
    void InitProperties();
    void ReadProperties(PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    // ---- public members, in interface order ----
    int32_t Style() const noexcept { return m_iStyle; }
    void Style(int32_t value);
    int32_t xTranspColor() const noexcept { return m_lXTransp; }
    void xTranspColor(int32_t value);
    int32_t yTranspColor() const noexcept { return m_lYTransp; }
    void yTranspColor(int32_t value);
    eUniImage_TranspType TransparencyType() const noexcept { return m_lTransparencyType; }
    void TransparencyType(eUniImage_TranspType value);
    int32_t TransparentColor() const noexcept { return m_lTransparentColor; }
    void TransparentColor(int32_t value);
    int32_t BackColor() const noexcept { return m_lBackColor; }
    void BackColor(int32_t value);
    bool Tristate() const noexcept { return m_bTristate; }
    void Tristate(bool value);
    bool Pressed() const noexcept { return m_bPressed; }
    void Pressed(bool value);
    int32_t ForeColor() const noexcept { return m_lForeColor; }
    void ForeColor(int32_t value);
    int32_t BorderColor() const noexcept { return m_lBorderColor; }
    void BorderColor(int32_t value);
    using ControlFrame::Enabled;
    bool ShowFocus() const noexcept { return m_bShowFocus; }
    void ShowFocus(bool value);
    using ControlFrame::Font;
    const CtlString& Caption() const noexcept { return m_sCaption; }
    void Caption(const CtlString& value);
    // The host's object itself; nullptr (or an empty picture) shows none.
    std::shared_ptr<StdPicture> Picture() const { return m_oPicture; }
    void Picture(std::shared_ptr<StdPicture> value);
    void Refresh() noexcept { RequestDrawControl(); }
    void ForceLostFocus();
    using ControlFrame::Tip;
    bool RoundedBorders() const noexcept { return m_bRoundedBorders; }
    void RoundedBorders(bool value);
    int32_t BackColorOut() const noexcept { return m_lBackColorOut; }
    void BackColorOut(int32_t value);
    bool UseRoundRegions() const noexcept { return m_bUseRoundRegions; }
    void UseRoundRegions(bool value);
    int32_t ImagePos() const noexcept { return m_iImagePos; }
    void ImagePos(int32_t value);
    using ControlFrame::Hwnd;
    using ControlFrame::OLEDropMode;
    using ControlFrame::OLEDrag;
    using ControlFrame::MousePointer;
    using ControlFrame::MouseIcon;
    bool DblClickEvent() const noexcept { return m_bDblClickEvent; }
    void DblClickEvent(bool value);
    // Only a trigger: True clicks the button (and toggles it under Tristate); False does nothing.
    // Reads back the stuck state under Tristate, else False.
    bool Value() const noexcept { return m_bTristate && m_bPressed; }
    void Value(bool value);
    using ControlFrame::ApplyFontChanges;

    // ---- surface entry points ----
    void Click() override;
    void DblClick() override;
    void MouseDown(int16_t& Button, int16_t& Shift, float& x, float& y) override;
    void MouseMove(int16_t& Button, int16_t& Shift, float& x, float& y) override;
    void MouseUp(int16_t& Button, int16_t& Shift, float& x, float& y) override;
    void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
    void KeyPress(int16_t& KeyAscii) override;
    void KeyUp(int16_t& KeyCode, int16_t& Shift) override;
    void AccessKeyPress(int16_t& KeyAscii) override;
    void LostFocus() override;

    // ---- screen readers: a push button (a check button under Tristate) whose action is "Press" ----
    int32_t AccessibleRole(int32_t child) const override;
    int32_t AccessibleState(int32_t child) const override;
    CtlString AccessibleDefaultAction(int32_t child) const override;
    bool AccessibleDoDefaultAction(int32_t child) override;

    // What the last drawing laid out (for hosts that place things beside the picture, and tests).
    const ImageButtonLayoutResult& LastLayout() const noexcept { return m_lastLayout; }

protected:
    void DrawControl(HDC hdc) override;
    void UpdateRegion() override;
    void RaiseResize() override;
    bool RedrawsOnFocus() const override { return m_bShowFocus; }
    bool TakesFocus() const override { return true; }
    CtlString AccessibleCaption() const override { return m_sCaption; }

private:
    // Toggles under Tristate, then raises Click: every way of clicking ends here.
    void pvClickHandler();
    bool extenderDefault() const;
    bool extenderCancel() const;
    int32_t pictureInset() const { return ScaleByDpi(m_bShowFocus ? 4 : 2); }

    ctlUniButtonImageXPEvents* m_buttonEvents;
    CtlString m_sCaption;
    std::shared_ptr<StdPicture> m_oPicture;
    int32_t m_lBackColor = kDefaultBackColor;
    int32_t m_lForeColor = kDefaultForeColor;
    int32_t m_lBorderColor = -1;
    int32_t m_lBackColorOut = -1;
    int32_t m_iStyle = -1;
    bool m_bShowFocus = true;
    bool m_bTristate = false;
    bool m_bPressed = false;
    bool m_bMouseDown = false;
    bool m_bDblClickEvent = false;
    bool m_bRoundedBorders = true;
    bool m_bUseRoundRegions = false;
    eUniImage_TranspType m_lTransparencyType = eUniImage_TranspType_ByCoords;
    int32_t m_lTransparentColor = -1;
    int32_t m_lXTransp = 0;
    int32_t m_lYTransp = 0;
    int32_t m_iImagePos = eubiip_Top;
    // Reused for the shrunk picture: the object stays, its bitmap is made anew at each drawing.
    clsMEMDC m_oResized;
    ImageButtonLayoutResult m_lastLayout;
};
