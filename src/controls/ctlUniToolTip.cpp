#include "controls/ctlUniToolTip.h"

#include <algorithm>
#include <cmath>

#include <oleacc.h>

#include "controls/TipPlacement.h"
#include "frame/SurfaceAccessible.h"
#include "frame/modcUniWindow.h"

namespace {

constexpr wchar_t kClassName[] = L"TarnwickToolTip";
constexpr int32_t kTipBackColor = static_cast<int32_t>(0x80000018u);
constexpr int32_t kTipForeColor = static_cast<int32_t>(0x80000017u);

thread_local std::unique_ptr<ctlUniToolTip> t_toolTip;
thread_local bool t_bPersistentTip = false;

bool isBlank(char16_t unit) noexcept { return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n'; }

bool registerClass() noexcept {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.lpfnWndProc = ::DefWindowProcW;  // replaced per window below, before any message counts
    windowClass.hInstance = modcUniWindow::LibraryInstance();
    windowClass.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kClassName;
    return ::RegisterClassExW(&windowClass) != 0 || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace

CtlString TrimTipText(const CtlString& text) {
    size_t first = 0;
    size_t last = text.size();
    while (first < last && isBlank(text[first])) ++first;
    while (last > first && isBlank(text[last - 1])) --last;
    return text.substr(first, last - first);
}

// ---- the module's instance ----

ctlUniToolTip& ctlUniToolTip::Instance() {
    if (!t_toolTip) t_toolTip = std::make_unique<ctlUniToolTip>();
    return *t_toolTip;
}

ctlUniToolTip* ctlUniToolTip::Existing() noexcept { return t_toolTip.get(); }

void ctlUniToolTip::DestroyInstance() noexcept { t_toolTip.reset(); }

bool ctlUniToolTip::PersistentTip() noexcept { return t_bPersistentTip; }

void ctlUniToolTip::PersistentTip(bool value) noexcept { t_bPersistentTip = value; }

// ---- life ----

ctlUniToolTip::ctlUniToolTip()
    : TimerActivate([this] { onActivateTick(); }, kActivateMs),
      TimerActiveMM([this] { onActiveMouseMoveTick(); }, kActiveMouseMoveMs),
      TimerHideTip([this] { onHideTipTick(); }, kHideTipMs) {
    if (!registerClass()) throw CtlError(u"ctlUniToolTip", u"The tip window class cannot be registered");
    m_hWnd = ::CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE, kClassName, L"", WS_POPUP, 0, 0, 1,
                               1, nullptr, nullptr, modcUniWindow::LibraryInstance(), nullptr);
    if (m_hWnd == nullptr) throw CtlError(u"ctlUniToolTip", u"The tip window cannot be created");
    ::SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ctlUniToolTip::windowProc));
    // The label draws into a bitmap of its surface: a tip never shows half-painted.
    m_labelSurface = std::make_unique<Win32Surface>(m_hWnd, 0, 0, 1, 1, true);
    m_lblTip = std::make_unique<ctlUniLabelNoFlick>(*m_labelSurface);
    m_lblTip->InitProperties();
    m_lblTip->Caption(CtlString());
    m_lblTip->BorderStyle(UniLabel_BS_Border);
    m_lblTip->BackColor(kTipBackColor);
    m_lblTip->ForeColor(kTipForeColor);
    m_lblTip->Style(-1);
}

ctlUniToolTip::~ctlUniToolTip() {
    HideTip();
    if (m_accessible != nullptr) {
        m_accessible->Disconnect();
        m_accessible->Release();
        m_accessible = nullptr;
    }
    // The label and its window go before the popup that holds them.
    m_lblTip.reset();
    m_labelSurface.reset();
    if (m_hWnd != nullptr) {
        ::SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, 0);
        ::DestroyWindow(m_hWnd);
    }
    // The class names this module: unregistered, so that a later load of the library registers its own.
    ::UnregisterClassW(kClassName, modcUniWindow::LibraryInstance());
}

LRESULT CALLBACK ctlUniToolTip::windowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<ctlUniToolTip*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    try {
        switch (message) {
            case WM_NCHITTEST:
                return HTTRANSPARENT;  // the mouse belongs to what lies below the tip
            case WM_MOUSEACTIVATE:
                return MA_NOACTIVATE;
            case WM_GETOBJECT:
                if (self != nullptr) return self->onGetObject(wParam, lParam);
                break;
            default:
                break;
        }
    } catch (...) {
    }
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

