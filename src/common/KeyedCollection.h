// KeyedCollection: items in insertion order with optional case-insensitive keys, O(1) lookup by key.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "common/CaseFold.h"
#include "common/CtlError.h"

// Positions are zero-based here; the public classes that expose one-based indexes convert at
// their boundary. Errors are those of the host's collection: 457 for a duplicate key,
// 5 for a missing key, 9 for an index out of range.
template <class T>
class KeyedCollection {
public:
    static constexpr int32_t kDuplicateKey = 457;

    size_t Count() const noexcept { return m_items.size(); }
    bool Empty() const noexcept { return m_items.empty(); }

    // Appends, or inserts before position `before` when given. An empty key means no key.
    T& Add(T value, const std::u16string& key = {}, std::optional<size_t> before = std::nullopt) {
        const size_t position = before ? *before : m_items.size();
        if (position > m_items.size()) throwOutOfRange();
        if (!key.empty() && m_byKey.count(key) != 0) {
            throw CtlError(u"Collection.Add", u"This key is already associated with an element of this collection",
                           kDuplicateKey);
        }
        m_items.insert(m_items.begin() + static_cast<std::ptrdiff_t>(position), Entry{key, std::move(value)});
        if (position + 1 == m_items.size()) {
            if (!key.empty()) m_byKey.emplace(key, position);
        } else {
            reindexFrom(position);
        }
        return m_items[position].value;
    }

    bool Contains(const std::u16string& key) const { return m_byKey.count(key) != 0; }

    std::optional<size_t> IndexOf(const std::u16string& key) const {
        const auto found = m_byKey.find(key);
        if (found == m_byKey.end()) return std::nullopt;
        return found->second;
    }

    T& operator[](size_t position) { return checked(position).value; }
    const T& operator[](size_t position) const { return checked(position).value; }

    T& Item(const std::u16string& key) { return m_items[positionOf(key)].value; }
    const T& Item(const std::u16string& key) const { return m_items[positionOf(key)].value; }

    T* Find(const std::u16string& key) {
        const auto found = m_byKey.find(key);
        return found == m_byKey.end() ? nullptr : &m_items[found->second].value;
    }

    const std::u16string& KeyAt(size_t position) const { return checked(position).key; }

    void RemoveAt(size_t position) {
        checked(position);
        if (!m_items[position].key.empty()) m_byKey.erase(m_items[position].key);
        m_items.erase(m_items.begin() + static_cast<std::ptrdiff_t>(position));
        if (position < m_items.size()) reindexFrom(position);
    }

    void Remove(const std::u16string& key) { RemoveAt(positionOf(key)); }

    void Clear() noexcept {
        m_items.clear();
        m_byKey.clear();
    }

    template <class Visit>
    void ForEach(Visit&& visit) const {
        for (const Entry& entry : m_items) visit(entry.key, entry.value);
    }

private:
    struct Entry {
        std::u16string key;
        T value;
    };

    [[noreturn]] static void throwOutOfRange() {
        throw CtlError(u"Collection", u"Subscript out of range", CtlError::kSubscriptOutOfRange);
    }

    Entry& checked(size_t position) {
        if (position >= m_items.size()) throwOutOfRange();
        return m_items[position];
    }
    const Entry& checked(size_t position) const {
        if (position >= m_items.size()) throwOutOfRange();
        return m_items[position];
    }

    size_t positionOf(const std::u16string& key) const {
        const auto found = m_byKey.find(key);
        if (found == m_byKey.end()) {
            throw CtlError(u"Collection", u"Invalid procedure call or argument", CtlError::kInvalidProcedureCall);
        }
        return found->second;
    }

    void reindexFrom(size_t position) {
        for (size_t i = position; i < m_items.size(); ++i) {
            if (!m_items[i].key.empty()) m_byKey[m_items[i].key] = i;
        }
    }

    std::vector<Entry> m_items;
    std::unordered_map<std::u16string, size_t, CaseInsensitiveHash, CaseInsensitiveEqual> m_byKey;
};
