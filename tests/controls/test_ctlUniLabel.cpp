#include "controls/ctlUniLabel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "frame/Win32Surface.h"
#include "graphics/DrawButton.h"
#include "support/LeakCounters.h"
#include "support/RecordingPropertyBag.h"
#include "support/RegionCheck.h"
#include "support/TestHostWindow.h"
#include "support/WindowMessageCounter.h"

namespace {

using testsupport::PumpMessages;

const std::vector<CtlString> kReadOrder = {
    u"Caption", u"BackColor", u"ForeColor", u"BorderColor", u"Alignment", u"VAlignment", u"BackStyle",
    u"BorderStyle", u"AutoSize", u"Tip", u"Style", u"Enabled", u"Margin", u"RoundedBorders", u"BackColorOut",
    u"UseRoundRegions", u"Font", u"OLEDropMode", u"MousePointer", u"MouseIcon"};
const std::vector<CtlString> kWriteOrder = {
    u"Font", u"Caption", u"BackColor", u"ForeColor", u"BorderColor", u"Alignment", u"VAlignment", u"BackStyle",
    u"BorderStyle", u"AutoSize", u"Tip", u"Style", u"Enabled", u"Margin", u"RoundedBorders", u"BackColorOut",
    u"UseRoundRegions", u"OLEDropMode", u"MousePointer", u"MouseIcon"};

// A caption in Latin, Greek, Cyrillic, Hebrew, Arabic, Devanagari, Chinese, Japanese and an emoji
// outside the basic plane (a surrogate pair).
const CtlString kScripts =
    u"Abc \u0391\u03B2\u03B3 \u0416\u0443\u043A \u05E9\u05DC\u05D5\u05DD \u0633\u0644\u0627\u0645 "
    u"\u0928\u092E\u0938\u094D\u0924\u0947 \u4E2D\u6587 \u65E5\u672C\u8A9E \U0001F600";

class LabelEvents final : public ctlUniLabelEvents {
public:
    std::function<void()> onResize;
    int resizes = 0;
    void Resize() override {
        ++resizes;
        if (onResize) onResize();
    }
};

// A label on a real child window of its own host.
struct LabelFixture {
    explicit LabelFixture(int x = 10, int y = 10, int width = 200, int height = 24)
        : surface(host.get(), x, y, width, height), label(surface, &events) {
        surface.Font(std::make_shared<StdFont>(u"Arial", 12.0F));
    }
    testsupport::TestHostWindow host;
    Win32Surface surface;
    LabelEvents events;
    ctlUniLabel label;
};

// The same font as the surface's, made by the test itself, for independent measuring.
HFONT referenceFont(int points, bool bold = false) {
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    return ::CreateFontW(-::MulDiv(points, dpi, 72), 0, 0, 0, bold ? 700 : 400, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0,
                         L"Arial");
}

SIZE clientSize(HWND hwnd) {
    RECT r{};
    ::GetClientRect(hwnd, &r);
    return SIZE{r.right, r.bottom};
}

std::vector<COLORREF> pixelColumn(HWND hwnd, int x, int height) {
    std::vector<COLORREF> column;
    const HDC dc = ::GetDC(hwnd);
    for (int y = 0; y < height; ++y) column.push_back(::GetPixel(dc, x, y));
    ::ReleaseDC(hwnd, dc);
    return column;
}

TEST(ctlUniLabel, ReadsAndWritesItsKeysInOrderWithDefaults) {
    LabelFixture f;
    testsupport::RecordingPropertyBag empty;
    empty.Set(u"SomeKeyOfANewerVersion", int32_t{5});
    f.label.ReadProperties(empty);
    EXPECT_EQ(empty.reads, kReadOrder);

    // Every missing key gave its default.
    EXPECT_EQ(f.label.Caption(), u"");
    EXPECT_EQ(f.label.BackColor(), static_cast<int32_t>(0x8000000Fu));
    EXPECT_EQ(f.label.ForeColor(), static_cast<int32_t>(0x80000012u));
    EXPECT_EQ(f.label.BorderColor(), -1);
    EXPECT_EQ(f.label.Alignment(), UniLabel_Align_Left);
    EXPECT_EQ(f.label.VAlignment(), UniLabel_VAlign_Top);
    EXPECT_EQ(f.label.BorderStyle(), UniLabel_BS_None);
    EXPECT_FALSE(f.label.AutoSize());
    EXPECT_EQ(f.label.Tip(), u"");
    EXPECT_EQ(f.label.Style(), 0);
    EXPECT_TRUE(f.label.Enabled());
    EXPECT_EQ(f.label.Margin(), 0);
    EXPECT_FALSE(f.label.RoundedBorders());
    EXPECT_EQ(f.label.BackColorOut(), -1);
    EXPECT_FALSE(f.label.UseRoundRegions());
    EXPECT_EQ(f.label.OLEDropMode(), 0);
    EXPECT_EQ(f.label.MousePointer(), 0);
    EXPECT_EQ(f.label.MouseIcon()->Type(), StdPicture::kTypeNone);
    EXPECT_EQ(f.surface.BackStyle(), 1);

    testsupport::RecordingPropertyBag saved;
    f.label.WriteProperties(saved);
    EXPECT_EQ(saved.writes, kWriteOrder);
    // Strings go in as UTF-16LE bytes.
    EXPECT_TRUE(std::holds_alternative<CtlByteArray>(saved.Peek(u"Caption")));
    EXPECT_TRUE(std::holds_alternative<CtlByteArray>(saved.Peek(u"Tip")));
}

TEST(ctlUniLabel, PersistedValuesSurviveASaveAndALoad) {
    LabelFixture first;
    first.label.Caption(kScripts);
    first.label.Tip(u"\u05D8\u05D9\u05E4 \U0001F4A1");
    first.label.BackColor(0x00123456);
    first.label.ForeColor(0x000000FF);
    first.label.BorderColor(0x00FF0000);
    first.label.Alignment(UniLabel_Align_Right);
    first.label.VAlignment(UniLabel_VAlign_Bottom);
    first.label.BorderStyle(UniLabel_BS_Border);
    first.label.Style(-1);
    first.label.Margin(3);
    first.label.BackColorOut(0x00ABCDEF);
    first.label.UseRoundRegions(true);
    first.label.Enabled(false);
    first.label.OLEDropMode(1);
    first.label.MousePointer(11);
    const auto font = std::make_shared<StdFont>(u"Courier New", 14.0F, true);
    first.label.Font(font);

    MemoryPropertyBag bag;
    first.label.WriteProperties(bag);
    // Code unit by code unit, in the bytes themselves.
    const CtlVariant stored = bag.Peek(u"Caption");
    const auto& bytes = std::get<CtlByteArray>(stored);
    ASSERT_EQ(bytes.size(), kScripts.size() * 2);
    for (size_t i = 0; i < kScripts.size(); ++i) {
        EXPECT_EQ(bytes[2 * i] | (bytes[2 * i + 1] << 8), kScripts[i]) << i;
    }

    LabelFixture second;
    second.label.ReadProperties(bag);
    EXPECT_EQ(second.label.Caption(), kScripts);
    EXPECT_EQ(second.label.Tip(), u"\u05D8\u05D9\u05E4 \U0001F4A1");
    EXPECT_EQ(second.label.BackColor(), 0x00123456);
    EXPECT_EQ(second.label.ForeColor(), 0x000000FF);
    EXPECT_EQ(second.label.BorderColor(), 0x00FF0000);
    EXPECT_EQ(second.label.Alignment(), UniLabel_Align_Right);
    EXPECT_EQ(second.label.VAlignment(), UniLabel_VAlign_Bottom);
    EXPECT_EQ(second.label.BorderStyle(), UniLabel_BS_Border);
    EXPECT_EQ(second.label.Style(), -1);
    EXPECT_EQ(second.label.Margin(), 3);
    EXPECT_EQ(second.label.BackColorOut(), 0x00ABCDEF);
    EXPECT_TRUE(second.label.UseRoundRegions());
    EXPECT_TRUE(second.label.RoundedBorders());
    EXPECT_FALSE(second.label.Enabled());
    EXPECT_FALSE(::IsWindowEnabled(second.surface.hWnd()));
    EXPECT_EQ(second.label.OLEDropMode(), 1);
    EXPECT_EQ(second.label.MousePointer(), 11);
    EXPECT_EQ(second.label.Font(), font);  // the same object, not a copy
    second.label.OLEDropMode(0);
    first.label.OLEDropMode(0);
}

TEST(ctlUniLabel, NewLabelShowsItsNameAndLetsReportChanges) {
    LabelFixture f;
    f.surface.HostExtender().Name(u"lblGreeting");
    f.label.InitProperties();
    EXPECT_EQ(f.label.Caption(), u"lblGreeting");

    std::vector<CtlString> changed;
    f.surface.OnPropertyChanged([&](const CtlString& name) { changed.push_back(name); });
    f.label.Caption(u"x");
    f.label.BackColor(1);
    f.label.Tip(u"t");
    f.label.OLEDropMode(0);
    EXPECT_EQ(changed, (std::vector<CtlString>{u"Caption", u"Tip", u"OLEDropMode"}));

    f.label.UseRoundRegions(true);
    EXPECT_TRUE(f.label.RoundedBorders());
    f.label.UseRoundRegions(false);
    EXPECT_FALSE(f.label.RoundedBorders());

    // A member of the shared font changes nothing until ApplyFontChanges sets it again.
    const auto font = f.label.Font();
    font->Size(30.0F);
    f.label.AutoSize(true);
    f.label.Caption(u"Grows");
    PumpMessages();
    const SIZE before = clientSize(f.surface.hWnd());
    font->Size(40.0F);
    PumpMessages();
    EXPECT_EQ(clientSize(f.surface.hWnd()).cy, before.cy);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(f.label.ApplyFontChanges()));
    PumpMessages();
    EXPECT_GT(clientSize(f.surface.hWnd()).cy, before.cy);
}

