#include "controls/ctlUniTooltipManager.h"

#include "controls/ctlUniToolTip.h"
#include "graphics/DrawButton.h"
#include "graphics/modCommonDraw.h"

namespace {

std::shared_ptr<StdFont> ambientFont(ControlSurface& surface) {
    try {
        if (std::shared_ptr<StdFont> font = surface.Ambient().Font()) return font->Clone();
    } catch (...) {
    }
    return std::make_shared<StdFont>(u"Tahoma", 8.0F);
}

}  // namespace

ctlUniTooltipManager::ctlUniTooltipManager(ControlSurface& surface, ControlEvents* events)
    : ControlFrame(surface, events), m_tipFont(ambientFont(surface)) {}

ctlUniTooltipManager::~ctlUniTooltipManager() { stopService(); }

// ---- persistence ----

void ctlUniTooltipManager::InitProperties() {
    m_bPersistentTip = false;
    m_bActivateTips = true;
    m_tipFont = ambientFont(Surface());
    m_lTipBgColor = kDefaultTipBgColor;
    m_lTipFgColor = kDefaultTipFgColor;
    m_iStyle = -1;
    m_iTransparency = 0;
    if (m_bActivateTips) startService();
}

void ctlUniTooltipManager::ReadProperties(PropertyBag& bag) {
    m_bPersistentTip = ReadBoolProperty(bag, u"PersistentTip", false);
    m_bActivateTips = ReadBoolProperty(bag, u"ActivateTips", true);
    const std::shared_ptr<StdFont> ambient = ambientFont(Surface());
    m_tipFont = VariantToFont(bag.ReadProperty(u"Font", ambient), ambient);
    m_lTipBgColor = ReadLongProperty(bag, u"TipBgColor", kDefaultTipBgColor);
    m_lTipFgColor = ReadLongProperty(bag, u"TipFgColor", kDefaultTipFgColor);
    m_iStyle = ReadLongProperty(bag, u"Style", -1);
    m_iTransparency = ReadIntegerProperty(bag, u"Transparency", 0);
    if (m_bActivateTips) {
        startService();
    } else {
        stopService();
    }
}

void ctlUniTooltipManager::WriteProperties(PropertyBag& bag) const {
    bag.WriteProperty(u"PersistentTip", m_bPersistentTip);
    bag.WriteProperty(u"ActivateTips", m_bActivateTips);
    bag.WriteProperty(u"Font", m_tipFont);
    bag.WriteProperty(u"TipBgColor", m_lTipBgColor);
    bag.WriteProperty(u"TipFgColor", m_lTipFgColor);
    bag.WriteProperty(u"Style", m_iStyle);
    bag.WriteProperty(u"Transparency", m_iTransparency);
}

// ---- the service ----

bool ctlUniTooltipManager::isServing() const noexcept { return m_bActivateTips && IsTooltipManagerAlive(); }

void ctlUniTooltipManager::startService() {
    // Designers show the manager but run no tips.
    if (!UserMode()) return;
    RegisterTooltipManager(&m_sink);
    SetDefaultButtonStyleListener(&ctlUniTooltipManager::defaultStyleChanged);
    applySettings();
    hideAtRunTime();
}

void ctlUniTooltipManager::stopService() noexcept {
    if (!IsTooltipManagerAlive()) return;
    UnregisterTooltipManager(&m_sink);
    if (IsTooltipManagerAlive()) return;  // another manager serves the thread
    SetDefaultButtonStyleListener(nullptr);
    ctlUniToolTip::PersistentTip(false);
    ctlUniToolTip::DestroyInstance();
}

void ctlUniTooltipManager::applySettings() {
    ctlUniToolTip::PersistentTip(m_bPersistentTip);
    ctlUniToolTip& tip = ctlUniToolTip::Instance();
    tip.TipColors(m_lTipBgColor, m_lTipFgColor);
    tip.TipFont(m_tipFont);
    tip.Style(m_iStyle);
    tip.Transparency(m_iTransparency);
}

void ctlUniTooltipManager::defaultStyleChanged(int32_t style) noexcept {
    try {
        if (!IsTooltipManagerAlive()) return;
        if (ctlUniToolTip* tip = ctlUniToolTip::Existing()) tip->Style(style);
    } catch (...) {
    }
}

