#include "frame/ControlFrame.h"

#include <cmath>

#include <oleacc.h>

#include "frame/TipLayer.h"
#include "graphics/GdiRaii.h"
#include "graphics/clsFontHDC.h"
#include "graphics/clsMEMDC.h"
#include "graphics/modCommonDraw.h"

ControlFrame::DrawingScope::DrawingScope(ControlFrame& frame) noexcept
    : m_frame(frame), m_bEntered(!frame.m_bDrawing) {
    if (m_bEntered) m_frame.m_bDrawing = true;
}

ControlFrame::DrawingScope::~DrawingScope() {
    if (m_bEntered) m_frame.m_bDrawing = false;
}

ControlFrame::ControlFrame(ControlSurface& surface, ControlEvents* events) : m_surface(surface), m_events(events) {
    m_surface.SetClient(this);
}

ControlFrame::~ControlFrame() { m_surface.SetClient(nullptr); }

// ---- common members ----

bool ControlFrame::Enabled() const { return m_surface.Enabled(); }

void ControlFrame::Enabled(bool value) {
    if (m_surface.Enabled() == value) return;
    m_surface.Enabled(value);
    NotifyAccessibleEvent(EVENT_OBJECT_STATECHANGE);
    RequestDrawControl();
}

std::shared_ptr<StdFont> ControlFrame::Font() const { return m_surface.Font(); }

void ControlFrame::Font(std::shared_ptr<StdFont> value) {
    if (!value) return;
    m_surface.Font(std::move(value));
    UpdateRegion();
    RequestDrawControl();
}

CtlVariant ControlFrame::ApplyFontChanges() {
    Font(Font());
    return CtlVariant();
}

void ControlFrame::OLEDropMode(int16_t value) {
    m_surface.OLEDropMode(value);
    m_surface.PropertyChanged(u"OLEDropMode");
}

bool ControlFrame::UserMode() const {
    try {
        return m_surface.Ambient().UserMode();
    } catch (...) {
        return true;
    }
}

// ---- drawing ----

void ControlFrame::RedrawAutoRedraw() {
    DrawControl(m_surface.hDC());
    m_surface.Refresh();
}

void ControlFrame::RequestDrawControl() noexcept {
    try {
        if (!UserMode() || m_surface.AutoRedraw()) {
            if (DrawsThroughAutoRedraw()) {
                RedrawAutoRedraw();
            } else {
                m_surface.Refresh();  // its Paint runs DrawControl
            }
        } else if (const HWND hwnd = m_surface.hWnd()) {
            // The window system merges these: several lets in a row cost one WM_PAINT.
            ::InvalidateRect(hwnd, nullptr, FALSE);
        }
    } catch (...) {
    }
}

void ControlFrame::RefreshControl(bool bNow) noexcept {
    try {
        UpdateRegion();
        if (bNow && DrawThroughWindowDC()) return;
    } catch (...) {
    }
    RequestDrawControl();
}

bool ControlFrame::DrawThroughWindowDC() noexcept {
    try {
        const HWND hwnd = m_surface.hWnd();
        if (hwnd == nullptr) return false;
        const WindowDCGuard dc(hwnd);
        if (dc.get() == nullptr) return false;
        clsFontHDC font;
        SelectSurfaceFont(font, dc.get(), TextQuality());
        DrawControl(dc.get());
        font.Destroy();
        return true;
    } catch (...) {
        return false;
    }
}

void ControlFrame::SelectSurfaceFont(clsFontHDC& holder, HDC hdc, int32_t quality) const {
    const std::shared_ptr<StdFont> font = m_surface.Font();
    if (!font || hdc == nullptr) return;
    try {
        // The holder sizes the font by the DC's LOGPIXELSY. Where the window is shown at another DPI
        // (per monitor, or a host that sets it), the point size is carried over to the DC's scale.
        const int32_t dcDpi = ::GetDeviceCaps(hdc, LOGPIXELSY);
        const int32_t dpi = m_surface.Dpi();
        double points = font->Size();
        if (dcDpi > 0 && dpi != dcDpi) points = points * dpi / dcDpi;
        holder.SetFontToDC(hdc, font->Name(), static_cast<int16_t>(std::lround(points)), -1, font->Bold(),
                           font->Italic(), font->Underline(), font->Strikethrough(), quality);
    } catch (...) {
        // No font selected: the DC keeps the one it has.
    }
}

