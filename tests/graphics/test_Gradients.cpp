// Gradients with their exclusive ends, rectangles, lines, round rectangles and pixels, read back from a DIB.
#include <gtest/gtest.h>

#include "graphics/modCommonDraw.h"
#include "DibCanvas.h"

namespace {

constexpr int32_t kBack = 0x00123456;
int32_t rgb(int32_t r, int32_t g, int32_t b) { return r | (g << 8) | (b << 16); }

// Every pixel of the canvas: expected colour where `paint` says so, the background elsewhere.
template <class Expected>
void expectCanvas(const DibCanvas& canvas, Expected expected) {
    for (int32_t y = 0; y < canvas.height(); ++y) {
        for (int32_t x = 0; x < canvas.width(); ++x) {
            ASSERT_EQ(canvas.At(x, y), expected(x, y)) << "pixel " << x << "," << y;
        }
    }
}

TEST(Gradients, RowsStartExactlyAndStopShortOfTheEnd) {
    struct Case {
        int32_t start;
        int32_t stop;
        int32_t rows;
        std::vector<int32_t> expected;
    };
    // Worked by hand: row i has t = 1 - i/n; channel = start*t + stop*(1-t), ties to even.
    const Case cases[] = {
        {0, rgb(200, 100, 40), 4, {0, rgb(50, 25, 10), rgb(100, 50, 20), rgb(150, 75, 30)}},
        {rgb(200, 100, 40), 0, 4, {rgb(200, 100, 40), rgb(150, 75, 30), rgb(100, 50, 20), rgb(50, 25, 10)}},
        {0, 0x00FFFFFF, 3, {0, rgb(85, 85, 85), rgb(170, 170, 170)}},
        {0, rgb(1, 3, 5), 2, {0, rgb(0, 2, 2)}},  // 0.5, 1.5, 2.5: even neighbours
        {0x00FFFFFF, 0, 1, {0x00FFFFFF}},
    };
    for (const Case& c : cases) {
        DibCanvas canvas(10, 8, kBack);
        FadeToYCoords(canvas.dc(), 2, 1, 6, 1 + c.rows, c.start, c.stop);
        expectCanvas(canvas, [&](int32_t x, int32_t y) {
            const bool inside = x >= 2 && x < 6 && y >= 1 && y < 1 + c.rows;
            return inside ? c.expected[static_cast<size_t>(y - 1)] : kBack;
        });
        // The same by columns.
        DibCanvas columns(8, 10, kBack);
        FadeToXCoords(columns.dc(), 1, 2, 1 + c.rows, 6, c.start, c.stop);
        expectCanvas(columns, [&](int32_t x, int32_t y) {
            const bool inside = y >= 2 && y < 6 && x >= 1 && x < 1 + c.rows;
            return inside ? c.expected[static_cast<size_t>(x - 1)] : kBack;
        });
    }
}

TEST(Gradients, DegenerateAndOnePixelFades) {
    DibCanvas canvas(10, 10, kBack);
    const auto untouched = [&] { expectCanvas(canvas, [](int32_t, int32_t) { return kBack; }); };
    FadeToYCoords(canvas.dc(), 0, 5, 10, 5, 0, 0);  // height 0
    FadeToYCoords(canvas.dc(), 0, 5, 10, 2, 0, 0);  // negative height
    FadeToXCoords(canvas.dc(), 5, 0, 5, 10, 0, 0);  // width 0
    FadeToY(nullptr, CTL_RECT{0, 0, 10, 10}, 0, 0);
    untouched();

    // X1 == X2 and X2 == X1 + 1 both give one pixel per row, at X1.
    for (const int32_t x2 : {3, 4}) {
        canvas.Fill(kBack);
        FadeToYCoords(canvas.dc(), 3, 2, x2, 6, 0x000000FF, 0x000000FF);
        expectCanvas(canvas, [](int32_t x, int32_t y) { return (x == 3 && y >= 2 && y < 6) ? 0x000000FF : kBack; });
    }
    // Y1 == Y2 in the column fade: one pixel per column.
    canvas.Fill(kBack);
    FadeToXCoords(canvas.dc(), 1, 7, 5, 7, 0x0000FF00, 0x0000FF00);
    expectCanvas(canvas, [](int32_t x, int32_t y) { return (y == 7 && x >= 1 && x < 5) ? 0x0000FF00 : kBack; });

    // X2 left of X1: the same pixels as a pen line drawn that way.
    DibCanvas reference(10, 10, kBack);
    DrawLineCoords(reference.dc(), 7, 4, 2, 4, 0x00FF0000);
    canvas.Fill(kBack);
    FadeToYCoords(canvas.dc(), 7, 4, 2, 5, 0x00FF0000, 0);
    EXPECT_EQ(canvas.Snapshot(), reference.Snapshot());
}

TEST(Shapes, RectanglesLinesPixels) {
    DibCanvas canvas(12, 12, kBack);
    DrawRectCoords(canvas.dc(), 2, 3, 7, 9, 0x000000FF, true);
    expectCanvas(canvas, [](int32_t x, int32_t y) { return (x >= 2 && x < 7 && y >= 3 && y < 9) ? 0x000000FF : kBack; });

    canvas.Fill(kBack);
    DrawRect(canvas.dc(), CTL_RECT{2, 3, 7, 9}, static_cast<int32_t>(0x80000005u), false);
    const int32_t window = static_cast<int32_t>(::GetSysColor(COLOR_WINDOW));
    expectCanvas(canvas, [&](int32_t x, int32_t y) {
        const bool inside = x >= 2 && x < 7 && y >= 3 && y < 9;
        const bool edge = x == 2 || x == 6 || y == 3 || y == 8;
        return inside && edge ? window : kBack;
    });

    canvas.Fill(kBack);
    DrawLine(canvas.dc(), CTL_RECT{1, 5, 9, 5}, 0x0000FF00);
    DrawPixel(canvas.dc(), 10, 10, 0x00ABCDEF);
    DrawPixel(nullptr, 0, 0, 0);
    DrawRect(nullptr, CTL_RECT{0, 0, 5, 5}, 0, true);
    expectCanvas(canvas, [](int32_t x, int32_t y) {
        if (y == 5 && x >= 1 && x < 9) return 0x0000FF00;
        if (x == 10 && y == 10) return 0x00ABCDEF;
        return kBack;
    });
}

// The bounding box of the pixels that differ from the background.
RECT paintedBox(const DibCanvas& canvas) {
    RECT box{INT32_MAX, INT32_MAX, -1, -1};
    for (int32_t y = 0; y < canvas.height(); ++y) {
        for (int32_t x = 0; x < canvas.width(); ++x) {
            if (canvas.At(x, y) == kBack) continue;
            box.left = std::min<LONG>(box.left, x);
            box.top = std::min<LONG>(box.top, y);
            box.right = std::max<LONG>(box.right, x);
            box.bottom = std::max<LONG>(box.bottom, y);
        }
    }
    return box;
}

// Without a pen the platform leaves out the right and bottom edge; raising them by one makes the
// borderless fill cover exactly the box that the bordered shape covers.
TEST(Shapes, RoundRectWithoutBorderCoversTheBorderedBox) {
    DibCanvas bordered(16, 16, kBack);
    DrawRRectCoords(bordered.dc(), 2, 2, 10, 10, true, 0x000000FF, 0x00FF0000, 1, PS_SOLID, 0);
    DibCanvas borderless(16, 16, kBack);
    DrawRRectCoords(borderless.dc(), 2, 2, 10, 10, true, 0x000000FF, 0x00FF0000, 0, PS_SOLID, 0);
    const RECT withPen = paintedBox(bordered);
    const RECT withoutPen = paintedBox(borderless);
    EXPECT_EQ(withPen.left, 2);
    EXPECT_EQ(withPen.right, 9);
    EXPECT_EQ(withoutPen.left, withPen.left);
    EXPECT_EQ(withoutPen.top, withPen.top);
    EXPECT_EQ(withoutPen.right, withPen.right);
    EXPECT_EQ(withoutPen.bottom, withPen.bottom);
    EXPECT_EQ(borderless.At(9, 9), 0x000000FF);
    EXPECT_EQ(bordered.At(2, 5), 0x00FF0000);
    EXPECT_EQ(bordered.At(5, 5), 0x000000FF);
    EXPECT_EQ(borderless.At(2, 5), 0x000000FF);

    // Not filled: the inside stays.
    DibCanvas hollow(16, 16, kBack);
    DrawRRect(hollow.dc(), CTL_RECT{2, 2, 10, 10}, false, 0x000000FF, 0x00FF0000, 1, PS_SOLID, 4);
    EXPECT_EQ(hollow.At(5, 5), kBack);
    EXPECT_EQ(hollow.At(5, 2), 0x00FF0000);
}

}  // namespace