LRESULT ctlUniToolTip::onGetObject(WPARAM wParam, LPARAM lParam) {
    // The object id is a 32-bit value that arrives sign-extended in a 64-bit LPARAM.
    if (static_cast<DWORD>(lParam) != static_cast<DWORD>(OBJID_CLIENT)) {
        return ::DefWindowProcW(m_hWnd, WM_GETOBJECT, wParam, lParam);
    }
    if (m_accessible == nullptr) m_accessible = new SurfaceAccessible(m_hWnd, this);
    return ::LresultFromObject(__uuidof(IAccessible), wParam, m_accessible);
}

// ---- the tip ----

POINT ctlUniToolTip::cursor() noexcept {
    POINT pt{};
    ::GetCursorPos(&pt);
    return pt;
}

bool ctlUniToolTip::cursorAtLast() const noexcept {
    const POINT pt = cursor();
    return pt.x == m_ptLast.x && pt.y == m_ptLast.y;
}

bool ctlUniToolTip::TipIsVisible() const noexcept { return m_hWnd != nullptr && ::IsWindowVisible(m_hWnd) != FALSE; }

void ctlUniToolTip::SetTip(const CtlString& sTip, int32_t lMaxWidth, const CtlString& sTag, int32_t XMax, int32_t YMax) {
    if (m_bBusy) return;
    if (!sTag.empty()) m_sTag = sTag;
    if (TrimTipText(sTip).empty()) {
        HideTip();
        m_sTip = sTip;
        return;
    }
    const POINT pt = cursor();
    const bool moved = pt.x != m_ptLast.x || pt.y != m_ptLast.y;
    const bool newText = sTip != m_sTip;
    if (!newText && !moved && !t_bPersistentTip) return;  // nothing changed
    if ((newText || moved) && TipIsVisible()) HideTip();
    TimerActivate.Enabled(false);
    TimerHideTip.Enabled(false);
    storeTip(sTip, lMaxWidth, XMax, YMax);
    m_ptLast = pt;
    TimerActivate.Enabled(true);
}

void ctlUniToolTip::UpdateTip(const CtlString& sTip, int32_t lMaxWidth, const CtlString& sTag, int32_t XMax,
                              int32_t YMax) {
    if (m_bBusy) return;
    if (!sTag.empty()) m_sTag = sTag;
    if (TrimTipText(sTip).empty()) {
        HideTip();
        m_sTip = sTip;
        return;
    }
    storeTip(sTip, lMaxWidth, XMax, YMax);
    if (TipIsVisible()) ::NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, m_hWnd, OBJID_CLIENT, CHILDID_SELF);
}

void ctlUniToolTip::storeTip(const CtlString& sTip, int32_t lMaxWidth, int32_t XMax, int32_t YMax) {
    m_sTip = sTip;
    m_lblTip->Caption(u" " + TrimTipText(sTip));
    m_lMaxWidth = lMaxWidth;
    m_lXMax = XMax;
    m_lYMax = YMax;
    if (TipIsVisible()) {
        m_bBusy = true;
        layout();
        m_bBusy = false;
    }
}

void ctlUniToolTip::HideTip() {
    TimerActiveMM.Enabled(false);
    TimerActivate.Enabled(false);
    TimerHideTip.Enabled(false);
    if (!TipIsVisible()) return;
    ::ShowWindow(m_hWnd, SW_HIDE);
    ::NotifyWinEvent(EVENT_OBJECT_HIDE, m_hWnd, OBJID_CLIENT, CHILDID_SELF);
}

