// OverlapImageCoords: centring, size limits, transparency, the grayed wash and icons with mask or alpha.
#include <gtest/gtest.h>

#include <vector>

#include "DibCanvas.h"
#include "graphics/modCommonDraw.h"

namespace {

constexpr int32_t kDest = 0x00123456;

// A bitmap selected in no DC, from OLE colours row by row.
HBITMAP makeBitmap(int32_t width, int32_t height, const std::vector<int32_t>& ole, uint8_t alpha = 0) {
    std::vector<uint32_t> words;
    for (const int32_t c : ole) {
        const auto u = static_cast<uint32_t>(c);
        words.push_back((static_cast<uint32_t>(alpha) << 24) | ((u & 0xFFu) << 16) | (u & 0xFF00u) | ((u >> 16) & 0xFFu));
    }
    return ::CreateBitmap(width, height, 1, 32, words.data());
}

// An icon from a colour bitmap and a one-bit mask (rows padded to 16 bits, leftmost pixel high).
HICON makeIcon(HBITMAP colour, int32_t width, int32_t height, const uint8_t* maskRows) {
    const HBITMAP mask = ::CreateBitmap(width, height, 1, 1, maskRows);
    ICONINFO info{TRUE, 0, 0, mask, colour};
    const HICON icon = ::CreateIconIndirect(&info);
    ::DeleteObject(colour);
    ::DeleteObject(mask);
    return icon;
}

constexpr int32_t R = 0x000000FF, G = 0x0000FF00, B = 0x00FF0000, W = 0x00FFFFFF, K = 0x00000000;

TEST(OverlapImage, CentredCopyTransparencyAndGray) {
    // 4 x 3 picture; in a 10 x 9 rectangle at (1, 2) it lands at (1 + 3, 2 + 3).
    const HBITMAP bitmap = makeBitmap(4, 3, {R, G, B, W,  //
                                             K, R, R, K,  //
                                             W, W, G, B});
    const int32_t picture[3][4] = {{R, G, B, W}, {K, R, R, K}, {W, W, G, B}};
    // Washed 70 % towards 192, then grey: red 255 -> 210.9 -> 211, others 134.4 -> 134,
    // 0.3*211 + 0.59*134 + 0.11*134 = 157.1 -> 157.
    const auto grayOf = [](int32_t c) {
        switch (c) {
        case R: return 0x009D9D9D;                   // 157
        case G: return 0x00B3B3B3;                   // 0.3*134 + 0.59*211 + 0.11*134 = 179.43 -> 179
        case B: return 0x008E8E8E;                   // 0.3*134 + 0.59*134 + 0.11*211 = 142.47 -> 142
        case W: return 0x00D3D3D3;                   // 211
        default: return 0x00868686;                  // black: 134
        }
    };
    struct Case {
        bool grayed;
        bool transparent;
        int32_t transparentColour;  // -1: read at (0, 1), which is black
    };
    const Case cases[] = {{false, false, -1}, {false, true, -1}, {true, false, -1}, {true, true, -1}, {false, true, W}};
    for (const Case& c : cases) {
        DibCanvas canvas(14, 14, kDest);
        OverlapImageCoords(canvas.dc(), 1, 2, 11, 11, c.grayed, CtlPictureRef{bitmap, kPicTypeBitmap}, c.transparent,
                           -1, -1, 0, 1, c.transparentColour);
        const int32_t clear = c.transparentColour == -1 ? K : c.transparentColour;
        for (int32_t y = 0; y < 14; ++y) {
            for (int32_t x = 0; x < 14; ++x) {
                int32_t want = kDest;
                if (x >= 4 && x < 8 && y >= 5 && y < 8) {
                    const int32_t source = picture[y - 5][x - 4];
                    if (!(c.transparent && source == clear)) want = c.grayed ? grayOf(source) : source;
                }
                ASSERT_EQ(canvas.At(x, y), want) << x << "," << y << " grayed " << c.grayed << " transp " << c.transparent;
            }
        }
    }

    // Limits: at most 2 x 1 of the picture, centred as such; larger limits are cut to the picture.
    DibCanvas limited(14, 14, kDest);
    OverlapImageCoords(limited.dc(), 0, 0, 6, 5, false, CtlPictureRef{bitmap, kPicTypeBitmap}, false, 2, 1);
    EXPECT_EQ(limited.At(2, 2), R);
    EXPECT_EQ(limited.At(3, 2), G);
    EXPECT_EQ(limited.At(4, 2), kDest);
    EXPECT_EQ(limited.At(2, 3), kDest);
    DibCanvas large(14, 14, kDest);
    OverlapImageCoords(large.dc(), 0, 0, 4, 3, false, CtlPictureRef{bitmap, kPicTypeBitmap}, false, 50, 50);
    EXPECT_EQ(large.At(3, 2), B);
    EXPECT_EQ(large.At(4, 2), kDest);

    // Nothing at all: empty rectangle, no handle, no DC.
    DibCanvas untouched(14, 14, kDest);
    OverlapImageCoords(untouched.dc(), 5, 5, 5, 9, false, CtlPictureRef{bitmap, kPicTypeBitmap});
    OverlapImageCoords(untouched.dc(), 0, 0, 9, 9, false, CtlPictureRef{nullptr, kPicTypeBitmap});
    OverlapImageCoords(nullptr, 0, 0, 9, 9, false, CtlPictureRef{bitmap, kPicTypeBitmap});
    EXPECT_EQ(untouched.Snapshot(), std::vector<int32_t>(14 * 14, kDest));
    ::DeleteObject(bitmap);
}

TEST(OverlapImage, IconsByMaskAndByAlpha) {
    // Mask icon, 2 x 2: the mask's white pixels are not shown.
    {
        // Row 0 masks x=1, row 1 masks x=0.
        const uint8_t maskRows[4] = {0x40, 0x00, 0x80, 0x00};
        const HICON icon = makeIcon(makeBitmap(2, 2, {R, G, B, W}), 2, 2, maskRows);
        ASSERT_NE(icon, nullptr);
        DibCanvas canvas(4, 4, kDest);
        OverlapImageCoords(canvas.dc(), 1, 1, 3, 3, false, CtlPictureRef{icon, kPicTypeIcon});
        EXPECT_EQ(canvas.At(1, 1), R);
        EXPECT_EQ(canvas.At(2, 1), kDest);
        EXPECT_EQ(canvas.At(1, 2), kDest);
        EXPECT_EQ(canvas.At(2, 2), W);
        EXPECT_EQ(canvas.At(0, 0), kDest);
        ::DestroyIcon(icon);
    }
    // 32-bit icon: alpha 255 shown, 0 not, 128 blended source-over.
    {
        const uint32_t words[3] = {0xFFFF0000u, 0x00FF0000u, 0x80FF0000u};  // red with three alphas
        const uint8_t maskRow[2] = {0, 0};
        const HICON icon = makeIcon(::CreateBitmap(3, 1, 1, 32, words), 3, 1, maskRow);
        ASSERT_NE(icon, nullptr);
        DibCanvas canvas(3, 1, B);
        OverlapImageCoords(canvas.dc(), 0, 0, 3, 1, false, CtlPictureRef{icon, kPicTypeIcon});
        EXPECT_EQ(canvas.At(0, 0), R);
        EXPECT_EQ(canvas.At(1, 0), B);
        // red: (255*128 + 0*127 + 127) / 255 = 128; blue: (0*128 + 255*127 + 127) / 255 = 127
        EXPECT_EQ(canvas.At(2, 0), 0x007F0080);
        ::DestroyIcon(icon);
    }
}

}  // namespace
