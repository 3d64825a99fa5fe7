// cUniWindow: registers a Unicode window class shared by name and creates one window of it.
#pragma once

#include <cstdint>

#include "common/CtlTypes.h"
#include "platform/win32/WinApi.h"

class cUniWindow {
public:
    cUniWindow() = default;
    // Destroys the window it holds.
    ~cUniWindow() { WindowDestroy(); }
    // Owns a window handle.
    cUniWindow(const cUniWindow&) = delete;
    cUniWindow& operator=(const cUniWindow&) = delete;

    // The name given to WindowClassRegister, empty after WindowClassUnregister.
    const CtlString& Class() const noexcept { return m_sClass; }
    // True when the class is registered now or was registered by this library before.
    bool WindowClassRegister(const CtlString& sClass, int32_t Style = 0, HCURSOR hCursor = nullptr,
                             HICON hIcon = nullptr, HICON hIconSm = nullptr, int32_t cbClassExtra = 0,
                             int32_t cbWndExtra = 0);
    void WindowClassUnregister();
    // Class: 0 the registered name, 1 "BUTTON", 2 "COMBOBOX", 3 "EDIT", 4 "LISTBOX", 5 "MDICLIENT",
    // 6 "RichEdit", 7 "RICHEDIT_CLASS", 8 "SCROLLBAR", 9 "STATIC", others none. The window
    // receives the address of lParam as its creation parameter. 0 when the system refuses.
    HWND WindowCreate(DWORD dwExStyle = 0, DWORD dwStyle = 0, int32_t Class = 0, int32_t x = 0, int32_t y = 0,
                      int32_t nWidth = 0, int32_t nHeight = 0, const CtlString& sCaption = {},
                      HWND hwndParent = nullptr, HMENU hMenu = nullptr, LPARAM lParam = 0);
    // Always false.
    bool WindowDestroy();

    HWND hWnd() const noexcept { return m_hWnd; }

private:
    CtlString m_sClass;
    HWND m_hWnd = nullptr;
};
