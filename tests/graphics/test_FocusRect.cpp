// DrawFocusRectDpi: DrawFocusRect itself where one pixel stays one pixel, a frame of scaled dots above.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <vector>

#include "DibCanvas.h"
#include "graphics/FocusRect.h"

namespace {

constexpr int32_t kFill = 0x00406080;
constexpr int kWidth = 60;
constexpr int kHeight = 40;

// The picture the rule gives: a frame `dot` pixels wide along the inside of `rc`, a checkerboard of
// dot-sized squares counted from the rectangle's corner, the corner square clear (as DrawFocusRect
// leaves it); a square is inverted when its column and row add up odd. The bottom strip is the
// last row and the right strip the last column, their numbers the extent less one square, in
// squares, rounded.
std::vector<int32_t> expectedFrame(const RECT& rc, int dot, int32_t ink) {
    std::vector<int32_t> px(static_cast<size_t>(kWidth * kHeight), kFill);
    const long lastRow = std::lround(static_cast<double>(rc.bottom - rc.top - dot) / dot);
    const long lastColumn = std::lround(static_cast<double>(rc.right - rc.left - dot) / dot);
    for (int y = rc.top; y < rc.bottom; ++y) {
        for (int x = rc.left; x < rc.right; ++x) {
            const bool top = y < rc.top + dot;
            const bool bottom = !top && y >= rc.bottom - dot;
            const bool left = x < rc.left + dot;
            const bool right = !left && x >= rc.right - dot;
            long row = 0;
            long column = 0;
            if (top || bottom) {
                row = top ? 0 : lastRow;
                column = (x - rc.left) / dot;
            } else if (left || right) {
                column = left ? 0 : lastColumn;
                row = (y - rc.top) / dot;
            } else {
                continue;
            }
            if ((row + column) % 2 == 1) px[static_cast<size_t>(y * kWidth + x)] = ink;
        }
    }
    return px;
}

TEST(FocusRect, OnePixelIsDrawFocusRectAndLargerDotsFollowTheRule) {
    // The colour DrawFocusRect gives a dot on this background is the colour every scaled dot gets.
    int32_t ink = kFill;
    {
        DibCanvas probe(kWidth, kHeight, kFill);
        const RECT rc{2, 2, 20, 20};
        ::DrawFocusRect(probe.dc(), &rc);
        for (int x = 2; x < 20 && ink == kFill; ++x) ink = probe.At(x, 2);
        ASSERT_NE(ink, kFill) << "DrawFocusRect left its top edge alone";
    }
    struct Case {
        int32_t dpi;
        int dot;  // 0: the drawing must be DrawFocusRect's own
        RECT rc;
    };
    const Case cases[] = {
        {96, 0, {3, 4, 50, 30}},     {120, 0, {3, 4, 50, 30}},  {0, 0, {3, 4, 50, 30}},
        {144, 2, {3, 4, 50, 30}},    {192, 2, {3, 4, 50, 30}},  {192, 2, {0, 0, kWidth, kHeight}},
        {192, 2, {5, 5, 8, 30}},     {288, 3, {1, 2, 59, 39}},  {384, 4, {4, 4, 45, 33}},
        {192, 2, {10, 10, 13, 11}},  // thinner than two lines: the top strip takes all of it
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "dpi " << c.dpi << " rect " << c.rc.left << "," << c.rc.top << ","
                                        << c.rc.right << "," << c.rc.bottom);
        DibCanvas canvas(kWidth, kHeight, kFill);
        DrawFocusRectDpi(canvas.dc(), c.rc, c.dpi);
        if (c.dot == 0) {
            DibCanvas system(kWidth, kHeight, kFill);
            ::DrawFocusRect(system.dc(), &c.rc);
            EXPECT_EQ(canvas.Snapshot(), system.Snapshot());
        } else {
            EXPECT_EQ(canvas.Snapshot(), expectedFrame(c.rc, c.dot, ink));
        }
        // Drawn again, it gives back the background, as DrawFocusRect does.
        DrawFocusRectDpi(canvas.dc(), c.rc, c.dpi);
        EXPECT_EQ(canvas.Snapshot(), DibCanvas(kWidth, kHeight, kFill).Snapshot());
    }
}

TEST(FocusRect, BadInputDrawsNothingOrOnlyWhatShows) {
    DibCanvas canvas(kWidth, kHeight, kFill);
    const std::vector<int32_t> blank = canvas.Snapshot();
    DrawFocusRectDpi(nullptr, RECT{0, 0, 10, 10}, 192);
    DrawFocusRectDpi(canvas.dc(), RECT{30, 30, 10, 10}, 192);  // inside out
    DrawFocusRectDpi(canvas.dc(), RECT{10, 10, 10, 30}, 192);  // no width
    EXPECT_EQ(canvas.Snapshot(), blank);
    // A rectangle as large as the coordinates allow costs only the visible part and still erases.
    const RECT huge{INT_MIN / 2, INT_MIN / 2, INT_MAX / 2, INT_MAX / 2};
    DrawFocusRectDpi(canvas.dc(), huge, 192);
    EXPECT_EQ(canvas.Snapshot(), blank);  // its frame lies outside the canvas
    const RECT wide{-1000000000, 5, 1000000000, 30};
    DrawFocusRectDpi(canvas.dc(), wide, 192);
    EXPECT_NE(canvas.Snapshot(), blank);
    DrawFocusRectDpi(canvas.dc(), wide, 192);
    EXPECT_EQ(canvas.Snapshot(), blank);
}

}  // namespace
