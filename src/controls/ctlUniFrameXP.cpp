#include "controls/ctlUniFrameXP.h"

#include <oleacc.h>

#include "graphics/modCommonDraw.h"

namespace {

constexpr int32_t kWhite = 0x00FFFFFF;
constexpr int32_t kBarTitleFlags = DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;  // 2084
constexpr int32_t kGrooveTitleFlags = DT_SINGLELINE | DT_NOPREFIX;

template <class Step>
void skipOnError(Step&& step) noexcept {
    try {
        step();
    } catch (...) {
    }
}

// `width` nested one-pixel frames from the outside in.
void frameRect(HDC hdc, CTL_RECT r, int32_t color, int32_t width) {
    for (int32_t i = 0; i < width && r.right > r.left && r.bottom > r.top; ++i) {
        DrawRect(hdc, r, color, false);
        ++r.left;
        ++r.top;
        --r.right;
        --r.bottom;
    }
}

}  // namespace

ctlUniFrameXP::ctlUniFrameXP(ControlSurface& surface, ctlUniFrameXPEvents* events) : ControlFrame(surface, events) {}

// ---- persistence ----

void ctlUniFrameXP::InitProperties() {
    m_sCaption.clear();
    try {
        m_sCaption = Surface().Extender().Name();  // a new frame shows its own name
    } catch (...) {
    }
    m_lBackColor = kDefaultBackColor;
    m_lForeColor = kDefaultFrameForeColor;
    m_lBorderColor = -1;
    m_lBackColorOut = -1;
    m_lTitleBackColor = -1;
    m_sTip.clear();
    m_bVistaStyle = true;
    m_bUseShadow = false;
    m_bEnabled = true;
    syncSurfaceEnabled();
}

void ctlUniFrameXP::ReadProperties(PropertyBag& bag) {
    ControlSurface& surface = Surface();
    const std::shared_ptr<StdFont> presentFont = surface.Font();
    surface.Font(VariantToFont(bag.ReadProperty(u"Font", presentFont), presentFont));
    m_sCaption = ReadStringProperty(bag, u"Caption");
    m_bEnabled = ReadBoolProperty(bag, u"Enabled", true);
    m_lForeColor = ReadLongProperty(bag, u"ForeColor", kDefaultFrameForeColor);
    m_lBorderColor = ReadLongProperty(bag, u"BorderColor", -1);
    m_lBackColor = ReadLongProperty(bag, u"BackColor", kDefaultBackColor);
    m_sTip = ReadStringProperty(bag, u"Tip");
    m_bVistaStyle = ReadBoolProperty(bag, u"VistaStyle", true);
    m_lBackColorOut = ReadLongProperty(bag, u"BackColorOut", -1);
    m_lTitleBackColor = ReadLongProperty(bag, u"TitleBackColor", -1);
    m_bUseShadow = ReadBoolProperty(bag, u"UseShadow", false);
    surface.OLEDropMode(ReadIntegerProperty(bag, u"OLEDropMode", 0));
    surface.MousePointer(ReadIntegerProperty(bag, u"MousePointer", 0));
    const std::shared_ptr<StdPicture> noIcon = StdPicture::Empty();
    surface.MouseIcon(VariantToPicture(bag.ReadProperty(u"MouseIcon", noIcon), noIcon));
    syncSurfaceEnabled();
}

void ctlUniFrameXP::WriteProperties(PropertyBag& bag) const {
    const ControlSurface& surface = Surface();
    bag.WriteProperty(u"Font", surface.Font());
    bag.WriteProperty(u"Caption", pvStringToBag(m_sCaption));
    bag.WriteProperty(u"Enabled", m_bEnabled);
    bag.WriteProperty(u"ForeColor", m_lForeColor);
    bag.WriteProperty(u"BorderColor", m_lBorderColor);
    bag.WriteProperty(u"BackColor", m_lBackColor);
    bag.WriteProperty(u"Tip", pvStringToBag(m_sTip));
    bag.WriteProperty(u"VistaStyle", m_bVistaStyle);
    bag.WriteProperty(u"BackColorOut", m_lBackColorOut);
    bag.WriteProperty(u"TitleBackColor", m_lTitleBackColor);
    bag.WriteProperty(u"UseShadow", m_bUseShadow);
    bag.WriteProperty(u"OLEDropMode", surface.OLEDropMode());
    bag.WriteProperty(u"MousePointer", surface.MousePointer());
    bag.WriteProperty(u"MouseIcon", surface.MouseIcon());
}

