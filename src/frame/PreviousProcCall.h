// PreviousProcCall: calls a window's previous procedure.
#pragma once

#include "platform/win32/WinApi.h"

// Always through CallWindowProcW: a procedure read from a window can be a handle the system
// translates between ANSI and Unicode, and such a handle may even lie in executable memory, so no
// test of the address tells that a direct call is safe.
class PreviousProcCall {
public:
    PreviousProcCall() = default;
    explicit PreviousProcCall(WNDPROC proc) noexcept : m_proc(proc) {}

    LRESULT operator()(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
        if (m_proc == nullptr) return 0;
        return ::CallWindowProcW(m_proc, window, message, wParam, lParam);
    }
    WNDPROC Proc() const noexcept { return m_proc; }

private:
    WNDPROC m_proc = nullptr;
};
