// AccessibleProbe: a window's IAccessible as a screen reader gets it, and its answers as plain values.
#pragma once

#include "platform/win32/WinApi.h"

#include <ole2.h>
#include <oleacc.h>

#include <string>

#include "com/ComPtr.h"

namespace testsupport {

// The client object through oleacc, as a screen reader asks for it. __uuidof: mingw's import
// library resolves IID_IAccessible to a stub.
inline tc::com::ComPtr<IAccessible> AccessibleOf(HWND hwnd) {
    tc::com::ComPtr<IAccessible> object;
    ::AccessibleObjectFromWindow(hwnd, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), object.putVoid());
    return object;
}

inline VARIANT ChildId(LONG id) {
    VARIANT v;
    ::VariantInit(&v);
    v.vt = VT_I4;
    v.lVal = id;
    return v;
}

// One string member's answer: its HRESULT and its text (a null string reads as empty).
struct TextAnswer {
    HRESULT hr = E_FAIL;
    std::u16string text;
};

template <class Member>
TextAnswer AskText(IAccessible* object, Member member, LONG child = CHILDID_SELF) {
    TextAnswer answer;
    BSTR text = nullptr;
    answer.hr = (object->*member)(ChildId(child), &text);
    if (text != nullptr) {
        answer.text.assign(reinterpret_cast<const char16_t*>(text), ::SysStringLen(text));
        ::SysFreeString(text);
    }
    return answer;
}

// Role or state: the VT_I4 answer, or -1 when the call failed or answered another type.
inline LONG AskRole(IAccessible* object, LONG child = CHILDID_SELF) {
    VARIANT v;
    ::VariantInit(&v);
    const HRESULT hr = object->get_accRole(ChildId(child), &v);
    return SUCCEEDED(hr) && v.vt == VT_I4 ? v.lVal : -1;
}

inline LONG AskState(IAccessible* object, LONG child = CHILDID_SELF) {
    VARIANT v;
    ::VariantInit(&v);
    const HRESULT hr = object->get_accState(ChildId(child), &v);
    return SUCCEEDED(hr) && v.vt == VT_I4 ? v.lVal : -1;
}

inline RECT AskLocation(IAccessible* object, LONG child = CHILDID_SELF) {
    LONG left = 0, top = 0, width = 0, height = 0;
    if (FAILED(object->accLocation(&left, &top, &width, &height, ChildId(child)))) return RECT{-1, -1, -1, -1};
    return RECT{left, top, left + width, top + height};
}

}  // namespace testsupport