TEST(ctlUniLabel, RunModeMergesRepaintsAndDesignModeRepaintsAtOnce) {
    LabelFixture f;
    PumpMessages();
    testsupport::WindowMessageCounter counter(f.surface.hWnd());

    f.label.Caption(u"One");
    f.label.BackColor(0x00FFFFFF);
    f.label.ForeColor(0x00000000);
    f.label.Alignment(UniLabel_Align_Center);
    EXPECT_EQ(counter.Count(WM_PAINT), 0);  // lets only ask
    PumpMessages();
    EXPECT_EQ(counter.Count(WM_PAINT), 1);

    f.surface.HostAmbient().UserMode(false);
    counter.Reset();
    f.label.BackColor(0x00EEEEEE);
    EXPECT_EQ(counter.Count(WM_PAINT), 1);
    f.label.Caption(u"Two");
    EXPECT_EQ(counter.Count(WM_PAINT), 2);
    f.label.Tip(u"no repaint for a tip");
    EXPECT_EQ(counter.Count(WM_PAINT), 2);
}

TEST(ctlUniLabel, ReEnteredDrawControlReturnsWithoutDrawing) {
    LabelFixture f;
    f.label.BackColor(0x00FFFFFF);
    PumpMessages();
    const COLORREF marker = RGB(0x10, 0x80, 0x20);
    bool checked = false;
    f.events.onResize = [&] {
        // Raised by the autosize step, from inside DrawControl.
        if (!f.label.IsDrawing() || checked) return;
        checked = true;
        const HDC dc = ::GetDC(f.surface.hWnd());
        const HBRUSH brush = ::CreateSolidBrush(marker);
        RECT all{0, 0, 2000, 2000};
        ::FillRect(dc, &all, brush);
        ::DeleteObject(brush);
        f.label.Refresh(true);  // would paint the white background if it drew
        EXPECT_EQ(::GetPixel(dc, 1, 1), marker);
        ::ReleaseDC(f.surface.hWnd(), dc);
    };
    f.label.AutoSize(true);
    f.label.Caption(u"Resize me");
    PumpMessages();
    EXPECT_TRUE(checked);
    EXPECT_EQ(pixelColumn(f.surface.hWnd(), 1, 2)[1], RGB(0xFF, 0xFF, 0xFF));  // the outer drawing finished
}

