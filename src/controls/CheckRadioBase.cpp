#include "controls/CheckRadioBase.h"

#include <algorithm>
#include <cmath>

#include <oleacc.h>

#include "graphics/FocusRect.h"
#include "graphics/modCommonDraw.h"

namespace {

constexpr int32_t kMeasureFlags = DT_CALCRECT | DT_EDITCONTROL | DT_EXPANDTABS;
constexpr int32_t kDrawFlags = 0x2050;  // DT_EDITCONTROL | DT_EXPANDTABS | DT_WORDBREAK

// Drawing resumes at the next statement when one fails; nothing leaves DrawControl.
template <class Step>
void skipOnError(Step&& step) noexcept {
    try {
        step();
    } catch (...) {
    }
}

}  // namespace

CheckRadioBase::CheckRadioBase(ControlSurface& surface, ControlKeyEvents* events, const char16_t* boxKey)
    : ControlFrame(surface, events), m_boxKey(boxKey), m_keyEvents(events) {}

// ---- persistence ----

void CheckRadioBase::InitProperties() {
    m_sCaption.clear();
    try {
        m_sCaption = Surface().Extender().Name();  // a new control shows its own name
    } catch (...) {
    }
    Surface().Enabled(true);
    m_iAlign = 0;
    m_lBoxBackColor = kDefaultBoxBackColor;
    m_lBoxForeColor = kDefaultBoxForeColor;
    m_lBackColor = kDefaultBackColor;
    m_lForeColor = kDefaultForeColor;
    m_lBorderColor = -1;
    m_bPressed = false;
    m_sTip.clear();
    m_iStyle = -1;
    Surface().OLEDropMode(0);
    Surface().MousePointer(0);
    Surface().MouseIcon(StdPicture::Empty());
    m_bShowFocus = true;
    UpdateAccessKeys(m_sCaption);
}

void CheckRadioBase::ReadProperties(PropertyBag& bag) {
    ControlSurface& surface = Surface();
    const CtlString box(m_boxKey);
    const std::shared_ptr<StdFont> presentFont = surface.Font();
    surface.Font(VariantToFont(bag.ReadProperty(u"Font", presentFont), presentFont));
    m_sCaption = ReadStringProperty(bag, u"Caption");
    surface.Enabled(ReadBoolProperty(bag, u"Enabled", true));
    m_iAlign = ReadLongProperty(bag, u"Align", 0);
    m_lBoxBackColor = ReadLongProperty(bag, box + u"BackColor", kDefaultBoxBackColor);
    m_lBoxForeColor = ReadLongProperty(bag, box + u"ForeColor", kDefaultBoxForeColor);
    m_lBackColor = ReadLongProperty(bag, u"BackColor", kDefaultBackColor);
    m_lForeColor = ReadLongProperty(bag, u"ForeColor", kDefaultForeColor);
    m_lBorderColor = ReadLongProperty(bag, u"BorderColor", -1);
    m_bPressed = ReadBoolProperty(bag, u"Pressed", false);
    m_sTip = ReadStringProperty(bag, u"Tip");
    m_iStyle = ReadLongProperty(bag, u"Style", -1);
    surface.OLEDropMode(ReadIntegerProperty(bag, u"OLEDropMode", 0));
    surface.MousePointer(ReadIntegerProperty(bag, u"MousePointer", 0));
    const std::shared_ptr<StdPicture> noIcon = StdPicture::Empty();
    surface.MouseIcon(VariantToPicture(bag.ReadProperty(u"MouseIcon", noIcon), noIcon));
    m_bShowFocus = ReadBoolProperty(bag, u"ShowFocus", true);
    UpdateAccessKeys(m_sCaption);
}

