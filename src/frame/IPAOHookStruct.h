// IPAOHookStruct: the record a control places in front of its in-place active object, and its control interface.
#pragma once

#include "platform/win32/WinApi.h"

#include <ole2.h>

// The control side of the hook: its key filter and its own window.
class IPAOHookControl {
public:
    // True when the control handled the key; the host then does nothing more with it.
    virtual bool pvTranslateAccelerator(const MSG& msg) = 0;
    // The control's own window; keys for it or any window inside it go to the filter above.
    virtual HWND HookWindow() const = 0;

protected:
    ~IPAOHookControl() = default;
};

// Four words in this order: the host is handed &record as an IOleInPlaceActiveObject, so the
// first word must be the address of the table of operations. Both pointers are unowned: the
// record adds no reference to the control and lives inside it.
struct IPAOHookStruct {
    const void* lpVTable = nullptr;
    IOleInPlaceActiveObject* pOriginal = nullptr;
    IPAOHookControl* pControl = nullptr;
    IPAOHookStruct* pThis = nullptr;

    IPAOHookStruct() = default;
    // Takes itself out of the thread's list of live hooks.
    ~IPAOHookStruct();
    // Its address is what the host holds.
    IPAOHookStruct(const IPAOHookStruct&) = delete;
    IPAOHookStruct& operator=(const IPAOHookStruct&) = delete;
};
