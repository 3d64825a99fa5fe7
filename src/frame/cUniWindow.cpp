#include "frame/cUniWindow.h"

#include "frame/modcUniWindow.h"

namespace {

CtlString classNameOf(int32_t number, const CtlString& registered) {
    switch (number) {
        case 0: return registered;
        case 1: return u"BUTTON";
        case 2: return u"COMBOBOX";
        case 3: return u"EDIT";
        case 4: return u"LISTBOX";
        case 5: return u"MDICLIENT";
        case 6: return u"RichEdit";
        // These letters name no class, and so such a creation fails; kept as it has always been.
        case 7: return u"RICHEDIT_CLASS";
        case 8: return u"SCROLLBAR";
        case 9: return u"STATIC";
        default: return {};
    }
}

}  // namespace

bool cUniWindow::WindowClassRegister(const CtlString& sClass, int32_t Style, HCURSOR hCursor, HICON hIcon,
                                     HICON hIconSm, int32_t cbClassExtra, int32_t cbWndExtra) {
    m_sClass = sClass;
    if (modcUniWindow::IsRegistered(sClass)) return true;

    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = static_cast<UINT>(Style);
    wc.lpfnWndProc = &modcUniWindow::DefaultWindowProc;
    wc.cbClsExtra = cbClassExtra;
    wc.cbWndExtra = cbWndExtra;
    wc.hInstance = modcUniWindow::LibraryInstance();
    wc.hIcon = hIcon;
    wc.hCursor = hCursor;
    wc.hbrBackground = ::GetSysColorBrush(COLOR_BTNFACE);
    wc.lpszClassName = AsWide(sClass);
    wc.hIconSm = hIconSm;
    if (::RegisterClassExW(&wc) == 0) return false;
    modcUniWindow::AddRegistered(sClass);
    return true;
}

void cUniWindow::WindowClassUnregister() {
    if (m_sClass.empty()) return;
    ::UnregisterClassW(AsWide(m_sClass), modcUniWindow::LibraryInstance());
    m_sClass.clear();
}

HWND cUniWindow::WindowCreate(DWORD dwExStyle, DWORD dwStyle, int32_t Class, int32_t x, int32_t y, int32_t nWidth,
                              int32_t nHeight, const CtlString& sCaption, HWND hwndParent, HMENU hMenu,
                              LPARAM lParam) {
    const CtlString className = classNameOf(Class, m_sClass);
    if (m_hWnd != nullptr) WindowDestroy();
    m_hWnd = ::CreateWindowExW(dwExStyle, AsWide(className), AsWide(sCaption), dwStyle, x, y, nWidth, nHeight,
                               hwndParent, hMenu, modcUniWindow::LibraryInstance(), &lParam);
    return m_hWnd;
}

bool cUniWindow::WindowDestroy() {
    if (m_hWnd != nullptr) {
        if (::IsWindow(m_hWnd)) ::DestroyWindow(m_hWnd);
        m_hWnd = nullptr;
    }
    return false;
}
