#include "graphics/clsLineGSMini.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "DibCanvas.h"

namespace {

constexpr int32_t kWhite = 0x00FFFFFF;

// How much of the pixel the ring took, from the red channel of a black ring on white.
double InkAt(const DibCanvas& canvas, int x, int y) { return (255 - (canvas.At(x, y) & 0xFF)) / 255.0; }

// A one-pixel line along a circle of radius r covers about 2 pi r pixels of area; pixels more
// than a pixel and a half off the line keep their colour; the ring is symmetric about its axes
// and diagonals; and its edges are partial, not all-or-nothing.
TEST(clsLineGSMini, CircleGPCoversTheAreaOfItsLineAndNothingElse) {
    for (const float r : {7.0F, 14.5F, 3.0F}) {
        SCOPED_TRACE(r);
        DibCanvas canvas(64, 64, kWhite);
        const float c = 30.0F;
        clsLineGSMini().CircleGP(canvas.dc(), c, c, r, r, 0);
        double ink = 0.0;
        int partial = 0;
        for (int y = 0; y < 64; ++y) {
            for (int x = 0; x < 64; ++x) {
                const double share = InkAt(canvas, x, y);
                ink += share;
                if (share > 0.15 && share < 0.85) ++partial;
                const double d = std::hypot(x - c, y - c);
                if (d > r + 1.5 || d < r - 1.5) {
                    EXPECT_EQ(canvas.At(x, y), kWhite) << x << "," << y;
                }
                EXPECT_EQ(canvas.At(x, y), canvas.At(x <= 60 ? 60 - x : x, y)) << "mirror " << x << "," << y;
                EXPECT_EQ(canvas.At(x, y), canvas.At(y, x)) << "diagonal " << x << "," << y;
            }
        }
        EXPECT_NEAR(ink, 2.0 * std::numbers::pi * r, 0.03 * 2.0 * std::numbers::pi * r + 0.5);
        EXPECT_GT(partial, 4);
        // On the axes a whole radius runs through the pixel centre: nearly all of it is covered;
        // a half one splits between two pixels.
        const int edge = static_cast<int>(c + r);
        if (r == std::floor(r)) {
            EXPECT_GT(InkAt(canvas, edge, static_cast<int>(c)), 0.9);
        } else {
            EXPECT_NEAR(InkAt(canvas, edge, static_cast<int>(c)), 0.5, 0.1);
            EXPECT_EQ(canvas.At(edge, static_cast<int>(c)), canvas.At(edge + 1, static_cast<int>(c)));
        }
    }
}

TEST(clsLineGSMini, CircleGPBlendsTheColourAndFollowsBothRadii) {
    DibCanvas canvas(40, 40, kWhite);
    clsLineGSMini().CircleGP(canvas.dc(), 20.0F, 20.0F, 10.0F, 5.0F, 0x000000FF);  // red
    EXPECT_EQ(canvas.At(30, 20), 0x000000FF);
    EXPECT_EQ(canvas.At(20, 25), 0x000000FF);
    EXPECT_EQ(canvas.At(20, 30), kWhite);
    EXPECT_EQ(canvas.At(25, 20), kWhite);
    // A partly covered pixel keeps red at 255 and takes the same share off green and blue.
    for (int x = 20; x < 32; ++x) {
        const int32_t p = canvas.At(x, 16);
        EXPECT_EQ(p & 0xFF, 0xFF);
        EXPECT_EQ((p >> 8) & 0xFF, (p >> 16) & 0xFF);
    }

    // Nothing to draw on, or no circle: nothing happens.
    const std::vector<int32_t> before = canvas.Snapshot();
    clsLineGSMini().CircleGP(canvas.dc(), 20.0F, 20.0F, -3.0F, 4.0F, 0);
    clsLineGSMini().CircleGP(canvas.dc(), 20.0F, 20.0F, NAN, 4.0F, 0);
    clsLineGSMini().CircleGP(nullptr, 20.0F, 20.0F, 4.0F, 4.0F, 0);
    EXPECT_EQ(canvas.Snapshot(), before);
}

}  // namespace
