#include "com/ClassFactory.h"

namespace tc::com {

HRESULT ClassFactory::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv) return E_POINTER;
    *ppv = nullptr;
    if (riid != IID_IUnknown && riid != IID_IClassFactory) return E_NOINTERFACE;
    *ppv = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

ULONG ClassFactory::Release() {
    const ULONG left = --m_refs;
    if (left == 0) delete this;
    return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID riid, void** ppv) {
    return m_entry.create(outer, riid, ppv);
}

HRESULT ClassFactory::LockServer(BOOL lock) {
    ModuleLock::Lock(lock != FALSE);
    return S_OK;
}

const ComClassEntry* FindClass(const GUID& clsid) noexcept {
    for (const ComClassEntry* entry : ComClasses()) {
        if (entry->clsid == clsid) return entry;
    }
    return nullptr;
}

}  // namespace tc::com
