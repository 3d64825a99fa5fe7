// Generated arrow pictures: every pixel against the triangle's rule, at 96, 144 and 192 DPI.
#include <gtest/gtest.h>

#include "graphics/ArrowPictures.h"

namespace {

constexpr int32_t kInk = 0x00204080;   // OLE colours
constexpr int32_t kBack = 0x00FF00FF;
constexpr COLORREF kInkPixel = RGB(0x80, 0x40, 0x20);
constexpr COLORREF kBackPixel = RGB(0xFF, 0x00, 0xFF);

TEST(ArrowPictures, TrianglesFollowTheirRuleAtEveryDpi) {
    struct Size {
        int dpi, height, side;
    };
    // Height 4 at 96 scaled, base 2h - 1, one pixel of background around the base.
    for (const Size s : {Size{96, 4, 9}, Size{144, 6, 13}, Size{192, 8, 17}}) {
        EXPECT_EQ(ArrowGlyphHeight(s.dpi), s.height);
        EXPECT_EQ(ArrowBitmapSide(s.dpi), s.side);
        for (const eArrowDirection direction :
             {eArrowDirection::Up, eArrowDirection::Down, eArrowDirection::Left, eArrowDirection::Right}) {
            BitmapOwner bitmap = CreateArrowBitmap(direction, s.dpi, kInk, kBack);
            ASSERT_TRUE(bitmap);
            BITMAP info{};
            ASSERT_NE(::GetObjectW(bitmap.get(), sizeof(info), &info), 0);
            EXPECT_EQ(info.bmWidth, s.side);
            EXPECT_EQ(info.bmHeight, s.side);
            const MemoryDCOwner dc(::CreateCompatibleDC(nullptr));
            const ScopedSelect selected(dc.get(), bitmap.get());
            int mismatches = 0;
            for (int y = 0; y < s.side; ++y) {
                for (int x = 0; x < s.side; ++x) {
                    // Along the arrow: depth d from the base (0) to the apex (h - 1); across: c.
                    const bool vertical = direction == eArrowDirection::Up || direction == eArrowDirection::Down;
                    const int along = vertical ? y : x;
                    const int across = vertical ? x : y;
                    const int first = (s.side - s.height) / 2;
                    const bool baseFirst = direction == eArrowDirection::Down || direction == eArrowDirection::Right;
                    const int d = baseFirst ? along - first : first + s.height - 1 - along;
                    const bool ink = d >= 0 && d < s.height && across >= 1 + d && across < s.side - 1 - d;
                    mismatches += ::GetPixel(dc.get(), x, y) != (ink ? kInkPixel : kBackPixel) ? 1 : 0;
                }
            }
            EXPECT_EQ(mismatches, 0) << s.dpi << " direction " << static_cast<int>(direction);
            EXPECT_EQ(::GetPixel(dc.get(), 0, 0), kBackPixel);
        }
    }
}

}  // namespace
