// StdPicture: the shared picture object (Handle, Type, Width and Height in HiMetric) owning its GDI handle.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/win32/WinApi.h"

class StdPicture {
public:
    // Values of the picture object's Type.
    enum : int16_t { kTypeNone = 0, kTypeBitmap = 1, kTypeMetafile = 2, kTypeIcon = 3, kTypeEnhMetafile = 4 };

    // An empty picture (Type none), as a MouseIcon that was never set.
    static std::shared_ptr<StdPicture> Empty();
    // Takes the bitmap; with `bOwn` the picture deletes it when the last reference goes.
    static std::shared_ptr<StdPicture> FromBitmap(HBITMAP hBitmap, bool bOwn = true);
    static std::shared_ptr<StdPicture> FromIcon(HICON hIcon, bool bOwn = true);

    StdPicture() = default;
    ~StdPicture();
    // Owns a GDI handle: a copy would delete it twice.
    StdPicture(const StdPicture&) = delete;
    StdPicture& operator=(const StdPicture&) = delete;

    HANDLE Handle() const noexcept { return m_hHandle; }
    HBITMAP Bitmap() const noexcept { return m_iType == kTypeBitmap ? static_cast<HBITMAP>(m_hHandle) : nullptr; }
    int16_t Type() const noexcept { return m_iType; }
    int32_t Width() const noexcept { return m_lWidth; }    // HiMetric
    int32_t Height() const noexcept { return m_lHeight; }  // HiMetric
    // Size in pixels, read from the handle itself.
    int32_t PixelWidth() const noexcept { return m_lPixelWidth; }
    int32_t PixelHeight() const noexcept { return m_lPixelHeight; }

private:
    void setSize(int32_t pixelWidth, int32_t pixelHeight) noexcept;

    HANDLE m_hHandle = nullptr;
    int16_t m_iType = kTypeNone;
    bool m_bOwn = false;
    int32_t m_lWidth = 0;
    int32_t m_lHeight = 0;
    int32_t m_lPixelWidth = 0;
    int32_t m_lPixelHeight = 0;
};
