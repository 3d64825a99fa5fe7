// ChildIdEnumerator: an IEnumVARIANT over child ids (VT_I4), as accSelection hands out several.
#pragma once

#include <ole2.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/win32/WinApi.h"

// A snapshot of the ids taken when it is made: the control may change its selection while a
// client walks the list, and the list must not change under it. Clones share the snapshot.
class ChildIdEnumerator final : public IEnumVARIANT {
public:
    explicit ChildIdEnumerator(std::vector<int32_t> ids);
    // Enumerators not yet released, so that a module holding their code stays loaded.
    static long LiveObjects() noexcept;
    // A COM object: shared by reference count, never copied.
    ChildIdEnumerator(const ChildIdEnumerator&) = delete;
    ChildIdEnumerator& operator=(const ChildIdEnumerator&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
    HRESULT STDMETHODCALLTYPE Reset() override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override;

private:
    ChildIdEnumerator(std::shared_ptr<const std::vector<int32_t>> ids, size_t position);
    ~ChildIdEnumerator();

    ULONG m_refs = 1;
    std::shared_ptr<const std::vector<int32_t>> m_ids;
    size_t m_position = 0;
};
