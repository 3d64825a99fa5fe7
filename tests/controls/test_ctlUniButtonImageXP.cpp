// The image button's keys and its input: persistence, the events of real mouse and key messages.
#include <gtest/gtest.h>

#include "ImageButtonTestSupport.h"
#include "frame/MemoryPropertyBag.h"
#include "support/LeakCounters.h"
#include "support/RecordingPropertyBag.h"

namespace {

using imagebuttontest::ButtonFixture;
using imagebuttontest::SolidPicture;
using testsupport::PumpMessages;
using Log = std::vector<std::string>;

const std::vector<CtlString> kReadOrder = {
    u"Picture", u"Enabled", u"Font", u"Caption", u"BackColor", u"ForeColor", u"BorderColor", u"ShowFocus",
    u"Tristate", u"Pressed", u"Tip", u"Style", u"RoundedBorders", u"BackColorOut", u"UseRoundRegions",
    u"TransparencyType", u"TransparentColor", u"xTranspColor", u"yTranspColor", u"ImagePos", u"OLEDropMode",
    u"MousePointer", u"MouseIcon", u"DblClickEvent"};

// Cyrillic, CJK and an emoji outside the basic plane (a surrogate pair), with an access key.
const CtlString kCaption = u"&\u0421\u043E\u0445\u0440\u0430\u043D\u0438\u0442\u044C \u4FDD\u5B58 \U0001F4BE";

LPARAM at(int x, int y) { return MAKELPARAM(x, y); }

TEST(ctlUniButtonImageXP, ReadsItsKeysInOrderWithTheirDefaultsAndStartsAtZeroValues) {
    ButtonFixture f;
    testsupport::RecordingPropertyBag empty;
    empty.Set(u"KeyOfANewerVersion", int32_t{7});
    f.button->ReadProperties(empty);
    EXPECT_EQ(empty.reads, kReadOrder);

    const ctlUniButtonImageXP& b = *f.button;
    EXPECT_EQ(b.Picture(), nullptr);
    EXPECT_TRUE(b.Enabled());
    EXPECT_EQ(b.Caption(), u"");
    EXPECT_EQ(b.BackColor(), static_cast<int32_t>(0x8000000Fu));
    EXPECT_EQ(b.ForeColor(), static_cast<int32_t>(0x80000012u));
    EXPECT_EQ(b.BorderColor(), -1);
    EXPECT_TRUE(b.ShowFocus());
    EXPECT_FALSE(b.Tristate());
    EXPECT_FALSE(b.Pressed());
    EXPECT_EQ(b.Tip(), u"");
    EXPECT_EQ(b.Style(), -1);
    EXPECT_TRUE(b.RoundedBorders());
    EXPECT_EQ(b.BackColorOut(), -1);
    EXPECT_FALSE(b.UseRoundRegions());
    EXPECT_EQ(b.TransparencyType(), eUniImage_TranspType_ByCoords);
    EXPECT_EQ(b.TransparentColor(), -1);
    EXPECT_EQ(b.xTranspColor(), 0);
    EXPECT_EQ(b.yTranspColor(), 0);
    EXPECT_EQ(b.ImagePos(), eubiip_Top);
    EXPECT_EQ(b.OLEDropMode(), 0);
    EXPECT_EQ(b.MousePointer(), 0);
    EXPECT_FALSE(b.DblClickEvent());

    // A new button is not a loaded one: the fields the birth leaves alone keep their zero values.
    f.surface.HostExtender().Name(u"cmdOk");
    f.button->InitProperties();
    EXPECT_EQ(b.Caption(), u"cmdOk");
    EXPECT_EQ(b.Style(), 0);
    EXPECT_EQ(b.BorderColor(), 0);  // black, not derived
    EXPECT_FALSE(b.ShowFocus());
    EXPECT_FALSE(b.RoundedBorders());
    EXPECT_EQ(b.TransparentColor(), 0);
    EXPECT_EQ(b.BackColor(), static_cast<int32_t>(0x8000000Fu));
    EXPECT_EQ(b.ForeColor(), static_cast<int32_t>(0x80000012u));
    EXPECT_EQ(b.BackColorOut(), -1);
}

TEST(ctlUniButtonImageXP, EveryKeySurvivesSaveAndLoadUnicodeCaptionIncluded) {
    ButtonFixture first;
    ctlUniButtonImageXP& a = *first.button;
    const auto picture = SolidPicture(16, 16, RGB(255, 0, 0));
    a.Picture(picture);
    a.Enabled(false);
    a.Caption(kCaption);
    a.BackColor(0x00102030);
    a.ForeColor(0x00405060);
    a.BorderColor(0x00708090);
    a.ShowFocus(false);
    a.Tristate(true);
    a.Pressed(true);
    a.Tip(u"\u4E16\u754C \U0001F600");
    a.Style(4);
    a.RoundedBorders(false);
    a.BackColorOut(0x00ABCDEF);
    a.TransparencyType(eUniImage_TranspType_ByColor);
    a.TransparentColor(0x00FF00FF);
    a.xTranspColor(3);
    a.yTranspColor(5);
    a.ImagePos(eubiip_Right_TextCentered);
    a.MousePointer(11);
    a.DblClickEvent(true);

    MemoryPropertyBag bag;
    a.WriteProperties(bag);
    const CtlVariant stored = bag.Peek(u"Caption");
    ASSERT_TRUE(std::holds_alternative<CtlByteArray>(stored));
    const auto& bytes = std::get<CtlByteArray>(stored);
    ASSERT_EQ(bytes.size(), kCaption.size() * 2);
    for (size_t i = 0; i < kCaption.size(); ++i) EXPECT_EQ(bytes[2 * i] | (bytes[2 * i + 1] << 8), kCaption[i]) << i;

    ButtonFixture second;
    ctlUniButtonImageXP& b = *second.button;
    b.ReadProperties(bag);
    EXPECT_EQ(b.Picture(), picture);
    EXPECT_FALSE(b.Enabled());
    EXPECT_EQ(b.Caption(), kCaption);
    EXPECT_EQ(second.surface.AccessKeys(), u"\u0421");  // recomputed after loading
    EXPECT_EQ(b.BackColor(), 0x00102030);
    EXPECT_EQ(b.ForeColor(), 0x00405060);
    EXPECT_EQ(b.BorderColor(), 0x00708090);
    EXPECT_FALSE(b.ShowFocus());
    EXPECT_TRUE(b.Tristate());
    EXPECT_TRUE(b.Pressed());
    EXPECT_EQ(b.Tip(), u"\u4E16\u754C \U0001F600");
    EXPECT_EQ(b.Style(), 4);
    EXPECT_FALSE(b.RoundedBorders());
    EXPECT_EQ(b.BackColorOut(), 0x00ABCDEF);
    EXPECT_EQ(b.TransparencyType(), eUniImage_TranspType_ByColor);
    EXPECT_EQ(b.TransparentColor(), 0x00FF00FF);
    EXPECT_EQ(b.xTranspColor(), 3);
    EXPECT_EQ(b.yTranspColor(), 5);
    EXPECT_EQ(b.ImagePos(), eubiip_Right_TextCentered);
    EXPECT_EQ(b.MousePointer(), 11);
    EXPECT_TRUE(b.DblClickEvent());
}

TEST(ctlUniButtonImageXP, MouseSequencesRaiseTheirEventsInOrder) {
    ButtonFixture f;
    f.button->Caption(u"OK");
    const HWND hwnd = f.hwnd();
    struct Case {
        const char* name;
        std::vector<std::tuple<UINT, WPARAM, LPARAM>> messages;
        Log expected;
    };
    const std::vector<Case> cases = {
        {"press and release over the button",
         {{WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5)}, {WM_MOUSEMOVE, MK_LBUTTON, at(6, 6)}, {WM_LBUTTONUP, 0, at(6, 6)}},
         {"MouseDown 1", "MouseMove 1", "MouseUp 1", "Click"}},
        {"release outside does not click",
         {{WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5)}, {WM_MOUSEMOVE, MK_LBUTTON, at(300, 5)}, {WM_LBUTTONUP, 0, at(300, 5)}},
         {"MouseDown 1", "MouseMove 1", "MouseUp 1"}},
        {"a quick second click is another click",
         {{WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5)}, {WM_LBUTTONUP, 0, at(5, 5)},
          {WM_LBUTTONDBLCLK, MK_LBUTTON, at(5, 5)}, {WM_LBUTTONUP, 0, at(5, 5)}},
         {"MouseDown 1", "MouseUp 1", "Click", "Click", "MouseUp 1"}},
        {"a move without buttons", {{WM_MOUSEMOVE, 0, at(7, 7)}}, {"MouseMove 0"}},
    };
    for (const Case& c : cases) {
        f.events.log.clear();
        for (const auto& [message, wParam, lParam] : c.messages) ::SendMessageW(hwnd, message, wParam, lParam);
        PumpMessages();
        EXPECT_EQ(f.events.log, c.expected) << c.name;
    }

    // With DblClickEvent the second click is a DblClick instead.
    f.button->DblClickEvent(true);
    f.events.log.clear();
    ::SendMessageW(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5));
    ::SendMessageW(hwnd, WM_LBUTTONUP, 0, at(5, 5));
    ::SendMessageW(hwnd, WM_LBUTTONDBLCLK, MK_LBUTTON, at(5, 5));
    ::SendMessageW(hwnd, WM_LBUTTONUP, 0, at(5, 5));
    EXPECT_EQ(f.events.log, (Log{"MouseDown 1", "MouseUp 1", "Click", "DblClick", "MouseUp 1"}));

    // In design mode a move raises nothing.
    f.surface.HostAmbient().UserMode(false);
    f.events.log.clear();
    ::SendMessageW(hwnd, WM_MOUSEMOVE, 0, at(8, 8));
    EXPECT_TRUE(f.events.log.empty());
}

