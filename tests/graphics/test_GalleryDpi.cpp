// The gallery laid out at 144 and 192 DPI (--dpi N): its window, tabs and every control of a page
// at the 96-DPI size scaled (text-sized controls within a few percent), none left at its 96 size,
// and the painted button page pixel-exact against DrawButton at that DPI.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "DibCanvas.h"
#include "GalleryRun.h"
#include "graphics/DrawButton.h"

namespace {

using galleryrun::Image;

int32_t scaled(int32_t pixels, int32_t dpi) { return (pixels * dpi + 48) / 96; }  // half away from zero

struct Rendering {
    std::vector<std::vector<std::string>> layout;
    Image screenshot;
};

Rendering render(int page, int32_t dpi, bool screenshot) {
    Rendering r;
    const std::wstring layout = galleryrun::tempFile(L"tarnwick-gallery-layout.txt");
    const std::wstring png = galleryrun::tempFile(L"tarnwick-gallery-page.png");
    std::wstring arguments = L"--dpi " + std::to_wstring(dpi) + L" --page " + std::to_wstring(page) + L" --layout \"" +
                             layout + L"\"";
    if (screenshot) arguments += L" --screenshot \"" + png + L"\"";
    EXPECT_TRUE(galleryrun::runGallery(arguments));
    r.layout = galleryrun::readLayout(layout);
    if (screenshot) {
        EXPECT_TRUE(galleryrun::readPng(png, r.screenshot));
    }
    ::DeleteFileW(layout.c_str());
    ::DeleteFileW(png.c_str());
    return r;
}

int number(const std::vector<std::string>& line, size_t i) { return i < line.size() ? std::atoi(line[i].c_str()) : -1; }

TEST(GalleryDpi, WindowTabsAndControlsOfEveryPageScaleAndNoneStaysAt96) {
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    // The pages whose controls live in the gallery itself: the button styles and the labels.
    for (const int page : {0, 1}) {
        const Rendering at96 = render(page, 96, false);
        ASSERT_GE(at96.layout.size(), 2u);
        EXPECT_EQ(number(at96.layout[0], 1), 1024);  // unchanged at 96
        EXPECT_EQ(number(at96.layout[0], 2), 720);
        for (const int32_t dpi : {144, 192}) {
            SCOPED_TRACE(testing::Message() << "page " << page << " at " << dpi);
            const Rendering at = render(page, dpi, false);
            ASSERT_EQ(at.layout.size(), at96.layout.size());
            for (size_t i = 0; i < at.layout.size(); ++i) {
                const auto& was = at96.layout[i];
                const auto& now = at.layout[i];
                ASSERT_EQ(now[0], was[0]) << "line " << i;
                const bool client = now[0] == "client";
                const bool content = now[0] == "child" && number(now, 5) == 1;
                for (size_t v = 1; v <= (client ? 2u : 4u); ++v) {
                    const int expected = scaled(number(was, v), dpi);
                    const int got = number(now, v);
                    // A size its text chose follows the font, whose widths are not exact multiples; so
                    // does the left of a label that grows from its centre or its right edge.
                    const int slack = client ? 0 : (content ? std::max(2, scaled(number(was, 3), dpi) / 20) : 1);
                    EXPECT_LE(std::abs(got - expected), slack) << "line " << i << " value " << v << ": " << got
                                                               << " for " << number(was, v) << " at 96";
                    // No part keeps its 96-DPI size.
                    if (!client && v >= 3 && number(was, v) > 1) {
                        EXPECT_NE(got, number(was, v)) << "line " << i << " value " << v;
                    }
                }
            }
        }
    }
    ::CoUninitialize();
}

TEST(GalleryDpi, ButtonPageCellsAreDrawButtonAtTheDpi) {
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    const int32_t kBacks[] = {0x00F0F0F0, 0x00FFFFFF, 0x00404040, 0x00D08040};
    const auto pageBack = static_cast<int32_t>(::GetSysColor(COLOR_BTNFACE));
    for (const int32_t dpi : {96, 144, 192}) {
        SCOPED_TRACE(dpi);
        const auto px = [dpi](int32_t pixels) { return scaled(pixels, dpi); };
        const Rendering r = render(0, dpi, true);
        ASSERT_EQ(r.screenshot.width, static_cast<UINT>(px(1024)));
        ASSERT_EQ(r.screenshot.height, static_cast<UINT>(px(720)));
        // The page starts below the tab row (44); its cells at 12 + 70 + 214k + 102p across and
        // 10 + 28 + 20 + 34s down, 96 x 28, rounded when not pressed.
        const int32_t margin = px(4);
        for (int s = 0; s <= 8; s += 4) {
            for (int k = 0; k < 4; ++k) {
                for (int p = 0; p < 2; ++p) {
                    const int32_t left = px(12 + 70 + 214 * k + 102 * p);
                    const int32_t top = px(44 + 10 + 28 + 20 + 34 * s);
                    DibCanvas alone(px(96) + 2 * margin, px(28) + 2 * margin, pageBack);
                    CTL_RECT rc{margin, margin, margin + px(96), margin + px(28)};
                    DrawButton(alone.dc(), rc, kBacks[k], true, -1, p != 0, false, false, false, p == 0, s, -1, true,
                               dpi);
                    // The caption sits in the middle: the rim of the cell is the button's alone.
                    int differing = 0;
                    for (int32_t y = 0; y < px(28); ++y) {
                        for (int32_t x = 0; x < px(96); ++x) {
                            const bool rim = y < px(6) || y >= px(22) || x < px(6) || x >= px(90);
                            if (!rim) continue;
                            if (r.screenshot.At(static_cast<UINT>(left + x), static_cast<UINT>(top + y)) !=
                                alone.At(margin + x, margin + y)) {
                                ++differing;
                            }
                        }
                    }
                    EXPECT_EQ(differing, 0) << "style " << s << " back " << k << " pressed " << p;
                }
            }
        }
    }
    ::CoUninitialize();
}

}  // namespace
