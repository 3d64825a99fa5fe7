#include "controls/ctlUniButtonImageXP.h"

#include <cmath>

#include <oleacc.h>

#include "graphics/DrawButton.h"
#include "graphics/modCommonDraw.h"

namespace {

// DT_CALCRECT is added to these when measuring.
constexpr int32_t kTextFlags = DT_WORDBREAK | DT_EXPANDTABS | DT_EDITCONTROL;  // 0x2050

// Drawing resumes at the next statement when one fails; nothing leaves DrawControl.
template <class Step>
void skipOnError(Step&& step) noexcept {
    try {
        step();
    } catch (...) {
    }
}

}  // namespace

ctlUniButtonImageXP::ctlUniButtonImageXP(ControlSurface& surface, ctlUniButtonImageXPEvents* events)
    : ControlFrame(surface, events), m_buttonEvents(events) {}

void ctlUniButtonImageXP::Advise(ctlUniButtonImageXPEvents* events) noexcept {
    m_buttonEvents = events;
    SetEvents(events);
}

// ---- persistence ----

void ctlUniButtonImageXP::InitProperties() {
    m_sCaption.clear();
    try {
        m_sCaption = Surface().Extender().Name();  // a new button shows its own name
    } catch (...) {
    }
    m_lBackColor = kDefaultBackColor;
    m_lForeColor = kDefaultForeColor;
    m_lBackColorOut = -1;
    m_bTristate = false;
    m_bPressed = false;
    m_lTransparencyType = eUniImage_TranspType_ByCoords;
    m_bDblClickEvent = false;
    // The rest takes its zero value, not the value a bag read would default to: a new button is
    // flat, with a black border and no focus rectangle.
    m_oPicture.reset();
    m_lBorderColor = 0;
    m_bShowFocus = false;
    m_sTip.clear();
    m_iStyle = 0;
    m_bRoundedBorders = false;
    m_bUseRoundRegions = false;
    m_lTransparentColor = 0;
    m_lXTransp = 0;
    m_lYTransp = 0;
    m_iImagePos = eubiip_Top;
    UpdateAccessKeys(m_sCaption);
}

void ctlUniButtonImageXP::ReadProperties(PropertyBag& bag) {
    ControlSurface& surface = Surface();
    m_oPicture = VariantToPicture(bag.ReadProperty(u"Picture", CtlVariant()), nullptr);
    surface.Enabled(ReadBoolProperty(bag, u"Enabled", true));
    const std::shared_ptr<StdFont> presentFont = surface.Font();
    surface.Font(VariantToFont(bag.ReadProperty(u"Font", presentFont), presentFont));
    m_sCaption = ReadStringProperty(bag, u"Caption");
    m_lBackColor = ReadLongProperty(bag, u"BackColor", kDefaultBackColor);
    m_lForeColor = ReadLongProperty(bag, u"ForeColor", kDefaultForeColor);
    m_lBorderColor = ReadLongProperty(bag, u"BorderColor", -1);
    m_bShowFocus = ReadBoolProperty(bag, u"ShowFocus", true);
    m_bTristate = ReadBoolProperty(bag, u"Tristate", false);
    m_bPressed = ReadBoolProperty(bag, u"Pressed", false);
    m_sTip = ReadStringProperty(bag, u"Tip");
    m_iStyle = ReadLongProperty(bag, u"Style", -1);
    m_bRoundedBorders = ReadBoolProperty(bag, u"RoundedBorders", true);
    m_lBackColorOut = ReadLongProperty(bag, u"BackColorOut", -1);
    m_bUseRoundRegions = ReadBoolProperty(bag, u"UseRoundRegions", false);
    m_lTransparencyType = static_cast<eUniImage_TranspType>(ReadLongProperty(bag, u"TransparencyType", 0));
    m_lTransparentColor = ReadLongProperty(bag, u"TransparentColor", -1);
    m_lXTransp = ReadLongProperty(bag, u"xTranspColor", 0);
    m_lYTransp = ReadLongProperty(bag, u"yTranspColor", 0);
    m_iImagePos = ReadLongProperty(bag, u"ImagePos", 0);
    surface.OLEDropMode(ReadIntegerProperty(bag, u"OLEDropMode", 0));
    surface.MousePointer(ReadIntegerProperty(bag, u"MousePointer", 0));
    const std::shared_ptr<StdPicture> noIcon = StdPicture::Empty();
    surface.MouseIcon(VariantToPicture(bag.ReadProperty(u"MouseIcon", noIcon), noIcon));
    m_bDblClickEvent = ReadBoolProperty(bag, u"DblClickEvent", false);
    UpdateAccessKeys(m_sCaption);
    UpdateRegion();
    RequestDrawControl();
}

