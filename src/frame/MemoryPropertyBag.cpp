#include "frame/MemoryPropertyBag.h"

#include <algorithm>

CtlVariant MemoryPropertyBag::ReadProperty(const CtlString& key, const CtlVariant& defaultValue) {
    const auto found = find(key);
    return found != m_entries.end() ? found->second : defaultValue;
}

void MemoryPropertyBag::WriteProperty(const CtlString& key, const CtlVariant& value, const CtlVariant& defaultValue) {
    if (!VariantIsEmpty(defaultValue) && value == defaultValue) {
        const auto found = find(key);
        if (found != m_entries.end()) m_entries.erase(found);
        return;
    }
    Set(key, value);
}

bool MemoryPropertyBag::Contains(const CtlString& key) const { return find(key) != m_entries.end(); }

CtlVariant MemoryPropertyBag::Peek(const CtlString& key) const {
    const auto found = find(key);
    return found != m_entries.end() ? found->second : CtlVariant();
}

void MemoryPropertyBag::Set(const CtlString& key, CtlVariant value) {
    const auto found = find(key);
    if (found != m_entries.end()) {
        found->second = std::move(value);
    } else {
        m_entries.emplace_back(key, std::move(value));
    }
}

std::vector<CtlString> MemoryPropertyBag::Keys() const {
    std::vector<CtlString> keys;
    keys.reserve(m_entries.size());
    for (const auto& entry : m_entries) keys.push_back(entry.first);
    return keys;
}

std::vector<std::pair<CtlString, CtlVariant>>::iterator MemoryPropertyBag::find(const CtlString& key) {
    return std::find_if(m_entries.begin(), m_entries.end(), [&](const auto& entry) { return entry.first == key; });
}

std::vector<std::pair<CtlString, CtlVariant>>::const_iterator MemoryPropertyBag::find(const CtlString& key) const {
    return std::find_if(m_entries.begin(), m_entries.end(), [&](const auto& entry) { return entry.first == key; });
}
