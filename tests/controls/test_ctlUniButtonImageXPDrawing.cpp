// The image button's pixels: where its picture goes, how it shrinks, its transparency and grey,
// and its own sizes at 192 DPI. Expected places are worked out here from the layout rules, with
// the caption measured by the test's own font.
#include <gtest/gtest.h>

#include <cmath>

#include "ImageButtonTestSupport.h"

namespace {

using imagebuttontest::BoundsOfColor;
using imagebuttontest::ButtonFixture;
using imagebuttontest::MeasureCaption;
using imagebuttontest::PixelAt;
using imagebuttontest::SolidPicture;
using testsupport::PumpMessages;

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kWhite = RGB(255, 255, 255);

int half(int value) { return static_cast<int>(std::nearbyint(value / 2.0)); }

// A flat white button with a black border, no focus rectangle (B = 2), no transparency.
void plain(ctlUniButtonImageXP& b) {
    b.Style(0);
    b.BackColor(0x00FFFFFF);
    b.BorderColor(0);
    b.ForeColor(0x00FF0000);  // blue text
    b.ShowFocus(false);
    b.RoundedBorders(false);
    b.TransparencyType(eUniImage_TranspType_NoTransp);
}

RECT pictureAt(int left, int top, int size = 16) { return RECT{left, top, left + size, top + size}; }

void expectRect(const RECT& actual, const RECT& expected, const char* what) {
    EXPECT_TRUE(::EqualRect(&actual, &expected))
        << what << ": got " << actual.left << "," << actual.top << "-" << actual.right << "," << actual.bottom
        << " expected " << expected.left << "," << expected.top << "-" << expected.right << "," << expected.bottom;
}

TEST(ctlUniButtonImageXPDrawing, PictureAndCaptionGoWhereTheTableSays) {
    const int W = 120, H = 60, B = 2, g = 3, p = 16;
    ButtonFixture f(W, H);
    plain(*f.button);
    f.button->Picture(SolidPicture(p, p, kRed));
    f.button->Caption(u"Go");
    const SIZE wide = MeasureCaption(L"Go", W - 2 * B);
    const int limit = std::max(half(W), W - B - p - g);
    const int tw = std::min<int>(MeasureCaption(L"Go", limit).cx, limit);
    const int th = wide.cy;

    struct Case {
        int32_t pos;
        RECT picture;
        const char* name;
    };
    const int topOfTop = std::max(B, half(H - (p + g + th)));
    const int leftOfLeft = std::max(B, half(W - (p + g + tw)));
    const int textLeftOfRight = std::max(B, half(W - (p + g + tw)));
    const int middle = (H - p) / 2;
    const int centre = (W - p) / 2;
    const std::vector<Case> cases = {
        {eubiip_Top, pictureAt(centre, topOfTop), "Top"},
        {eubiip_Left, pictureAt(leftOfLeft, middle), "Left"},
        {eubiip_Right, pictureAt(std::min(W - B - p, textLeftOfRight + tw + g), middle), "Right"},
        {eubiip_Centered, pictureAt(centre, middle), "Centered"},
        {eubiip_Top_TextNear, pictureAt(centre, B), "Top_TextNear"},
        {eubiip_Bottom_TextNear, pictureAt(centre, H - B - p), "Bottom_TextNear"},
        {eubiip_Left_TextNear, pictureAt(B, middle), "Left_TextNear"},
        {eubiip_Right_TextNear, pictureAt(std::max(B, W - B - p), middle), "Right_TextNear"},
    };
    for (const Case& c : cases) {
        f.button->ImagePos(c.pos);
        PumpMessages();
        expectRect(BoundsOfColor(f.hwnd(), kRed), c.picture, c.name);
    }

    // The caption's pixels stay inside its rectangle: below the picture for Top ...
    f.button->ImagePos(eubiip_Top);
    PumpMessages();
    const int textTop = std::min(H - B - th, topOfTop + p + g);
    const RECT textRect{B, textTop, W - B, textTop + th};
    RECT ink = BoundsOfColor(f.hwnd(), kBlue);
    RECT inside{};
    EXPECT_FALSE(::IsRectEmpty(&ink));
    EXPECT_TRUE(::IntersectRect(&inside, &ink, &textRect) && ::EqualRect(&inside, &ink)) << ink.top << " " << ink.bottom;
    // ... and to the right of it for Left, starting after the gap.
    f.button->ImagePos(eubiip_Left);
    PumpMessages();
    ink = BoundsOfColor(f.hwnd(), kBlue);
    EXPECT_GE(ink.left, leftOfLeft + p + g);
    EXPECT_LE(ink.right, leftOfLeft + p + g + tw);

    // 9 is no position: nothing is laid out, so neither picture nor caption shows.
    f.button->ImagePos(9);
    PumpMessages();
    expectRect(BoundsOfColor(f.hwnd(), kRed), RECT{0, 0, 0, 0}, "9");
    expectRect(BoundsOfColor(f.hwnd(), kBlue), RECT{0, 0, 0, 0}, "9, caption");
}

// A handle is a number without sign: on x86, once GDI slots have been reused often enough, a
// bitmap's handle has its top bit set, and that picture must still be drawn.
TEST(ctlUniButtonImageXPDrawing, APictureWhoseHandleHasTheTopBitSetIsDrawn) {
    const int W = 40, H = 30, p = 16;
    const HDC screen = ::GetDC(nullptr);
    HBITMAP bitmap = nullptr;
    for (int i = 0; i < 100000; ++i) {
        bitmap = ::CreateCompatibleBitmap(screen, p, p);
        if ((reinterpret_cast<uintptr_t>(bitmap) & 0x80000000u) != 0) break;
        ::DeleteObject(bitmap);
        bitmap = nullptr;
    }
    ::ReleaseDC(nullptr, screen);
    if (bitmap == nullptr) GTEST_SKIP() << "no bitmap handle with the top bit set came up";
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ old = ::SelectObject(dc, bitmap);
    const HBRUSH red = ::CreateSolidBrush(kRed);
    RECT all{0, 0, p, p};
    ::FillRect(dc, &all, red);
    ::DeleteObject(red);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);