void ctlUniToolTip::layout() {
    const int32_t dpi = Dpi();
    const HDC dc = m_labelSurface->hDC();
    const CtlString& caption = m_lblTip->Caption();
    const auto* text = reinterpret_cast<const wchar_t*>(caption.c_str());
    const int length = static_cast<int>(caption.size());
    RECT measured{0, 0, 0, 0};
    // The label draws with tab expansion and word breaks: measured with the same flags.
    ::DrawTextW(dc, text, length, &measured, DT_CALCRECT | DT_EXPANDTABS);
    const int32_t limit = TipPlacement::TextWidthLimit(m_lMaxWidth, dpi);
    if (limit > 0 && measured.right > limit) {
        measured = RECT{0, 0, limit, 0};
        ::DrawTextW(dc, text, length, &measured, DT_CALCRECT | DT_EXPANDTABS | DT_WORDBREAK);
    }
    SIZE size = TipPlacement::WindowSize(SIZE{measured.right, measured.bottom}, dpi);
    // A single word wider than the limit cannot wrap: it is cut at the maximum instead.
    if (m_lMaxWidth > 0) size.cx = std::min<LONG>(size.cx, m_lMaxWidth);

    const POINT pt = cursor();
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    RECT work{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    if (::GetMonitorInfoW(::MonitorFromPoint(pt, MONITOR_DEFAULTTONEAREST), &monitor)) work = monitor.rcWork;
    const RECT place = TipPlacement::Place(pt, size, TipPlacement::Bounds(work, m_lXMax, m_lYMax), dpi);
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    ::SetWindowPos(m_hWnd, HWND_TOPMOST, place.left, place.top, width, height, SWP_NOACTIVATE);
    ::SetWindowPos(m_labelSurface->hWnd(), nullptr, 0, 0, width, height, SWP_NOACTIVATE | SWP_NOZORDER);
    m_lblTip->Refresh();
}

void ctlUniToolTip::show() {
    m_bBusy = true;  // showing can move the mouse over a control, whose tip call must wait
    try {
        layout();
        ::SetWindowPos(m_hWnd, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
        ::NotifyWinEvent(EVENT_OBJECT_SHOW, m_hWnd, OBJID_CLIENT, CHILDID_SELF);
    } catch (...) {
    }
    m_bBusy = false;
}

void ctlUniToolTip::onActivateTick() {
    if (cursorAtLast()) {
        TimerActivate.Enabled(false);
        show();
        TimerHideTip.Enabled(true);
        TimerActiveMM.Enabled(true);
    } else {
        HideTip();
    }
}

void ctlUniToolTip::onActiveMouseMoveTick() {
    if (!cursorAtLast()) {
        HideTip();
    } else if (!TipIsVisible()) {
        TimerActiveMM.Enabled(false);
    }
}

void ctlUniToolTip::onHideTipTick() {
    if (!t_bPersistentTip) {
        HideTip();
        return;
    }
    const POINT pt = cursor();
    if (pt.x == m_ptLast.x || pt.y == m_ptLast.y) {
        TimerHideTip.Enabled(true);
    } else {
        HideTip();
    }
}

// ---- settings ----

void ctlUniToolTip::TipColors(int32_t back, int32_t fore) {
    if (m_lblTip->BackColor() != back) m_lblTip->BackColor(back);
    if (m_lblTip->ForeColor() != fore) m_lblTip->ForeColor(fore);
}

void ctlUniToolTip::TipFont(std::shared_ptr<StdFont> font) {
    if (!font) return;
    m_lblTip->Font(std::move(font));
    if (TipIsVisible()) layout();
}

void ctlUniToolTip::Style(int32_t style) {
    if (m_lblTip->Style() != style) m_lblTip->Style(style);
}

uint8_t ctlUniToolTip::AlphaOf(int16_t transparency) noexcept {
    const int32_t t = std::clamp<int32_t>(transparency, 0, 100);
    return static_cast<uint8_t>(std::lround(255.0 * (100 - t) / 100.0));
}

void ctlUniToolTip::Transparency(int16_t value) {
    m_iTransparency = value;
    const LONG_PTR exStyle = ::GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE);
    if (AlphaOf(value) == 255) {
        if ((exStyle & WS_EX_LAYERED) != 0) ::SetWindowLongPtrW(m_hWnd, GWL_EXSTYLE, exStyle & ~WS_EX_LAYERED);
        return;
    }
    if ((exStyle & WS_EX_LAYERED) == 0) ::SetWindowLongPtrW(m_hWnd, GWL_EXSTYLE, exStyle | WS_EX_LAYERED);
    ::SetLayeredWindowAttributes(m_hWnd, 0, AlphaOf(value), LWA_ALPHA);
}

// ---- accessibility ----

int32_t ctlUniToolTip::AccessibleRole(int32_t) const { return ROLE_SYSTEM_TOOLTIP; }

CtlString ctlUniToolTip::AccessibleName(int32_t) const { return TrimTipText(m_sTip); }

int32_t ctlUniToolTip::AccessibleState(int32_t) const {
    return STATE_SYSTEM_READONLY | (TipIsVisible() ? 0 : STATE_SYSTEM_INVISIBLE);
}