// ---- lets ----

void ctlUniFrameXP::BackColor(int32_t value) {
    m_lBackColor = value;
    RequestDrawControl();
}

void ctlUniFrameXP::ForeColor(int32_t value) {
    m_lForeColor = value;
    RequestDrawControl();
}

void ctlUniFrameXP::BorderColor(int32_t value) {
    m_lBorderColor = value;
    RequestDrawControl();
}

void ctlUniFrameXP::Enabled(bool value) {
    const bool changed = m_bEnabled != value;
    m_bEnabled = value;
    if (UserMode()) {
        if (Surface().Enabled() == value) return;
        Surface().Enabled(value);
    } else if (!changed) {
        return;
    }
    NotifyAccessibleEvent(EVENT_OBJECT_STATECHANGE);
    RequestDrawControl();
}

void ctlUniFrameXP::VistaStyle(bool value) {
    m_bVistaStyle = value;
    RequestDrawControl();
}

void ctlUniFrameXP::Caption(const CtlString& value) {
    m_sCaption = value;
    Surface().PropertyChanged(u"Caption");
    NotifyAccessibleEvent(EVENT_OBJECT_NAMECHANGE);
    RequestDrawControl();
}

void ctlUniFrameXP::BackColorOut(int32_t value) {
    m_lBackColorOut = value;
    RequestDrawControl();
}

void ctlUniFrameXP::TitleBackColor(int32_t value) {
    m_lTitleBackColor = value;
    RequestDrawControl();
}

void ctlUniFrameXP::UseShadow(bool value) {
    m_bUseShadow = value;
    RequestDrawControl();
}

void ctlUniFrameXP::syncSurfaceEnabled() {
    const bool wanted = UserMode() ? m_bEnabled : true;
    if (Surface().Enabled() != wanted) Surface().Enabled(wanted);
}

// ---- accessibility ----

int32_t ctlUniFrameXP::AccessibleRole(int32_t child) const {
    return child == CHILDID_SELF ? ROLE_SYSTEM_GROUPING : ControlFrame::AccessibleRole(child);
}

CtlString ctlUniFrameXP::AccessibleName(int32_t child) const {
    return child == CHILDID_SELF ? m_sCaption : CtlString();
}

int32_t ctlUniFrameXP::AccessibleState(int32_t child) const {
    int32_t state = ControlFrame::AccessibleState(child);
    if (child == CHILDID_SELF && !m_bEnabled) state |= STATE_SYSTEM_UNAVAILABLE;
    return state;
}

// ---- drawing ----

int32_t ctlUniFrameXP::ShadowColor(int32_t textColor) {
    return GetColorLuminance(textColor) < 171 ? SetColorLuminance(textColor, 255) : ColorInc(textColor, -85);
}

void ctlUniFrameXP::drawTitle(HDC hdc, CTL_RECT area, int32_t flags, int32_t textColor) const {
    const CtlString title = u" " + m_sCaption + u" ";
    if (m_bUseShadow) {
        const int32_t offset = ScaleByDpi(1);
        CTL_RECT shadow{area.left + offset, area.top + offset, area.right + offset, area.bottom + offset};
        DrawTextColor(hdc, title, shadow, flags, ShadowColor(textColor));
    }
    DrawTextColor(hdc, title, area, flags, textColor);
}

void ctlUniFrameXP::cutCorners(HDC hdc, const CTL_RECT& whole, int32_t border) const {
    // Outside the diagonal the corner shows the outer colour; the diagonal itself is border.
    const int32_t line = ScaleByDpi(1);
    const int32_t cut = ScaleByDpi(2);
    const int32_t outer = m_lBackColorOut == -1 ? m_lBackColor : m_lBackColorOut;
    const int32_t right = whole.right - 1;
    const int32_t bottom = whole.bottom - 1;
    for (int32_t i = 0; i < cut + line; ++i) {
        for (int32_t j = 0; i + j < cut + line; ++j) {
            const int32_t color = i + j < cut ? outer : border;
            DrawPixel(hdc, whole.left + i, whole.top + j, color);
            DrawPixel(hdc, right - i, whole.top + j, color);
            DrawPixel(hdc, whole.left + i, bottom - j, color);
            DrawPixel(hdc, right - i, bottom - j, color);
        }
    }
}