void CheckRadioBase::WriteProperties(PropertyBag& bag) const {
    const ControlSurface& surface = Surface();
    const CtlString box(m_boxKey);
    bag.WriteProperty(u"Font", surface.Font());
    bag.WriteProperty(u"Caption", pvStringToBag(m_sCaption));
    bag.WriteProperty(u"Enabled", surface.Enabled());
    bag.WriteProperty(u"Align", m_iAlign);
    bag.WriteProperty(box + u"BackColor", m_lBoxBackColor);
    bag.WriteProperty(box + u"ForeColor", m_lBoxForeColor);
    bag.WriteProperty(u"BackColor", m_lBackColor);
    bag.WriteProperty(u"ForeColor", m_lForeColor);
    bag.WriteProperty(u"BorderColor", m_lBorderColor);
    bag.WriteProperty(u"Pressed", m_bPressed);
    bag.WriteProperty(u"Tip", pvStringToBag(m_sTip));
    bag.WriteProperty(u"Style", m_iStyle);
    bag.WriteProperty(u"OLEDropMode", surface.OLEDropMode());
    bag.WriteProperty(u"MousePointer", surface.MousePointer());
    bag.WriteProperty(u"MouseIcon", surface.MouseIcon());
    bag.WriteProperty(u"ShowFocus", m_bShowFocus);
}

// ---- lets ----

void CheckRadioBase::Caption(const CtlString& value) {
    m_sCaption = value;
    Surface().PropertyChanged(u"Caption");
    UpdateAccessKeys(m_sCaption);
    NotifyAccessibleEvent(EVENT_OBJECT_NAMECHANGE);
    RequestDrawControl();
}

void CheckRadioBase::BackColor(int32_t value) {
    m_lBackColor = value;
    RequestDrawControl();
}

void CheckRadioBase::ForeColor(int32_t value) {
    m_lForeColor = value;
    RequestDrawControl();
}

void CheckRadioBase::BorderColor(int32_t value) {
    m_lBorderColor = value;
    RequestDrawControl();
}

void CheckRadioBase::Style(int32_t value) {
    m_iStyle = value;  // -1 stays -1: DrawButton resolves it at each drawing
    RequestDrawControl();
}

void CheckRadioBase::Align(int32_t value) {
    m_iAlign = value;
    RequestDrawControl();
}

void CheckRadioBase::ShowFocus(bool value) {
    m_bShowFocus = value;
    RequestDrawControl();
}

void CheckRadioBase::BoxBackColor(int32_t value) {
    m_lBoxBackColor = value;
    RequestDrawControl();
}

void CheckRadioBase::BoxForeColor(int32_t value) {
    m_lBoxForeColor = value;
    if (m_bPressed) RequestDrawControl();
}

bool CheckRadioBase::ChangePressed(bool value) {
    if (m_bPressed == value) return false;
    m_bPressed = value;
    NotifyAccessibleEvent(EVENT_OBJECT_STATECHANGE);
    RequestDrawControl();
    return true;
}

// ---- the click arbitration ----

void CheckRadioBase::Click() { ClickHandler(); }

void CheckRadioBase::MouseDown(int16_t& Button, int16_t& Shift, float& x, float& y) {
    m_arbiter.MouseDown(Button);
    // A left press takes the focus, as a system check box does.
    const HWND hwnd = Surface().hWnd();
    if ((Button & 1) != 0 && hwnd != nullptr && ::GetFocus() != hwnd) ::SetFocus(hwnd);
    ControlFrame::MouseDown(Button, Shift, x, y);
}

void CheckRadioBase::KeyDown(int16_t& KeyCode, int16_t& Shift) {
    if (m_keyEvents != nullptr) m_keyEvents->KeyDown(KeyCode, Shift);
}

void CheckRadioBase::KeyPress(int16_t& KeyAscii) {
    m_arbiter.KeyPress(
        KeyAscii,
        [this](int16_t& key) {
            if (m_keyEvents != nullptr) m_keyEvents->KeyPress(key);
        },
        [this] { ClickHandler(); });
}

void CheckRadioBase::KeyUp(int16_t& KeyCode, int16_t& Shift) {
    if (m_keyEvents != nullptr) m_keyEvents->KeyUp(KeyCode, Shift);
}

void CheckRadioBase::AccessKeyPress(int16_t&) {
    m_arbiter.AccessKeyPress(Surface().Enabled(), [this] { ClickHandler(); });
}

