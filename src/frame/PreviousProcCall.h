// PreviousProcCall: calls a window's previous procedure, directly when it is plain code.
#pragma once

#include "platform/win32/WinApi.h"

// The system hands back a window procedure either as the code's address or, where it must
// translate between ANSI and Unicode, as a handle that only CallWindowProcW understands. Going
// through CallWindowProcW costs about as much as the whole message otherwise (measured under
// Wine by bench_subclass), so a procedure that is plain executable code is called directly.
class PreviousProcCall {
public:
    PreviousProcCall() = default;
    explicit PreviousProcCall(WNDPROC proc) noexcept : m_proc(proc), m_direct(IsPlainCode(proc)) {}

    LRESULT operator()(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
        if (m_proc == nullptr) return 0;
        return m_direct ? m_proc(window, message, wParam, lParam)
                        : ::CallWindowProcW(m_proc, window, message, wParam, lParam);
    }
    WNDPROC Proc() const noexcept { return m_proc; }
    bool Direct() const noexcept { return m_direct; }

    // True when the address lies in committed executable memory.
    static bool IsPlainCode(WNDPROC proc) noexcept;

private:
    WNDPROC m_proc = nullptr;
    bool m_direct = false;
};
