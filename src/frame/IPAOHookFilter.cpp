#include "frame/IPAOHookFilter.h"

namespace {

constexpr WPARAM kFirstNavigationKey = VK_PRIOR;  // 33
constexpr WPARAM kLastNavigationKey = VK_DOWN;    // 40

bool isNavigationKey(WPARAM key) noexcept { return key >= kFirstNavigationKey && key <= kLastNavigationKey; }

// Sent straight to the native window, so the host's own navigation never sees the key too.
bool forwardKey(HWND native, const MSG& msg) {
    ::SendMessageW(native, msg.message, msg.wParam, msg.lParam);
    return true;
}

}  // namespace

namespace IPAOHookFilter {

int16_t ShiftState() noexcept {
    int16_t shift = 0;
    if (::GetKeyState(VK_SHIFT) < 0) shift |= 1;
    if (::GetKeyState(VK_CONTROL) < 0) shift |= 2;
    if (::GetKeyState(VK_MENU) < 0) shift |= 4;
    return shift;
}

bool TranslateKeys(const MSG& msg, IPAOHookKeyTarget& target) noexcept {
    if (msg.message != WM_KEYDOWN && msg.message != WM_KEYUP) return false;
    try {
        if (msg.wParam == VK_TAB) {
            if (!target.TrapTab()) return false;
            int16_t keyCode = VK_TAB;
            const int16_t shift = ShiftState();
            if (msg.message == WM_KEYDOWN) {
                target.RaiseKeyDown(keyCode, shift);
                if (keyCode == 0) ::SetFocus(target.ControlWindow());
            } else {
                target.RaiseKeyUp(keyCode, shift);
            }
            return true;
        }
        if (isNavigationKey(msg.wParam)) return forwardKey(target.NativeWindow(), msg);
    } catch (...) {
        // A failing handler leaves the key to the host.
    }
    return false;
}

bool TranslateTreeKeys(const MSG& msg, IPAOHookTreeTarget& target) noexcept {
    if (msg.message != WM_KEYDOWN && msg.message != WM_KEYUP && msg.message != WM_IME_KEYDOWN &&
        msg.message != WM_IME_KEYUP) {
        return false;
    }
    try {
        if (msg.wParam == VK_TAB) {
            const int16_t shift = ShiftState();
            if ((shift & 2) == 0) return forwardKey(target.NativeWindow(), msg);
            target.HandKeyToHost(msg, shift & 1);
            return true;
        }
        if (isNavigationKey(msg.wParam)) return forwardKey(target.NativeWindow(), msg);
    } catch (...) {
        // A failing step leaves the key to the host.
    }
    return false;
}

}  // namespace IPAOHookFilter
