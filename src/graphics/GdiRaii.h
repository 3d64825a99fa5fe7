// Small internal owners for GDI and COM: GdiObjectOwner (brush, pen, region, bitmap, font),
// MemoryDCOwner, ScopedSelect, WindowDCGuard, ScopedBkColor and ComRef.
#pragma once

#include <utility>

#include "platform/win32/WinApi.h"

// Owns one object that DeleteObject takes.
template <class Handle>
class GdiObjectOwner {
public:
    GdiObjectOwner() noexcept = default;
    explicit GdiObjectOwner(Handle handle) noexcept : m_handle(handle) {}
    ~GdiObjectOwner() { reset(); }
    // One owner per handle: a copy would delete it twice.
    GdiObjectOwner(const GdiObjectOwner&) = delete;
    GdiObjectOwner& operator=(const GdiObjectOwner&) = delete;
    GdiObjectOwner(GdiObjectOwner&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    GdiObjectOwner& operator=(GdiObjectOwner&& other) noexcept {
        if (this != &other) {
            reset();
            m_handle = std::exchange(other.m_handle, nullptr);
        }
        return *this;
    }
    Handle get() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != nullptr; }
    Handle release() noexcept { return std::exchange(m_handle, nullptr); }
    void reset(Handle handle = nullptr) noexcept {
        if (m_handle != nullptr) ::DeleteObject(m_handle);
        m_handle = handle;
    }

private:
    Handle m_handle = nullptr;
};

using BrushOwner = GdiObjectOwner<HBRUSH>;
using PenOwner = GdiObjectOwner<HPEN>;
using RegionOwner = GdiObjectOwner<HRGN>;
using BitmapOwner = GdiObjectOwner<HBITMAP>;
using FontOwner = GdiObjectOwner<HFONT>;

// Owns a DC made by CreateCompatibleDC or CreateDCW (DeleteDC).
class MemoryDCOwner {
public:
    MemoryDCOwner() noexcept = default;
    explicit MemoryDCOwner(HDC hdc) noexcept : m_hdc(hdc) {}
    ~MemoryDCOwner() { reset(); }
    // One owner per DC: a copy would delete it twice.
    MemoryDCOwner(const MemoryDCOwner&) = delete;
    MemoryDCOwner& operator=(const MemoryDCOwner&) = delete;
    MemoryDCOwner(MemoryDCOwner&& other) noexcept : m_hdc(std::exchange(other.m_hdc, nullptr)) {}
    MemoryDCOwner& operator=(MemoryDCOwner&& other) noexcept {
        if (this != &other) {
            reset();
            m_hdc = std::exchange(other.m_hdc, nullptr);
        }
        return *this;
    }
    HDC get() const noexcept { return m_hdc; }
    explicit operator bool() const noexcept { return m_hdc != nullptr; }
    void reset(HDC hdc = nullptr) noexcept {
        if (m_hdc != nullptr) ::DeleteDC(m_hdc);
        m_hdc = hdc;
    }

private:
    HDC m_hdc = nullptr;
};

// Selects an object into a DC and selects the previous one back at the end of the scope.
class ScopedSelect {
public:
    ScopedSelect(HDC hdc, HGDIOBJ object) noexcept
        : m_hdc(hdc), m_previous(hdc != nullptr && object != nullptr ? ::SelectObject(hdc, object) : nullptr) {}
    ~ScopedSelect() {
        if (m_previous != nullptr && m_previous != HGDI_ERROR) ::SelectObject(m_hdc, m_previous);
    }
    // Restoring twice would put a stale object back.
    ScopedSelect(const ScopedSelect&) = delete;
    ScopedSelect& operator=(const ScopedSelect&) = delete;
    bool selected() const noexcept { return m_previous != nullptr && m_previous != HGDI_ERROR; }

private:
    HDC m_hdc;
    HGDIOBJ m_previous;
};

// GetDC on construction, ReleaseDC at the end of the scope.
class WindowDCGuard {
public:
    explicit WindowDCGuard(HWND hwnd) noexcept : m_hwnd(hwnd), m_hdc(::GetDC(hwnd)) {}
    ~WindowDCGuard() {
        if (m_hdc != nullptr) ::ReleaseDC(m_hwnd, m_hdc);
    }
    // Releasing twice would free a DC that may already serve someone else.
    WindowDCGuard(const WindowDCGuard&) = delete;
    WindowDCGuard& operator=(const WindowDCGuard&) = delete;
    HDC get() const noexcept { return m_hdc; }

private:
    HWND m_hwnd;
    HDC m_hdc;
};

// Keeps a DC's background colour and puts it back at the end of the scope.
class ScopedBkColor {
public:
    explicit ScopedBkColor(HDC hdc) noexcept : m_hdc(hdc), m_previous(::GetBkColor(hdc)) {}
    ~ScopedBkColor() {
        if (m_previous != CLR_INVALID) ::SetBkColor(m_hdc, m_previous);
    }
    // Restoring twice is harmless but meaningless; one scope, one restore.
    ScopedBkColor(const ScopedBkColor&) = delete;
    ScopedBkColor& operator=(const ScopedBkColor&) = delete;

private:
    HDC m_hdc;
    COLORREF m_previous;
};

// Holds one reference of a COM interface.
template <class Interface>
class ComRef {
public:
    ComRef() noexcept = default;
    explicit ComRef(Interface* adopted) noexcept : m_p(adopted) {}
    ~ComRef() { reset(); }
    // A copy would need an AddRef; moves are all the library needs.
    ComRef(const ComRef&) = delete;
    ComRef& operator=(const ComRef&) = delete;
    ComRef(ComRef&& other) noexcept : m_p(std::exchange(other.m_p, nullptr)) {}
    ComRef& operator=(ComRef&& other) noexcept {
        if (this != &other) {
            reset();
            m_p = std::exchange(other.m_p, nullptr);
        }
        return *this;
    }
    Interface* get() const noexcept { return m_p; }
    Interface* operator->() const noexcept { return m_p; }
    explicit operator bool() const noexcept { return m_p != nullptr; }
    Interface** put() noexcept {
        reset();
        return &m_p;
    }
    void reset() noexcept {
        if (m_p != nullptr) std::exchange(m_p, nullptr)->Release();
    }

private:
    Interface* m_p = nullptr;
};
