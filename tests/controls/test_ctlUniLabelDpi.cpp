// The label at another DPI: its own sizes scale, the user's Margin and the font's points do not.
#include <gtest/gtest.h>

#include <memory>

#include "controls/ctlUniLabel.h"
#include "frame/Win32Surface.h"
#include "graphics/DrawButton.h"
#include "support/TestHostWindow.h"
#include "support/WindowMessageCounter.h"

namespace {

using testsupport::PumpMessages;

constexpr int32_t kBack = 0x00C08040;
constexpr int32_t kBorder = 0x000000FF;
constexpr UINT kDpiChangedAfterParent = 0x02E3;

// A bordered label; the surface answers `dpi` from its first drawing on.
struct DpiLabel {
    DpiLabel(HWND host, int32_t dpi, int x, int y, int width = 160, int height = 40)
        : surface(host, x, y, width, height) {
        surface.OverrideDpi(dpi);
        surface.Font(std::make_shared<StdFont>(u"Arial", 12.0F));
        label = std::make_unique<ctlUniLabel>(surface);
        label->Caption(u"");
        label->BackColor(kBack);
        label->BorderColor(kBorder);
        label->BorderStyle(UniLabel_BS_Border);
        label->Style(iCtlBtnStyle_Flat);
    }
    Win32Surface surface;
    std::unique_ptr<ctlUniLabel> label;
};

COLORREF pixelAt(HWND hwnd, int x, int y) {
    const HDC dc = ::GetDC(hwnd);
    const COLORREF c = ::GetPixel(dc, x, y);
    ::ReleaseDC(hwnd, dc);
    return c;
}

// How many pixels of the border colour run inward from the top edge, in the middle column.
int borderRowsFromTop(HWND hwnd) {
    RECT r{};
    ::GetClientRect(hwnd, &r);
    int rows = 0;
    while (rows < r.bottom && pixelAt(hwnd, r.right / 2, rows) == static_cast<COLORREF>(kBorder)) ++rows;
    return rows;
}

int borderColumnsFromLeft(HWND hwnd) {
    RECT r{};
    ::GetClientRect(hwnd, &r);
    int columns = 0;
    while (columns < r.right && pixelAt(hwnd, columns, r.bottom / 2) == static_cast<COLORREF>(kBorder)) ++columns;
    return columns;
}

SIZE textExtent(const wchar_t* text, int points, int dpi) {
    const HFONT font = ::CreateFontW(-::MulDiv(points, dpi, 72), 0, 0, 0, 400, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0,
                                     L"Arial");
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = ::SelectObject(dc, font);
    SIZE size{};
    ::GetTextExtentPoint32W(dc, text, static_cast<int>(wcslen(text)), &size);
    ::SelectObject(dc, previous);
    ::DeleteDC(dc);
    ::DeleteObject(font);
    return size;
}

SIZE clientSize(HWND hwnd) {
    RECT r{};
    ::GetClientRect(hwnd, &r);
    return SIZE{r.right, r.bottom};
}

int cornerPixelsOutsideRegion(HWND hwnd) {
    HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    int outside = -1;
    if (::GetWindowRgn(hwnd, region) != ERROR) {
        outside = 0;
        for (int y = 0; y < 6; ++y)
            for (int x = 0; x < 6; ++x) outside += ::PtInRegion(region, x, y) ? 0 : 1;
    }
    ::DeleteObject(region);
    return outside;
}

TEST(ctlUniLabelDpi, BorderWidthScalesWithTheDpi) {
    testsupport::TestHostWindow host;
    // 144 rounds a one-pixel line up to two.
    const struct {
        int32_t dpi;
        int lines;
    } cases[] = {{96, 1}, {144, 2}, {192, 2}, {288, 3}};
    int y = 10;
    for (const auto& c : cases) {
        DpiLabel l(host.get(), c.dpi, 10, y);
        PumpMessages();
        EXPECT_EQ(borderRowsFromTop(l.surface.hWnd()), c.lines) << c.dpi;
        EXPECT_EQ(borderColumnsFromLeft(l.surface.hWnd()), c.lines) << c.dpi;
        // The body inside the line keeps the back colour.
        EXPECT_EQ(pixelAt(l.surface.hWnd(), 80, c.lines), static_cast<COLORREF>(kBack)) << c.dpi;
        y += 50;
    }
}

TEST(ctlUniLabelDpi, AutoSizeUsesTheFontAtTheDpiAndScalesOnlyTheBorderInset) {
    testsupport::TestHostWindow host;
    const wchar_t* caption = L"Sized Wg";
    for (const int32_t dpi : {96, 192}) {
        DpiLabel l(host.get(), dpi, 10, 10);
        l.label->Margin(3);  // the user's pixels: not rescaled
        l.label->Caption(reinterpret_cast<const char16_t*>(caption));
        l.label->AutoSize(true);
        PumpMessages();
        const SIZE text = textExtent(caption, 12, dpi);
        const int e = 2 * 3 + 2 * (dpi / 48);  // border inset 2 at 96, 4 at 192
        const SIZE got = clientSize(l.surface.hWnd());
        EXPECT_EQ(got.cx, text.cx + e) << dpi;
        EXPECT_EQ(got.cy, text.cy + e) << dpi;
    }
    // The font at 192 has twice the em height; hinting rounds each cell on its own, within a pixel a side.
    EXPECT_NEAR(textExtent(caption, 12, 192).cy, 2 * textExtent(caption, 12, 96).cy, 2);
}

TEST(ctlUniLabelDpi, RoundRegionCornerScales) {
    testsupport::TestHostWindow host;
    DpiLabel at96(host.get(), 96, 10, 10);
    DpiLabel at192(host.get(), 192, 10, 60);
    at96.label->UseRoundRegions(true);
    at192.label->UseRoundRegions(true);
    at96.label->Refresh(true);
    at192.label->Refresh(true);
    PumpMessages();
    const int cut96 = cornerPixelsOutsideRegion(at96.surface.hWnd());
    const int cut192 = cornerPixelsOutsideRegion(at192.surface.hWnd());
    ASSERT_GE(cut96, 0);
    ASSERT_GE(cut192, 0);
    EXPECT_GT(cut192, cut96);
}

TEST(ctlUniLabelDpi, ALiveLabelRepaintsAtTheNewDpiWhenTold) {
    testsupport::TestHostWindow host;
    const wchar_t* caption = L"Live";
    DpiLabel l(host.get(), 96, 10, 10);
    l.label->Caption(reinterpret_cast<const char16_t*>(caption));
    l.label->AutoSize(true);
    PumpMessages();
    const HWND hwnd = l.surface.hWnd();
    ASSERT_EQ(borderRowsFromTop(hwnd), 1);
    const SIZE text96 = textExtent(caption, 12, 96);
    EXPECT_EQ(clientSize(hwnd).cx, text96.cx + 4);

    // What a parent moved to a 192-DPI monitor passes to its children (Wine never sends it).
    l.surface.OverrideDpi(192);
    ::SendMessageW(hwnd, kDpiChangedAfterParent, 0, 0);
    PumpMessages();
    const SIZE text192 = textExtent(caption, 12, 192);
    EXPECT_EQ(clientSize(hwnd).cx, text192.cx + 8);
    EXPECT_EQ(clientSize(hwnd).cy, text192.cy + 8);
    EXPECT_EQ(borderRowsFromTop(hwnd), 2);
    EXPECT_EQ(borderColumnsFromLeft(hwnd), 2);

    l.surface.OverrideDpi(96);
    ::SendMessageW(hwnd, kDpiChangedAfterParent, 0, 0);
    PumpMessages();
    EXPECT_EQ(clientSize(hwnd).cx, text96.cx + 4);
    EXPECT_EQ(borderRowsFromTop(hwnd), 1);
}

}  // namespace
