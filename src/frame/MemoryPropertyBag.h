// MemoryPropertyBag: an in-memory property bag for C++ hosts and tests, keys kept in write order.
#pragma once

#include <utility>
#include <vector>

#include "frame/PropertyBag.h"

class MemoryPropertyBag : public PropertyBag {
public:
    CtlVariant ReadProperty(const CtlString& key, const CtlVariant& defaultValue) override;
    // As the host's bags do, a value equal to its non-empty default is not stored (and an older
    // entry under the key is dropped), so the reader's default brings it back.
    void WriteProperty(const CtlString& key, const CtlVariant& value,
                       const CtlVariant& defaultValue = CtlVariant()) override;

    bool Contains(const CtlString& key) const;
    // The stored value, or empty when absent: for inspection, not for controls.
    CtlVariant Peek(const CtlString& key) const;
    // Stores a value whatever it is, as a bag from another version would hold it.
    void Set(const CtlString& key, CtlVariant value);
    std::vector<CtlString> Keys() const;
    void Clear() noexcept { m_entries.clear(); }

private:
    std::vector<std::pair<CtlString, CtlVariant>>::iterator find(const CtlString& key);
    std::vector<std::pair<CtlString, CtlVariant>>::const_iterator find(const CtlString& key) const;

    std::vector<std::pair<CtlString, CtlVariant>> m_entries;
};
