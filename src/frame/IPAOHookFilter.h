// IPAOHookFilter: the rule by which a control takes Tab and the navigation keys before its host.
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

// What the rule needs of a text, list or canvas control.
class IPAOHookKeyTarget {
public:
    virtual bool TrapTab() const = 0;
    virtual HWND NativeWindow() const = 0;
    virtual HWND ControlWindow() const = 0;
    // The control's KeyDown and KeyUp events; the handler may change KeyCode.
    virtual void RaiseKeyDown(int16_t& KeyCode, int16_t Shift) = 0;
    virtual void RaiseKeyUp(int16_t& KeyCode, int16_t Shift) = 0;

protected:
    ~IPAOHookKeyTarget() = default;
};

// What the tree view's variant needs.
class IPAOHookTreeTarget {
public:
    virtual HWND NativeWindow() const = 0;
    // Gives the key to the host's own navigation (the client site); shiftBit is 1 with Shift held.
    virtual void HandKeyToHost(const MSG& msg, int32_t shiftBit) = 0;

protected:
    ~IPAOHookTreeTarget() = default;
};

namespace IPAOHookFilter {

// The shift state as the key events carry it: 1 Shift, 2 Ctrl, 4 Alt.
int16_t ShiftState() noexcept;

// Tab: the host's unless TrapTab; then KeyDown/KeyUp are raised, and a KeyDown handler that
// sets the code to 0 sends the focus to the control's own window. Keys 33 to 40 (page keys,
// end, home, arrows) go straight to the native window. True means handled; every other key,
// and any failure, leaves the key to the host.
bool TranslateKeys(const MSG& msg, IPAOHookKeyTarget& target) noexcept;

// The tree view: also the input-method key messages, no TrapTab. Tab with Ctrl goes to the
// host, other Tabs and keys 33 to 40 to the native tree.
bool TranslateTreeKeys(const MSG& msg, IPAOHookTreeTarget& target) noexcept;

}  // namespace IPAOHookFilter
