// TestHostWindow: a visible top-level window for tests to put surfaces and controls in.
#pragma once

#include "platform/win32/WinApi.h"

namespace testsupport {

class TestHostWindow {
public:
    explicit TestHostWindow(int width = 640, int height = 480) {
        m_hWnd = ::CreateWindowExW(0, L"STATIC", L"test host", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN,
                                   0, 0, width, height, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    }
    ~TestHostWindow() {
        if (m_hWnd != nullptr) ::DestroyWindow(m_hWnd);
    }
    // Owns a window: a copy would destroy it twice.
    TestHostWindow(const TestHostWindow&) = delete;
    TestHostWindow& operator=(const TestHostWindow&) = delete;
    HWND get() const noexcept { return m_hWnd; }

private:
    HWND m_hWnd = nullptr;
};

}  // namespace testsupport