TEST(ctlUniLabel, DisabledLabelDrawsGreyTextAndKeepsItsForeColor) {
    LabelFixture f;
    f.label.Caption(u"Grey");
    f.label.ForeColor(0x000000FF);
    f.label.Enabled(false);
    f.label.Refresh(true);
    EXPECT_EQ(f.label.ForeColor(), 0x000000FF);
    EXPECT_EQ(f.surface.ForeColor(), static_cast<int32_t>(0x80000011u));
    EXPECT_EQ(::GetTextColor(f.surface.hDC()), ::GetSysColor(COLOR_GRAYTEXT));

    f.label.Enabled(true);
    f.label.Refresh(true);
    EXPECT_EQ(f.surface.ForeColor(), 0x000000FF);
    EXPECT_EQ(::GetTextColor(f.surface.hDC()), RGB(0xFF, 0, 0));
}

TEST(ctlUniLabel, RoundRegionsShapeTheWindowLikeARoundedRectangle) {
    LabelFixture f;
    f.label.UseRoundRegions(true);
    PumpMessages();
    // Reference: the filled rounded rectangle with corner 2. Wine 8's RoundRect fills a 2 x 2
    // corner completely, so there the shape is the whole rectangle; the comparison holds on either.
    const auto rounded = testsupport::CompareWindowRegion(f.surface.hWnd(), 200, 24, [](HDC dc, RECT) {
        const HGDIOBJ oldBrush = ::SelectObject(dc, ::GetStockObject(WHITE_BRUSH));
        const HGDIOBJ oldPen = ::SelectObject(dc, ::GetStockObject(WHITE_PEN));
        ::RoundRect(dc, 0, 0, 200, 24, 2, 2);
        ::SelectObject(dc, oldPen);
        ::SelectObject(dc, oldBrush);
    });
    EXPECT_NE(rounded.regionType, ERROR);
    EXPECT_EQ(rounded.mismatches, 0);

    f.label.UseRoundRegions(false);
    PumpMessages();
    EXPECT_EQ(testsupport::WindowRegionType(f.surface.hWnd()), ERROR);  // rectangular again
}

