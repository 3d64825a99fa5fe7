// GalleryPage: one page of the gallery window, and the registration that adds a page from one .cpp file.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "common/CtlTypes.h"
#include "platform/win32/WinApi.h"

// A page either creates child windows inside `area` of `parent` (Create, torn down by Destroy
// or with the parent) or paints itself (Paint), or both. Pages are made when shown.
//
// To add a page, in demo/MyPage.cpp:
//     class MyPage : public GalleryPage { ... };
//     TC_GALLERY_PAGE(MyPage, 20, L"My controls")
// The order number sorts the page list; the first page is shown at start.
class GalleryPage {
public:
    virtual ~GalleryPage() = default;
    virtual void Create(HWND parent, const RECT& area) {
        (void)parent;
        (void)area;
    }
    virtual void Paint(HDC hdc, const RECT& area) {
        (void)hdc;
        (void)area;
    }
    // True for a child window whose size its content chose (an AutoSize label), not the page.
    virtual bool SizedByContent(HWND child) const {
        (void)child;
        return false;
    }
};

// The DPI the gallery lays its window and pages out at: --dpi N, else the system's. Pages design
// their layout at 96 DPI and pass every position, size and point size through these.
int32_t GalleryDpi();
void SetGalleryDpi(int32_t dpi);
// A length of the gallery's own layout, designed at 96 DPI, at GalleryDpi().
int32_t GalleryScale(int32_t pixels);
// The point size to ask of `hdc` for text that is `points` high at GalleryDpi(): a memory DC
// answers the screen's DPI, not the one the page is laid out at.
int16_t GalleryPoints(HDC hdc, int32_t points);

// An installed face that holds the scripts of `sample`: Devanagari, CJK and characters beyond the
// basic plane (emoji) each need their own face; anything else gets the general text face.
CtlString GalleryFaceFor(const CtlString& sample = CtlString());

using GalleryPageFactory = std::unique_ptr<GalleryPage> (*)();

struct GalleryPageEntry {
    int order = 0;
    std::wstring title;
    GalleryPageFactory make = nullptr;
};

// Called from static initialisers; returns true so that it can initialise a constant.
bool RegisterGalleryPage(int order, const wchar_t* title, GalleryPageFactory make);
// All registered pages, sorted by order.
const std::vector<GalleryPageEntry>& GalleryPages();

#define TC_GALLERY_PAGE(PageClass, order, title)                                                  \
    namespace {                                                                                  \
    const bool registered_##PageClass = RegisterGalleryPage(                                     \
        order, title, []() -> std::unique_ptr<GalleryPage> { return std::make_unique<PageClass>(); }); \
    }
