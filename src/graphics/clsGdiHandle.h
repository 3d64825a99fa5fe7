// clsGdiHandle: owns one GDI object (pen, brush, font, bitmap, region) and deletes it at the end.
#pragma once

#include "platform/win32/WinApi.h"

class clsGdiHandle {
public:
    clsGdiHandle() noexcept = default;
    explicit clsGdiHandle(HGDIOBJ handle) noexcept : m_hHandle(handle) {}
    ~clsGdiHandle() { Destroy(); }
    // One owner per handle: a copy would delete it twice.
    clsGdiHandle(const clsGdiHandle&) = delete;
    clsGdiHandle& operator=(const clsGdiHandle&) = delete;
    clsGdiHandle(clsGdiHandle&& other) noexcept;
    clsGdiHandle& operator=(clsGdiHandle&& other) noexcept;

    HGDIOBJ Handle() const noexcept { return m_hHandle; }
    // Destroys the present handle, then takes the new one.
    void Handle(HGDIOBJ handle) noexcept;
    void Destroy() noexcept;
    // Returns the handle and forgets it: the caller owns it now.
    HGDIOBJ ReleaseHandle() noexcept;

private:
    HGDIOBJ m_hHandle = nullptr;
};