TEST(ctlUniLabel, DefaultStyleIsResolvedAtEachPaint) {
    testsupport::TestHostWindow host;
    const int32_t back = 0x00C08040;
    auto make = [&](int y, int32_t style) {
        auto surface = std::make_unique<Win32Surface>(host.get(), 10, y, 120, 24);
        auto label = std::make_unique<ctlUniLabel>(*surface);
        label->Caption(u"");
        label->BackColor(back);
        label->BorderStyle(UniLabel_BS_Border);
        label->Style(style);
        return std::make_pair(std::move(surface), std::move(label));
    };
    const int32_t saved = GetDefaultButtonStyle();
    SetDefaultButtonStyle(iCtlBtnStyle_Flat);
    auto followsDefault = make(10, iCtlBtnStyle_UseDefault);
    auto flat = make(50, iCtlBtnStyle_Flat);
    auto vista = make(90, iCtlBtnStyle_Vista);
    PumpMessages();
    const HWND a = followsDefault.first->hWnd();
    EXPECT_EQ(pixelColumn(a, 60, 24), pixelColumn(flat.first->hWnd(), 60, 24));
    ASSERT_NE(pixelColumn(flat.first->hWnd(), 60, 24), pixelColumn(vista.first->hWnd(), 60, 24));

    SetDefaultButtonStyle(iCtlBtnStyle_Vista);
    followsDefault.second->Refresh(true);
    EXPECT_EQ(followsDefault.second->Style(), -1);
    EXPECT_EQ(pixelColumn(a, 60, 24), pixelColumn(vista.first->hWnd(), 60, 24));
    SetDefaultButtonStyle(saved);
}

