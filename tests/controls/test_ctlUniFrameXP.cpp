// ctlUniFrameXP: keys, Enabled kept apart from the surface, both looks' pixels at 96 and 192 DPI,
// and what screen readers read.
#include "controls/ctlUniFrameXP.h"

#include <gtest/gtest.h>

#include <oleacc.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "frame/Win32Surface.h"
#include "support/AccessibleProbe.h"
#include "support/OleSession.h"
#include "support/RecordingPropertyBag.h"
#include "support/TestHostWindow.h"
#include "support/WindowMessageCounter.h"

namespace {

using testsupport::PumpMessages;

const std::vector<CtlString> kKeyOrder = {u"Font",        u"Caption",      u"Enabled",        u"ForeColor",
                                          u"BorderColor", u"BackColor",    u"Tip",            u"VistaStyle",
                                          u"BackColorOut", u"TitleBackColor", u"UseShadow",   u"OLEDropMode",
                                          u"MousePointer", u"MouseIcon"};

const CtlString kScripts = u"\u0413\u0440\u0443\u043F\u043F\u0430 \u7EC4 \u05E7\u05D1\u05D5\u05E6\u05D4 \U0001F4C1 & co";

// Colours with no channel near 0 or 255, so that every operator below stays unclipped.
constexpr int32_t kBack = 0x00C08060;  // r 0x60, g 0x80, b 0xC0

// The colour operators, written out here from their definitions.
int32_t channel(int32_t c, int shift) { return (c >> shift) & 0xFF; }
int32_t inc(int32_t c, int d) {
    auto clip = [](int v) { return std::clamp(v, 0, 255); };
    return clip(channel(c, 0) + d) | (clip(channel(c, 8) + d) << 8) | (clip(channel(c, 16) + d) << 16);
}
COLORREF rgb(int32_t c) { return static_cast<COLORREF>(c); }

struct FrameFixture {
    explicit FrameFixture(int32_t dpi = 96, int width = 104, int height = 64, bool userMode = true)
        : surface(host.get(), 10, 10, width, height) {
        if (dpi != 96) surface.OverrideDpi(dpi);
        surface.HostAmbient().UserMode(userMode);
        surface.Font(std::make_shared<StdFont>(u"Arial", 12.0F));
        frame = std::make_unique<ctlUniFrameXP>(surface);
        frame->BackColor(kBack);
    }
    // Paints what the lets asked for; pixel() reads the window as it stands.
    void paint() {
        ::RedrawWindow(surface.hWnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        PumpMessages();
    }
    COLORREF pixel(int x, int y) {
        const HDC dc = ::GetDC(surface.hWnd());
        const COLORREF c = ::GetPixel(dc, x, y);
        ::ReleaseDC(surface.hWnd(), dc);
        return c;
    }
    int count(COLORREF color, RECT area) {
        paint();
        const HDC dc = ::GetDC(surface.hWnd());
        int n = 0;
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) n += ::GetPixel(dc, x, y) == color ? 1 : 0;
        }
        ::ReleaseDC(surface.hWnd(), dc);
        return n;
    }
    testsupport::TestHostWindow host;
    Win32Surface surface;
    std::unique_ptr<ctlUniFrameXP> frame;
};