void ctlUniTooltipManager::hideAtRunTime() {
    if (!UserMode()) return;
    if (const HWND hwnd = Surface().hWnd(); hwnd != nullptr && ::IsWindowVisible(hwnd)) ::ShowWindow(hwnd, SW_HIDE);
}

// ---- members ----

void ctlUniTooltipManager::PersistentTip(bool value) {
    m_bPersistentTip = value;
    if (isServing()) ctlUniToolTip::PersistentTip(value);
}

void ctlUniTooltipManager::ActivateTips(bool value) {
    m_bActivateTips = value;
    if (value) {
        startService();
    } else {
        stopService();
    }
}

void ctlUniTooltipManager::SetTip(const CtlString& sTip, int32_t lMaxWidth, const CtlString& sTag, int32_t XMax,
                                  int32_t YMax) {
    if (!IsTooltipManagerAlive()) return;
    // Moves over controls without tips cost nothing.
    if (sTip.empty() && sTag.empty() && GetTip().empty()) return;
    ctlUniToolTip::Instance().SetTip(sTip, lMaxWidth, sTag, XMax, YMax);
}

CtlString ctlUniTooltipManager::GetTip() const {
    const ctlUniToolTip* tip = ctlUniToolTip::Existing();
    return tip != nullptr ? tip->Tip() : CtlString();
}

void ctlUniTooltipManager::UpdateTip(const CtlString& sTip, int32_t lMaxWidth, const CtlString& sTag, int32_t XMax,
                                     int32_t YMax) {
    if (!IsTooltipManagerAlive()) return;
    ctlUniToolTip::Instance().UpdateTip(sTip, lMaxWidth, sTag, XMax, YMax);
}

bool ctlUniTooltipManager::TipIsVisible() const {
    const ctlUniToolTip* tip = ctlUniToolTip::Existing();
    return tip != nullptr && tip->TipIsVisible();
}

CtlString ctlUniTooltipManager::GetTipTag() const {
    const ctlUniToolTip* tip = ctlUniToolTip::Existing();
    return tip != nullptr ? tip->Tag() : CtlString();
}

void ctlUniTooltipManager::HideTip() {
    if (ctlUniToolTip* tip = ctlUniToolTip::Existing()) tip->HideTip();
}

void ctlUniTooltipManager::TipBgColor(int32_t value) {
    m_lTipBgColor = value;
    if (isServing()) ctlUniToolTip::Instance().TipColors(m_lTipBgColor, m_lTipFgColor);
}

void ctlUniTooltipManager::TipFgColor(int32_t value) {
    m_lTipFgColor = value;
    if (isServing()) ctlUniToolTip::Instance().TipColors(m_lTipBgColor, m_lTipFgColor);
}

void ctlUniTooltipManager::TipFont(std::shared_ptr<StdFont> value) {
    if (!value) return;
    m_tipFont = std::move(value);
    if (isServing()) ctlUniToolTip::Instance().TipFont(m_tipFont);
}

void ctlUniTooltipManager::Style(int32_t value) {
    m_iStyle = value;
    if (isServing()) ctlUniToolTip::Instance().Style(value);
}

void ctlUniTooltipManager::Transparency(int16_t value) {
    m_iTransparency = value;
    if (isServing()) ctlUniToolTip::Instance().Transparency(value);
}

void ctlUniTooltipManager::AmbientChanged(const CtlString& propertyName) {
    if (m_bActivateTips && UserMode() && !IsTooltipManagerAlive()) startService();
    ControlFrame::AmbientChanged(propertyName);
}

// ---- drawing: only designers see it ----

void ctlUniTooltipManager::DrawControl(HDC hdc) {
    const DrawingScope scope(*this);
    if (!scope.entered()) return;
    try {
        if (UserMode()) {
            hideAtRunTime();
            return;
        }
        CTL_RECT whole = SurfaceRect();
        DrawButton(hdc, whole, m_lTipBgColor, true, -1, false, false, false, false, false, iCtlBtnStyle_Flat, -1, true,
                   Dpi());
        CTL_RECT text = whole;
        DrawTextColor(hdc, u"Tip", text, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX, m_lTipFgColor);
    } catch (...) {
    }
}
