// Test access to TarnwickControls30.dll: the server loaded by path, objects created through its
// class factory, and late-bound calls by name as a script host makes them.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "com/ComPrerequisites.h"
#include "com/ComPtr.h"
#include "com/generated/ComInterfaces.h"

namespace comtest {

using tc::com::ComPtr;

// A VARIANT that clears itself.
class Var {
public:
    Var() noexcept { ::VariantInit(&v); }
    Var(const wchar_t* text) : Var() {
        v.vt = VT_BSTR;
        v.bstrVal = ::SysAllocString(text);
    }
    Var(const std::u16string& text) : Var() {
        v.vt = VT_BSTR;
        v.bstrVal = ::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
    }
    Var(int32_t value) : Var() {
        v.vt = VT_I4;
        v.lVal = value;
    }
    Var(bool value) : Var() {
        v.vt = VT_BOOL;
        v.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Var(const Var& other) : Var() { ::VariantCopy(&v, const_cast<VARIANT*>(&other.v)); }
    Var& operator=(const Var& other) {
        if (this != &other) ::VariantCopy(&v, const_cast<VARIANT*>(&other.v));
        return *this;
    }
    ~Var() { ::VariantClear(&v); }

    std::u16string Text() const {
        Var copy;
        if (FAILED(::VariantChangeType(&copy.v, const_cast<VARIANT*>(&v), 0, VT_BSTR))) return u"<not a string>";
        return std::u16string(reinterpret_cast<const char16_t*>(copy.v.bstrVal), ::SysStringLen(copy.v.bstrVal));
    }
    VARIANT v;
};

// A by-reference argument pointing at the caller's own storage, as a script host passes a variable.
template <class T>
Var Ref(VARTYPE vt, T* target) {
    Var v;
    v.v.vt = static_cast<VARTYPE>(VT_BYREF | vt);
    v.v.byref = target;
    return v;
}

// The "missing" marker that script hosts pass for an omitted optional argument.
inline Var Missing() {
    Var v;
    v.v.vt = VT_ERROR;
    v.v.scode = DISP_E_PARAMNOTFOUND;
    return v;
}

// Code units as numbers, so that a mismatch prints which unit differs.
inline std::vector<int> Units(const std::u16string& text) { return std::vector<int>(text.begin(), text.end()); }

// The outcome of one IDispatch::Invoke.
struct CallResult {
    HRESULT hr = E_FAIL;
    Var value;
    LONG scode = 0;
    std::u16string source;
    std::u16string description;
};

// The server DLL, loaded once for the test program.
class Server {
public:
    static Server& Instance();
    // A new object of a creatable class, through DllGetClassObject and its factory.
    ComPtr<IDispatch> Create(const GUID& clsid);
    HRESULT CanUnloadNow();
    HMODULE Module() const noexcept { return m_module; }

private:
    Server();
    HMODULE m_module = nullptr;
};

// Invoke by name, arguments left to right, as a script host does (DISPATCH_METHOD | PROPERTYGET
// unless flags say otherwise).
CallResult Call(IDispatch* object, const wchar_t* name, std::vector<Var> args = {},
                WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET);
// Property put by name.
CallResult Put(IDispatch* object, const wchar_t* name, const Var& value);
// A control's window through its Hwnd method (an 8-byte handle, read whatever integer type it comes in).
HWND HwndOf(IDispatch* control);

}  // namespace comtest