// Keys go the way a host's loop sends them: posted WM_KEYDOWN, TranslateMessage makes WM_CHAR.
TEST(ctlUniButtonImageXP, SpaceEnterAndAccessKeysClick) {
    ButtonFixture f;
    f.button->Caption(u"&Save");
    EXPECT_EQ(f.surface.AccessKeys(), u"S");
    const HWND hwnd = f.hwnd();
    PumpMessages();
    struct Case {
        WPARAM key;
        UINT scan;
        Log expected;
    };
    const std::vector<Case> cases = {
        {VK_SPACE, 0x39, {"KeyDown 32", "KeyPress 32", "Click", "KeyUp 32"}},
        {VK_RETURN, 0x1C, {"KeyDown 13", "KeyPress 13", "Click", "KeyUp 13"}},
        {'A', 0x1E, {"KeyDown 65", "KeyPress 97", "KeyUp 65"}},
        {'X', 0x2D, {"KeyDown 88", "KeyPress 120", "KeyUp 88"}},             // swallowed by the handler
        {'Y', 0x15, {"KeyDown 89", "KeyPress 121", "Click", "KeyUp 89"}},   // made a Space by the handler
    };
    for (const Case& c : cases) {
        f.events.log.clear();
        ::PostMessageW(hwnd, WM_KEYDOWN, c.key, static_cast<LPARAM>(1 | (c.scan << 16)));
        PumpMessages();
        ::PostMessageW(hwnd, WM_KEYUP, c.key, static_cast<LPARAM>(1 | (c.scan << 16) | (3u << 30)));
        PumpMessages();
        EXPECT_EQ(f.events.log, c.expected) << c.key;
    }

    // Alt+S through the host loop's access-key routing; nothing while disabled.
    MSG alt{};
    alt.hwnd = f.host.get();
    alt.message = WM_SYSCHAR;
    alt.wParam = 's';
    f.events.log.clear();
    EXPECT_TRUE(Win32Surface::TranslateAccessKey(alt));
    EXPECT_EQ(f.events.log, Log{"Click"});
    f.button->Enabled(false);
    f.events.log.clear();
    Win32Surface::TranslateAccessKey(alt);
    EXPECT_TRUE(f.events.log.empty());
}

