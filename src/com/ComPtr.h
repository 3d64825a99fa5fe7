// ComPtr: the owner of one COM interface reference.
#pragma once

#include <utility>

namespace tc::com {

template <class T>
class ComPtr {
public:
    ComPtr() noexcept = default;
    // Takes over a reference the caller already holds.
    static ComPtr Attach(T* raw) noexcept {
        ComPtr p;
        p.m_raw = raw;
        return p;
    }
    // Adds a reference of its own.
    static ComPtr Share(T* raw) noexcept {
        if (raw) raw->AddRef();
        return Attach(raw);
    }
    ComPtr(const ComPtr& other) noexcept : m_raw(other.m_raw) {
        if (m_raw) m_raw->AddRef();
    }
    ComPtr(ComPtr&& other) noexcept : m_raw(std::exchange(other.m_raw, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(m_raw, other.m_raw);
        return *this;
    }
    ~ComPtr() { reset(); }

    void reset() noexcept {
        if (T* old = std::exchange(m_raw, nullptr)) old->Release();
    }
    T* get() const noexcept { return m_raw; }
    T* operator->() const noexcept { return m_raw; }
    explicit operator bool() const noexcept { return m_raw != nullptr; }
    // The address an out parameter writes to; drops what was held.
    T** put() noexcept {
        reset();
        return &m_raw;
    }
    void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }
    T* detach() noexcept { return std::exchange(m_raw, nullptr); }

private:
    T* m_raw = nullptr;
};

}  // namespace tc::com
