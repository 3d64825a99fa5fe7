// clsMEMDC: memory DC and bitmap, created, resized, cloned, painted and handed over.
#include "graphics/clsMEMDC.h"

#include <olectl.h>

#include <optional>
#include <utility>

#include "common/CtlError.h"

namespace {

CtlError memDcError(const char16_t* procedure, const char16_t* text) {
    const std::u16string name = std::u16string(u"clsMemDC.") + procedure;
    return CtlError(name, name + u"." + text);
}

SIZE bitmapSize(HGDIOBJ bitmap) {
    BITMAP info{};
    if (bitmap == nullptr || ::GetObjectW(bitmap, sizeof(info), &info) == 0) return SIZE{0, 0};
    return SIZE{info.bmWidth, info.bmHeight};
}

}  // namespace

void clsMEMDC::CreateDC(int32_t Width, int32_t Height, int32_t iBkMode) {
    Destroy();
    const int32_t width = Width < 0 ? 1 : Width;
    const int32_t height = Height < 0 ? 1 : Height;
    std::optional<CtlError> failure;
    const WindowDCGuard screen(::GetDesktopWindow());
    m_hDC = ::CreateCompatibleDC(screen.get());
    if (m_hDC == nullptr) failure = memDcError(u"CreateDC", u"HDC not created");
    // The screen DC, not the fresh memory DC, so the bitmap has colour and not one plane.
    m_hBmp = ::CreateCompatibleBitmap(screen.get(), width, height);
    if (m_hBmp == nullptr && !failure) failure = memDcError(u"CreateDC", u"hBmp not created");
    if (m_hDC != nullptr && m_hBmp != nullptr) {
        m_hOldBmp = ::SelectObject(m_hDC, m_hBmp);
        if (m_hOldBmp == nullptr || m_hOldBmp == HGDI_ERROR) {
            m_hOldBmp = nullptr;
            if (!failure) failure = memDcError(u"CreateDC", u"Bitmap not selected");
        }
    }
    m_lWidth = width;
    m_lHeight = height;
    if (m_hDC != nullptr) {
        ::SetStretchBltMode(m_hDC, COLORONCOLOR);
        BkMode(iBkMode);
    }
    if (failure) throw *failure;
}

bool clsMEMDC::beginResize(int32_t NewWidth, int32_t NewHeight, int32_t iNewBkMode, clsMEMDC& copy, int32_t& width,
                           int32_t& height) {
    if (m_hDC == nullptr) {
        CreateDC(NewWidth, NewHeight, iNewBkMode);
        return false;
    }
    width = NewWidth < 1 ? m_lWidth : NewWidth;
    height = NewHeight < 1 ? m_lHeight : NewHeight;
    copy.CloneFromHdc(m_hDC, 0, 0, -1, -1, SRCCOPY);
    return true;
}

void clsMEMDC::ResizeCutDC(int32_t NewWidth, int32_t NewHeight, int32_t iNewBkMode) {
    clsMEMDC copy;
    int32_t width = 0;
    int32_t height = 0;
    if (!beginResize(NewWidth, NewHeight, iNewBkMode, copy, width, height)) return;
    // The mode comes from the copy through CloneFromHdc; iNewBkMode only serves an empty object.
    CloneFromHdc(copy.hDC(), 0, 0, width, height, SRCCOPY);
}

void clsMEMDC::ResizeAdaptDC(int32_t NewWidth, int32_t NewHeight, int32_t iNewBkMode) {
    clsMEMDC copy;
    int32_t width = 0;
    int32_t height = 0;
    if (!beginResize(NewWidth, NewHeight, iNewBkMode, copy, width, height)) return;
    CreateDC(width, height, BkMode());
    copy.PaintPicture(m_hDC, 0, 0, width, height, 0, 0, -1, -1, SRCCOPY);
}

int32_t clsMEMDC::BkMode() const noexcept { return m_hDC == nullptr ? 0 : ::GetBkMode(m_hDC); }

void clsMEMDC::BkMode(int32_t mode) noexcept {
    if (m_hDC != nullptr) ::SetBkMode(m_hDC, mode);
}

int32_t clsMEMDC::BkColor() const noexcept {
    return m_hDC == nullptr ? 0 : static_cast<int32_t>(::GetBkColor(m_hDC));
}

void clsMEMDC::BkColor(int32_t lColor) noexcept {
    if (m_hDC == nullptr) return;
    const int32_t color = lColor < 0 ? static_cast<int32_t>(::GetSysColor(lColor & 31)) : lColor;
    ::SetBkColor(m_hDC, static_cast<COLORREF>(color));
}