    ButtonFixture f(W, H);
    plain(*f.button);
    f.button->ImagePos(eubiip_Centered);
    f.button->Picture(StdPicture::FromBitmap(bitmap, true));
    PumpMessages();
    expectRect(BoundsOfColor(f.hwnd(), kRed), pictureAt((W - p) / 2, (H - p) / 2), "top bit set");
}

TEST(ctlUniButtonImageXPDrawing, LargePicturesShrinkKeepingTheirAspectSmallOnesStay) {
    const int W = 40, H = 30;
    ButtonFixture f(W, H);
    plain(*f.button);
    struct Case {
        int width, height;
        bool showFocus;
        RECT expected;
    };
    // Inner area (W - 2B) x (H - 2B); ratio = the smaller of inner / picture on each axis.
    const std::vector<Case> cases = {
        {64, 64, false, {7, 2, 33, 28}},    // 36x26 inner: 0.40625 -> 26x26, centred
        {64, 32, false, {2, 6, 38, 24}},    // 0.5625 -> 36x18
        {64, 64, true, {9, 4, 31, 26}},     // B = 4: 32x22 inner -> 22x22
        {8, 8, false, {16, 11, 24, 19}},    // never enlarged
    };
    for (const Case& c : cases) {
        f.button->ShowFocus(c.showFocus);
        f.button->Picture(SolidPicture(c.width, c.height, kRed));
        PumpMessages();
        expectRect(BoundsOfColor(f.hwnd(), kRed), c.expected, "shrink");
    }
    // The stored picture is the host's, unchanged.
    EXPECT_EQ(f.button->Picture()->PixelWidth(), 8);
}

TEST(ctlUniButtonImageXPDrawing, TransparencyTakesThePixelAtTheOriginUnlessToldOtherwise) {
    ButtonFixture f(40, 30);
    plain(*f.button);
    // Blue with a red 6x6 middle, centred at (12, 7): the red square is at (17, 12).
    f.button->Picture(SolidPicture(16, 16, kBlue, 6, kRed));
    const RECT whole = pictureAt(12, 7);
    const RECT middle = pictureAt(17, 12, 6);
    const RECT none{0, 0, 0, 0};

    f.button->TransparencyType(eUniImage_TranspType_NoTransp);
    PumpMessages();
    expectRect(BoundsOfColor(f.hwnd(), kBlue), whole, "no transparency");

    f.button->TransparencyType(eUniImage_TranspType_ByCoords);  // the default, at 0,0: blue
    PumpMessages();
    expectRect(BoundsOfColor(f.hwnd(), kBlue), none, "pixel 0,0");
    expectRect(BoundsOfColor(f.hwnd(), kRed), middle, "pixel 0,0 keeps the rest");
    EXPECT_EQ(PixelAt(f.hwnd(), 13, 8), kWhite);  // the button shows through

    f.button->xTranspColor(8);
    f.button->yTranspColor(8);
    PumpMessages();
    expectRect(BoundsOfColor(f.hwnd(), kRed), none, "pixel 8,8");
    expectRect(BoundsOfColor(f.hwnd(), kBlue), whole, "pixel 8,8 keeps the blue");

    f.button->TransparencyType(eUniImage_TranspType_ByColor);
    f.button->TransparentColor(0x000000FF);  // OLE red
    PumpMessages();
    expectRect(BoundsOfColor(f.hwnd(), kRed), none, "by colour");

    // Disabled: each channel washed 70 % towards 192, then its luminance.
    // Red: 255 * 0.3 + 134.4 = 210.9 -> 211, 0 + 134.4 -> 134; 0.3 * 211 + 0.7 * 134 = 157.1 -> 157.
    f.button->TransparencyType(eUniImage_TranspType_NoTransp);
    f.button->Picture(SolidPicture(16, 16, kRed));
    f.button->Enabled(false);
    PumpMessages();
    expectRect(BoundsOfColor(f.hwnd(), kRed), none, "disabled");
    expectRect(BoundsOfColor(f.hwnd(), RGB(157, 157, 157)), whole, "grey picture");
}

