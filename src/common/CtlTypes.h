// Shared value types of the library: rectangles, points and the fixed-width integer names.
#pragma once

#include <cstdint>
#include <string>

// The library string: UTF-16 code units; lengths and positions count code units.
using CtlString = std::u16string;

// Right and bottom are exclusive, as in the platform's rectangle.
struct CTL_RECT {
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;

    friend bool operator==(const CTL_RECT&, const CTL_RECT&) = default;
};

struct CTL_POINTAPI {
    int32_t x = 0;
    int32_t y = 0;

    friend bool operator==(const CTL_POINTAPI&, const CTL_POINTAPI&) = default;
};