void clsMEMDC::CloneFromHBmp(HBITMAP hBmp, int32_t iBkMode) {
    const SIZE size = bitmapSize(hBmp);
    std::optional<CtlError> failure;
    try {
        CreateDC(size.cx, size.cy, eMemDcBkMode_TRANSPARENT);
    } catch (const CtlError& error) {
        failure = error;
    }
    BkMode(iBkMode);
    const MemoryDCOwner helper(::CreateCompatibleDC(m_hDC));
    if (!helper && !failure) failure = memDcError(u"CloneFromhBmp", u"HDC not created");
    if (helper) {
        const ScopedSelect select(helper.get(), hBmp);
        if (!select.selected()) {
            if (!failure) failure = memDcError(u"CloneFromhBmp", u"Bitmap not selected");
        } else if (m_hDC != nullptr) {
            ::BitBlt(m_hDC, 0, 0, size.cx, size.cy, helper.get(), 0, 0, SRCCOPY);
        }
    }
    if (failure) throw *failure;
}

void clsMEMDC::CloneFromHdc(HDC lHdc, int32_t lSrcLeft, int32_t lSrcTop, int32_t lSrcWidth, int32_t lSrcHeight,
                            DWORD eRop) {
    if (lSrcWidth < 1 || lSrcHeight < 1) {
        const SIZE size = bitmapSize(lHdc == nullptr ? nullptr : ::GetCurrentObject(lHdc, OBJ_BITMAP));
        lSrcWidth = size.cx;
        lSrcHeight = size.cy;
    }
    const int32_t mode = lHdc == nullptr ? eMemDcBkMode_TRANSPARENT : ::GetBkMode(lHdc);
    CreateDC(lSrcWidth, lSrcHeight, mode);
    if (m_hDC != nullptr && lHdc != nullptr) {
        ::BitBlt(m_hDC, 0, 0, lSrcWidth, lSrcHeight, lHdc, lSrcLeft, lSrcTop, eRop);
    }
}

void clsMEMDC::Destroy() noexcept {
    if (m_hDC != nullptr) {
        if (m_hOldBmp != nullptr) ::SelectObject(m_hDC, m_hOldBmp);
        ::DeleteDC(m_hDC);
        m_hDC = nullptr;
        m_hOldBmp = nullptr;
    }
    if (m_hBmp != nullptr) {
        ::DeleteObject(m_hBmp);
        m_hBmp = nullptr;
    }
    m_lWidth = 0;
    m_lHeight = 0;
}

void clsMEMDC::PaintPicture(HDC lHdc, int32_t lDestLeft, int32_t lDestTop, int32_t lDestWidth, int32_t lDestHeight,
                            int32_t lSrcLeft, int32_t lSrcTop, int32_t lSrcWidth, int32_t lSrcHeight,
                            DWORD eRop) const noexcept {
    if (m_hDC == nullptr || lHdc == nullptr) return;
    if (lDestWidth < 0) lDestWidth = m_lWidth;
    if (lDestHeight < 0) lDestHeight = m_lHeight;
    if (lSrcWidth < 0) lSrcWidth = m_lWidth;
    if (lSrcHeight < 0) lSrcHeight = m_lHeight;
    if (lDestWidth == lSrcWidth && lDestHeight == lSrcHeight) {
        ::BitBlt(lHdc, lDestLeft, lDestTop, lDestWidth, lDestHeight, m_hDC, lSrcLeft, lSrcTop, eRop);
    } else {
        ::StretchBlt(lHdc, lDestLeft, lDestTop, lDestWidth, lDestHeight, m_hDC, lSrcLeft, lSrcTop, lSrcWidth,
                     lSrcHeight, eRop);
    }
}

HBITMAP clsMEMDC::ReleasehBmp() noexcept {
    // Cleared first so that Destroy leaves the bitmap alive.
    HBITMAP const bitmap = std::exchange(m_hBmp, nullptr);
    Destroy();
    return bitmap;
}

ComRef<IDispatch> clsMEMDC::Picture() {
    ComRef<IDispatch> picture;
    if (m_hBmp == nullptr) return picture;
    PICTDESC description{};
    description.cbSizeofstruct = sizeof(PICTDESC);
    description.picType = PICTYPE_BITMAP;
    description.bmp.hbitmap = ReleasehBmp();
    const HRESULT result = ::OleCreatePictureIndirect(&description, IID_IDispatch, TRUE,
                                                      reinterpret_cast<void**>(picture.put()));
    // A picture that could not be made does not own the bitmap: no handle may be lost.
    if (FAILED(result)) {
        ::DeleteObject(description.bmp.hbitmap);
        picture.reset();
    }
    return picture;
}

void clsMEMDC::DrawBackColor(int32_t lColor) const noexcept {
    if (m_hDC == nullptr) return;
    const int32_t color = lColor < 0 ? static_cast<int32_t>(::GetSysColor(lColor & 31)) : lColor;
    const BrushOwner brush(::CreateSolidBrush(static_cast<COLORREF>(color)));
    if (!brush) return;
    const RECT area{0, 0, m_lWidth, m_lHeight};
    ::FillRect(m_hDC, &area, brush.get());
}
