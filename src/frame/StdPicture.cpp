#include "frame/StdPicture.h"

#include "graphics/GdiRaii.h"

namespace {

// HiMetric is 1/100 mm: 2540 units per inch, taken at the screen's logical resolution.
int32_t pixelsToHiMetric(int32_t pixels, int axisCaps) noexcept {
    const WindowDCGuard screen(nullptr);
    int dpi = screen.get() != nullptr ? ::GetDeviceCaps(screen.get(), axisCaps) : 96;
    if (dpi <= 0) dpi = 96;
    return ::MulDiv(pixels, 2540, dpi);
}

}  // namespace

std::shared_ptr<StdPicture> StdPicture::Empty() { return std::make_shared<StdPicture>(); }

std::shared_ptr<StdPicture> StdPicture::FromBitmap(HBITMAP hBitmap, bool bOwn) {
    auto picture = std::make_shared<StdPicture>();
    if (hBitmap == nullptr) return picture;
    picture->m_hHandle = hBitmap;
    picture->m_iType = kTypeBitmap;
    picture->m_bOwn = bOwn;
    BITMAP info{};
    if (::GetObjectW(hBitmap, sizeof(info), &info) != 0) picture->setSize(info.bmWidth, info.bmHeight);
    return picture;
}

std::shared_ptr<StdPicture> StdPicture::FromIcon(HICON hIcon, bool bOwn) {
    auto picture = std::make_shared<StdPicture>();
    if (hIcon == nullptr) return picture;
    picture->m_hHandle = hIcon;
    picture->m_iType = kTypeIcon;
    picture->m_bOwn = bOwn;
    ICONINFO info{};
    if (::GetIconInfo(hIcon, &info)) {
        BITMAP mask{};
        if (info.hbmMask != nullptr && ::GetObjectW(info.hbmMask, sizeof(mask), &mask) != 0) {
            // A monochrome icon keeps AND and XOR masks stacked in one bitmap of double height.
            picture->setSize(mask.bmWidth, info.hbmColor != nullptr ? mask.bmHeight : mask.bmHeight / 2);
        }
        if (info.hbmMask != nullptr) ::DeleteObject(info.hbmMask);
        if (info.hbmColor != nullptr) ::DeleteObject(info.hbmColor);
    }
    return picture;
}

StdPicture::~StdPicture() {
    if (!m_bOwn || m_hHandle == nullptr) return;
    if (m_iType == kTypeIcon) {
        ::DestroyIcon(static_cast<HICON>(m_hHandle));
    } else {
        ::DeleteObject(m_hHandle);
    }
}

void StdPicture::setSize(int32_t pixelWidth, int32_t pixelHeight) noexcept {
    m_lPixelWidth = pixelWidth;
    m_lPixelHeight = pixelHeight;
    m_lWidth = pixelsToHiMetric(pixelWidth, LOGPIXELSX);
    m_lHeight = pixelsToHiMetric(pixelHeight, LOGPIXELSY);
}