void ctlUniFrameXP::drawBarLook(HDC hdc, const CTL_RECT& whole, int32_t border, int32_t textColor,
                                const CtlString& title) {
    skipOnError([&] { DrawRect(hdc, whole, m_lBackColor, true); });
    if (!m_sCaption.empty()) {
        skipOnError([&] {
            int32_t tw = 0;
            int32_t h = 0;
            CalculateStringDimEx(hdc, title, DT_NOPREFIX, tw, h);
            const CTL_RECT bar{0, 0, whole.right, h + ScaleByDpi(2)};
            if (m_lTitleBackColor == -1) {
                FadeToX(hdc, bar, ColorInc(m_lBackColor, -17), ColorInc(m_lBackColor, -34));
            } else {
                FadeToX(hdc, bar, ColorInc(m_lTitleBackColor, 17), ColorInc(m_lTitleBackColor, -17));
            }
            const int32_t inset = ScaleByDpi(3);
            drawTitle(hdc, CTL_RECT{inset, 0, whole.right - inset, bar.bottom}, kBarTitleFlags, textColor);
        });
    }
    skipOnError([&] {
        frameRect(hdc, whole, border, ScaleByDpi(1));
        cutCorners(hdc, whole, border);
    });
}

void ctlUniFrameXP::drawGrooveLook(HDC hdc, const CTL_RECT& whole, int32_t border, int32_t textColor,
                                   const CtlString& title) {
    skipOnError([&] { DrawRect(hdc, whole, m_lBackColor, true); });
    skipOnError([&] {
        const int32_t line = ScaleByDpi(1);
        int32_t tw = 0;
        int32_t h = 0;
        if (!m_sCaption.empty()) CalculateStringDimEx(hdc, title, DT_NOPREFIX, tw, h);
        const int32_t y = h / 2;
        frameRect(hdc, CTL_RECT{0, y, whole.right, whole.bottom}, border, line);
        frameRect(hdc, CTL_RECT{line, y + line, whole.right - line, whole.bottom - line}, kWhite, line);
        if (m_sCaption.empty()) return;
        const int32_t left = ScaleByDpi(5);
        DrawRect(hdc, CTL_RECT{left, 0, tw + left, h}, m_lBackColor, true);  // clears the line behind the title
        drawTitle(hdc, CTL_RECT{left, 0, whole.right, whole.bottom}, kGrooveTitleFlags, textColor);
    });
}

void ctlUniFrameXP::clipChildren() const {
    // A container: its drawing must not paint over the controls that live in its window.
    const HWND hwnd = Surface().hWnd();
    if (hwnd == nullptr) return;
    const LONG_PTR style = ::GetWindowLongPtrW(hwnd, GWL_STYLE);
    if ((style & WS_CLIPCHILDREN) == 0) ::SetWindowLongPtrW(hwnd, GWL_STYLE, style | WS_CLIPCHILDREN);
}

void ctlUniFrameXP::DrawControl(HDC hdc) {
    const DrawingScope scope(*this);
    if (!scope.entered()) return;
    skipOnError([&] { clipChildren(); });
    skipOnError([&] { syncSurfaceEnabled(); });
    const int32_t textColor = m_bEnabled ? m_lForeColor : kDisabledTextColor;
    skipOnError([&] {
        if (Surface().ForeColor() != textColor) Surface().ForeColor(textColor);
    });
    const CTL_RECT whole = SurfaceRect();
    if (whole.right <= 0 || whole.bottom <= 0) return;
    const int32_t border = m_lBorderColor == -1 ? ColorInc(m_lBackColor, -68) : m_lBorderColor;
    const CtlString title = u" " + m_sCaption + u" ";
    if (m_bVistaStyle) {
        drawBarLook(hdc, whole, border, textColor, title);
    } else {
        drawGrooveLook(hdc, whole, border, textColor, title);
    }
}