void ctlUniButtonImageXP::WriteProperties(PropertyBag& bag) const {
    const ControlSurface& surface = Surface();
    if (m_oPicture) {
        bag.WriteProperty(u"Picture", m_oPicture);
    } else {
        bag.WriteProperty(u"Picture", CtlVariant());
    }
    bag.WriteProperty(u"Enabled", surface.Enabled());
    bag.WriteProperty(u"Font", surface.Font());
    bag.WriteProperty(u"Caption", pvStringToBag(m_sCaption));
    bag.WriteProperty(u"BackColor", m_lBackColor);
    bag.WriteProperty(u"ForeColor", m_lForeColor);
    bag.WriteProperty(u"BorderColor", m_lBorderColor);
    bag.WriteProperty(u"ShowFocus", m_bShowFocus);
    bag.WriteProperty(u"Tristate", m_bTristate);
    bag.WriteProperty(u"Pressed", m_bPressed);
    bag.WriteProperty(u"Tip", pvStringToBag(m_sTip));
    bag.WriteProperty(u"Style", m_iStyle);
    bag.WriteProperty(u"RoundedBorders", m_bRoundedBorders);
    bag.WriteProperty(u"BackColorOut", m_lBackColorOut);
    bag.WriteProperty(u"UseRoundRegions", m_bUseRoundRegions);
    bag.WriteProperty(u"TransparencyType", static_cast<int32_t>(m_lTransparencyType));
    bag.WriteProperty(u"TransparentColor", m_lTransparentColor);
    bag.WriteProperty(u"xTranspColor", m_lXTransp);
    bag.WriteProperty(u"yTranspColor", m_lYTransp);
    bag.WriteProperty(u"ImagePos", m_iImagePos);
    bag.WriteProperty(u"OLEDropMode", surface.OLEDropMode());
    bag.WriteProperty(u"MousePointer", surface.MousePointer());
    bag.WriteProperty(u"MouseIcon", surface.MouseIcon());
    bag.WriteProperty(u"DblClickEvent", m_bDblClickEvent);
}

// ---- lets ----

void ctlUniButtonImageXP::Style(int32_t value) {
    m_iStyle = value;  // -1 stays -1: DrawButton resolves it at each drawing
    RequestDrawControl();
}

