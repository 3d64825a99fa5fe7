// WindowMessageCounter: counts the messages one window receives, by wrapping its window procedure.
#pragma once

#include <map>

#include "platform/win32/WinApi.h"

namespace testsupport {

// Wraps the procedure for its own lifetime and puts the original back at the end. One counter per
// window at a time: the original procedure is kept in a window property.
class WindowMessageCounter {
public:
    explicit WindowMessageCounter(HWND hwnd) : m_hWnd(hwnd) {
        ::SetPropW(m_hWnd, L"TcTestCounter", this);
        m_previous = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WindowMessageCounter::proc)));
    }
    ~WindowMessageCounter() {
        if (::IsWindow(m_hWnd)) {
            ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_previous));
            ::RemovePropW(m_hWnd, L"TcTestCounter");
        }
    }
    // Holds the window's procedure: a copy would restore it twice.
    WindowMessageCounter(const WindowMessageCounter&) = delete;
    WindowMessageCounter& operator=(const WindowMessageCounter&) = delete;

    int Count(UINT message) const {
        const auto found = m_counts.find(message);
        return found == m_counts.end() ? 0 : found->second;
    }
    void Reset() { m_counts.clear(); }

private:
    static LRESULT CALLBACK proc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* self = static_cast<WindowMessageCounter*>(::GetPropW(hwnd, L"TcTestCounter"));
        if (self == nullptr) return ::DefWindowProcW(hwnd, message, wParam, lParam);
        ++self->m_counts[message];
        return ::CallWindowProcW(self->m_previous, hwnd, message, wParam, lParam);
    }

    HWND m_hWnd;
    WNDPROC m_previous = nullptr;
    std::map<UINT, int> m_counts;
};

// Dispatches every message waiting on this thread, WM_PAINT included.
inline void PumpMessages() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

}  // namespace testsupport
