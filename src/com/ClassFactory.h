// ClassFactory: the IClassFactory that DllGetClassObject hands out for one creatable class.
#pragma once

#include <atomic>

#include "com/ComClassTable.h"
#include "com/ComModule.h"

namespace tc::com {

class ClassFactory final : public IClassFactory {
public:
    explicit ClassFactory(const ComClassEntry& entry) noexcept : m_entry(entry) {}
    // Reference counted.
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_refs; }
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid, void** ppv) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    ~ClassFactory() = default;
    const ComClassEntry& m_entry;
    std::atomic<ULONG> m_refs{0};
    ModuleLock m_lock;
};

}  // namespace tc::com
