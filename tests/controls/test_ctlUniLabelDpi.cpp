// The label at another DPI: its own sizes scale, the user's Margin and the font's points do not.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>

#include "controls/ctlUniLabel.h"
#include "graphics/DibCanvas.h"
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

// ---- the label's swatches against a reference drawn at the same DPI ----

struct Swatch {
    int32_t style;
    bool border;
    bool rounded;
    eUniLabel_TextAlign align;
    eUniLabel_TextVAlign valign;
    int32_t back;
    int32_t fore;
};

int atDpi(int pixels, int32_t dpi) { return static_cast<int>(std::lround(pixels * dpi / 96.0)); }

constexpr int32_t kOut = 0x00336699;  // BackColorOut, so that rounded corners have a known colour
constexpr int kSwatchWidth = 120;     // the swatch at 96 DPI; the test sizes it for the DPI as a host would
constexpr int kSwatchHeight = 36;
const wchar_t* const kSwatchCaption = L"Swatch \u0416\u4E2D";

// What the rules give: DrawButton over the whole window at the DPI, then the caption with the
// font made for the DPI, inset by the border's two pixels scaled, wrapped and aligned.
void drawReference(HDC dc, const Swatch& s, int32_t dpi, int width, int height) {
    CTL_RECT whole{0, 0, width, height};
    DrawButton(dc, whole, s.back, s.border, kBorder, false, false, false, false, s.rounded, s.style, kOut, true, dpi);
    const HFONT font = ::CreateFontW(-static_cast<int>(std::lround(12.0 * dpi / 72.0)), 0, 0, 0, FW_NORMAL, FALSE,
                                     FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                     DEFAULT_QUALITY, DEFAULT_PITCH, L"Arial");
    const HGDIOBJ previous = ::SelectObject(dc, font);
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, static_cast<COLORREF>(s.fore));
    const int inset = s.border ? atDpi(2, dpi) : 0;
    RECT text{inset, inset, width - inset, height - inset};
    const int length = static_cast<int>(wcslen(kSwatchCaption));
    if (s.valign != UniLabel_VAlign_Top) {
        RECT measure{0, 0, width, height};
        ::DrawTextW(dc, kSwatchCaption, length, &measure, DT_CALCRECT | DT_EXPANDTABS | DT_WORDBREAK);
        const int h = measure.bottom - measure.top;
        text.top = s.valign == UniLabel_VAlign_Middle ? static_cast<int>(std::nearbyint((text.bottom - h) / 2.0))
                                                      : text.bottom - h;
        if (text.top < 0) text.top = 0;
    }
    UINT flags = DT_EXPANDTABS | DT_WORDBREAK;
    if (s.align == UniLabel_Align_Center) flags |= DT_CENTER;
    if (s.align == UniLabel_Align_Right) flags |= DT_RIGHT;
    ::DrawTextW(dc, kSwatchCaption, length, &text, flags);
    ::SelectObject(dc, previous);
    ::DeleteObject(font);
}

TEST(ctlUniLabelDpi, SwatchesArePixelExactAgainstAReferenceDrawnAtTheirDpi) {
    testsupport::TestHostWindow host(700, 200);
    const Swatch swatches[] = {
        {iCtlBtnStyle_Flat, true, false, UniLabel_Align_Left, UniLabel_VAlign_Top, 0x00FFFFFF, 0x00202020},
        {iCtlBtnStyle_Xp, true, true, UniLabel_Align_Center, UniLabel_VAlign_Middle, 0x00D08040, 0x00FFFFFF},
        {iCtlBtnStyle_XpEx, true, false, UniLabel_Align_Right, UniLabel_VAlign_Bottom, 0x00F0F0F0, 0x00000080},
        {iCtlBtnStyle_Vista, true, true, UniLabel_Align_Left, UniLabel_VAlign_Middle, 0x00404040, 0x00FFFFFF},
        {iCtlBtnStyle_Glass, true, false, UniLabel_Align_Center, UniLabel_VAlign_Top, 0x00D08040, 0x00FFFFFF},
        {iCtlBtnStyle_Vista2, true, true, UniLabel_Align_Right, UniLabel_VAlign_Middle, 0x00C0E0F0, 0x00202020},
        {iCtlBtnStyle_Vista3, true, false, UniLabel_Align_Left, UniLabel_VAlign_Bottom, 0x00D08040, 0x00FFFFFF},
        {iCtlBtnStyle_Vista4, true, true, UniLabel_Align_Center, UniLabel_VAlign_Middle, 0x00F0F0F0, 0x00202020},
        {iCtlBtnStyle_Xp2, true, false, UniLabel_Align_Right, UniLabel_VAlign_Top, 0x00404040, 0x0000FFFF},
        {iCtlBtnStyle_Flat, false, false, UniLabel_Align_Center, UniLabel_VAlign_Middle, 0x00E0FFE0, 0x00004000},
    };
    for (const int32_t dpi : {96, 144, 192}) {
        const int width = atDpi(kSwatchWidth, dpi);
        const int height = atDpi(kSwatchHeight, dpi);
        for (const Swatch& s : swatches) {
            SCOPED_TRACE(testing::Message() << "dpi " << dpi << " style " << s.style << (s.border ? " border" : "")
                                            << (s.rounded ? " rounded" : ""));
            DpiLabel l(host.get(), dpi, 10, 10, width, height);
            l.label->Caption(reinterpret_cast<const char16_t*>(kSwatchCaption));
            l.label->Style(s.style);
            l.label->BorderStyle(s.border ? UniLabel_BS_Border : UniLabel_BS_None);
            l.label->RoundedBorders(s.rounded);
            l.label->BackColorOut(kOut);
            l.label->BackColor(s.back);
            l.label->ForeColor(s.fore);
            l.label->Alignment(s.align);
            l.label->VAlignment(s.valign);
            ::RedrawWindow(l.surface.hWnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
            PumpMessages();
            DibCanvas shown(width, height, 0);
            {
                const HDC window = ::GetDC(l.surface.hWnd());
                ::BitBlt(shown.dc(), 0, 0, width, height, window, 0, 0, SRCCOPY);
                ::ReleaseDC(l.surface.hWnd(), window);
            }
            DibCanvas reference(width, height, kOut);
            drawReference(reference.dc(), s, dpi, width, height);
            // A rounded border's corner squares lie outside the window's region: the host shows there.
            const int corner = s.rounded ? atDpi(3, dpi) : 0;
            int differing = 0;
            std::string first;
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    const bool cornerX = x < corner || x >= width - corner;
                    const bool cornerY = y < corner || y >= height - corner;
                    if (cornerX && cornerY) continue;
                    if (shown.At(x, y) != reference.At(x, y)) {
                        if (differing++ == 0) first = std::to_string(x) + "," + std::to_string(y);
                    }
                }
            }
            EXPECT_EQ(differing, 0) << "first at " << first;
        }
    }
}

}  // namespace
