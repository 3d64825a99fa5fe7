// DrawButton at 192 DPI: the same picture as at 96, each pixel a 2x2 block.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "DibCanvas.h"
#include "graphics/DrawButton.h"

namespace {

constexpr int32_t kOutside = 0x00123456;
constexpr int32_t kBorder = 0x000000FF;
constexpr int kWidth = 40;
constexpr int kHeight = 44;

bool closeTo(int32_t a, int32_t b, int tolerance) {
    for (int shift = 0; shift < 24; shift += 8) {
        if (std::abs(((a >> shift) & 0xFF) - ((b >> shift) & 0xFF)) > tolerance) return false;
    }
    return true;
}

// In the corner squares of a rounded outline the arcs of different radii are not exact doubles.
bool inRoundedCorner(int x, int y) {
    const bool left = x < 3;
    const bool right = x >= kWidth - 3;
    const bool top = y < 3;
    const bool bottom = y >= kHeight - 3;
    return (left || right) && (top || bottom);
}

struct Drawing {
    int32_t style;
    bool pressed;
    bool rounded;
    bool marks;  // the default mark
};

void draw(DibCanvas& canvas, const Drawing& d, int32_t dpi) {
    CTL_RECT r{0, 0, canvas.width(), canvas.height()};
    DrawButton(canvas.dc(), r, 0x00C08040, true, kBorder, d.pressed, d.marks, false, false, d.rounded, d.style,
               0x00FFFFFF, true, dpi);
}

TEST(DrawButtonDpi, EveryStyleAt192IsTheDrawingAt96Doubled) {
    for (int32_t style = iCtlBtnStyle_Flat; style <= iCtlBtnStyle_Xp2; ++style) {
        for (const bool pressed : {false, true}) {
            for (const bool rounded : {false, true}) {
                for (const bool marks : {false, true}) {
                    const Drawing d{style, pressed, rounded, marks};
                    const std::string name = "style " + std::to_string(style) + (pressed ? " pressed" : "") +
                                             (rounded ? " rounded" : "") + (marks ? " marks" : "");
                    DibCanvas at96(kWidth, kHeight, kOutside);
                    DibCanvas at192(2 * kWidth, 2 * kHeight, kOutside);
                    draw(at96, d, 96);
                    draw(at192, d, 192);
                    // Each pixel at 192 is its pixel at 96, give or take one pixel at 192 where a band
                    // edge computed with an integer division rounds the other way.
                    int mismatches = 0;
                    for (int y = 0; y < 2 * kHeight; ++y) {
                        for (int x = 0; x < 2 * kWidth; ++x) {
                            if (rounded && inRoundedCorner(x / 2, y / 2)) continue;
                            const int32_t actual = at192.At(x, y);
                            bool found = false;
                            for (int oy = -1; oy <= 1 && !found; ++oy) {
                                for (int ox = -1; ox <= 1 && !found; ++ox) {
                                    const int sx = std::clamp(x + ox, 0, 2 * kWidth - 1) / 2;
                                    const int sy = std::clamp(y + oy, 0, 2 * kHeight - 1) / 2;
                                    // Fades over twice the rows move a few levels per step.
                                    found = closeTo(actual, at96.At(sx, sy), 12);
                                }
                            }
                            if (!found) ++mismatches;
                        }
                    }
                    EXPECT_EQ(mismatches, 0) << name;
                }
            }
        }
    }
}

TEST(DrawButtonDpi, BorderLinesAreTwoPixelsAt192AndOneAt96) {
    for (int32_t style = iCtlBtnStyle_Flat; style <= iCtlBtnStyle_Xp2; ++style) {
        DibCanvas at96(kWidth, kHeight, kOutside);
        DibCanvas at192(2 * kWidth, 2 * kHeight, kOutside);
        draw(at96, Drawing{style, false, false, false}, 96);
        draw(at192, Drawing{style, false, false, false}, 192);
        EXPECT_EQ(at96.At(20, 0), kBorder) << style;
        EXPECT_NE(at96.At(20, 1), kBorder) << style;
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(at192.At(40, i), kBorder) << style;                     // top
            EXPECT_EQ(at192.At(40, 2 * kHeight - 1 - i), kBorder) << style;   // bottom
            EXPECT_EQ(at192.At(i, 44), kBorder) << style;                     // left
            EXPECT_EQ(at192.At(2 * kWidth - 1 - i, 44), kBorder) << style;    // right
        }
        EXPECT_NE(at192.At(40, 2), kBorder) << style;
        EXPECT_NE(at192.At(2, 44), kBorder) << style;
    }
}

