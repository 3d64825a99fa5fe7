#include "frame/ScaleUnits.h"

#include <gtest/gtest.h>

namespace {

TEST(ScaleUnits, ConvertsBetweenModesAtAGivenResolution) {
    // By hand: 1 inch = 1440 twips = 72 points = 2540 HiMetric = 25.4 mm; 96 or 120 pixels.
    const struct {
        float value;
        int16_t from;
        int16_t to;
        bool vertical;
        int32_t dpi;
        float expected;
    } cases[] = {
        {1440.0F, 1, 3, false, 96, 96.0F},
        {15.0F, 1, 3, true, 96, 1.0F},
        {96.0F, 3, 1, false, 96, 1440.0F},
        {120.0F, 3, 1, false, 120, 1440.0F},
        {2540.0F, 8, 3, false, 96, 96.0F},
        {96.0F, 3, 8, true, 96, 2540.0F},
        {72.0F, 2, 5, false, 96, 1.0F},
        {25.4F, 6, 1, false, 96, 1440.0F},
        {2.54F, 7, 3, false, 96, 96.0F},
        {1.0F, 4, 1, false, 96, 120.0F},  // a character is 120 twips wide...
        {1.0F, 4, 1, true, 96, 240.0F},   // ...and 240 high
        {500.0F, 0, 1, false, 96, 500.0F},  // user mode counts as twips
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(ConvertScaleUnits(c.value, c.from, c.to, c.vertical, c.dpi), c.expected, 1e-3F)
            << c.from << " -> " << c.to;
    }
}

}  // namespace