void ctlUniButtonImageXP::xTranspColor(int32_t value) {
    m_lXTransp = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::yTranspColor(int32_t value) {
    m_lYTransp = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::TransparencyType(eUniImage_TranspType value) {
    m_lTransparencyType = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::TransparentColor(int32_t value) {
    m_lTransparentColor = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::BackColor(int32_t value) {
    m_lBackColor = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::Tristate(bool value) {
    if (m_bTristate == value) return;
    m_bTristate = value;
    NotifyAccessibleEvent(EVENT_OBJECT_STATECHANGE);
    RequestDrawControl();
}

void ctlUniButtonImageXP::Pressed(bool value) {
    if (m_bPressed == value) return;
    m_bPressed = value;
    NotifyAccessibleEvent(EVENT_OBJECT_STATECHANGE);
    RequestDrawControl();
}

void ctlUniButtonImageXP::ForeColor(int32_t value) {
    m_lForeColor = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::BorderColor(int32_t value) {
    m_lBorderColor = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::ShowFocus(bool value) {
    m_bShowFocus = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::Caption(const CtlString& value) {
    m_sCaption = value;
    Surface().PropertyChanged(u"Caption");
    UpdateAccessKeys(m_sCaption);
    NotifyAccessibleEvent(EVENT_OBJECT_NAMECHANGE);
    RequestDrawControl();
}

void ctlUniButtonImageXP::Picture(std::shared_ptr<StdPicture> value) {
    m_oPicture = std::move(value);
    RequestDrawControl();
}

void ctlUniButtonImageXP::RoundedBorders(bool value) {
    m_bRoundedBorders = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::BackColorOut(int32_t value) {
    m_lBackColorOut = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::UseRoundRegions(bool value) {
    m_bUseRoundRegions = value;
    m_bRoundedBorders = value;
    ControlFrame::Resize();  // the Resize handler rebuilds the mask, redraws and raises Resize
}

void ctlUniButtonImageXP::ImagePos(int32_t value) {
    m_iImagePos = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::DblClickEvent(bool value) {
    m_bDblClickEvent = value;
    RequestDrawControl();
}

void ctlUniButtonImageXP::Value(bool value) {
    if (value) pvClickHandler();
}

// ---- input ----

void ctlUniButtonImageXP::pvClickHandler() {
    if (m_bTristate) {
        m_bPressed = !m_bPressed;
        NotifyAccessibleEvent(EVENT_OBJECT_STATECHANGE);
        RequestDrawControl();
    }
    if (m_buttonEvents != nullptr) m_buttonEvents->Click();
}

void ctlUniButtonImageXP::Click() { pvClickHandler(); }

void ctlUniButtonImageXP::DblClick() {
    if (!m_bDblClickEvent) {
        pvClickHandler();  // a quick second click is one more click
    } else if (m_buttonEvents != nullptr) {
        m_buttonEvents->DblClick();
    }
}

void ctlUniButtonImageXP::MouseDown(int16_t& Button, int16_t& Shift, float& x, float& y) {
    // A pressed button takes the focus first, as a push button of the system does.
    if (UserMode()) {
        const HWND hwnd = Hwnd();
        if (hwnd != nullptr && ::GetFocus() != hwnd && ::IsWindowEnabled(hwnd)) ::SetFocus(hwnd);
    }
    m_bMouseDown = Button == 1;
    RequestDrawControl();
    if (m_buttonEvents != nullptr) m_buttonEvents->MouseDown(Button, Shift, x, y);
}

void ctlUniButtonImageXP::MouseMove(int16_t& Button, int16_t& Shift, float& x, float& y) {
    if (!UserMode()) return;  // no tip and no event in design mode
    PassTip(m_sTip);
    const bool down = Button == 1;
    if (down != m_bMouseDown) {
        m_bMouseDown = down;
        RequestDrawControl();
    }
    if (m_buttonEvents != nullptr) m_buttonEvents->MouseMove(Button, Shift, x, y);
}

void ctlUniButtonImageXP::MouseUp(int16_t& Button, int16_t& Shift, float& x, float& y) {
    m_bMouseDown = false;
    RequestDrawControl();
    if (m_buttonEvents != nullptr) m_buttonEvents->MouseUp(Button, Shift, x, y);
}

void ctlUniButtonImageXP::KeyDown(int16_t& KeyCode, int16_t& Shift) {
    if (m_buttonEvents != nullptr) m_buttonEvents->KeyDown(KeyCode, Shift);
}

void ctlUniButtonImageXP::KeyPress(int16_t& KeyAscii) {
    if (m_buttonEvents != nullptr) m_buttonEvents->KeyPress(KeyAscii);
    // The code after the event: a handler may have changed or cancelled it.
    if (KeyAscii == 32 || KeyAscii == 13) pvClickHandler();
}

void ctlUniButtonImageXP::KeyUp(int16_t& KeyCode, int16_t& Shift) {
    if (m_buttonEvents != nullptr) m_buttonEvents->KeyUp(KeyCode, Shift);
}

void ctlUniButtonImageXP::AccessKeyPress(int16_t&) {
    if (Surface().Enabled()) pvClickHandler();
}

void ctlUniButtonImageXP::LostFocus() { ForceLostFocus(); }

void ctlUniButtonImageXP::ForceLostFocus() {
    if (!HasFocus()) return;
    m_bMouseDown = false;
    ControlFrame::ForceLostFocus();
}

// ---- accessibility ----

int32_t ctlUniButtonImageXP::AccessibleRole(int32_t child) const {
    if (child != CHILDID_SELF) return ControlFrame::AccessibleRole(child);
    return m_bTristate ? ROLE_SYSTEM_CHECKBUTTON : ROLE_SYSTEM_PUSHBUTTON;
}

int32_t ctlUniButtonImageXP::AccessibleState(int32_t child) const {
    int32_t state = ControlFrame::AccessibleState(child);
    if (child != CHILDID_SELF) return state;
    if (m_bTristate && m_bPressed) state |= STATE_SYSTEM_PRESSED;
    if (extenderDefault()) state |= STATE_SYSTEM_DEFAULT;
    return state;
}

CtlString ctlUniButtonImageXP::AccessibleDefaultAction(int32_t child) const {
    return child == CHILDID_SELF ? CtlString(u"Press") : CtlString();
}

bool ctlUniButtonImageXP::AccessibleDoDefaultAction(int32_t child) {
    // A disabled button cannot be pressed, by a screen reader either.
    if (child != CHILDID_SELF || !Surface().Enabled()) return false;
    pvClickHandler();
    return true;
}

// ---- drawing ----

bool ctlUniButtonImageXP::extenderDefault() const {
    try {
        return Surface().Extender().Default();
    } catch (...) {
        return false;  // a host without the role
    }
}

bool ctlUniButtonImageXP::extenderCancel() const {
    try {
        return Surface().Extender().Cancel();
    } catch (...) {
        return false;
    }
}

void ctlUniButtonImageXP::UpdateRegion() {
    skipOnError([&] {
        if (m_bUseRoundRegions && m_bRoundedBorders) {
            ApplyRoundMask();
        } else {
            ApplyOpaqueShape();
        }
    });
}

void ctlUniButtonImageXP::RaiseResize() {
    if (m_buttonEvents != nullptr) m_buttonEvents->Resize();
}

void ctlUniButtonImageXP::DrawControl(HDC hdc) {
    const DrawingScope scope(*this);
    if (!scope.entered() || hdc == nullptr) return;
    ControlSurface& surface = Surface();
    const bool enabled = surface.Enabled();

    skipOnError([&] { ApplyColours(m_lForeColor); });
    CTL_RECT whole = SurfaceRect();
    const int32_t W = whole.right;
    const int32_t H = whole.bottom;
    const int32_t B = pictureInset();

    skipOnError([&] {
        const bool pressed = m_bMouseDown || (m_bTristate && m_bPressed);
        const bool focus = !m_bMouseDown && HasFocus() && enabled && m_bShowFocus;
        DrawButton(hdc, whole, m_lBackColor, true, m_lBorderColor, pressed, extenderDefault() && enabled,
                   extenderCancel() && enabled, focus, m_bRoundedBorders, m_iStyle, m_lBackColorOut, true, Dpi());
    });

    // The picture as drawn in this pass: the stored one, or its shrunk copy.
    CtlPictureRef picture;
    int32_t pw = 0;
    int32_t ph = 0;
    skipOnError([&] {
        if (!m_oPicture || m_oPicture->Handle() == nullptr) return;
        picture = CtlPictureRef{m_oPicture->Handle(), m_oPicture->Type()};
        pw = static_cast<int32_t>(std::lround(surface.ScaleX(static_cast<float>(m_oPicture->Width()), kScaleHiMetric, kScalePixels)));
        ph = static_cast<int32_t>(std::lround(surface.ScaleY(static_cast<float>(m_oPicture->Height()), kScaleHiMetric, kScalePixels)));
        // Bitmaps shrink through the kept memory DC; an icon is drawn at its size, cut to the area.
        if (ShrinkPictureToFit(W - 2 * B, H - 2 * B, pw, ph) && picture.iType == kPicTypeBitmap) {
            m_oResized.CloneFromHBmp(m_oPicture->Bitmap());
            m_oResized.ResizeAdaptDC(pw, ph);
            picture = CtlPictureRef{m_oResized.hBmp(), kPicTypeBitmap};
        }
    });

    ImageButtonMetrics metrics;
    metrics.width = W;
    metrics.height = H;
    metrics.inset = B;
    metrics.gap = ScaleByDpi(3);
    metrics.textInset = ScaleByDpi(1);
    metrics.pictureWidth = pw;
    metrics.pictureHeight = ph;
    metrics.hasPicture = picture.hHandle != nullptr;
    metrics.hasCaption = !m_sCaption.empty();
    skipOnError([&] {
        m_lastLayout = LayOutImageButton(metrics, m_iImagePos, [&](int32_t width, int32_t& tw, int32_t& th) {
            CTL_RECT measure{0, 0, width, 0};
            DrawText(hdc, m_sCaption, measure, kTextFlags | DT_CALCRECT);
            tw = measure.right - measure.left;
            th = measure.bottom - measure.top;
        });
    });

    skipOnError([&] {
        if (!metrics.hasPicture) return;
        const bool useTransp = m_lTransparencyType != eUniImage_TranspType_NoTransp;
        const int32_t color = m_lTransparencyType == eUniImage_TranspType_ByColor ? m_lTransparentColor : -1;
        OverlapImageRect(hdc, m_lastLayout.image, !enabled, picture, useTransp, pw, ph, m_lXTransp, m_lYTransp, color);
    });

    skipOnError([&] {
        if (!metrics.hasCaption) return;
        CTL_RECT text = m_lastLayout.text;
        DrawTextColor(hdc, m_sCaption, text, m_lastLayout.textAlign | kTextFlags,
                      enabled ? m_lForeColor : kDisabledTextColor);
    });
}
