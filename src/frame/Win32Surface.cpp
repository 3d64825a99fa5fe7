#include "frame/Win32Surface.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <vector>

#include "frame/HostForm.h"
#include "frame/IPAOHookFilter.h"
#include "frame/MaskRegion.h"
#include "frame/ScaleUnits.h"
#include "frame/SurfaceAccessible.h"
#include "graphics/modCommonDraw.h"

namespace {

// Surfaces alive on this thread, for access keys; windows belong to the thread that made them.
thread_local std::vector<Win32Surface*> t_liveSurfaces;

std::atomic<int32_t> g_dpiForNewSurfaces{0};

// Newer than some headers.
constexpr UINT kDpiChanged = 0x02E0;
constexpr UINT kDpiChangedAfterParent = 0x02E3;

HINSTANCE moduleInstance() noexcept { return ::GetModuleHandleW(nullptr); }

bool registerSurfaceClass() noexcept {
    static const bool registered = [] {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof(windowClass);
        // CS_OWNDC: hDC stays the same DC, with its font and text colour, for the window's life.
        windowClass.style = CS_OWNDC | CS_DBLCLKS;
        windowClass.lpfnWndProc = ::DefWindowProcW;
        windowClass.hInstance = moduleInstance();
        windowClass.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
        windowClass.lpszClassName = Win32Surface::WindowClassName();
        return ::RegisterClassExW(&windowClass) != 0 || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
    }();
    return registered;
}

int16_t shiftFromKeys(WPARAM keys) noexcept {
    int16_t shift = 0;
    if ((keys & MK_SHIFT) != 0) shift |= 1;
    if ((keys & MK_CONTROL) != 0) shift |= 2;
    if (::GetKeyState(VK_MENU) < 0) shift |= 4;
    return shift;
}

int16_t buttonsFromKeys(WPARAM keys) noexcept {
    int16_t buttons = 0;
    if ((keys & MK_LBUTTON) != 0) buttons |= 1;
    if ((keys & MK_RBUTTON) != 0) buttons |= 2;
    if ((keys & MK_MBUTTON) != 0) buttons |= 4;
    return buttons;
}

// The system cursors behind the pointer values 1..15.
LPCWSTR cursorFor(int16_t pointer) noexcept {
    switch (pointer) {
        case 1: return IDC_ARROW;
        case 2: return IDC_CROSS;
        case 3: return IDC_IBEAM;
        case 4: return IDC_ICON;
        case 5: return IDC_SIZEALL;
        case 6: return IDC_SIZENESW;
        case 7: return IDC_SIZENS;
        case 8: return IDC_SIZENWSE;
        case 9: return IDC_SIZEWE;
        case 10: return IDC_UPARROW;
        case 11: return IDC_WAIT;
        case 12: return IDC_NO;
        case 13: return IDC_APPSTARTING;
        case 14: return IDC_HELP;
        case 15: return IDC_SIZEALL;
        default: return nullptr;
    }
}

wchar_t upperCase(wchar_t ch) noexcept {
    wchar_t buffer[2] = {ch, L'\0'};
    ::CharUpperBuffW(buffer, 1);
    return buffer[0];
}

}  // namespace

// ---- WindowExtender ----

float Win32Surface::WindowExtender::Left() const {
    RECT r{};
    const HWND hwnd = m_surface.hWnd();
    if (hwnd == nullptr || !::GetWindowRect(hwnd, &r)) return 0.0F;
    ::MapWindowPoints(HWND_DESKTOP, ::GetParent(hwnd), reinterpret_cast<POINT*>(&r), 2);
    return m_surface.ScaleX(static_cast<float>(r.left), kScalePixels, kScaleTwips);
}

