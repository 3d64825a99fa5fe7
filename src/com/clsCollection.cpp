#include "com/clsCollection.h"

#include <atomic>
#include <new>
#include <utility>

#include "com/ComConvert.h"
#include "com/ComModule.h"

using tc::com::ComFailure;
using tc::com::ComPtr;

OwnedVariant::OwnedVariant(const VARIANT& from) : OwnedVariant() {
    const HRESULT hr = ::VariantCopyInd(&m_value, const_cast<VARIANT*>(&from));
    if (FAILED(hr)) throw ComFailure{hr};
}

OwnedVariant::OwnedVariant(const OwnedVariant& other) : OwnedVariant() {
    const HRESULT hr = ::VariantCopy(&m_value, const_cast<VARIANT*>(&other.m_value));
    if (FAILED(hr)) throw ComFailure{hr};
}

OwnedVariant& OwnedVariant::operator=(const OwnedVariant& other) {
    if (this != &other) *this = OwnedVariant(other);
    return *this;
}

OwnedVariant::OwnedVariant(OwnedVariant&& other) noexcept : m_value(other.m_value) { ::VariantInit(&other.m_value); }

OwnedVariant& OwnedVariant::operator=(OwnedVariant&& other) noexcept {
    if (this != &other) {
        ::VariantClear(&m_value);
        m_value = other.m_value;
        ::VariantInit(&other.m_value);
    }
    return *this;
}

OwnedVariant OwnedVariant::Adopt(VARIANT value) noexcept {
    OwnedVariant owned;
    owned.m_value = value;
    return owned;
}

namespace {

bool IsMissing(const VARIANT& v) noexcept {
    const VARIANT& real = (v.vt == (VT_BYREF | VT_VARIANT) && v.pvarVal) ? *v.pvarVal : v;
    return real.vt == VT_EMPTY || (real.vt == VT_ERROR && real.scode == DISP_E_PARAMNOTFOUND);
}

// The items as they were when the enumerator was made: removing items while a script walks them
// neither skips nor repeats any.
class CollectionEnumerator final : public IEnumVARIANT {
public:
    CollectionEnumerator(std::shared_ptr<const std::vector<OwnedVariant>> items, size_t position) noexcept
        : m_items(std::move(items)), m_position(position) {}
    // Reference counted: a copy would share another object's count.
    CollectionEnumerator(const CollectionEnumerator&) = delete;
    CollectionEnumerator& operator=(const CollectionEnumerator&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        if (riid == IID_IUnknown || riid == IID_IEnumVARIANT) {
            *ppv = static_cast<IEnumVARIANT*>(this);
            AddRef();
            return S_OK;
        }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_refs; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_refs;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* out, ULONG* fetched) override {
        if (!out || (count > 1 && !fetched)) return E_POINTER;
        ULONG done = 0;
        for (; done < count && m_position < m_items->size(); ++done, ++m_position) {
            ::VariantInit(&out[done]);
            const HRESULT hr = ::VariantCopy(&out[done], const_cast<VARIANT*>(&(*m_items)[m_position].get()));
            if (FAILED(hr)) {
                for (ULONG i = 0; i < done; ++i) ::VariantClear(&out[i]);
                if (fetched) *fetched = 0;
                return hr;
            }
        }
        if (fetched) *fetched = done;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const size_t left = m_items->size() - m_position;
        m_position += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        m_position = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** out) override {
        if (!out) return E_POINTER;
        *out = new (std::nothrow) CollectionEnumerator(m_items, m_position);
        if (!*out) return E_OUTOFMEMORY;
        (*out)->AddRef();
        return S_OK;
    }

private:
    ~CollectionEnumerator() = default;

    tc::com::ModuleLock m_lock;
    std::atomic<ULONG> m_refs{0};
    std::shared_ptr<const std::vector<OwnedVariant>> m_items;
    size_t m_position;
};

}  // namespace

size_t clsCollection::pvPosition(const VARIANT& index) const {
    const OwnedVariant value(index);
    if (value.get().vt == VT_BSTR) {
        const BSTR key = value.get().bstrVal;
        const auto found = m_items.IndexOf(tc::com::FromBstr(key));
        if (!found) {
            throw CtlError(u"Collection", u"Invalid procedure call or argument", CtlError::kInvalidProcedureCall);
        }
        return *found;
    }
    VARIANT number;
    ::VariantInit(&number);
    const HRESULT hr = ::VariantChangeType(&number, const_cast<VARIANT*>(&value.get()), 0, VT_I4);
    if (FAILED(hr)) throw ComFailure{DISP_E_TYPEMISMATCH};
    if (number.lVal < 1 || static_cast<size_t>(number.lVal) > m_items.Count()) {
        throw CtlError(u"Collection", u"Subscript out of range", CtlError::kSubscriptOutOfRange);
    }
    return static_cast<size_t>(number.lVal) - 1;
}

const VARIANT& clsCollection::Item(const VARIANT& Index) const { return m_items[pvPosition(Index)].get(); }

void clsCollection::Add(const VARIANT& Item, const VARIANT& Key, const VARIANT& Before, const VARIANT& After) {
    std::u16string key;
    if (!IsMissing(Key)) {
        VARIANT text;
        ::VariantInit(&text);
        const OwnedVariant given(Key);
        if (FAILED(::VariantChangeType(&text, const_cast<VARIANT*>(&given.get()), 0, VT_BSTR))) {
            throw ComFailure{DISP_E_TYPEMISMATCH};
        }
        const OwnedVariant owned = OwnedVariant::Adopt(text);
        key = tc::com::FromBstr(owned.get().bstrVal);
    }
    const bool hasBefore = !IsMissing(Before);
    const bool hasAfter = !IsMissing(After);
    if (hasBefore && hasAfter) {
        throw CtlError(u"Collection", u"Invalid procedure call or argument", CtlError::kInvalidProcedureCall);
    }
    std::optional<size_t> position;
    if (hasBefore) position = pvPosition(Before);
    if (hasAfter) position = pvPosition(After) + 1;
    m_items.Add(OwnedVariant(Item), key, position);
}

void clsCollection::Remove(const VARIANT& Index) { m_items.RemoveAt(pvPosition(Index)); }

ComPtr<IUnknown> clsCollection::NewEnum() const {
    auto snapshot = std::make_shared<std::vector<OwnedVariant>>();
    snapshot->reserve(m_items.Count());
    m_items.ForEach([&](const std::u16string&, const OwnedVariant& item) { snapshot->push_back(item); });
    return ComPtr<IUnknown>::Share(new CollectionEnumerator(std::move(snapshot), 0));
}

void clsCollection::Append(OwnedVariant value, const std::u16string& key) { m_items.Add(std::move(value), key); }