// Pixels of `at192` that match no pixel of `at96` at their half position or one step around it.
int mismatchesAgainstDoubled(const DibCanvas& at96, const DibCanvas& at192, bool skipRoundedCorners) {
    int mismatches = 0;
    for (int y = 0; y < at192.height(); ++y) {
        for (int x = 0; x < at192.width(); ++x) {
            if (skipRoundedCorners && inRoundedCorner(x / 2, y / 2)) continue;
            bool found = false;
            for (int oy = -1; oy <= 1 && !found; ++oy) {
                for (int ox = -1; ox <= 1 && !found; ++ox) {
                    const int sx = std::clamp(x + ox, 0, at192.width() - 1) / 2;
                    const int sy = std::clamp(y + oy, 0, at192.height() - 1) / 2;
                    found = at192.At(x, y) == at96.At(sx, sy);
                }
            }
            if (!found) ++mismatches;
        }
    }
    return mismatches;
}

TEST(DrawButtonDpi, FlatFrameAt192IsTheFrameAt96Doubled) {
    for (const bool rounded : {false, true}) {
        for (const bool thin : {false, true}) {
            DibCanvas at96(kWidth, kHeight, kOutside);
            DibCanvas at192(2 * kWidth, 2 * kHeight, kOutside);
            pvDrawFlatFrame(at96.dc(), CTL_RECT{0, 0, kWidth, kHeight}, 0x00FFFFFF, kBorder, rounded, 0x0000FF00, thin);
            pvDrawFlatFrame(at192.dc(), CTL_RECT{0, 0, 2 * kWidth, 2 * kHeight}, 0x00FFFFFF, kBorder, rounded,
                            0x0000FF00, thin, 192);
            EXPECT_EQ(mismatchesAgainstDoubled(at96, at192, rounded), 0) << rounded << thin;
            // Its lines are two pixels wide: the second row in is still the line's colour.
            const int32_t line = thin ? at96.At(kWidth / 2, kHeight - 1) : at96.At(kWidth / 2, 0);
            const int row = thin ? 2 * kHeight - 2 : 1;
            EXPECT_EQ(at192.At(kWidth, row), line) << rounded << thin;
            EXPECT_NE(at192.At(kWidth, thin ? 2 * kHeight - 3 : 2), line) << rounded << thin;
        }
    }
}

TEST(DrawButtonDpi, FocusMarkAt192IsTheMarkAt96Doubled) {
    // Where the focus mark changes the button's pixels, at 96 and at 192: each changed pixel at
    // 96 is a changed two-by-two block at 192 (the mark inverts, so it shows on every body).
    const auto markOf = [](int32_t style, int32_t dpi, int scale) {
        DibCanvas plain(scale * kWidth, scale * kHeight, kOutside);
        DibCanvas focused(scale * kWidth, scale * kHeight, kOutside);
        CTL_RECT r{0, 0, scale * kWidth, scale * kHeight};
        DrawButton(plain.dc(), r, 0x00F0F0F0, true, kBorder, false, false, false, false, false, style, -1, true, dpi);
        DrawButton(focused.dc(), r, 0x00F0F0F0, true, kBorder, false, false, false, true, false, style, -1, true, dpi);
        std::vector<bool> mark;
        for (int y = 0; y < scale * kHeight; ++y)
            for (int x = 0; x < scale * kWidth; ++x) mark.push_back(plain.At(x, y) != focused.At(x, y));
        return mark;
    };
    for (int32_t style = iCtlBtnStyle_Flat; style <= iCtlBtnStyle_Xp2; ++style) {
        const std::vector<bool> at96 = markOf(style, 96, 1);
        const std::vector<bool> at192 = markOf(style, 192, 2);
        int marked = 0;
        int mismatches = 0;
        for (int y = 0; y < 2 * kHeight; ++y) {
            for (int x = 0; x < 2 * kWidth; ++x) {
                const bool now = at192[static_cast<size_t>(y * 2 * kWidth + x)];
                marked += now ? 1 : 0;
                mismatches += now != at96[static_cast<size_t>((y / 2) * kWidth + x / 2)] ? 1 : 0;
            }
        }
        EXPECT_GT(marked, 2 * kWidth + 2 * kHeight) << style;  // about half of a frame two pixels wide
        EXPECT_EQ(mismatches, 0) << style;
    }
}

}  // namespace
