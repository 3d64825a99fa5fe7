// clsLineGSMini: anti-aliased outlines drawn into a device context. For now the one routine the
// radio button needs, CircleGP.
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

class clsLineGSMini {
public:
    // An ellipse outline one pixel wide, centred on the pixel (cx, cy), whose line runs through
    // the pixel centres at radii rx and ry; each pixel is blended with lColor (an OLE colour) by
    // the share of its area the line covers. Fractional centres and radii are allowed (a ring
    // of even diameter is centred between pixels). Never throws; a DC it cannot read is left as it is.
    void CircleGP(HDC hdc, float cx, float cy, float rx, float ry, int32_t lColor) const noexcept;

    // The share (0..1) of pixel (px, py) that such an outline covers, measured on a grid of
    // kSamples x kSamples points inside the pixel.
    static float Coverage(int32_t px, int32_t py, float cx, float cy, float rx, float ry) noexcept;
    static constexpr int32_t kSamples = 8;
    // Larger radii, negative or not-a-number ones draw nothing.
    static constexpr float kMaxRadius = 4096.0F;
};
