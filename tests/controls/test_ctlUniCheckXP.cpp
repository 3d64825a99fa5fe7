#include "controls/ctlUniCheckXP.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "CheckRadioTestSupport.h"
#include "support/LeakCounters.h"
#include "support/RecordingPropertyBag.h"

namespace {

using namespace checkradio;
using Check = Hosted<ctlUniCheckXP, ctlUniCheckXPEvents>;

const std::vector<CtlString> kKeys = {u"Font",        u"Caption",   u"Enabled",        u"Align",
                                      u"CheckBackColor", u"CheckForeColor", u"BackColor", u"ForeColor",
                                      u"BorderColor", u"Pressed",   u"Tip",            u"Style",
                                      u"OLEDropMode", u"MousePointer", u"MouseIcon",   u"ShowFocus"};

TEST(ctlUniCheckXP, ReadsItsKeysInOrderWithDefaultsAndKeepsUnicodeThroughSaveAndLoad) {
    Check f;
    testsupport::RecordingPropertyBag empty;
    empty.Set(u"KeyOfANewerVersion", int32_t{3});
    f.control.Pressed(true);
    f.control.ReadProperties(empty);
    EXPECT_EQ(empty.reads, kKeys);
    EXPECT_EQ(f.control.Caption(), u"");
    EXPECT_TRUE(f.control.Enabled());
    EXPECT_EQ(f.control.Align(), 0);
    EXPECT_EQ(f.control.CheckBackColor(), static_cast<int32_t>(0x80000005u));
    EXPECT_EQ(f.control.CheckForeColor(), static_cast<int32_t>(0x80000008u));
    EXPECT_EQ(f.control.BackColor(), static_cast<int32_t>(0x8000000Fu));
    EXPECT_EQ(f.control.ForeColor(), static_cast<int32_t>(0x80000012u));
    EXPECT_EQ(f.control.BorderColor(), -1);
    EXPECT_FALSE(f.control.Pressed());
    EXPECT_EQ(f.control.Tip(), u"");
    EXPECT_EQ(f.control.Style(), -1);
    EXPECT_EQ(f.control.OLEDropMode(), 0);
    EXPECT_EQ(f.control.MousePointer(), 0);
    EXPECT_TRUE(f.control.ShowFocus());

    const CtlString caption = u"\u0416\u0443\u043A &\u4E2D\u6587 \U0001F600";
    f.control.Caption(caption);
    f.control.Tip(u"\u05E9\u05DC\u05D5\u05DD");
    f.control.Pressed(true);
    f.control.Align(1);
    f.control.CheckForeColor(kMark);
    f.control.ShowFocus(false);
    testsupport::RecordingPropertyBag saved;
    f.control.WriteProperties(saved);
    EXPECT_EQ(saved.writes, kKeys);
    EXPECT_TRUE(std::holds_alternative<CtlByteArray>(saved.Peek(u"Caption")));

    Check g;
    g.control.ReadProperties(saved);
    EXPECT_EQ(g.control.Caption(), caption);
    EXPECT_EQ(g.control.Tip(), u"\u05E9\u05DC\u05D5\u05DD");
    EXPECT_TRUE(g.control.Pressed());
    EXPECT_EQ(g.control.Align(), 1);
    EXPECT_EQ(g.control.CheckForeColor(), kMark);
    EXPECT_FALSE(g.control.ShowFocus());
    EXPECT_EQ(g.surface.AccessKeys(), u"\u4E2D");  // the access key is recomputed after loading
}

TEST(ctlUniCheckXP, PressedValueAndClickEvents) {
    Check f;
    f.control.Pressed(false);
    f.events.log.clear();
    f.control.Pressed(false);  // unchanged: nothing
    EXPECT_TRUE(f.events.log.empty());
    f.control.Value(7);
    EXPECT_EQ(f.control.Value(), 1);
    f.control.Value(0);
    EXPECT_EQ(f.control.Value(), 0);
    EXPECT_EQ(f.events.log, (std::vector<std::string>{"Click+", "Click-"}));
}

TEST(ctlUniCheckXP, ScriptedMouseAndKeysRaiseEventsInOrder) {
    Check f;
    const HWND hwnd = f.surface.hWnd();
    f.events.vetoKey = 13;
    Send(hwnd, WM_LBUTTONDOWN, MK_LBUTTON);
    Send(hwnd, WM_LBUTTONUP);
    Send(hwnd, WM_RBUTTONDOWN, MK_RBUTTON);  // the right button does not toggle
    Send(hwnd, WM_RBUTTONUP);
    Send(hwnd, WM_KEYDOWN, VK_SPACE);
    Send(hwnd, WM_CHAR, 32);  // Space toggles
    Send(hwnd, WM_KEYUP, VK_SPACE);
    Send(hwnd, WM_CHAR, 13);  // Enter toggles, but the handler vetoes it
    Send(hwnd, WM_CHAR, 'a');
    f.events.vetoKey = -1;
    Send(hwnd, WM_CHAR, 13);
    // A double click toggles twice: once for the first click, once more for the second.
    Send(hwnd, WM_LBUTTONDOWN, MK_LBUTTON);
    Send(hwnd, WM_LBUTTONUP);
    Send(hwnd, WM_LBUTTONDBLCLK, MK_LBUTTON);
    Send(hwnd, WM_LBUTTONUP);
    const std::vector<std::string> expected = {
        "MouseDown1", "MouseUp1", "Click+",                          // checked
        "MouseDown2", "MouseUp2",                                    // nothing
        "KeyDown32",  "KeyPress32", "Click-", "KeyUp32",             // unchecked
        "KeyPress13",                                                // vetoed
        "KeyPress97",                                                // not a click key
        "KeyPress13", "Click+",                                      // checked
        "MouseDown1", "MouseUp1", "Click-",                          // unchecked
        "Click+",     "DblClick", "MouseUp1"};                       // checked by the double click
    EXPECT_EQ(f.events.log, expected);
    EXPECT_TRUE(f.control.Pressed());
}

TEST(ctlUniCheckXP, AccessKeyClicksOnlyWhileEnabled) {
    Check f;
    f.control.Caption(u"&Go");
    EXPECT_EQ(f.surface.AccessKeys(), u"G");
    int16_t key = 'g';
    f.control.Enabled(false);
    f.control.AccessKeyPress(key);
    EXPECT_FALSE(f.control.Pressed());
    f.control.Enabled(true);
    f.control.AccessKeyPress(key);
    EXPECT_TRUE(f.control.Pressed());
}

// A pressed box without a caption in the test colours, flat style, painted; its window.
HWND PaintPressedBox(Check& f) {
    f.control.Caption(u"");
    f.control.Style(0);
    f.control.CheckBackColor(kBoxBack);
    f.control.CheckForeColor(kMark);
    f.control.BorderColor(kBorder);
    f.control.Pressed(true);
    Repaint(f.surface.hWnd());
    return f.surface.hWnd();
}

// Pixels at 96 DPI, computed from the layout rules: box of 15 at (0, y) with y the half-to-even
// rounding of height/2 - 7.5, its four corner pixels in the back colour, the tick of six lines
// around (6, y + 8).
TEST(ctlUniCheckXP, BoxRowCornersAndTickFollowTheRules) {
    for (const auto& [height, row] : {std::pair{18, 2}, std::pair{22, 4}, std::pair{15, 0}, std::pair{20, 2}}) {
        SCOPED_TRACE(height);
        Check f(160, height);
        const HWND hwnd = PaintPressedBox(f);
        EXPECT_EQ(FirstRowNotOf(hwnd, 7, kBack, height), row);
        EXPECT_EQ(PixelAt(hwnd, 7, row), static_cast<COLORREF>(kBorder));
        for (const auto& [cx, cy] : {std::pair{0, 0}, std::pair{0, 14}, std::pair{14, 0}, std::pair{14, 14}}) {
            EXPECT_EQ(PixelAt(hwnd, cx, row + cy), static_cast<COLORREF>(kBack)) << cx << "," << cy;
        }
        const int cx = 6;
        const int cy = row + 8;
        std::set<std::pair<int, int>> tick;
        for (int k = 0; k < 3; ++k) {
            for (int j = 0; j < 3; ++j) tick.insert({cx - j, cy + k - j});  // end points are left out
            for (int j = 0; j < 5; ++j) tick.insert({cx + j, cy + k - j});
        }
        for (int x = 1; x < 14; ++x) {
            for (int y = row + 1; y < row + 14; ++y) {
                const bool green = PixelAt(hwnd, x, y) == static_cast<COLORREF>(kMark);
                EXPECT_EQ(green, tick.count({x, y}) == 1) << x << "," << y;
            }
        }
        f.control.Pressed(false);
        Repaint(hwnd);
        EXPECT_NE(PixelAt(hwnd, cx, cy), static_cast<COLORREF>(kMark));
    }
}

TEST(ctlUniCheckXP, AlignRightPutsTheBoxAtTheRightEdge) {
    Check f(100, 18);
    f.control.Style(0);
    f.control.BorderColor(kBorder);
    f.control.Align(1);
    const HWND hwnd = f.surface.hWnd();
    Repaint(hwnd);
    EXPECT_EQ(PixelAt(hwnd, 85 + 7, 2), static_cast<COLORREF>(kBorder));
    EXPECT_EQ(PixelAt(hwnd, 84, 9), static_cast<COLORREF>(kBack));
    EXPECT_EQ(PixelAt(hwnd, 85, 9), static_cast<COLORREF>(kBorder));
}

// Pixels in one column of the window that differ from the back colour.
int NotBackIn(HWND hwnd, int x, int height) {
    int count = 0;
    for (int y = 0; y < height; ++y) count += PixelAt(hwnd, x, y) != static_cast<COLORREF>(kBack) ? 1 : 0;
    return count;
}

// The caption starts 19 pixels in (box 15, gap 3, inset 1), or ends 19 before the right edge with
// the box there; the focus rectangle lies one pixel outside it, and one more at right and bottom.
TEST(ctlUniCheckXP, CaptionAndFocusRectangleKeepTheirOffsets) {
    for (const int align : {0, 1}) {
        SCOPED_TRACE(align);
        Check f(160, 18);
        f.control.Style(0);
        f.control.Caption(u"Mm");
        f.control.Align(align);
        const HWND hwnd = f.surface.hWnd();
        Repaint(hwnd);
        const int textEdge = align == 0 ? 19 : 141;  // the text rectangle's left, or its right
        const int focusColumn = align == 0 ? 18 : 142;
        if (align == 0) {
            EXPECT_GT(NotBackIn(hwnd, textEdge, 18) + NotBackIn(hwnd, textEdge + 1, 18), 0);
            for (int x = 15; x < 19; ++x) EXPECT_EQ(NotBackIn(hwnd, x, 18), 0) << x;
        } else {
            // The glyphs end inside their advance, short of the rectangle's right edge.
            int ink = 0;
            for (int x = 100; x < textEdge; ++x) ink += NotBackIn(hwnd, x, 18);
            EXPECT_GT(ink, 0);
            for (int x = 141; x < 145; ++x) EXPECT_EQ(NotBackIn(hwnd, x, 18), 0) << x;
        }
        f.control.GotFocus();
        Repaint(hwnd);
        EXPECT_GT(NotBackIn(hwnd, focusColumn, 18), 3);
        f.control.ShowFocus(false);
        Repaint(hwnd);
        EXPECT_EQ(NotBackIn(hwnd, focusColumn, 18), 0);
    }
}

// At 192 DPI the box, its corners and the tick are twice their 96 size.
TEST(ctlUniCheckXP, DoublesItsOwnSizesAt192Dpi) {
    Check f(200, 40);
    f.surface.OverrideDpi(192);
    const HWND hwnd = PaintPressedBox(f);
    const int row = 5;  // 40/2 - 30/2
    EXPECT_EQ(FirstRowNotOf(hwnd, 14, kBack, 40), row);
    EXPECT_EQ(PixelAt(hwnd, 29, row + 14), static_cast<COLORREF>(kBorder));  // right edge at 29
    EXPECT_EQ(PixelAt(hwnd, 30, row + 14), static_cast<COLORREF>(kBack));
    EXPECT_EQ(PixelAt(hwnd, 1, row + 1), static_cast<COLORREF>(kBack));  // a 2x2 corner
    const int cx = 12;
    const int cy = row + 16;
    for (int k = 0; k < 6; ++k) EXPECT_EQ(PixelAt(hwnd, cx, cy + k), static_cast<COLORREF>(kMark)) << k;
    EXPECT_NE(PixelAt(hwnd, cx, cy + 6), static_cast<COLORREF>(kMark));
    EXPECT_EQ(PixelAt(hwnd, cx + 9, cy - 9), static_cast<COLORREF>(kMark));  // long arm of 10
    EXPECT_EQ(PixelAt(hwnd, cx - 5, cy - 5), static_cast<COLORREF>(kMark));  // short arm of 6
}

TEST(ctlUniCheckXP, ThousandCyclesLeaveNoHandles) {
    const HWND host = SharedHost();
    const size_t gdiBefore = testsupport::LiveGdiObjects();
    const size_t windowsBefore = testsupport::ThreadWindowCount();
    for (int i = 0; i < 1000; ++i) {
        Win32Surface surface(host, 0, 0, 120, 20);
        ctlUniCheckXP check(surface);
        check.InitProperties();
        check.Caption(u"\u4E2D x");
        check.Pressed(true);
        ::SetFocus(surface.hWnd());
        Repaint(surface.hWnd());
    }
    EXPECT_EQ(testsupport::LiveGdiObjects(), gdiBefore);
    EXPECT_EQ(testsupport::ThreadWindowCount(), windowsBefore);
}

}  // namespace
