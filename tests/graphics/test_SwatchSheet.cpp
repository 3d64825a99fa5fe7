// The gallery's --swatches sheet at 96, 144 and 192 DPI: its size, white between cells, and cells equal
// to DrawButton drawn alone at that DPI.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DibCanvas.h"
#include "GalleryRun.h"
#include "graphics/DrawButton.h"

namespace {

using galleryrun::Image;
using galleryrun::readPng;
using galleryrun::runGallery;

int32_t scaled(int32_t pixels, int32_t dpi) { return (pixels * dpi + 48) / 96; }  // half away from zero

TEST(SwatchSheet, SizeWhiteGapsAndCellsAsDrawnAloneAtEveryDpi) {
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    for (const int32_t dpi : {96, 144, 192}) {
        SCOPED_TRACE(dpi);
        const auto px = [dpi](int32_t pixels) { return scaled(pixels, dpi); };
        const std::wstring path = galleryrun::tempFile(L"tarnwick-swatches-test.png");
        ASSERT_TRUE(runGallery(L"--dpi " + std::to_wstring(dpi) + L" --swatches \"" + path + L"\""));
        Image sheet;
        ASSERT_TRUE(readPng(path, sheet));
        ::DeleteFileW(path.c_str());
        ASSERT_EQ(sheet.width, static_cast<UINT>(px(424)));
        ASSERT_EQ(sheet.height, static_cast<UINT>(px(1368)));

        const int32_t backs[4] = {0x00F0F0F0, 0x00FFFFFF, 0x00404040, 0x00D08040};
        // Cell (k, s, c) at 96 DPI: left 8 + 104c, top 8 + 340k + 36s, 96 x 28; every length scaled.
        const auto cellLeft = [&](int c) { return px(8 + 104 * c); };
        const auto cellTop = [&](int k, int s) { return px(8 + 340 * k + 36 * s); };
        std::vector<bool> inCell(static_cast<size_t>(sheet.width) * sheet.height, false);
        for (int k = 0; k < 4; ++k)
            for (int s = 0; s <= 8; ++s)
                for (int c = 0; c < 4; ++c)
                    for (int32_t y = cellTop(k, s); y < cellTop(k, s) + px(28); ++y)
                        for (int32_t x = cellLeft(c); x < cellLeft(c) + px(96); ++x)
                            inCell[static_cast<size_t>(y) * sheet.width + static_cast<size_t>(x)] = true;
        int outsideNotWhite = 0;
        for (UINT y = 0; y < sheet.height; ++y)
            for (UINT x = 0; x < sheet.width; ++x)
                if (!inCell[static_cast<size_t>(y) * sheet.width + x] && sheet.At(x, y) != 0x00FFFFFF) ++outsideNotWhite;
        EXPECT_EQ(outsideNotWhite, 0);

        struct Cell {
            int k, s, c;
        };
        const Cell cells[] = {{0, 0, 0}, {0, 3, 1}, {1, 4, 2}, {2, 4, 3}, {2, 7, 0}, {3, 8, 3}, {3, 5, 2}, {1, 6, 1}};
        for (const Cell& cell : cells) {
            // Drawn alone on white at the same offset inside a cell-sized canvas with a margin.
            const int32_t margin = px(8);
            DibCanvas alone(px(96) + 2 * margin, px(28) + 2 * margin, 0x00FFFFFF);
            CTL_RECT rc{margin, margin, margin + px(96), margin + px(28)};
            DrawButton(alone.dc(), rc, backs[cell.k], true, -1, cell.c == 1 || cell.c == 3, false, false, false,
                       cell.c == 2 || cell.c == 3, cell.s, -1, true, dpi);
            const auto left = static_cast<UINT>(cellLeft(cell.c));
            const auto top = static_cast<UINT>(cellTop(cell.k, cell.s));
            int differing = 0;
            for (int32_t y = 0; y < px(28); ++y)
                for (int32_t x = 0; x < px(96); ++x)
                    if (sheet.At(left + static_cast<UINT>(x), top + static_cast<UINT>(y)) !=
                        alone.At(margin + x, margin + y)) {
                        ++differing;
                    }
            EXPECT_EQ(differing, 0) << "cell k=" << cell.k << " s=" << cell.s << " c=" << cell.c;
        }
    }
    ::CoUninitialize();
}

}  // namespace