// ---- screen readers ----

int32_t CheckRadioBase::AccessibleState(int32_t child) const {
    int32_t state = ControlFrame::AccessibleState(child);
    if (child == CHILDID_SELF && m_bPressed) state |= STATE_SYSTEM_CHECKED;
    return state;
}

bool CheckRadioBase::AccessibleDoDefaultAction(int32_t child) {
    if (child != CHILDID_SELF || !Surface().Enabled()) return false;
    m_arbiter.AccessKeyPress(true, [this] { ClickHandler(); });
    return true;
}

CtlVariant CheckRadioBase::CallByName(const CtlString&, const std::vector<CtlVariant>&) {
    throw CtlError(TypeName(), u"Object doesn't support this property or method", 438);
}

// ---- drawing ----

void CheckRadioBase::PaintCornerPixel(HDC hdc, int32_t x, int32_t y) const {
    const int32_t side = ScaleByDpi(1);
    DrawRectCoords(hdc, x, y, x + side, y + side, m_lBackColor, true);
}

void CheckRadioBase::DrawControl(HDC hdc) {
    const DrawingScope scope(*this);
    if (!scope.entered()) return;
    const bool bEnabled = Surface().Enabled();
    skipOnError([&] { ApplyColours(m_lForeColor); });
    const CTL_RECT whole = SurfaceRect();
    const int32_t side = ScaledBoxSize();

    // Centred vertically, half to even: heights 18 and 22 put a 15-pixel box at rows 2 and 4.
    int32_t x = 0;
    int32_t y = 0;
    skipOnError([&] {
        y = static_cast<int32_t>(std::nearbyint(Surface().ScaleHeight() / 2.0 - side / 2.0));
        if (m_iAlign == 1) x = whole.right - side;
    });
    skipOnError([&] { DrawRect(hdc, whole, m_lBackColor, true); });
    skipOnError([&] { DrawBox(hdc, CTL_RECT{x, y, x + side, y + side}, bEnabled); });
    skipOnError([&] { drawCaption(hdc, whole, bEnabled); });
}

void CheckRadioBase::drawCaption(HDC hdc, const CTL_RECT& whole, bool bEnabled) {
    if (m_sCaption.empty()) return;
    const int32_t textColor = bEnabled ? m_lForeColor : pvDisabledTextColor(m_lForeColor, m_lBackColor);
    const int32_t one = ScaleByDpi(1);
    const int32_t gap = ScaledBoxSize() + ScaleByDpi(3) + one;  // box, space, inset: 19 at 96 DPI
    CTL_RECT r = m_iAlign == 1 ? CTL_RECT{one, one, whole.right - gap, whole.bottom - one}
                               : CTL_RECT{gap, one, whole.right - one, whole.bottom - one};
    CTL_RECT measure = r;
    DrawText(hdc, m_sCaption, measure, kMeasureFlags);
    const int32_t tw = measure.right - measure.left;
    const int32_t th = measure.bottom - measure.top;
    r.top = r.top - one + (whole.bottom - th) / 2;
    r.bottom = r.top + th;
    if (m_iAlign == 1) {
        r.left = r.right - tw;
    } else {
        r.right = r.left + tw;
    }
    CTL_RECT textRect = r;
    DrawTextColor(hdc, m_sCaption, textRect, kDrawFlags, textColor);

    if (!HasFocus() || !m_bShowFocus) return;
    // One pixel around the text and one more at right and bottom, kept inside the control.
    RECT focus{r.left - one, r.top - one, r.right + 2 * one, r.bottom + 2 * one};
    focus.left = std::clamp<LONG>(focus.left, 0, whole.right);
    focus.top = std::clamp<LONG>(focus.top, 0, whole.bottom);
    focus.right = std::clamp<LONG>(focus.right, 0, whole.right);
    focus.bottom = std::clamp<LONG>(focus.bottom, 0, whole.bottom);
    DrawFocusRectDpi(hdc, focus, Dpi());
}