TEST(ctlUniLabel, AutoSizeFitsTheCaption) {
    const HFONT font = referenceFont(12);
    const HDC measure = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = ::SelectObject(measure, font);
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(measure, &metrics);
    auto widthOf = [&](const wchar_t* text) {
        SIZE size{};
        ::GetTextExtentPoint32W(measure, text, static_cast<int>(wcslen(text)), &size);
        return static_cast<int>(size.cx);
    };
    const int widest = std::max({widthOf(L"One"), widthOf(L"Second line"), widthOf(L"3")});
    const int wide = widthOf(L"A rather wide caption");

    const struct {
        const char* name;
        CtlString caption;
        eUniLabel_BorderStyle border;
        int16_t margin;
        eUniLabel_TextAlign alignment;
        int expectedWidth;
        int expectedHeight;
        int expectedLeft;  // the surface starts at x = 100, 30 wide
    } cases[] = {
        {"empty caption keeps the size", u"", UniLabel_BS_None, 0, UniLabel_Align_Left, 30, 24, 100},
        {"three lines, CR LF and CR", u"One\r\nSecond line\r3", UniLabel_BS_None, 0, UniLabel_Align_Left, widest,
         3 * metrics.tmHeight, 100},
        {"border and margin", u"One\r\nSecond line\r3", UniLabel_BS_Border, 3, UniLabel_Align_Left, widest + 10,
         3 * metrics.tmHeight + 10, 100},
        {"right alignment grows to the left", u"A rather wide caption", UniLabel_BS_None, 0, UniLabel_Align_Right, wide,
         metrics.tmHeight, 130 - wide},
    };
    ::SelectObject(measure, previous);
    ::DeleteDC(measure);
    ::DeleteObject(font);

    for (const auto& c : cases) {
        LabelFixture f(100, 10, 30, 24);
        f.label.BorderStyle(c.border);
        f.label.Margin(c.margin);
        f.label.Alignment(c.alignment);
        f.label.Caption(c.caption);
        f.label.AutoSize(true);
        PumpMessages();
        const SIZE size = clientSize(f.surface.hWnd());
        EXPECT_EQ(size.cx, c.expectedWidth) << c.name;
        EXPECT_EQ(size.cy, c.expectedHeight) << c.name;
        RECT r{};
        ::GetWindowRect(f.surface.hWnd(), &r);
        ::MapWindowPoints(HWND_DESKTOP, f.host.get(), reinterpret_cast<POINT*>(&r), 2);
        EXPECT_EQ(r.left, c.expectedLeft) << c.name;
    }
}

TEST(ctlUniLabel, TransparentLabelIsShapedLikeItsGlyphs) {
    LabelFixture f(0, 0, 160, 60);
    const auto font = std::make_shared<StdFont>(u"Arial", 28.0F, true);
    MemoryPropertyBag bag;
    bag.Set(u"BackStyle", int32_t{0});
    bag.Set(u"Caption", pvStringToBag(u"H   I"));
    bag.Set(u"Font", font);
    f.label.ReadProperties(bag);
    PumpMessages();

    // The reference mask: the same glyphs in the same place, drawn by the test. The gap between
    // the letters is the middle of the blanks' extent.
    POINT gap{};
    const auto shaped = testsupport::CompareWindowRegion(f.surface.hWnd(), 160, 60, [&](HDC dc, RECT all) {
        testsupport::DrawReferenceText(dc, all, L"H   I", referenceFont(28, true));
        const HGDIOBJ oldFont = ::SelectObject(dc, referenceFont(28, true));
        SIZE h{}, hBlanks{};
        ::GetTextExtentPoint32W(dc, L"H", 1, &h);
        ::GetTextExtentPoint32W(dc, L"H   ", 4, &hBlanks);
        ::DeleteObject(::SelectObject(dc, oldFont));
        gap = POINT{(h.cx + hBlanks.cx) / 2, h.cy / 2};
    });
    EXPECT_EQ(shaped.regionType, COMPLEXREGION);
    EXPECT_GT(shaped.shapePixels, 100);
    EXPECT_EQ(shaped.mismatches, 0);
    {
        const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
        ::GetWindowRgn(f.surface.hWnd(), region);
        EXPECT_FALSE(::PtInRegion(region, gap.x, gap.y));
        ::DeleteObject(region);
    }

    // Without a caption nothing is left to see or click.
    f.label.Caption(u"");
    PumpMessages();
    EXPECT_EQ(testsupport::WindowRegionType(f.surface.hWnd()), NULLREGION);
}

