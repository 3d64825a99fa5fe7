// The registry of gallery pages.
#include "GalleryPage.h"

#include <algorithm>
#include <initializer_list>

#include "frame/WindowDpi.h"
#include "graphics/modCommonDraw.h"

namespace {

int32_t g_galleryDpi = 0;  // 0: not chosen yet

std::vector<GalleryPageEntry>& registry() {
    static std::vector<GalleryPageEntry> pages;
    return pages;
}

CtlString firstInstalled(std::initializer_list<const char16_t*> faces) {
    for (const char16_t* face : faces) {
        if (IsFontInstalled(face)) return face;
    }
    return CtlString();
}

bool holds(const CtlString& sample, char16_t low, char16_t high) {
    return std::any_of(sample.begin(), sample.end(), [&](char16_t c) { return c >= low && c <= high; });
}

}  // namespace

CtlString GalleryFaceFor(const CtlString& sample) {
    CtlString face;
    if (holds(sample, 0xD800, 0xDFFF)) {
        face = firstInstalled({u"Symbola", u"Segoe UI Symbol", u"Segoe UI Emoji"});
    } else if (holds(sample, 0x0900, 0x097F)) {
        face = firstInstalled({u"Lohit Devanagari", u"Nirmala UI", u"Mangal", u"Noto Sans Devanagari"});
    } else if (holds(sample, 0x3040, 0x30FF) || holds(sample, 0x4E00, 0x9FFF) || holds(sample, 0xFF00, 0xFFEF)) {
        face = firstInstalled({u"WenQuanYi Micro Hei", u"Microsoft YaHei", u"MS Gothic", u"SimSun"});
    }
    if (face.empty()) face = firstInstalled({u"DejaVu Sans", u"Segoe UI", u"Arial Unicode MS", u"Tahoma"});
    return face.empty() ? CtlString(u"Tahoma") : face;
}

bool RegisterGalleryPage(int order, const wchar_t* title, GalleryPageFactory make) {
    auto& pages = registry();
    pages.push_back(GalleryPageEntry{order, title, make});
    std::stable_sort(pages.begin(), pages.end(),
                     [](const GalleryPageEntry& a, const GalleryPageEntry& b) { return a.order < b.order; });
    return true;
}

const std::vector<GalleryPageEntry>& GalleryPages() { return registry(); }

int32_t GalleryDpi() {
    if (g_galleryDpi <= 0) g_galleryDpi = WindowDpi(nullptr);
    return g_galleryDpi;
}

void SetGalleryDpi(int32_t dpi) { g_galleryDpi = dpi > 0 ? dpi : 0; }

int32_t GalleryScale(int32_t pixels) { return ScaleToDpi(pixels, GalleryDpi()); }

int16_t GalleryPoints(HDC hdc, int32_t points) {
    const int dcDpi = hdc != nullptr ? ::GetDeviceCaps(hdc, LOGPIXELSY) : 0;
    return static_cast<int16_t>(::MulDiv(points, GalleryDpi(), dcDpi > 0 ? dcDpi : kDesignDpi));
}
