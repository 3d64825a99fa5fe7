// clsGdiHandle: one owned GDI object.
#include "graphics/clsGdiHandle.h"

#include <utility>

clsGdiHandle::clsGdiHandle(clsGdiHandle&& other) noexcept : m_hHandle(std::exchange(other.m_hHandle, nullptr)) {}

clsGdiHandle& clsGdiHandle::operator=(clsGdiHandle&& other) noexcept {
    if (this != &other) Handle(other.ReleaseHandle());
    return *this;
}

void clsGdiHandle::Handle(HGDIOBJ handle) noexcept {
    // Taking the handle already held must not delete it.
    if (handle == m_hHandle) return;
    Destroy();
    m_hHandle = handle;
}

void clsGdiHandle::Destroy() noexcept {
    if (m_hHandle != nullptr) ::DeleteObject(m_hHandle);
    m_hHandle = nullptr;
}

HGDIOBJ clsGdiHandle::ReleaseHandle() noexcept { return std::exchange(m_hHandle, nullptr); }
