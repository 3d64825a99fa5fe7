// The registry of gallery pages.
#include "GalleryPage.h"

#include <algorithm>

namespace {

std::vector<GalleryPageEntry>& registry() {
    static std::vector<GalleryPageEntry> pages;
    return pages;
}

}  // namespace

bool RegisterGalleryPage(int order, const wchar_t* title, GalleryPageFactory make) {
    auto& pages = registry();
    pages.push_back(GalleryPageEntry{order, title, make});
    std::stable_sort(pages.begin(), pages.end(),
                     [](const GalleryPageEntry& a, const GalleryPageEntry& b) { return a.order < b.order; });
    return true;
}

const std::vector<GalleryPageEntry>& GalleryPages() { return registry(); }
