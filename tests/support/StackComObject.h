// StackComObject: IUnknown for a test's fake COM object that lives on the stack and is never freed by its users.
#pragma once

#include "platform/win32/WinApi.h"

namespace testsupport {

// Answers IUnknown and Interface (whose id is Iid); the reference count is not kept because the
// test owns the object's lifetime.
template <class Interface, const IID& Iid>
class StackComObject : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        const bool known = ::IsEqualIID(iid, IID_IUnknown) || ::IsEqualIID(iid, Iid);
        *out = known ? static_cast<Interface*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
};

}  // namespace testsupport