// Width and height of one line of `text` in Arial 12 at `dpi`, measured by the test itself.
SIZE textExtent(const CtlString& text, int dpi) {
    const HFONT font = ::CreateFontW(-::MulDiv(12, dpi, 72), 0, 0, 0, 400, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Arial");
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = ::SelectObject(dc, font);
    RECT r{0, 0, 0, 0};
    ::DrawTextW(dc, reinterpret_cast<const wchar_t*>(text.c_str()), static_cast<int>(text.size()), &r,
                DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    ::SelectObject(dc, previous);
    ::DeleteDC(dc);
    ::DeleteObject(font);
    return SIZE{r.right, r.bottom};
}

}  // namespace

TEST(ctlUniFrameXP, ReadsAndWritesItsKeysInOrderWithDefaults) {
    FrameFixture f;
    testsupport::RecordingPropertyBag empty;
    f.frame->ReadProperties(empty);
    EXPECT_EQ(empty.reads, kKeyOrder);
    EXPECT_EQ(f.frame->Caption(), u"");
    EXPECT_TRUE(f.frame->Enabled());
    EXPECT_EQ(f.frame->ForeColor(), static_cast<int32_t>(0x80000006u));
    EXPECT_EQ(f.frame->BorderColor(), -1);
    EXPECT_EQ(f.frame->BackColor(), static_cast<int32_t>(0x8000000Fu));
    EXPECT_EQ(f.frame->Tip(), u"");
    EXPECT_TRUE(f.frame->VistaStyle());
    EXPECT_EQ(f.frame->BackColorOut(), -1);
    EXPECT_EQ(f.frame->TitleBackColor(), -1);
    EXPECT_FALSE(f.frame->UseShadow());
    EXPECT_EQ(f.frame->OLEDropMode(), 0);
    EXPECT_EQ(f.frame->MousePointer(), 0);

    f.frame->Caption(kScripts);
    f.frame->Tip(u"\u63D0\u793A \U0001F4A1");
    f.frame->Enabled(false);
    f.frame->ForeColor(0x00112233);
    f.frame->BorderColor(0x00445566);
    f.frame->BackColor(0x00778899);
    f.frame->VistaStyle(false);
    f.frame->BackColorOut(0x00AABBCC);
    f.frame->TitleBackColor(0x00DDEEFF);
    f.frame->UseShadow(true);
    testsupport::RecordingPropertyBag saved;
    f.frame->WriteProperties(saved);
    EXPECT_EQ(saved.writes, kKeyOrder);
    EXPECT_TRUE(std::holds_alternative<CtlByteArray>(saved.Peek(u"Caption")));

    FrameFixture g;
    g.frame->ReadProperties(saved);
    EXPECT_EQ(g.frame->Caption(), kScripts);
    EXPECT_EQ(g.frame->Tip(), u"\u63D0\u793A \U0001F4A1");
    EXPECT_FALSE(g.frame->Enabled());
    EXPECT_FALSE(g.surface.Enabled()) << "at run time the surface follows";
    EXPECT_EQ(g.frame->ForeColor(), 0x00112233);
    EXPECT_EQ(g.frame->BorderColor(), 0x00445566);
    EXPECT_EQ(g.frame->BackColor(), 0x00778899);
    EXPECT_FALSE(g.frame->VistaStyle());
    EXPECT_EQ(g.frame->BackColorOut(), 0x00AABBCC);
    EXPECT_EQ(g.frame->TitleBackColor(), 0x00DDEEFF);
    EXPECT_TRUE(g.frame->UseShadow());

    FrameFixture h;
    h.surface.HostExtender().Name(u"Frame1");
    h.frame->InitProperties();
    EXPECT_EQ(h.frame->Caption(), u"Frame1");
}

TEST(ctlUniFrameXP, TitleBarFadesLeftToRightInsideACornerCutBorder) {
    FrameFixture f;
    f.frame->Caption(u"Ab");
    f.frame->BackColorOut(0x0000FF00);
    const int w = 104;
    const int h = 64;
    const int barHeight = textExtent(u" Ab ", 96).cy + 2;
    const int32_t start = inc(kBack, -17);
    const int32_t stop = inc(kBack, -34);
    const int32_t border = inc(kBack, -68);
    f.paint();

    // The fade's channels drop by 17 over 104 columns: column 1 is still the start colour,
    // column 26 is 4.25 steps down, column 102 has reached the stop colour.
    EXPECT_EQ(f.pixel(1, barHeight - 1), rgb(start));
    EXPECT_EQ(f.pixel(26, barHeight - 1), rgb(inc(kBack, -21)));
    EXPECT_EQ(f.pixel(w - 2, barHeight - 1), rgb(stop));
    EXPECT_EQ(f.pixel(w - 2, barHeight), rgb(kBack)) << "the bar is h + 2 high";

    struct Expect {
        int x, y;
        int32_t color;
    };
    const int32_t out = 0x0000FF00;
    for (const Expect& e : {Expect{0, 0, out}, Expect{1, 0, out}, Expect{0, 1, out}, Expect{1, 1, border},
                            Expect{2, 0, border}, Expect{0, 2, border}, Expect{w - 1, 0, out}, Expect{w - 2, 1, border},
                            Expect{0, h - 1, out}, Expect{1, h - 2, border}, Expect{w - 1, h - 1, out},
                            Expect{w - 2, h - 1, out}, Expect{w - 1, h - 2, out}, Expect{w - 2, h - 2, border},
                            Expect{w / 2, h - 1, border}, Expect{w / 2, h - 2, kBack}, Expect{w - 1, h / 2, border}}) {
        EXPECT_EQ(f.pixel(e.x, e.y), rgb(e.color)) << e.x << "," << e.y;
    }

    // A title colour of its own fades from 17 lighter to 17 darker than it.
    // Over 104 columns its 34 steps get to 33.35 at column 102.
    f.frame->TitleBackColor(0x00406080);
    f.paint();
    EXPECT_EQ(f.pixel(1, barHeight - 1), rgb(inc(0x00406080, 17)));
    EXPECT_EQ(f.pixel(w - 2, barHeight - 1), rgb(inc(0x00406080, 17 - 33)));

    // No caption, no bar.
    f.frame->Caption(u"");
    f.paint();
    EXPECT_EQ(f.pixel(w / 2, 2), rgb(kBack));
}

TEST(ctlUniFrameXP, GrooveRunsThroughTheTitleMiddleAndIsClearedBehindIt) {
    FrameFixture f(96, 160, 64);
    f.frame->VistaStyle(false);
    f.frame->Caption(u"Ab");
    const int w = 160;
    const int h = 64;
    const SIZE title = textExtent(u" Ab ", 96);
    const int y = title.cy / 2;
    const int32_t border = inc(kBack, -68);
    const int32_t white = 0x00FFFFFF;
    f.paint();
    struct Expect {
        int x, y;
        int32_t color;
    };
    for (const Expect& e : {Expect{w - 10, y - 1, kBack}, Expect{w - 10, y, border}, Expect{w - 10, y + 1, white},
                            Expect{w - 10, y + 2, kBack}, Expect{0, h / 2, border}, Expect{1, h / 2, white},
                            Expect{w - 1, h / 2, border}, Expect{w - 2, h / 2, white}, Expect{w / 2, h - 1, border},
                            Expect{w / 2, h - 2, white}, Expect{5, y, kBack}, Expect{title.cx + 4, y - 1, kBack},
                            Expect{title.cx + 5, y, border}, Expect{4, y, border}}) {
        EXPECT_EQ(f.pixel(e.x, e.y), rgb(e.color)) << e.x << "," << e.y;
    }
    f.frame->Caption(u"");
    f.paint();
    EXPECT_EQ(f.pixel(w / 2, 0), rgb(border));
    EXPECT_EQ(f.pixel(w / 2, 1), rgb(white));
}

TEST(ctlUniFrameXP, ShadowIsLightUnderDarkTextAndDarkerUnderLight) {
    struct Case {
        int32_t text;
        int32_t shadow;
    };
    // Lum(0x202060) is 51, below 171: SetLum to 255 adds 204. Lum(0xE0E0E0) is 224: 85 darker.
    for (const Case& c : {Case{0x00000000, 0x00FFFFFF}, Case{0x00202060, inc(0x00202060, 204)},
                          Case{0x00E0E0E0, 0x008B8B8B}, Case{0x00AAAAAA, 0x00FFFFFF}}) {
        EXPECT_EQ(ctlUniFrameXP::ShadowColor(c.text), c.shadow) << std::hex << c.text;
    }

    FrameFixture f(96, 200, 60);
    f.surface.Font(std::make_shared<StdFont>(u"Arial", 16.0F, true));
    f.frame->Caption(u"WWW");
    f.frame->ForeColor(0x00202060);
    const RECT title{0, 0, 200, 30};
    const COLORREF shadow = rgb(inc(0x00202060, 204));
    EXPECT_EQ(f.count(shadow, title), 0);
    f.frame->UseShadow(true);
    EXPECT_GT(f.count(shadow, title), 10);
    EXPECT_GT(f.count(rgb(0x00202060), title), 10) << "the title itself is drawn over its shadow";
}

TEST(ctlUniFrameXP, DisabledInDesignModeGreysTheTitleButKeepsTheSurfaceEnabled) {
    const COLORREF grey = ::GetSysColor(COLOR_GRAYTEXT);
    {
        FrameFixture design(96, 200, 60, false);
        design.surface.Font(std::make_shared<StdFont>(u"Arial", 16.0F, true));
        design.frame->Caption(u"WWW");
        design.frame->ForeColor(0x00000000);
        design.frame->Enabled(false);
        EXPECT_FALSE(design.frame->Enabled());
        EXPECT_TRUE(design.surface.Enabled());
        EXPECT_TRUE(::IsWindowEnabled(design.surface.hWnd()));
        EXPECT_GT(design.count(grey, RECT{0, 0, 200, 30}), 10);
        EXPECT_EQ(design.count(RGB(0, 0, 0), RECT{0, 0, 200, 30}), 0);
        EXPECT_TRUE(design.surface.Enabled()) << "drawing keeps it enabled too";
    }
    FrameFixture run;
    HWND child = ::CreateWindowExW(0, L"BUTTON", L"child", WS_CHILD | WS_VISIBLE, 5, 30, 40, 20, run.surface.hWnd(),
                                   nullptr, nullptr, nullptr);
    run.paint();
    // A container: its drawing leaves the child's pixels alone.
    EXPECT_NE(::GetWindowLongPtrW(run.surface.hWnd(), GWL_STYLE) & WS_CLIPCHILDREN, 0);
    run.frame->Enabled(false);
    // Input to a child of a disabled window never arrives: the child is disabled with its frame.
    EXPECT_FALSE(::IsWindowEnabled(run.surface.hWnd()));
    EXPECT_EQ(::GetParent(child), run.surface.hWnd());
    run.frame->Enabled(true);
    EXPECT_TRUE(::IsWindowEnabled(run.surface.hWnd()));
}

TEST(ctlUniFrameXP, OwnSizesDoubleAt192Dpi) {
    FrameFixture f(192, 104, 64);
    f.frame->Caption(u"Ab");
    f.frame->BackColorOut(0x0000FF00);
    const int w = 104;
    const int h = 64;
    const int32_t border = inc(kBack, -68);
    const int barHeight = textExtent(u" Ab ", 192).cy + 4;
    f.paint();
    EXPECT_EQ(f.pixel(w - 3, barHeight - 1), rgb(inc(kBack, -34)));
    EXPECT_EQ(f.pixel(w - 3, barHeight), rgb(kBack));
    // Border two pixels wide; the corner's outside is i + j < 4, the diagonal i + j in 4..5.
    for (int i = 0; i < 6; ++i) {
        for (int j = 0; i + j < 6; ++j) {
            const int32_t expected = i + j < 4 ? 0x0000FF00 : border;
            EXPECT_EQ(f.pixel(i, h - 1 - j), rgb(expected)) << i << "," << j;
            EXPECT_EQ(f.pixel(w - 1 - i, h - 1 - j), rgb(expected)) << i << "," << j;
        }
    }
    EXPECT_EQ(f.pixel(w / 2, h - 2), rgb(border));
    EXPECT_EQ(f.pixel(w / 2, h - 3), rgb(kBack));

    f.frame->VistaStyle(false);
    f.frame->Caption(u"");
    f.paint();
    for (const auto& [y, color] : std::vector<std::pair<int, int32_t>>{
             {0, border}, {1, border}, {2, 0x00FFFFFF}, {3, 0x00FFFFFF}, {4, kBack}}) {
        EXPECT_EQ(f.pixel(w / 2, y), rgb(color)) << y;
    }
}

TEST(ctlUniFrameXP, ReadsAsAGroupingNamedByItsCaption) {
    const testsupport::OleSession ole;
    FrameFixture f;
    f.frame->Caption(kScripts);
    f.frame->Tip(u"tip");
    const auto object = testsupport::AccessibleOf(f.surface.hWnd());
    ASSERT_TRUE(object);
    EXPECT_EQ(testsupport::AskRole(object.get()), ROLE_SYSTEM_GROUPING);
    EXPECT_EQ(testsupport::AskText(object.get(), &IAccessible::get_accName).text, kScripts) << "'&' is no marker here";
    EXPECT_EQ(testsupport::AskText(object.get(), &IAccessible::get_accDescription).text, u"tip");
    EXPECT_EQ(testsupport::AskState(object.get()) & STATE_SYSTEM_UNAVAILABLE, 0);
    EXPECT_EQ(testsupport::AskState(object.get()) & STATE_SYSTEM_FOCUSABLE, 0);
    f.frame->Enabled(false);
    EXPECT_NE(testsupport::AskState(object.get()) & STATE_SYSTEM_UNAVAILABLE, 0);

    FrameFixture design(96, 104, 64, false);
    design.frame->Enabled(false);
    const auto designObject = testsupport::AccessibleOf(design.surface.hWnd());
    ASSERT_TRUE(designObject);
    EXPECT_NE(testsupport::AskState(designObject.get()) & STATE_SYSTEM_UNAVAILABLE, 0);
}