TEST(ctlUniButtonImageXP, ValueClicksAndTristateToggles) {
    ButtonFixture f;
    f.button->Value(false);
    EXPECT_TRUE(f.events.log.empty());  // False does nothing
    f.button->Value(true);
    EXPECT_EQ(f.events.log, Log{"Click"});
    EXPECT_FALSE(f.button->Pressed());  // no toggle without Tristate
    EXPECT_FALSE(f.button->Value());

    f.button->Tristate(true);
    f.events.log.clear();
    f.button->Value(true);
    EXPECT_TRUE(f.button->Pressed());
    EXPECT_TRUE(f.button->Value());
    ::SendMessageW(f.hwnd(), WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5));
    ::SendMessageW(f.hwnd(), WM_LBUTTONUP, 0, at(5, 5));
    EXPECT_FALSE(f.button->Pressed());
    EXPECT_EQ(f.events.log, (Log{"Click", "MouseDown 1", "MouseUp 1", "Click"}));

    // UseRoundRegions runs the Resize handler, whose last act is the Resize event.
    f.events.log.clear();
    f.button->UseRoundRegions(true);
    EXPECT_TRUE(f.button->RoundedBorders());
    EXPECT_EQ(f.surface.BackStyle(), 0);
    EXPECT_EQ(f.events.log, Log{"Resize"});
    // RoundedBorders False keeps the square shape at the next Resize.
    f.button->RoundedBorders(false);
    ::SetWindowPos(f.hwnd(), nullptr, 0, 0, 100, 40, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(f.surface.BackStyle(), 1);
}

void createPaintDestroy(HWND host, const std::shared_ptr<StdPicture>& picture, int index) {
    Win32Surface surface(host, 0, 0, 40 + index % 7, 28);
    ctlUniButtonImageXP button(surface);
    button.Caption(u"\u041E\u041A " + CtlString(1, static_cast<char16_t>(u'0' + index % 10)));
    button.Picture(picture);  // larger than the button: shrunk at each drawing
    button.ImagePos(index % 12);
    button.UseRoundRegions(index % 2 == 0);
    button.Enabled(index % 3 != 0);
    PumpMessages();
}

TEST(ctlUniButtonImageXP, AThousandButtonsLeaveNoGdiObjectOrWindowBehind) {
    testsupport::TestHostWindow host;
    const auto picture = SolidPicture(48, 48, RGB(0, 128, 255), 8, RGB(255, 0, 255));
    createPaintDestroy(host.get(), picture, 0);  // first-use caches are not leaks
    const size_t gdiBefore = testsupport::LiveGdiObjects();
    const size_t dcsBefore = testsupport::HeldWindowDCs();
    const size_t windowsBefore = testsupport::ThreadWindowCount();
    for (int i = 0; i < 1000; ++i) createPaintDestroy(host.get(), picture, i);
    EXPECT_EQ(testsupport::LiveGdiObjects(), gdiBefore);
    EXPECT_EQ(testsupport::HeldWindowDCs(), dcsBefore);
    EXPECT_EQ(testsupport::ThreadWindowCount(), windowsBefore);
}

}  // namespace