// The example of docs/hosting-controls.md, kept compiling and checked here.
class GreetingEvents final : public ctlUniLabelEvents {
public:
    int clicks = 0;
    void Click() override { ++clicks; }
    void MouseDown(int16_t& Button, int16_t&, float&, float&) override { lastButton = Button; }
    int16_t lastButton = 0;
};

TEST(ctlUniLabel, HostedAsTheGuideShows) {
    testsupport::TestHostWindow form;
    Win32Surface surface(form.get(), 10, 10, 200, 24);
    surface.HostExtender().Name(u"lblGreeting");
    GreetingEvents events;
    ctlUniLabel label(surface, &events);

    MemoryPropertyBag bag;
    bag.WriteProperty(u"Caption", pvStringToBag(u"Hello, \u043C\u0438\u0440 \U0001F600"));
    bag.WriteProperty(u"Alignment", int32_t{UniLabel_Align_Center});
    label.ReadProperties(bag);
    label.BorderStyle(UniLabel_BS_Border);

    ::SendMessageW(surface.hWnd(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(4, 4));
    ::SendMessageW(surface.hWnd(), WM_RBUTTONUP, 0, MAKELPARAM(4, 4));
    PumpMessages();
    EXPECT_EQ(events.clicks, 1);  // the label raises Click for any button, unchanged
    EXPECT_EQ(events.lastButton, 2);
    EXPECT_EQ(label.Caption(), u"Hello, \u043C\u0438\u0440 \U0001F600");
    EXPECT_EQ(label.Alignment(), UniLabel_Align_Center);

    MemoryPropertyBag saved;
    label.WriteProperties(saved);
    EXPECT_EQ(pvBagToString(saved.Peek(u"Caption")), label.Caption());
    EXPECT_EQ(VariantToLong(saved.Peek(u"BorderStyle"), -1), 1);
}

void createPaintDestroy(HWND host, int index) {
    Win32Surface surface(host, 0, 0, 120, 24);
    ctlUniLabel label(surface);
    label.Caption(u"Label \u0416 " + CtlString(1, static_cast<char16_t>(u'0' + index % 10)));
    label.BorderStyle(index % 2 == 0 ? UniLabel_BS_Border : UniLabel_BS_None);
    label.UseRoundRegions(index % 3 == 0);
    label.Refresh(true);
    PumpMessages();
}

TEST(ctlUniLabel, ThousandsOfLabelsLeaveNothingBehind) {
    testsupport::TestHostWindow host;
    createPaintDestroy(host.get(), 0);  // first-use caches (window class, fonts) are not leaks
    const size_t gdiBefore = testsupport::LiveGdiObjects();
    const size_t dcsBefore = testsupport::HeldWindowDCs();
    const size_t windowsBefore = testsupport::ThreadWindowCount();
    for (int i = 0; i < 1000; ++i) createPaintDestroy(host.get(), i);
    EXPECT_EQ(testsupport::LiveGdiObjects(), gdiBefore);
    EXPECT_EQ(testsupport::HeldWindowDCs(), dcsBefore);
    EXPECT_EQ(testsupport::ThreadWindowCount(), windowsBefore);

    // Past the per-process handle limit: a leak of a few objects a cycle would exhaust it.
    for (int i = 0; i < 19000; ++i) createPaintDestroy(host.get(), i);
    LabelFixture last;
    last.label.BackColor(0x00336699);
    last.label.Refresh(true);
    EXPECT_EQ(pixelColumn(last.surface.hWnd(), 100, 12)[6], RGB(0x99, 0x66, 0x33));
    EXPECT_EQ(testsupport::LiveGdiObjects(), gdiBefore + 1);  // the fixture's own font
}

}  // namespace