void ControlFrame::ApplyColours(int32_t lStoredForeColor) {
    if (m_surface.Enabled()) {
        if (m_surface.ForeColor() != lStoredForeColor) m_surface.ForeColor(lStoredForeColor);
    } else if (lStoredForeColor != kDisabledTextColor) {
        m_surface.ForeColor(kDisabledTextColor);
    }
}

CTL_RECT ControlFrame::SurfaceRect() const {
    CTL_RECT r;
    r.right = static_cast<int32_t>(std::nearbyint(m_surface.ScaleWidth()));
    r.bottom = static_cast<int32_t>(std::nearbyint(m_surface.ScaleHeight()));
    return r;
}

void ControlFrame::ApplyMask(clsMEMDC& mask) {
    m_surface.MaskColor(0);
    m_surface.MaskPicture(StdPicture::FromBitmap(mask.ReleasehBmp(), true));
    if (m_surface.BackStyle() != 0) m_surface.BackStyle(0);
}

void ControlFrame::ApplyRoundMask() {
    clsMEMDC mask;
    try {
        const CTL_RECT all = SurfaceRect();
        mask.CreateDC(all.right, all.bottom, eMemDcBkMode_OPAQUE);
        mask.DrawBackColor(0);
        DrawRRect(mask.hDC(), all, true, 0x00FFFFFF, 0x00FFFFFF, 1, PS_SOLID, ScaleByDpi(2));
    } catch (...) {
    }
    ApplyMask(mask);
}

void ControlFrame::ApplyOpaqueShape() {
    if (m_surface.BackStyle() != 1) m_surface.BackStyle(1);
}

void ControlFrame::UpdateAccessKeys(const CtlString& caption) {
    const CtlString key = AccessKeyOfCaption(caption);
    if (key.empty() && m_surface.AccessKeys().empty()) return;
    m_surface.AccessKeys(key);
}

CtlString AccessKeyOfCaption(const CtlString& caption) {
    bool afterAmpersand = false;
    for (const char16_t unit : caption) {
        if (afterAmpersand) {
            if (unit != u'&') return CtlString(1, unit);
            afterAmpersand = false;  // "&&" is a literal ampersand
        } else if (unit == u'&') {
            afterAmpersand = true;
        }
    }
    return CtlString();
}

CtlString CaptionWithoutAccessKeyMarker(const CtlString& caption) {
    CtlString text;
    text.reserve(caption.size());
    bool afterAmpersand = false;
    for (const char16_t unit : caption) {
        if (unit == u'&' && !afterAmpersand) {
            afterAmpersand = true;
            continue;
        }
        afterAmpersand = false;
        text.push_back(unit);
    }
    return text;
}

// ---- accessibility ----

int32_t ControlFrame::AccessibleRole(int32_t) const { return ROLE_SYSTEM_CLIENT; }

CtlString ControlFrame::AccessibleName(int32_t child) const {
    return child == CHILDID_SELF ? CaptionWithoutAccessKeyMarker(AccessibleCaption()) : CtlString();
}

CtlString ControlFrame::AccessibleDescription(int32_t child) const {
    return child == CHILDID_SELF ? TipText() : CtlString();
}

CtlString ControlFrame::AccessibleValue(int32_t) const { return CtlString(); }

int32_t ControlFrame::AccessibleState(int32_t child) const {
    if (child != CHILDID_SELF) return 0;
    int32_t state = 0;
    const HWND hwnd = m_surface.hWnd();
    if (!m_surface.Enabled()) state |= STATE_SYSTEM_UNAVAILABLE;
    if (hwnd != nullptr && !::IsWindowVisible(hwnd)) state |= STATE_SYSTEM_INVISIBLE;
    if (TakesFocus()) {
        state |= STATE_SYSTEM_FOCUSABLE;
        if (hwnd != nullptr && ::GetFocus() == hwnd) state |= STATE_SYSTEM_FOCUSED;
    }
    return state;
}

CtlString ControlFrame::AccessibleDefaultAction(int32_t) const { return CtlString(); }

bool ControlFrame::AccessibleDoDefaultAction(int32_t) { return false; }

CtlString ControlFrame::AccessibleKeyboardShortcut(int32_t child) const {
    const CtlString keys = m_surface.AccessKeys();
    if (child != CHILDID_SELF || keys.empty()) return CtlString();
    wchar_t key[2] = {static_cast<wchar_t>(keys.front()), L'\0'};
    ::CharUpperBuffW(key, 1);
    return u"Alt+" + CtlString(1, static_cast<char16_t>(key[0]));
}

