// DualObject: the COM object behind every public class: reference counting, IDispatch through the
// embedded type library, error info, the module lock, and dispatch by hand for record members.
#pragma once

#include <atomic>
#include <memory>
#include <new>
#include <utility>

#include "com/ComConvert.h"
#include "com/ComError.h"
#include "com/ComModule.h"
#include "com/DispArgs.h"
#include "com/EventSource.h"
#include "common/CtlError.h"

namespace tc::com {

// Answers the private identity query through which an interface pointer of ours leads back to its
// adapter (to take the C++ object out of an argument).
inline constexpr GUID IID_AdapterIdentity = {
    0x5d3c1a6e, 0x0b7e, 0x4a93, {0x8f, 0x21, 0x3c, 0x9d, 0x44, 0x5e, 0x7a, 0x10}};

class AdapterBase {
public:
    virtual ~AdapterBase() = default;
};

template <class Traits>
class DualObject : public Traits::Interface, public ISupportErrorInfo, public IProvideClassInfo2, public AdapterBase {
public:
    using ObjectType = typename Traits::ObjectType;
    using InterfaceType = typename Traits::Interface;

    DualObject() : m_object(MakeObject()) {}
    explicit DualObject(std::shared_ptr<ObjectType> object) : m_object(std::move(object)) {}
    ~DualObject() override = default;
    // Reference counted: copies would share the count of another identity.
    DualObject(const DualObject&) = delete;
    DualObject& operator=(const DualObject&) = delete;

    const std::shared_ptr<ObjectType>& SharedObject() const noexcept { return m_object; }

    // ---- IUnknown ----
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (riid == IID_IUnknown || riid == IID_IDispatch || riid == Traits::iid) {
            *ppv = static_cast<InterfaceType*>(this);
        } else if (riid == IID_ISupportErrorInfo) {
            *ppv = static_cast<ISupportErrorInfo*>(this);
        } else if (riid == IID_IProvideClassInfo || riid == IID_IProvideClassInfo2) {
            *ppv = static_cast<IProvideClassInfo2*>(this);
        } else if (riid == IID_AdapterIdentity) {
            *ppv = static_cast<AdapterBase*>(this);
        } else if (!(*ppv = QueryMore(riid))) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_refs; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_refs;
        if (left == 0) delete this;
        return left;
    }

    // ---- IDispatch ----
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (!info) return E_POINTER;
        *info = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        return InterfaceInfo(info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        ComPtr<ITypeInfo> info;
        const HRESULT hr = InterfaceInfo(info.put());
        return FAILED(hr) ? hr : ::DispGetIDsOfNames(info.get(), names, count, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID riid, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* excepInfo, UINT* argError) override {
        if (riid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        DISPPARAMS none{};
        if (!params) params = &none;
        for (const DISPID byHand : Traits::recordMembers) {
            if (byHand == id && byHand != 0) {
                DispArgs args(*params, argError);
                const HRESULT hr = InvokeByHand(id, flags, args, result);
                return ExceptionFromErrorInfo(hr, excepInfo);
            }
        }
        ComPtr<ITypeInfo> info;
        const HRESULT hr = InterfaceInfo(info.put());
        if (FAILED(hr)) return hr;
        return info->Invoke(static_cast<InterfaceType*>(this), id, flags, params, result, excepInfo, argError);
    }

    // ---- ISupportErrorInfo ----
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID riid) override {
        return riid == Traits::iid ? S_OK : S_FALSE;
    }

    // ---- IProvideClassInfo2 ----
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override {
        if (!info) return E_POINTER;
        return TypeInfoOf(Traits::clsid, info);
    }
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* out) override {
        if (!out) return E_POINTER;
        const GUID* events = Traits::events;
        if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID || events == nullptr) {
            *out = GUID_NULL;
            return E_INVALIDARG;
        }
        *out = *events;
        return S_OK;
    }

protected:
    ObjectType& Object() const noexcept { return *m_object; }
    // Controls make their object once their surface exists, and drop it before the surface goes.
    void SetObject(std::shared_ptr<ObjectType> object) noexcept { m_object = std::move(object); }

    // Runs one member: a library error becomes its HRESULT with error info, nothing escapes.
    template <class F>
    HRESULT Guard(F&& body) noexcept {
        return GuardCall(Traits::source, std::forward<F>(body));
    }

    // Members with records by reference, dispatched without the type library (generated).
    virtual HRESULT InvokeByHand(DISPID, WORD, DispArgs&, VARIANT*) { return DISP_E_MEMBERNOTFOUND; }
    // Further interfaces of derived objects (connection points, OLE control interfaces).
    virtual void* QueryMore(REFIID) { return nullptr; }

private:
    // The interface's type info, looked up once per class: every name lookup and call needs it.
    static HRESULT InterfaceInfo(ITypeInfo** info) noexcept {
        static ITypeInfo* cached = nullptr;
        static const HRESULT found = TypeInfoOf(Traits::iid, &cached);
        if (FAILED(found)) return found;
        cached->AddRef();
        *info = cached;
        return S_OK;
    }

    static std::shared_ptr<ObjectType> MakeObject() {
        if constexpr (std::is_default_constructible_v<ObjectType>) {
            return std::make_shared<ObjectType>();
        } else {
            return nullptr;
        }
    }

    ModuleLock m_lock;
    std::atomic<ULONG> m_refs{0};
    std::shared_ptr<ObjectType> m_object;
};

// The class factory's creation step for a creatable class.
template <class Adapter>
HRESULT CreateInstance(IUnknown* outer, REFIID riid, void** ppv) {
    if (!ppv) return E_POINTER;
    *ppv = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    Adapter* object = new (std::nothrow) Adapter();
    if (!object) return E_OUTOFMEMORY;
    object->AddRef();
    const HRESULT hr = object->QueryInterface(riid, ppv);
    object->Release();
    return hr;
}

// A new adapter around an object the library hands out; a null object gives a null pointer.
template <class Adapter, class Object, class Interface>
HRESULT WrapExisting(std::shared_ptr<Object> object, Interface** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (!object) return S_OK;
    Adapter* adapter = new (std::nothrow) Adapter(std::move(object));
    if (!adapter) return E_OUTOFMEMORY;
    adapter->AddRef();
    *out = adapter;
    return S_OK;
}

// The object behind one of our interface pointers; a foreign object is a type mismatch.
template <class Adapter, class Interface>
auto UnwrapExisting(Interface* itf) -> std::shared_ptr<typename Adapter::ObjectType> {
    if (!itf) return nullptr;
    AdapterBase* base = nullptr;
    if (FAILED(itf->QueryInterface(IID_AdapterIdentity, reinterpret_cast<void**>(&base))) || !base) {
        throw ComFailure{DISP_E_TYPEMISMATCH};
    }
    auto* adapter = dynamic_cast<Adapter*>(base);
    // The identity query took a reference on the object behind itf.
    itf->Release();
    if (!adapter) throw ComFailure{DISP_E_TYPEMISMATCH};
    return adapter->SharedObject();
}

}  // namespace tc::com
