// clsMEMDC: the memory device context behind double buffering and mask building.
#pragma once

#include <cstdint>

#include "graphics/GdiRaii.h"
#include "platform/win32/WinApi.h"

#include <oaidl.h>

// The member CreateDC below; the platform call is always named CreateDCW.
#undef CreateDC

enum eMemDcBkMode : int32_t {
    eMemDcBkMode_TRANSPARENT = 1,
    eMemDcBkMode_OPAQUE = 2,
};

// Holds a DC with a bitmap of the screen's colour depth selected, or nothing. Every member on
// an empty object does nothing and returns 0. CreateDC and CloneFromHBmp raise CtlError
// ("clsMemDC.<procedure>") after finishing their remaining steps.
class clsMEMDC {
public:
    clsMEMDC() noexcept = default;
    ~clsMEMDC() { Destroy(); }
    // The object owns a DC and a bitmap: a copy would delete both twice.
    clsMEMDC(const clsMEMDC&) = delete;
    clsMEMDC& operator=(const clsMEMDC&) = delete;

    // A negative size becomes 1; 0 stays 0 (and fails where the system refuses it).
    void CreateDC(int32_t Width = -1, int32_t Height = -1, int32_t iBkMode = eMemDcBkMode_TRANSPARENT);
    // Keeps the old content at the top left, cut or with an unfilled margin.
    void ResizeCutDC(int32_t NewWidth, int32_t NewHeight, int32_t iNewBkMode = eMemDcBkMode_TRANSPARENT);
    // Stretches the old content to the new size.
    void ResizeAdaptDC(int32_t NewWidth, int32_t NewHeight, int32_t iNewBkMode = eMemDcBkMode_TRANSPARENT);

    int32_t BkMode() const noexcept;
    void BkMode(int32_t mode) noexcept;
    int32_t BkColor() const noexcept;
    void BkColor(int32_t lColor) noexcept;

    // Becomes a copy of the bitmap; hBmp stays the caller's.
    void CloneFromHBmp(HBITMAP hBmp, int32_t iBkMode = eMemDcBkMode_TRANSPARENT);
    // Becomes a copy of part of lHdc; a width or height below 1 takes the size of its bitmap.
    void CloneFromHdc(HDC lHdc, int32_t lSrcLeft = 0, int32_t lSrcTop = 0, int32_t lSrcWidth = -1,
                      int32_t lSrcHeight = -1, DWORD eRop = SRCCOPY);
    void Destroy() noexcept;
    // Negative sizes mean the object's full width or height.
    void PaintPicture(HDC lHdc, int32_t lDestLeft = 0, int32_t lDestTop = 0, int32_t lDestWidth = -1,
                      int32_t lDestHeight = -1, int32_t lSrcLeft = 0, int32_t lSrcTop = 0, int32_t lSrcWidth = -1,
                      int32_t lSrcHeight = -1, DWORD eRop = SRCCOPY) const noexcept;

    HDC hDC() const noexcept { return m_hDC; }
    HBITMAP hBmp() const noexcept { return m_hBmp; }
    int32_t Width() const noexcept { return m_lWidth; }
    int32_t Height() const noexcept { return m_lHeight; }

    // Hands the bitmap to the caller and empties the object.
    HBITMAP ReleasehBmp() noexcept;
    // A picture object (IDispatch) that owns the bitmap; empties the object. Empty when there
    // is no bitmap.
    ComRef<IDispatch> Picture();
    // A negative colour is a system colour.
    void DrawBackColor(int32_t lColor) const noexcept;

private:
    // The common start of both resizes: false when the object was empty and is simply created;
    // otherwise the new size (a dimension below 1 keeps the old one) and a copy of the content.
    bool beginResize(int32_t NewWidth, int32_t NewHeight, int32_t iNewBkMode, clsMEMDC& copy, int32_t& width,
                     int32_t& height);

    HDC m_hDC = nullptr;
    HBITMAP m_hBmp = nullptr;
    HGDIOBJ m_hOldBmp = nullptr;
    int32_t m_lWidth = 0;
    int32_t m_lHeight = 0;
};