bool ControlFrame::AccessibleSelect(int32_t child, int32_t flags) {
    const HWND hwnd = m_surface.hWnd();
    if (child != CHILDID_SELF || flags != SELFLAG_TAKEFOCUS || !TakesFocus() || hwnd == nullptr) return false;
    ::SetFocus(hwnd);
    return true;
}

void ControlFrame::NotifyAccessibleEvent(DWORD event, int32_t child) const noexcept {
    if (const HWND hwnd = m_surface.hWnd()) ::NotifyWinEvent(event, hwnd, OBJID_CLIENT, child);
}

// ---- focus, tips, start ----

void ControlFrame::GotFocus() {
    m_bHasFocus = true;
    if (RedrawsOnFocus()) RequestDrawControl();
}

void ControlFrame::LostFocus() { ForceLostFocus(); }

void ControlFrame::ForceLostFocus() {
    if (!m_bHasFocus) return;
    m_bHasFocus = false;
    RequestDrawControl();
}

void ControlFrame::Tip(const CtlString& value) {
    m_sTip = value;
    m_surface.PropertyChanged(u"Tip");
    NotifyAccessibleEvent(EVENT_OBJECT_DESCRIPTIONCHANGE);
}

void ControlFrame::PassTip(const CtlString& tip) const {
    if (!UserMode()) return;
    PassTipToTooltipLayer(tip, ScaleByDpi(300));  // the library's own maximum, so it follows the DPI
}

void ControlFrame::FinishLoading(bool bManualStart) {
    m_bUserModeAtLoad = UserMode();
    if (!bManualStart) ExternalInitControl();
}

void ControlFrame::ExternalInitControl() {
    if (m_bStarted || !m_bUserModeAtLoad) return;  // native children exist only at run time
    StartControl();
    m_bStarted = true;
}

void ControlFrame::TerminateControl() noexcept {
    if (!m_bStarted) return;
    m_bStarted = false;
    try {
        StopControl();
    } catch (...) {
    }
}

// ---- entry points ----

void ControlFrame::Paint() {
    if (DrawsThroughAutoRedraw()) return;
    DrawControl(m_surface.hDC());
}

void ControlFrame::Resize() {
    if (!m_bDrawing) {
        UpdateRegion();
        RequestDrawControl();
    }
    RaiseResize();
}

void ControlFrame::AmbientChanged(const CtlString&) { RequestDrawControl(); }

void ControlFrame::DpiChanged() {
    try {
        RebuildDpiCaches();
    } catch (...) {
    }
    UpdateRegion();
    RequestDrawControl();
}

void ControlFrame::Click() {
    if (m_events != nullptr) m_events->Click();
}

void ControlFrame::DblClick() {
    if (m_events != nullptr) m_events->DblClick();
}

void ControlFrame::MouseDown(int16_t& Button, int16_t& Shift, float& x, float& y) {
    if (m_events != nullptr) m_events->MouseDown(Button, Shift, x, y);
}

void ControlFrame::MouseMove(int16_t& Button, int16_t& Shift, float& x, float& y) {
    PassTip(TipText());
    if (m_events != nullptr) m_events->MouseMove(Button, Shift, x, y);
}

void ControlFrame::MouseUp(int16_t& Button, int16_t& Shift, float& x, float& y) {
    if (m_events != nullptr) m_events->MouseUp(Button, Shift, x, y);
}

void ControlFrame::OLEStartDrag(SurfaceDataObject& Data, int32_t& AllowedEffects) {
    if (m_events != nullptr) m_events->OLEStartDrag(Data, AllowedEffects);
}

void ControlFrame::OLESetData(SurfaceDataObject& Data, int16_t& DataFormat) {
    if (m_events != nullptr) m_events->OLESetData(Data, DataFormat);
}

void ControlFrame::OLEGiveFeedback(int32_t& Effect, bool& DefaultCursors) {
    if (m_events != nullptr) m_events->OLEGiveFeedback(Effect, DefaultCursors);
}

void ControlFrame::OLEDragOver(SurfaceDataObject& Data, int32_t& Effect, int16_t& Button, int16_t& Shift, float& x,
                               float& y, int16_t& State) {
    if (m_events != nullptr) m_events->OLEDragOver(Data, Effect, Button, Shift, x, y, State);
}

void ControlFrame::OLEDragDrop(SurfaceDataObject& Data, int32_t& Effect, int16_t& Button, int16_t& Shift, float& x,
                               float& y) {
    if (m_events != nullptr) m_events->OLEDragDrop(Data, Effect, Button, Shift, x, y);
}

void ControlFrame::OLECompleteDrag(int32_t& Effect) {
    if (m_events != nullptr) m_events->OLECompleteDrag(Effect);
}
