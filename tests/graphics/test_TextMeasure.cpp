// Text measuring and drawing routines, compared with extents measured through the platform directly.
#include <gtest/gtest.h>

#include "DibCanvas.h"
#include "graphics/clsFontHDC.h"
#include "graphics/modCommonDraw.h"

namespace {

int32_t extentOf(HDC dc, const CtlString& text) {
    SIZE size{};
    ::GetTextExtentPoint32W(dc, AsWide(text), static_cast<int>(text.size()), &size);
    return size.cx;
}

TEST(TextMeasure, SingleLinesAndPrefixes) {
    DibCanvas canvas(300, 60);
    clsFontHDC font;
    font.SetFontToDC(canvas.dc(), u"Tahoma", 10);
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(canvas.dc(), &metrics);
    struct Case {
        CtlString text;
        bool noPrefix;
        CtlString measuredAs;  // the characters that end up on screen
    };
    const Case cases[] = {
        {u"Tarnwick", false, u"Tarnwick"},
        {u"&File", false, u"File"},    // the prefix character is hidden
        {u"&File", true, u"&File"},    // shown as it is
        {u"a && b", false, u"a & b"},
        {u"\u0416\u03A9\u05D0", true, u"\u0416\u03A9\u05D0"},
    };
    for (const Case& c : cases) {
        int32_t width = -1, height = -1;
        CalculateStringDim(canvas.dc(), c.text, c.noPrefix, width, height);
        EXPECT_EQ(width, extentOf(canvas.dc(), c.measuredAs)) << std::string(c.text.begin(), c.text.end());
        EXPECT_EQ(height, metrics.tmHeight);
    }
    int32_t width = -1, height = -1;
    CalculateStringDimEx(nullptr, u"x", 0, width, height);
    EXPECT_EQ(width, 0);
    EXPECT_EQ(height, 0);
}

TEST(TextMeasure, MultiLineWidthAndBlock) {
    DibCanvas canvas(300, 200);
    clsFontHDC font;
    font.SetFontToDC(canvas.dc(), u"Tahoma", 10);
    const HDC dc = canvas.dc();
    struct Case {
        CtlString text;
        std::vector<CtlString> lines;
    };
    const Case cases[] = {
        {u"short\r\nmuch longer line\rmid", {u"short", u"much longer line", u"mid"}},
        {u"one line", {u"one line"}},
        {u"a\r\n\r\nwidest of all\r", {u"a", u"", u"widest of all", u""}},
        {u"", {u""}},
    };
    for (const Case& c : cases) {
        int32_t widest = 0;
        for (const CtlString& line : c.lines) widest = std::max(widest, extentOf(dc, line));
        EXPECT_EQ(pvGetMultiLineWidth(dc, c.text, DT_NOPREFIX), widest) << std::string(c.text.begin(), c.text.end());
    }

    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc, &metrics);
    // Free width: as wide as the widest line, one line high per line.
    int32_t width = 0, height = 0;
    pvCalcTextBlock(dc, u"short\r\nmuch longer line", DT_NOPREFIX, false, false, width, height);
    EXPECT_EQ(width, extentOf(dc, u"much longer line"));
    EXPECT_EQ(height, 2 * metrics.tmHeight);
    // A fixed width narrower than the words wraps them.
    width = extentOf(dc, u"much") + 2;
    height = 0;
    pvCalcTextBlock(dc, u"much longer line", DT_NOPREFIX, true, false, width, height);
    EXPECT_EQ(height, 3 * metrics.tmHeight);
    EXPECT_LE(width, extentOf(dc, u"longer") + 2);
}

TEST(TextMeasure, DrawingSetsColourAndLeavesNoDcAlone) {
    DibCanvas canvas(120, 30, 0x00FFFFFF);
    clsFontHDC font;
    font.SetFontToDC(canvas.dc(), u"Tahoma", 10);
    ::SetBkMode(canvas.dc(), TRANSPARENT);
    DrawTextColorCoords(canvas.dc(), u"Wm", 2, 2, 100, 28, DT_SINGLELINE | DT_NOPREFIX, 0x000000FF);
    EXPECT_EQ(::GetTextColor(canvas.dc()), 0x000000FFu) << "the colour stays set";
    int red = 0;
    for (int32_t y = 0; y < 30; ++y)
        for (int32_t x = 0; x < 120; ++x)
            if (canvas.At(x, y) == 0x000000FF) ++red;
    EXPECT_GT(red, 0) << "text pixels in the given colour";
    // DT_CALCRECT through DrawText reports the measured rectangle back.
    CTL_RECT measured{0, 0, 0, 0};
    DrawText(canvas.dc(), u"Wm", measured, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    EXPECT_EQ(measured.right, extentOf(canvas.dc(), u"Wm"));
    CTL_RECT untouched{1, 2, 3, 4};
    DrawText(nullptr, u"x", untouched, DT_CALCRECT);
    EXPECT_EQ(untouched, (CTL_RECT{1, 2, 3, 4}));
    TextOut(nullptr, u"x", 0, 0);
    TextOutColor(canvas.dc(), u"x", 0, 0, 0x0000FF00);
    EXPECT_EQ(::GetTextColor(canvas.dc()), 0x0000FF00u);
}

}  // namespace
