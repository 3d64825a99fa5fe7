#include "frame/ChildIdEnumerator.h"

#include <atomic>
#include <new>

namespace {

std::atomic<long> g_liveEnumerators{0};

}  // namespace

ChildIdEnumerator::ChildIdEnumerator(std::vector<int32_t> ids)
    : ChildIdEnumerator(std::make_shared<const std::vector<int32_t>>(std::move(ids)), 0) {}

ChildIdEnumerator::ChildIdEnumerator(std::shared_ptr<const std::vector<int32_t>> ids, size_t position)
    : m_ids(std::move(ids)), m_position(position) {
    ++g_liveEnumerators;
}

ChildIdEnumerator::~ChildIdEnumerator() { --g_liveEnumerators; }

long ChildIdEnumerator::LiveObjects() noexcept { return g_liveEnumerators.load(); }

HRESULT STDMETHODCALLTYPE ChildIdEnumerator::QueryInterface(REFIID riid, void** object) {
    if (object == nullptr) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IEnumVARIANT) {
        *object = static_cast<IEnumVARIANT*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

ULONG STDMETHODCALLTYPE ChildIdEnumerator::AddRef() { return ++m_refs; }

ULONG STDMETHODCALLTYPE ChildIdEnumerator::Release() {
    const ULONG left = --m_refs;
    if (left == 0) delete this;
    return left;
}

HRESULT STDMETHODCALLTYPE ChildIdEnumerator::Next(ULONG count, VARIANT* items, ULONG* fetched) {
    if (fetched != nullptr) *fetched = 0;
    if (count == 0) return S_OK;
    if (items == nullptr) return E_POINTER;
    // Only a caller asking for one item may leave out the count of fetched items.
    if (fetched == nullptr && count != 1) return E_POINTER;
    ULONG done = 0;
    while (done < count && m_position < m_ids->size()) {
        ::VariantInit(&items[done]);
        items[done].vt = VT_I4;
        items[done].lVal = (*m_ids)[m_position];
        ++done;
        ++m_position;
    }
    if (fetched != nullptr) *fetched = done;
    return done == count ? S_OK : S_FALSE;
}

HRESULT STDMETHODCALLTYPE ChildIdEnumerator::Skip(ULONG count) {
    const size_t left = m_ids->size() - m_position;
    if (count > left) {
        m_position = m_ids->size();
        return S_FALSE;
    }
    m_position += count;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE ChildIdEnumerator::Reset() {
    m_position = 0;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE ChildIdEnumerator::Clone(IEnumVARIANT** copy) {
    if (copy == nullptr) return E_POINTER;
    *copy = new (std::nothrow) ChildIdEnumerator(m_ids, m_position);
    return *copy != nullptr ? S_OK : E_OUTOFMEMORY;
}
