#include "controls/ctlUniRadioXP.h"

#include <gtest/gtest.h>

#include <cmath>

#include "CheckRadioTestSupport.h"
#include "frame/HostForm.h"
#include "graphics/modCommonDraw.h"
#include "support/LeakCounters.h"
#include "support/RecordingPropertyBag.h"

namespace {

using namespace checkradio;
using Radio = Hosted<ctlUniRadioXP, ctlUniRadioXPEvents>;

TEST(ctlUniRadioXP, ReadsRadioKeysInOrder) {
    Radio f;
    testsupport::RecordingPropertyBag empty;
    f.control.ReadProperties(empty);
    EXPECT_EQ(empty.reads,
              (std::vector<CtlString>{u"Font", u"Caption", u"Enabled", u"Align", u"RadioBackColor", u"RadioForeColor",
                                      u"BackColor", u"ForeColor", u"BorderColor", u"Pressed", u"Tip", u"Style",
                                      u"OLEDropMode", u"MousePointer", u"MouseIcon", u"ShowFocus"}));
    EXPECT_EQ(f.control.RadioBackColor(), static_cast<int32_t>(0x80000005u));
    EXPECT_EQ(f.control.RadioForeColor(), static_cast<int32_t>(0x80000008u));
    f.control.Caption(u"\u0391\u03B2 \U0001F600");
    f.control.Value(true);
    testsupport::RecordingPropertyBag saved;
    f.control.WriteProperties(saved);
    Radio g;
    g.control.ReadProperties(saved);
    EXPECT_EQ(g.control.Caption(), u"\u0391\u03B2 \U0001F600");
    EXPECT_TRUE(g.control.Value());
}

TEST(ctlUniRadioXP, AClickPressesOnceAndADoubleClickOnlyRaisesDblClick) {
    Radio f;
    const HWND hwnd = f.surface.hWnd();
    Send(hwnd, WM_RBUTTONDOWN, MK_RBUTTON);
    Send(hwnd, WM_RBUTTONUP);
    Send(hwnd, WM_LBUTTONDOWN, MK_LBUTTON);
    Send(hwnd, WM_LBUTTONUP);
    Send(hwnd, WM_LBUTTONDOWN, MK_LBUTTON);  // pressed already: no Click
    Send(hwnd, WM_LBUTTONUP);
    Send(hwnd, WM_LBUTTONDBLCLK, MK_LBUTTON);
    Send(hwnd, WM_LBUTTONUP);
    Send(hwnd, WM_CHAR, 32);
    f.control.Pressed(true);  // unchanged: no Click
    f.control.Pressed(false);
    Send(hwnd, WM_CHAR, 13);
    EXPECT_EQ(f.events.log, (std::vector<std::string>{"MouseDown2", "MouseUp2", "MouseDown1", "MouseUp1", "Click+",
                                                      "MouseDown1", "MouseUp1", "DblClick", "MouseUp1", "KeyPress32",
                                                      "Click-", "KeyPress13", "Click+"}));
}

// Radios on one C++ form: two in frame A, two in frame B, and a control array "opt" in A.
TEST(ctlUniRadioXP, PressingOneReleasesOnlyTheOthersOfItsContainer) {
    HostForm form;
    struct Entry {
        const char16_t* name;
        CtlVariant index;
        const char16_t* container;
        CtlVariant containerIndex;
    };
    const std::vector<Entry> entries = {
        {u"optA1", {}, u"fraA", {}},          {u"optA2", {}, u"fraA", {}},
        {u"optB1", {}, u"fraB", {}},          {u"optB2", {}, u"fraB", {}},
        {u"opt", int16_t{0}, u"fraA", {}},    {u"opt", int16_t{1}, u"fraA", {}},
        {u"optC", {}, u"fra", int16_t{0}},    {u"optC", int16_t{1}, u"fra", int16_t{1}},
    };
    std::vector<std::unique_ptr<Win32Surface>> surfaces;
    std::vector<std::unique_ptr<ctlUniRadioXP>> radios;
    for (const Entry& e : entries) {
        surfaces.push_back(std::make_unique<Win32Surface>(SharedHost(), 0, 0, 100, 18));
        Win32Surface::WindowExtender& extender = surfaces.back()->HostExtender();
        extender.Name(e.name);
        extender.Index(e.index);
        extender.Container(e.container, e.containerIndex);
        form.Add(*surfaces.back());
        radios.push_back(std::make_unique<ctlUniRadioXP>(*surfaces.back()));
        radios.back()->InitProperties();
    }
    auto pressed = [&] {
        std::string state;
        for (const auto& r : radios) state += r == nullptr ? '-' : r->Pressed() ? '1' : '0';
        return state;
    };
    // Loading leaves two pressed radios of a group as they are, until the first change.
    testsupport::RecordingPropertyBag bag;
    bag.Set(u"Pressed", true);
    for (const auto& r : radios) r->ReadProperties(bag);
    EXPECT_EQ(pressed(), "11111111");

    Send(surfaces[0]->hWnd(), WM_LBUTTONDOWN, MK_LBUTTON);  // optA1, a click
    Send(surfaces[0]->hWnd(), WM_LBUTTONUP);
    EXPECT_EQ(pressed(), "11111111") << "a click on a pressed radio does nothing";
    radios[0]->Pressed(true);  // unchanged, but True runs the group step
    EXPECT_EQ(pressed(), "10110011");
    radios[2]->Value(false);
    Send(surfaces[2]->hWnd(), WM_LBUTTONDOWN, MK_LBUTTON);
    Send(surfaces[2]->hWnd(), WM_LBUTTONUP);
    EXPECT_EQ(pressed(), "10100011");
    radios[5]->Pressed(true);  // opt(1) releases optA1, not opt(1) itself
    EXPECT_EQ(pressed(), "00100111");
    radios[6]->Pressed(true);  // fra(0) and fra(1) are different containers
    EXPECT_EQ(pressed(), "00100111");

    // A surface that goes leaves the form.
    radios[4].reset();
    surfaces[4].reset();
    radios[3]->Pressed(true);
    EXPECT_EQ(pressed().substr(0, 4), "0001");
    EXPECT_EQ(form.Count(), 7u);
}

TEST(ctlUniRadioXP, WithoutAFormTheGroupStepDoesNothing) {
    Radio a;
    Radio b;
    a.control.Pressed(true);
    b.control.Pressed(true);
    EXPECT_TRUE(a.control.Pressed());
    // Called by name as another radio would; an unknown member is error 438.
    a.control.CallByName(u"externunpress", {CtlString(u"")});
    EXPECT_TRUE(a.control.Pressed()) << "a surface without a container is in no group";
    try {
        a.control.CallByName(u"Nothing", {});
        ADD_FAILURE();
    } catch (const CtlError& e) {
        EXPECT_EQ(e.Number(), 438);
    }
}

// The box at 96 DPI from the rules: the square erased to a circle, the dot of the box shrunk by
// 5, and the anti-aliased ring of radius 7 in Inc(Inc(RadioBackColor, -68), -51).
TEST(ctlUniRadioXP, DotCornersAndRingFollowTheRules) {
    Radio f(160, 22);
    f.control.Caption(u"");
    f.control.Style(0);
    f.control.RadioBackColor(kBoxBack);
    f.control.RadioForeColor(kMark);
    f.control.Pressed(true);
    const HWND hwnd = f.surface.hWnd();
    Repaint(hwnd);
    const int y = 4;
    EXPECT_EQ(PixelAt(hwnd, 7, y + 7), static_cast<COLORREF>(kMark));
    EXPECT_EQ(PixelAt(hwnd, 7, y + 5), static_cast<COLORREF>(kMark));
    EXPECT_EQ(PixelAt(hwnd, 4, y + 7), static_cast<COLORREF>(kBoxBack));
    for (const auto& [cx, cy] : {std::pair{0, 0}, std::pair{1, 1}, std::pair{13, 13}, std::pair{14, 0}}) {
        EXPECT_EQ(PixelAt(hwnd, cx, y + cy), static_cast<COLORREF>(kBack)) << cx << "," << cy;
    }
    const int ring = 0xFF - 68 - 51;  // 0x88 in every channel
    for (const auto& [rx, ry] : {std::pair{7, 0}, std::pair{0, 7}, std::pair{14, 7}, std::pair{7, 14}}) {
        const COLORREF c = PixelAt(hwnd, rx, y + ry);
        EXPECT_LE(std::abs(GetRValue(c) - ring), 8) << rx << "," << ry;
        EXPECT_LE(std::abs(GetGValue(c) - ring), 8);
    }
    f.control.Pressed(false);
    Repaint(hwnd);
    EXPECT_EQ(PixelAt(hwnd, 7, y + 7), static_cast<COLORREF>(kBoxBack));
    EXPECT_LE(std::abs(GetRValue(PixelAt(hwnd, 7, y)) - ring), 8) << "the ring stays without the dot";

    // At 192 DPI: the box is 30, the dot the box shrunk by 10.
    f.surface.OverrideDpi(192);
    f.control.Pressed(true);
    ::SetWindowPos(hwnd, nullptr, 0, 0, 160, 44, SWP_NOMOVE | SWP_NOZORDER);
    Repaint(hwnd);
    const int y2 = 22 - 15;
    EXPECT_EQ(PixelAt(hwnd, 14, y2 + 10), static_cast<COLORREF>(kMark));
    EXPECT_EQ(PixelAt(hwnd, 14, y2 + 8), static_cast<COLORREF>(kBoxBack));
    EXPECT_EQ(PixelAt(hwnd, 2, y2 + 2), static_cast<COLORREF>(kBack));
    EXPECT_LE(std::abs(GetRValue(PixelAt(hwnd, 29, y2 + 14)) - ring), 40) << "the ring at the right edge";
}

TEST(ctlUniRadioXP, ThousandCyclesLeaveNoHandles) {
    const HWND host = SharedHost();
    HostForm form;
    const size_t gdiBefore = testsupport::LiveGdiObjects();
    const size_t windowsBefore = testsupport::ThreadWindowCount();
    for (int i = 0; i < 1000; ++i) {
        Win32Surface surface(host, 0, 0, 120, 20);
        form.Add(surface);
        ctlUniRadioXP radio(surface);
        radio.InitProperties();
        radio.Pressed(true);
        Repaint(surface.hWnd());
    }
    EXPECT_EQ(form.Count(), 0u);
    EXPECT_EQ(testsupport::LiveGdiObjects(), gdiBefore);
    EXPECT_EQ(testsupport::ThreadWindowCount(), windowsBefore);
}

}  // namespace
