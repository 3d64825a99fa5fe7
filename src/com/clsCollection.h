// clsCollection: the library's collection for hosts and scripts (items in order, optional
// case-insensitive string keys, one-based indexes, an enumerator for For Each), and
// OwnedVariant, the VARIANT it stores.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "com/ComPrerequisites.h"
#include "com/ComPtr.h"
#include "common/KeyedCollection.h"

// A VARIANT that owns its content: cleared on destruction, deep-copied on copy.
class OwnedVariant {
public:
    OwnedVariant() noexcept { ::VariantInit(&m_value); }
    // Copies the value a reference variant points at, not the reference.
    explicit OwnedVariant(const VARIANT& from);
    OwnedVariant(const OwnedVariant& other);
    OwnedVariant& operator=(const OwnedVariant& other);
    OwnedVariant(OwnedVariant&& other) noexcept;
    OwnedVariant& operator=(OwnedVariant&& other) noexcept;
    ~OwnedVariant() { ::VariantClear(&m_value); }

    // Takes over a value the caller built (a BSTR or an interface reference it owns).
    static OwnedVariant Adopt(VARIANT value) noexcept;

    const VARIANT& get() const noexcept { return m_value; }

private:
    VARIANT m_value;
};

class clsCollection {
public:
    int32_t Count() const noexcept { return static_cast<int32_t>(m_items.Count()); }
    // Index is a one-based position or a string key.
    const VARIANT& Item(const VARIANT& Index) const;
    // Key, Before and After may be omitted (empty or the missing-argument error value); Before
    // and After take a position or a key, as Item does.
    void Add(const VARIANT& Item, const VARIANT& Key, const VARIANT& Before, const VARIANT& After);
    void Remove(const VARIANT& Index);
    // An enumerator over the items as they are now.
    tc::com::ComPtr<IUnknown> NewEnum() const;

    // For the adapters that hand out the library's own collections.
    void Append(OwnedVariant value, const std::u16string& key = std::u16string());
    const std::u16string& KeyAt(size_t position) const { return m_items.KeyAt(position); }
    const VARIANT& At(size_t position) const { return m_items[position].get(); }

private:
    size_t pvPosition(const VARIANT& index) const;

    KeyedCollection<OwnedVariant> m_items;
};