void Win32Surface::WindowExtender::Left(float value) {
    const HWND hwnd = m_surface.hWnd();
    if (hwnd == nullptr) return;
    RECT r{};
    ::GetWindowRect(hwnd, &r);
    ::MapWindowPoints(HWND_DESKTOP, ::GetParent(hwnd), reinterpret_cast<POINT*>(&r), 2);
    const int x = static_cast<int>(std::lround(m_surface.ScaleX(value, kScaleTwips, kScalePixels)));
    ::SetWindowPos(hwnd, nullptr, x, r.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

float Win32Surface::WindowExtender::Top() const {
    RECT r{};
    const HWND hwnd = m_surface.hWnd();
    if (hwnd == nullptr || !::GetWindowRect(hwnd, &r)) return 0.0F;
    ::MapWindowPoints(HWND_DESKTOP, ::GetParent(hwnd), reinterpret_cast<POINT*>(&r), 2);
    return m_surface.ScaleY(static_cast<float>(r.top), kScalePixels, kScaleTwips);
}

void Win32Surface::WindowExtender::Top(float value) {
    const HWND hwnd = m_surface.hWnd();
    if (hwnd == nullptr) return;
    RECT r{};
    ::GetWindowRect(hwnd, &r);
    ::MapWindowPoints(HWND_DESKTOP, ::GetParent(hwnd), reinterpret_cast<POINT*>(&r), 2);
    const int y = static_cast<int>(std::lround(m_surface.ScaleY(value, kScaleTwips, kScalePixels)));
    ::SetWindowPos(hwnd, nullptr, r.left, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32Surface::WindowExtender::Container(CtlString name, CtlVariant index) {
    m_container.name = std::move(name);
    m_container.index = std::move(index);
    m_bHasContainer = true;
}

std::vector<std::unique_ptr<FormControl>> Win32Surface::WindowExtender::ParentControls() const {
    if (m_form == nullptr) throw MissingHostMember();
    return m_form->Controls();
}

// ---- life ----

Win32Surface::Win32Surface(HWND parent, int32_t x, int32_t y, int32_t width, int32_t height, bool autoRedraw)
    : m_bAutoRedraw(autoRedraw), m_iDpiOverride(g_dpiForNewSurfaces.load()) {
    const auto ambientFont = m_defaultAmbient.Font();
    m_font = ambientFont ? ambientFont->Clone() : std::make_shared<StdFont>();
    if (!registerSurfaceClass()) return;
    const HWND hwnd = ::CreateWindowExW(0, WindowClassName(), L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, x, y,
                                        width, height, parent, nullptr, moduleInstance(), nullptr);
    if (hwnd == nullptr) return;
    m_hWnd = hwnd;
    ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ::SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Win32Surface::windowProc));
    // An own DC stays valid after ReleaseDC, which keeps the DC count of a leak check honest.
    m_hOwnDC = ::GetDC(hwnd);
    ::ReleaseDC(hwnd, m_hOwnDC);
    if (m_hOwnDC != nullptr) {
        ::SetBkMode(m_hOwnDC, TRANSPARENT);
        ::SetTextColor(m_hOwnDC, static_cast<COLORREF>(ConvertOLEColor(m_lForeColor)));
    }
    if (m_bAutoRedraw) recreateBackingBitmap();
    applyFont();
    t_liveSurfaces.push_back(this);
}

Win32Surface::~Win32Surface() {
    if (HostForm* form = m_defaultExtender.Form()) form->Remove(*this);
    m_client = nullptr;
    if (m_hWnd != nullptr) ::DestroyWindow(m_hWnd);
    onDestroy();  // also when the parent destroyed the window first
    std::erase(t_liveSurfaces, this);
}

void Win32Surface::SetClient(SurfaceClient* client) {
    if (client != m_client) disconnectAccessible();
    m_client = client;
}

void Win32Surface::disconnectAccessible() noexcept {
    if (m_accessible == nullptr) return;
    m_accessible->Disconnect();
    m_accessible->Release();
    m_accessible = nullptr;
}

void Win32Surface::onDestroy() {
    disconnectAccessible();
    if (m_dropTarget != nullptr) {
        if (m_hWnd != nullptr) ::RevokeDragDrop(m_hWnd);
        m_dropTarget->Detach();
        m_dropTarget->Release();
        m_dropTarget = nullptr;
    }
    // The surface's font leaves the own DC before it is deleted; the DC itself goes with the window.
    if (m_hOwnDC != nullptr) ::SelectObject(m_hOwnDC, ::GetStockObject(SYSTEM_FONT));
    m_hOwnDC = nullptr;
    m_backDC.reset();
    m_backBitmap.reset();
    m_hFont.reset();
    m_hWnd = nullptr;
}

// ---- host side ----

void Win32Surface::NotifyAmbientChanged(const CtlString& propertyName) {
    if (m_client != nullptr) m_client->AmbientChanged(propertyName);
}

bool Win32Surface::TranslateAccessKey(const MSG& message) {
    if (message.message != WM_SYSCHAR || message.hwnd == nullptr) return false;
    const wchar_t key = upperCase(static_cast<wchar_t>(message.wParam));
    const HWND root = ::GetAncestor(message.hwnd, GA_ROOT);
    // A copy: a handler may create or destroy surfaces.
    const std::vector<Win32Surface*> surfaces = t_liveSurfaces;
    for (Win32Surface* surface : surfaces) {
        if (surface->m_hWnd == nullptr || surface->m_client == nullptr) continue;
        if (::GetAncestor(surface->m_hWnd, GA_ROOT) != root || !::IsWindowVisible(surface->m_hWnd)) continue;
        for (const char16_t candidate : surface->m_sAccessKeys) {
            if (upperCase(static_cast<wchar_t>(candidate)) != key) continue;
            int16_t keyAscii = static_cast<int16_t>(message.wParam);
            surface->m_client->AccessKeyPress(keyAscii);
            return true;
        }
    }
    return false;
}

// ---- ControlSurface ----

HDC Win32Surface::hDC() const { return m_bAutoRedraw && m_backDC ? m_backDC.get() : m_hOwnDC; }

float Win32Surface::ScaleWidth() const {
    RECT r{};
    if (m_hWnd == nullptr || !::GetClientRect(m_hWnd, &r)) return 0.0F;
    return static_cast<float>(r.right - r.left);
}

float Win32Surface::ScaleHeight() const {
    RECT r{};
    if (m_hWnd == nullptr || !::GetClientRect(m_hWnd, &r)) return 0.0F;
    return static_cast<float>(r.bottom - r.top);
}

int32_t Win32Surface::pixelsPerInch(bool vertical) const {
    const WindowDCGuard screen(nullptr);
    const int dpi = screen.get() != nullptr ? ::GetDeviceCaps(screen.get(), vertical ? LOGPIXELSY : LOGPIXELSX) : 96;
    return dpi > 0 ? dpi : 96;
}

int32_t Win32Surface::Dpi() const { return m_iDpiOverride > 0 ? m_iDpiOverride : WindowDpi(m_hWnd); }

void Win32Surface::OverrideDpi(int32_t dpi) {
    m_iDpiOverride = dpi > 0 ? dpi : 0;
    applyFont();
}

void Win32Surface::OverrideDpiForNewSurfaces(int32_t dpi) noexcept { g_dpiForNewSurfaces = dpi > 0 ? dpi : 0; }

float Win32Surface::ScaleX(float value, int16_t fromMode, int16_t toMode) const {
    return ConvertScaleUnits(value, fromMode, toMode, false, pixelsPerInch(false));
}

float Win32Surface::ScaleY(float value, int16_t fromMode, int16_t toMode) const {
    return ConvertScaleUnits(value, fromMode, toMode, true, pixelsPerInch(true));
}

void Win32Surface::Size(float width, float height) {
    if (m_hWnd == nullptr) return;
    const int w = static_cast<int>(std::lround(ScaleX(width, kScaleTwips, kScalePixels)));
    const int h = static_cast<int>(std::lround(ScaleY(height, kScaleTwips, kScalePixels)));
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, std::max(w, 0), std::max(h, 0),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32Surface::Refresh() {
    if (m_hWnd == nullptr) return;
    ::InvalidateRect(m_hWnd, nullptr, FALSE);
    ::UpdateWindow(m_hWnd);
}

bool Win32Surface::Enabled() const { return m_hWnd != nullptr && ::IsWindowEnabled(m_hWnd) != FALSE; }

void Win32Surface::Enabled(bool value) {
    if (m_hWnd != nullptr) ::EnableWindow(m_hWnd, value ? TRUE : FALSE);
}

void Win32Surface::ForeColor(int32_t value) {
    m_lForeColor = value;
    const COLORREF colour = static_cast<COLORREF>(ConvertOLEColor(value));
    if (m_hOwnDC != nullptr) ::SetTextColor(m_hOwnDC, colour);
    if (m_backDC) ::SetTextColor(m_backDC.get(), colour);
}

void Win32Surface::Font(std::shared_ptr<StdFont> value) {
    if (!value) return;
    m_font = std::move(value);
    applyFont();
}

void Win32Surface::applyFont() {
    if (!m_font) return;
    // The font follows the DPI the window is shown at, which the screen DC need not share.
    const int dpi = Dpi();
    const int points = static_cast<int>(std::lround(m_font->Size()));
    const HFONT font = ::CreateFontW(-::MulDiv(points, dpi, 72), 0, 0, 0, m_font->Weight(),
                                     m_font->Italic() ? TRUE : FALSE, m_font->Underline() ? TRUE : FALSE,
                                     m_font->Strikethrough() ? TRUE : FALSE,
                                     static_cast<BYTE>(m_font->Charset()), OUT_DEFAULT_PRECIS,
                                     CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, AsWide(m_font->Name()));
    if (font == nullptr) return;
    if (m_hOwnDC != nullptr) ::SelectObject(m_hOwnDC, font);
    if (m_backDC) ::SelectObject(m_backDC.get(), font);
    m_hFont.reset(font);  // the previous font is selected nowhere now
}

void Win32Surface::BackStyle(int16_t value) {
    m_iBackStyle = value;
    applyRegion();
}

void Win32Surface::MaskColor(int32_t value) {
    // Controls set the colour before each new mask picture; the old picture need not be re-read.
    if (m_lMaskColor == value) return;
    m_lMaskColor = value;
    if (m_iBackStyle == 0) applyRegion();
}

void Win32Surface::MaskPicture(std::shared_ptr<StdPicture> value) {
    m_maskPicture = std::move(value);
    if (m_iBackStyle == 0) applyRegion();
}

void Win32Surface::applyRegion() {
    if (m_hWnd == nullptr) return;
    const RegionOwner current(::CreateRectRgn(0, 0, 0, 0));
    const bool hasRegion = current && ::GetWindowRgn(m_hWnd, current.get()) != ERROR;
    if (m_iBackStyle != 0) {
        if (hasRegion) ::SetWindowRgn(m_hWnd, nullptr, TRUE);
        return;
    }
    RegionOwner shape(CreateRegionFromMask(m_maskPicture ? m_maskPicture->Bitmap() : nullptr,
                                           static_cast<COLORREF>(ConvertOLEColor(m_lMaskColor))));
    // The shape is rebuilt at every paint of a transparent control; setting an equal region
    // again would invalidate the window and paint it forever.
    if (!shape || (hasRegion && ::EqualRgn(shape.get(), current.get()))) return;
    // The window owns the region once the call succeeds.
    if (::SetWindowRgn(m_hWnd, shape.get(), TRUE) != 0) shape.release();
}

void Win32Surface::OLEDropMode(int16_t value) {
    m_iOLEDropMode = value;
    if (m_hWnd == nullptr) return;
    if (value == ctlOLEDropManual && m_dropTarget == nullptr) {
        m_dropTarget = new SurfaceDropTarget(this);
        // Fails without OleInitialize on the thread; the mode is kept, drops just don't arrive.
        if (FAILED(::RegisterDragDrop(m_hWnd, m_dropTarget))) {
            m_dropTarget->Detach();
            m_dropTarget->Release();
            m_dropTarget = nullptr;
        }
    } else if (value != ctlOLEDropManual && m_dropTarget != nullptr) {
        ::RevokeDragDrop(m_hWnd);
        m_dropTarget->Detach();
        m_dropTarget->Release();
        m_dropTarget = nullptr;
    }
}

void Win32Surface::OLEDrag() {
    if (m_dragData != nullptr || m_client == nullptr) return;
    m_dragData = new OleTextDataObject(this);
    int32_t allowedEffects = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    {
        OleDataView view(m_dragData);
        m_client->OLEStartDrag(view, allowedEffects);
    }
    DWORD effect = DROPEFFECT_NONE;
    if (allowedEffects != DROPEFFECT_NONE) {
        SurfaceDropSource* source = new SurfaceDropSource(this);
        if (FAILED(::DoDragDrop(m_dragData, source, static_cast<DWORD>(allowedEffects), &effect))) {
            effect = DROPEFFECT_NONE;
        }
        source->Release();
    }
    int32_t completed = static_cast<int32_t>(effect);
    if (m_client != nullptr) m_client->OLECompleteDrag(completed);
    m_dragData->Detach();
    m_dragData->Release();
    m_dragData = nullptr;
}

void Win32Surface::PropertyChanged(const CtlString& propertyName) {
    if (m_propertyChanged) m_propertyChanged(propertyName);
}

void Win32Surface::recreateBackingBitmap() {
    RECT r{};
    if (m_hWnd == nullptr || !::GetClientRect(m_hWnd, &r)) return;
    const int width = std::max<int>(r.right, 1);
    const int height = std::max<int>(r.bottom, 1);
    const WindowDCGuard screen(nullptr);
    if (screen.get() == nullptr) return;
    BitmapOwner bitmap(::CreateCompatibleBitmap(screen.get(), width, height));
    if (!m_backDC) {
        m_backDC.reset(::CreateCompatibleDC(screen.get()));
        if (m_backDC) {
            ::SetBkMode(m_backDC.get(), TRANSPARENT);
            ::SetTextColor(m_backDC.get(), static_cast<COLORREF>(ConvertOLEColor(m_lForeColor)));
            if (m_hFont) ::SelectObject(m_backDC.get(), m_hFont.get());
        }
    }
    if (!bitmap || !m_backDC) return;
    // The old picture is kept where it still fits, as a surface that resizes keeps its drawing.
    {
        const MemoryDCOwner copy(::CreateCompatibleDC(m_backDC.get()));
        const ScopedSelect target(copy.get(), bitmap.get());
        if (target.selected()) {
            RECT all{0, 0, width, height};
            ::FillRect(copy.get(), &all, ::GetSysColorBrush(COLOR_BTNFACE));
            if (m_backBitmap) ::BitBlt(copy.get(), 0, 0, width, height, m_backDC.get(), 0, 0, SRCCOPY);
        }
    }
    ::SelectObject(m_backDC.get(), bitmap.get());
    m_backBitmap = std::move(bitmap);  // the replaced bitmap is selected nowhere now
}

// ---- messages ----

LRESULT CALLBACK Win32Surface::windowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<Win32Surface*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (self == nullptr || self->m_hWnd != hwnd) return ::DefWindowProcW(hwnd, message, wParam, lParam);
    // Nothing a control throws may cross into the system's dispatcher.
    try {
        return self->handleMessage(message, wParam, lParam);
    } catch (...) {
        return ::DefWindowProcW(hwnd, message, wParam, lParam);
    }
}

LRESULT Win32Surface::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND hwnd = m_hWnd;
    switch (message) {
        case WM_PAINT:
            onPaint();
            return 0;
        case WM_ERASEBKGND:
            return 1;  // the control paints every pixel; erasing first only flickers
        case WM_SIZE:
            onSize();
            return 0;
        case WM_WINDOWPOSCHANGED: {
            // Windows raises show and hide for the window object only, Wine 8 for neither: a
            // screen reader following the control's client object learns of it here.
            const auto* position = reinterpret_cast<const WINDOWPOS*>(lParam);
            const UINT flags = position != nullptr ? position->flags : 0;
            if ((flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)) != 0 && m_client != nullptr &&
                m_client->Accessible() != nullptr) {
                ::NotifyWinEvent((flags & SWP_SHOWWINDOW) != 0 ? EVENT_OBJECT_SHOW : EVENT_OBJECT_HIDE, hwnd,
                                 OBJID_CLIENT, CHILDID_SELF);
            }
            break;  // the default procedure goes on to send WM_SIZE and WM_MOVE
        }
        case WM_SETCURSOR:
            if (LOWORD(lParam) == HTCLIENT && onSetCursor()) return TRUE;
            break;
        case WM_LBUTTONDOWN: case WM_RBUTTONDOWN: case WM_MBUTTONDOWN:
        case WM_LBUTTONUP: case WM_RBUTTONUP: case WM_MBUTTONUP:
        case WM_LBUTTONDBLCLK: case WM_RBUTTONDBLCLK: case WM_MBUTTONDBLCLK:
        case WM_MOUSEMOVE:
            onMouse(message, wParam, lParam);
            return 0;
        case WM_KEYDOWN: case WM_KEYUP: {
            int16_t keyCode = static_cast<int16_t>(wParam);
            int16_t shift = IPAOHookFilter::ShiftState();
            if (m_client != nullptr) {
                if (message == WM_KEYDOWN) {
                    m_client->KeyDown(keyCode, shift);
                } else {
                    m_client->KeyUp(keyCode, shift);
                }
            }
            return 0;
        }
        case WM_CHAR: {
            int16_t keyAscii = static_cast<int16_t>(wParam);
            if (m_client != nullptr) m_client->KeyPress(keyAscii);
            return 0;
        }
        case WM_SETFOCUS:
            if (m_client != nullptr) m_client->GotFocus();
            return 0;
        case WM_KILLFOCUS:
            if (m_client != nullptr) m_client->LostFocus();
            return 0;
        case kDpiChanged:
        case kDpiChangedAfterParent:
            onDpiChanged(message == kDpiChanged && (::GetWindowLongW(hwnd, GWL_STYLE) & WS_CHILD) == 0,
                         reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_GETOBJECT:
            return onGetObject(wParam, lParam);
        case WM_DESTROY: {
            const LRESULT result = ::DefWindowProcW(hwnd, message, wParam, lParam);
            onDestroy();
            return result;
        }
        default:
            break;
    }
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

void Win32Surface::onDpiChanged(bool topLevel, const RECT* suggested) {
    // A top-level window takes the rectangle the system suggests for the new DPI.
    if (topLevel && suggested != nullptr) {
        ::SetWindowPos(m_hWnd, nullptr, suggested->left, suggested->top, suggested->right - suggested->left,
                       suggested->bottom - suggested->top, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    applyFont();
    if (m_client != nullptr) m_client->DpiChanged();
}

LRESULT Win32Surface::onGetObject(WPARAM wParam, LPARAM lParam) {
    // The object id is a 32-bit value that arrives sign-extended in a 64-bit LPARAM.
    AccessibleSource* source = m_client != nullptr ? m_client->Accessible() : nullptr;
    if (static_cast<DWORD>(lParam) != static_cast<DWORD>(OBJID_CLIENT) || source == nullptr) {
        return ::DefWindowProcW(m_hWnd, WM_GETOBJECT, wParam, lParam);
    }
    if (m_accessible == nullptr) m_accessible = new SurfaceAccessible(m_hWnd, source);
    return ::LresultFromObject(__uuidof(IAccessible), wParam, m_accessible);
}

void Win32Surface::onPaint() {
    PAINTSTRUCT paint{};
    const HDC target = ::BeginPaint(m_hWnd, &paint);
    if (target == nullptr) return;
    if (m_bAutoRedraw && m_backDC) {
        const RECT& r = paint.rcPaint;
        ::BitBlt(target, r.left, r.top, r.right - r.left, r.bottom - r.top, m_backDC.get(), r.left, r.top, SRCCOPY);
    } else if (m_client != nullptr) {
        // With CS_OWNDC the paint DC is hDC, clipped to what needs painting.
        m_client->Paint();
    }
    ::EndPaint(m_hWnd, &paint);
}

void Win32Surface::onSize() {
    if (m_bAutoRedraw) recreateBackingBitmap();
    if (m_client != nullptr) m_client->Resize();
}

bool Win32Surface::onSetCursor() {
    if (m_iMousePointer == 0) return false;
    HCURSOR cursor = nullptr;
    if (m_iMousePointer == 99) {
        if (m_mouseIcon && m_mouseIcon->Type() == StdPicture::kTypeIcon) {
            cursor = static_cast<HCURSOR>(m_mouseIcon->Handle());
        }
    } else if (const LPCWSTR id = cursorFor(m_iMousePointer)) {
        cursor = ::LoadCursorW(nullptr, id);
    }
    if (cursor == nullptr) return false;
    ::SetCursor(cursor);
    return true;
}

void Win32Surface::onMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    if (m_client == nullptr) return;
    float x = static_cast<float>(static_cast<int16_t>(LOWORD(lParam)));
    float y = static_cast<float>(static_cast<int16_t>(HIWORD(lParam)));
    int16_t shift = shiftFromKeys(wParam);
    int16_t button = 0;
    switch (message) {
        case WM_LBUTTONDOWN: case WM_LBUTTONUP: case WM_LBUTTONDBLCLK: button = 1; break;
        case WM_RBUTTONDOWN: case WM_RBUTTONUP: case WM_RBUTTONDBLCLK: button = 2; break;
        case WM_MBUTTONDOWN: case WM_MBUTTONUP: case WM_MBUTTONDBLCLK: button = 4; break;
        default: break;
    }
    SurfaceClient* client = m_client;
    switch (message) {
        case WM_MOUSEMOVE: {
            int16_t buttons = buttonsFromKeys(wParam);
            client->MouseMove(buttons, shift, x, y);
            break;
        }
        case WM_LBUTTONDOWN: case WM_RBUTTONDOWN: case WM_MBUTTONDOWN:
            m_iPressedButtons = static_cast<int16_t>(m_iPressedButtons | button);
            ::SetCapture(m_hWnd);
            client->MouseDown(button, shift, x, y);
            break;
        case WM_LBUTTONDBLCLK: case WM_RBUTTONDBLCLK: case WM_MBUTTONDBLCLK:
            // The second press of a double click: DblClick instead of MouseDown and Click.
            m_iPressedButtons = static_cast<int16_t>(m_iPressedButtons | button);
            m_bDoubleClickPending = true;
            ::SetCapture(m_hWnd);
            client->DblClick();
            break;
        default: {  // button up
            const bool wasPressed = (m_iPressedButtons & button) != 0;
            m_iPressedButtons = static_cast<int16_t>(m_iPressedButtons & ~button);
            if (m_iPressedButtons == 0 && ::GetCapture() == m_hWnd) ::ReleaseCapture();
            RECT r{};
            ::GetClientRect(m_hWnd, &r);
            const POINT at{static_cast<LONG>(x), static_cast<LONG>(y)};
            const bool inside = ::PtInRect(&r, at) != FALSE;
            const bool afterDouble = m_bDoubleClickPending;
            m_bDoubleClickPending = false;
            client->MouseUp(button, shift, x, y);
            if (wasPressed && inside && !afterDouble && m_client != nullptr) m_client->Click();
            break;
        }
    }
}

// ---- OLE drag and drop ----

void Win32Surface::OnOleDrag(IDataObject* data, DWORD keyState, POINTL screenPoint, DWORD& effect, int16_t state) {
    if (m_client == nullptr || m_hWnd == nullptr) return;
    POINT at{screenPoint.x, screenPoint.y};
    ::ScreenToClient(m_hWnd, &at);
    OleDataView view(data);
    int32_t effectValue = static_cast<int32_t>(effect);
    int16_t button = buttonsFromKeys(keyState);
    int16_t shift = static_cast<int16_t>(((keyState & MK_SHIFT) != 0 ? 1 : 0) | ((keyState & MK_CONTROL) != 0 ? 2 : 0) |
                                         ((keyState & MK_ALT) != 0 ? 4 : 0));
    float x = static_cast<float>(at.x);
    float y = static_cast<float>(at.y);
    if (state < 0) {
        m_client->OLEDragDrop(view, effectValue, button, shift, x, y);
    } else {
        int16_t stateValue = state;
        m_client->OLEDragOver(view, effectValue, button, shift, x, y, stateValue);
    }
    effect = static_cast<DWORD>(effectValue);
}

bool Win32Surface::OnOleFeedback(DWORD effect) {
    int32_t effectValue = static_cast<int32_t>(effect);
    bool defaultCursors = true;
    if (m_client != nullptr) m_client->OLEGiveFeedback(effectValue, defaultCursors);
    return defaultCursors;
}

void Win32Surface::OnOleSetData(int16_t format) {
    if (m_client == nullptr || m_dragData == nullptr) return;
    OleDataView view(m_dragData);
    int16_t dataFormat = format;
    m_client->OLESetData(view, dataFormat);
}
