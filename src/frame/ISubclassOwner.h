// ISubclassOwner: the object that receives the messages of a window hooked by cUniSubclass.
#pragma once

#include "platform/win32/WinApi.h"

#include <ole2.h>

// {3EDC4232-75B2-6E4E-9CD5-F2362028B943}
inline constexpr GUID IID_ISubclassOwner = {0x3EDC4232, 0x75B2, 0x6E4E, {0x9C, 0xD5, 0xF2, 0x36, 0x20, 0x28, 0xB9, 0x43}};

// The hook reaches WindowProc as the eighth entry of the virtual table, right behind IDispatch,
// so nothing may be declared before it. The message values come by reference: what the owner
// writes there is what the previous procedure and the after-pass receive. The result is ignored.
struct ISubclassOwner : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE WindowProc(VARIANT_BOOL bBefore, VARIANT_BOOL* bStopMsg, LRESULT* lReturn,
                                                 HWND* Hwnd, UINT* uMsg, WPARAM* wParam, LPARAM* lParam) = 0;
};
