#include "controls/ctlUniLabelNoFlick.h"

#include <gtest/gtest.h>

#include "frame/Win32Surface.h"
#include "support/RegionCheck.h"
#include "support/TestHostWindow.h"
#include "support/WindowMessageCounter.h"

namespace {

using testsupport::PumpMessages;

TEST(ctlUniLabelNoFlick, DrawsIntoItsBitmapAtOnce) {
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 0, 0, 120, 24, true);
    ctlUniLabelNoFlick label(surface);
    EXPECT_EQ(label.hDC(), surface.hDC());
    PumpMessages();
    testsupport::WindowMessageCounter counter(surface.hWnd());

    // Each let at run time finishes the bitmap before anything reaches the screen.
    const struct {
        int32_t back;
        COLORREF expected;
    } cases[] = {{0x00336699, RGB(0x99, 0x66, 0x33)}, {0x00FFFFFF, RGB(0xFF, 0xFF, 0xFF)}, {0x00000080, RGB(0x80, 0, 0)}};
    for (const auto& c : cases) {
        label.BackColor(c.back);
        EXPECT_EQ(::GetPixel(label.hDC(), 60, 12), c.expected);
    }
    label.Refresh(false);  // bNow makes no difference: drawn at once either way
    EXPECT_EQ(::GetPixel(label.hDC(), 60, 12), RGB(0x80, 0, 0));
    EXPECT_GE(counter.Count(WM_PAINT), 1);  // the surface showed the finished bitmap
}

TEST(ctlUniLabelNoFlick, PublicBackStyleShapesTheWindowWithHardGlyphEdges) {
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 0, 0, 140, 50, true);
    ctlUniLabelNoFlick label(surface);
    surface.Font(std::make_shared<StdFont>(u"Arial", 24.0F, true));
    label.Caption(u"W\u0416");
    label.BackStyle(UniLabel_BS_Transparent);
    EXPECT_EQ(label.BackStyle(), UniLabel_BS_Transparent);
    PumpMessages();

    // Reference glyphs drawn by the test with a non-antialiased font: the mask must be exactly
    // these pixels, with no half-covered edge pixels kept or lost.
    const auto shaped = testsupport::CompareWindowRegion(surface.hWnd(), 140, 50, [](HDC dc, RECT all) {
        const int dpi = ::GetDeviceCaps(dc, LOGPIXELSY);
        testsupport::DrawReferenceText(dc, all, L"W\u0416",
                                       ::CreateFontW(-::MulDiv(24, dpi, 72), 0, 0, 0, 700, 0, 0, 0, DEFAULT_CHARSET,
                                                     0, 0, NONANTIALIASED_QUALITY, 0, L"Arial"));
    });
    EXPECT_EQ(shaped.regionType, COMPLEXREGION);
    EXPECT_GT(shaped.shapePixels, 100);
    EXPECT_EQ(shaped.mismatches, 0);

    label.BackStyle(UniLabel_BS_Opaque);
    PumpMessages();
    EXPECT_EQ(testsupport::WindowRegionType(surface.hWnd()), ERROR);
}

}  // namespace
