// StackComObject: IUnknown for a test's fake COM object that lives on the stack and is never freed by its users.
#pragma once

#include "platform/win32/WinApi.h"

namespace testsupport {

// Lives on the test's stack: references are counted, so that a test can see what its users keep,
// but the count never deletes the object. The derived class answers QueryInterface.
template <class... Interfaces>
class StackObject : public Interfaces... {
public:
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_refs; }
    ULONG STDMETHODCALLTYPE Release() override { return --m_refs; }
    ULONG Refs() const noexcept { return m_refs; }

private:
    ULONG m_refs = 1;
};

// A stack object of one interface (whose id is Iid) that answers IUnknown and Interface.
template <class Interface, const IID& Iid>
class StackComObject : public StackObject<Interface> {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (!out) return E_POINTER;
        const bool known = ::IsEqualIID(iid, IID_IUnknown) || ::IsEqualIID(iid, Iid);
        *out = known ? static_cast<Interface*>(this) : nullptr;
        if (known) this->AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
};

}  // namespace testsupport