// Non-white pixels of one row between the border columns.
int marksInRow(HWND hwnd, int y, int from, int to) {
    int marks = 0;
    for (int x = from; x < to; ++x) marks += PixelAt(hwnd, x, y) != kWhite ? 1 : 0;
    return marks;
}

TEST(ctlUniButtonImageXPDrawing, OwnSizesDoubleAt192DpiPicturesStayTheUsers) {
    for (const int dpi : {96, 192}) {
        const int k = dpi / 96;
        const int W = 120, H = 90;
        ButtonFixture f(W, H, dpi);
        plain(*f.button);
        f.button->Caption(u"Go");
        f.button->Picture(SolidPicture(16, 16, kRed));
        struct Case {
            bool showFocus;
            int32_t pos;
            RECT picture;
        };
        const std::vector<Case> cases = {
            {false, eubiip_Top_TextNear, pictureAt(52, 2 * k)},
            {true, eubiip_Top_TextNear, pictureAt(52, 4 * k)},
            {true, eubiip_Left_TextNear, pictureAt(4 * k, (H - 16) / 2)},
            {true, eubiip_Bottom_TextNear, pictureAt(52, H - 4 * k - 16)},
        };
        for (const Case& c : cases) {
            f.button->ShowFocus(c.showFocus);
            f.button->ImagePos(c.pos);
            PumpMessages();
            expectRect(BoundsOfColor(f.hwnd(), kRed), c.picture, dpi == 96 ? "96" : "192");
        }
        // The caption of Top_TextNear starts one gap (3 at 96) below the picture.
        f.button->ImagePos(eubiip_Top_TextNear);
        PumpMessages();
        EXPECT_GE(BoundsOfColor(f.hwnd(), kBlue).top, 4 * k + 16 + 3 * k) << dpi;

        // The focus rectangle: two lines in from the edge, scaled; gone while the left button is down.
        f.button->Caption(u"");
        f.button->Picture(nullptr);
        f.button->GotFocus();
        PumpMessages();
        const int focusRow = 2 * k;
        EXPECT_GT(marksInRow(f.hwnd(), focusRow, 2 * focusRow, W - 2 * focusRow), W / 4) << dpi;
        if (k == 2) {
            EXPECT_EQ(marksInRow(f.hwnd(), 2, 2 * focusRow, W - 2 * focusRow), 0) << "row of the 96 rectangle";
        }
        int16_t button = 1, shift = 0;
        float x = 5, y = 5;
        f.button->MouseDown(button, shift, x, y);
        PumpMessages();
        // The pressed flat body fades row by row: a row without the dotted line is one colour.
        const COLORREF row = PixelAt(f.hwnd(), W / 2, focusRow);
        int differing = 0;
        for (int column = 8 * k; column < W - 8 * k; ++column) {
            differing += PixelAt(f.hwnd(), column, focusRow) != row ? 1 : 0;
        }
        EXPECT_EQ(differing, 0) << dpi;
    }
}

}  // namespace

namespace {

TEST(ctlUniButtonImageXPDrawing, DefaultAndCancelMarksComeFromTheExtenderWhileEnabled) {
    ButtonFixture f(80, 30);
    plain(*f.button);
    const COLORREF defaultMark = RGB(0xA0, 0xBE, 0xEC);  // the marks one line inside the border
    const COLORREF cancelMark = RGB(0x80, 0x80, 0x80);
    struct Case {
        bool isDefault, isCancel, enabled;
        COLORREF expected;  // 0 where neither mark may show
    };
    for (const Case c : {Case{true, false, true, defaultMark}, Case{false, true, true, cancelMark},
                         Case{true, false, false, 0}, Case{false, false, true, 0}}) {
        f.surface.HostExtender().Default(c.isDefault);
        f.surface.HostExtender().Cancel(c.isCancel);
        f.button->Enabled(c.enabled);
        f.button->Refresh();
        PumpMessages();
        const COLORREF mark = PixelAt(f.hwnd(), 1, 15);
        if (c.expected != 0) {
            EXPECT_EQ(mark, c.expected) << c.isDefault << c.isCancel << c.enabled;
        } else {
            EXPECT_NE(mark, defaultMark);
            EXPECT_NE(mark, cancelMark);
        }
    }
}

TEST(ctlUniButtonImageXPDrawing, ALiveButtonFollowsADpiChange) {
    ButtonFixture f(120, 90);
    plain(*f.button);
    f.button->ShowFocus(true);
    f.button->Picture(SolidPicture(16, 16, kRed));
    f.button->Caption(u"Go");
    f.button->ImagePos(eubiip_Top_TextNear);
    PumpMessages();
    expectRect(BoundsOfColor(f.hwnd(), kRed), pictureAt(52, 4), "96");
    f.surface.OverrideDpi(192);
    ::SendMessageW(f.hwnd(), 0x02E3 /* WM_DPICHANGED_AFTERPARENT */, 0, 0);
    PumpMessages();
    expectRect(BoundsOfColor(f.hwnd(), kRed), pictureAt(52, 8), "after WM_DPICHANGED_AFTERPARENT");
}

}  // namespace
