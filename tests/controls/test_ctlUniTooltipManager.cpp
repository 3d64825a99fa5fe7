// The tip service: ctlUniTooltipManager, the tip window ctlUniToolTip and its placement, driven by a
// parked cursor and a pumped message loop (time only ever bounds a wait, it is never asserted).
#include "controls/ctlUniTooltipManager.h"

#include <gtest/gtest.h>

#include <oleacc.h>

#include <memory>
#include <vector>

#include "controls/TipPlacement.h"
#include "controls/ctlUniFrameXP.h"
#include "controls/ctlUniToolTip.h"
#include "frame/Win32Surface.h"
#include "graphics/DrawButton.h"
#include "support/AccessibleProbe.h"
#include "support/LeakCounters.h"
#include "support/OleSession.h"
#include "support/RecordingPropertyBag.h"
#include "support/TestHostWindow.h"
#include "support/WindowMessageCounter.h"

namespace {

using testsupport::PumpMessages;

template <class Condition>
bool pumpUntil(Condition&& done, DWORD timeoutMs) {
    const ULONGLONG start = ::GetTickCount64();
    while (!done()) {
        if (::GetTickCount64() - start > timeoutMs) return false;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        PumpMessages();
    }
    return true;
}
void pumpFor(DWORD ms) { pumpUntil([] { return false; }, ms); }

bool tipVisible() {
    const ctlUniToolTip* tip = ctlUniToolTip::Existing();
    return tip != nullptr && tip->TipIsVisible();
}

// A form with a frame that has a tip, and a tooltip manager.
struct TipForm {
    TipForm() : frameSurface(host.get(), 20, 20, 200, 120), managerSurface(host.get(), 300, 20, 32, 32) {
        frame = std::make_unique<ctlUniFrameXP>(frameSurface);
        frame->Caption(u"Frame");
        frame->Tip(u"\u041F\u043E\u0434\u0441\u043A\u0430\u0437\u043A\u0430 \u63D0\u793A");
        manager = std::make_unique<ctlUniTooltipManager>(managerSurface);
        manager->InitProperties();
        PumpMessages();
    }
    ~TipForm() { ::SetCursorPos(0, 0); }
    // Parks the cursor over the frame and moves the mouse there, as the window system would.
    void hover(int x, int y) {
        POINT pt{x, y};
        ::ClientToScreen(frameSurface.hWnd(), &pt);
        ::SetCursorPos(pt.x, pt.y);
        ::SendMessageW(frameSurface.hWnd(), WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
    }
    testsupport::TestHostWindow host;
    Win32Surface frameSurface;
    Win32Surface managerSurface;
    std::unique_ptr<ctlUniFrameXP> frame;
    std::unique_ptr<ctlUniTooltipManager> manager;
};

RECT windowRect(HWND hwnd) {
    RECT r{};
    ::GetWindowRect(hwnd, &r);
    return r;
}

thread_local std::vector<DWORD> t_tipEvents;
void CALLBACK recordTipEvent(HWINEVENTHOOK, DWORD event, HWND hwnd, LONG object, LONG, DWORD, DWORD) {
    const ctlUniToolTip* tip = ctlUniToolTip::Existing();
    if (tip != nullptr && hwnd == tip->hWnd() && object == OBJID_CLIENT) t_tipEvents.push_back(event);
}

}  // namespace

TEST(TipPlacement, SizeFromTextAndPlaceBesideTheCursorOnTheScreen) {
    struct Case {
        const char* what;
        int32_t dpi;
        POINT cursor;
        SIZE text;
        RECT bounds;
        RECT expected;
    };
    const RECT screen{0, 0, 800, 600};
    // At 96: window = text + 8 wide, + 6 high; 2 right of and 20 below the cursor.
    for (const Case& c : {
             Case{"below right", 96, {100, 100}, {50, 14}, screen, {102, 120, 160, 140}},
             Case{"pushed left at the right edge", 96, {780, 100}, {50, 14}, screen, {742, 120, 800, 140}},
             Case{"above the cursor at the bottom", 96, {100, 590}, {50, 14}, screen, {102, 568, 160, 588}},
             Case{"never left of the screen", 96, {-30, 100}, {50, 14}, screen, {0, 120, 58, 140}},
             Case{"XMax pulls the right edge in", 96, {100, 100}, {50, 14}, TipPlacement::Bounds(screen, 140, 0),
                  {82, 120, 140, 140}},
             Case{"doubled at 192", 192, {100, 100}, {100, 28}, screen, {104, 140, 220, 180}},
             Case{"above at 192", 192, {100, 590}, {100, 28}, screen, {104, 546, 220, 586}},
         }) {
        const SIZE window = TipPlacement::WindowSize(c.text, c.dpi);
        const RECT r = TipPlacement::Place(c.cursor, window, c.bounds, c.dpi);
        EXPECT_EQ(r.left, c.expected.left) << c.what;
        EXPECT_EQ(r.top, c.expected.top) << c.what;
        EXPECT_EQ(r.right, c.expected.right) << c.what;
        EXPECT_EQ(r.bottom, c.expected.bottom) << c.what;
    }
    EXPECT_EQ(TipPlacement::TextWidthLimit(300, 96), 292);
    EXPECT_EQ(TipPlacement::TextWidthLimit(600, 192), 584);
    EXPECT_EQ(TipPlacement::TextWidthLimit(0, 96), 0) << "no maximum";
    const RECT pulled = TipPlacement::Bounds(screen, 0, 300);
    EXPECT_EQ(pulled.bottom, 300);
    EXPECT_EQ(pulled.right, 800);
}

TEST(ctlUniTooltipManager, ReadsItsKeysInOrderWithDefaults) {
    TipForm form;
    testsupport::RecordingPropertyBag empty;
    form.manager->ReadProperties(empty);
    const std::vector<CtlString> keys = {u"PersistentTip", u"ActivateTips", u"Font",        u"TipBgColor",
                                         u"TipFgColor",    u"Style",        u"Transparency"};
    EXPECT_EQ(empty.reads, keys);
    EXPECT_FALSE(form.manager->PersistentTip());
    EXPECT_TRUE(form.manager->ActivateTips());
    EXPECT_EQ(form.manager->TipBgColor(), static_cast<int32_t>(0x80000018u));
    EXPECT_EQ(form.manager->TipFgColor(), static_cast<int32_t>(0x80000017u));
    EXPECT_EQ(form.manager->Style(), -1);
    EXPECT_EQ(form.manager->Transparency(), 0);
    EXPECT_EQ(form.manager->TipFont()->Name(), form.managerSurface.Ambient().Font()->Name());
    EXPECT_TRUE(IsTooltipManagerAlive());
    EXPECT_FALSE(::IsWindowVisible(form.managerSurface.hWnd())) << "no look at run time";

    form.manager->PersistentTip(true);
    form.manager->TipBgColor(0x00CCFFFF);
    form.manager->Style(iCtlBtnStyle_Glass);
    form.manager->Transparency(20);
    testsupport::RecordingPropertyBag saved;
    form.manager->WriteProperties(saved);
    EXPECT_EQ(saved.writes, keys);
    TipForm other;
    other.manager->ReadProperties(saved);
    EXPECT_TRUE(other.manager->PersistentTip());
    EXPECT_EQ(other.manager->TipBgColor(), 0x00CCFFFF);
    EXPECT_EQ(other.manager->Style(), iCtlBtnStyle_Glass);
    EXPECT_EQ(other.manager->Transparency(), 20);
    // The settings reached the tip window.
    ctlUniToolTip& tip = ctlUniToolTip::Instance();
    EXPECT_EQ(tip.lblTip().BackColor(), 0x00CCFFFF);
    EXPECT_EQ(tip.lblTip().Style(), iCtlBtnStyle_Glass);
    EXPECT_TRUE(ctlUniToolTip::PersistentTip());
    EXPECT_NE(::GetWindowLongPtrW(tip.hWnd(), GWL_EXSTYLE) & WS_EX_LAYERED, 0);
    // Transparency is percent see-through.
    EXPECT_EQ(ctlUniToolTip::AlphaOf(0), 255);
    EXPECT_EQ(ctlUniToolTip::AlphaOf(20), 204);
    EXPECT_EQ(ctlUniToolTip::AlphaOf(100), 0);
    EXPECT_EQ(ctlUniToolTip::AlphaOf(-5), 255);
    EXPECT_EQ(ctlUniToolTip::AlphaOf(250), 0);

    // A new default button style reaches the tip label at once.
    SetDefaultButtonStyle(iCtlBtnStyle_Xp2);
    EXPECT_EQ(tip.lblTip().Style(), iCtlBtnStyle_Xp2);
    SetDefaultButtonStyle(iCtlBtnStyle_Vista);
}

TEST(ctlUniTooltipManager, TipShowsAfterTheCursorRestsAndGoesWhenItMovesOrTimeIsUp) {
    const testsupport::OleSession ole;
    TipForm form;
    t_tipEvents.clear();
    const HWINEVENTHOOK hook = ::SetWinEventHook(EVENT_OBJECT_SHOW, EVENT_OBJECT_HIDE, nullptr, &recordTipEvent,
                                                 ::GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    form.hover(60, 50);
    ASSERT_NE(ctlUniToolTip::Existing(), nullptr);
    EXPECT_FALSE(tipVisible()) << "not before the show delay";
    EXPECT_EQ(form.manager->GetTip(), form.frame->Tip());
    ASSERT_TRUE(pumpUntil(tipVisible, 3000));
    const HWND tipWindow = ctlUniToolTip::Existing()->hWnd();
    POINT cursor{};
    ::GetCursorPos(&cursor);
    const RECT r = windowRect(tipWindow);
    EXPECT_GT(r.left, cursor.x - 1);
    EXPECT_GT(r.top, cursor.y);
    EXPECT_TRUE(form.manager->TipIsVisible());

    // Screen readers read a tooltip named by the tip text.
    const auto object = testsupport::AccessibleOf(tipWindow);
    ASSERT_TRUE(object);
    EXPECT_EQ(testsupport::AskRole(object.get()), ROLE_SYSTEM_TOOLTIP);
    EXPECT_EQ(testsupport::AskText(object.get(), &IAccessible::get_accName).text, form.frame->Tip());

    // The cursor moves off to the bare form, where no control reports a move: the watch timer's
    // next tick hides the tip.
    POINT bare{260, 200};
    ::ClientToScreen(form.host.get(), &bare);
    ::SetCursorPos(bare.x, bare.y);
    ASSERT_TRUE(pumpUntil([] { return !tipVisible(); }, 2000));

    // Resting again: shown, then gone after the hide delay, and not back while the cursor rests.
    form.hover(62, 52);
    ASSERT_TRUE(pumpUntil(tipVisible, 3000));
    ASSERT_TRUE(pumpUntil([] { return !tipVisible(); }, 6000));
    form.hover(62, 52);  // same text, same place: nothing changed
    pumpFor(700);
    EXPECT_FALSE(tipVisible());
    if (hook != nullptr) ::UnhookWinEvent(hook);
    PumpMessages();
    const std::vector<DWORD> expected = {EVENT_OBJECT_SHOW, EVENT_OBJECT_HIDE, EVENT_OBJECT_SHOW, EVENT_OBJECT_HIDE};
    EXPECT_EQ(t_tipEvents, expected);
}

TEST(ctlUniTooltipManager, PersistentTipStaysWhileTheCursorRests) {
    TipForm form;
    form.manager->PersistentTip(true);
    form.hover(40, 60);
    ASSERT_TRUE(pumpUntil(tipVisible, 3000));
    pumpFor(ctlUniToolTip::kHideTipMs + 800);
    EXPECT_TRUE(tipVisible());
    form.manager->HideTip();
    EXPECT_FALSE(tipVisible());
}

TEST(ctlUniTooltipManager, BlankTextHidesAndTagsAndUpdatesTakeEffectInPlace) {
    TipForm form;
    form.hover(30, 30);
    ASSERT_TRUE(pumpUntil(tipVisible, 3000));
    ctlUniToolTip& tip = *ctlUniToolTip::Existing();
    const RECT before = windowRect(tip.hWnd());
    form.manager->UpdateTip(u"A much longer text than the one before it", 0, u"tag-1");
    EXPECT_TRUE(tipVisible()) << "an update needs no delay";
    EXPECT_EQ(tip.lblTip().Caption(), u" A much longer text than the one before it");
    EXPECT_GT(windowRect(tip.hWnd()).right - windowRect(tip.hWnd()).left, before.right - before.left);
    EXPECT_EQ(form.manager->GetTipTag(), u"tag-1");
    form.manager->SetTip(u" \t ");
    EXPECT_FALSE(tipVisible());
    EXPECT_EQ(form.manager->GetTipTag(), u"tag-1") << "no tag given keeps the stored one";
}

TEST(ctlUniTooltipManager, ATipWiderThanTheMaximumWraps) {
    TipForm form;
    const CtlString text =
        u"\u042D\u0442\u043E \u043E\u0447\u0435\u043D\u044C \u0434\u043B\u0438\u043D\u043D\u0430\u044F "
        u"\u043F\u043E\u0434\u0441\u043A\u0430\u0437\u043A\u0430 with many words that cannot fit on one line at all";
    form.frame->Tip(text);
    form.manager->SetTip(text, 150);
    POINT pt{};
    ::GetCursorPos(&pt);
    ASSERT_TRUE(pumpUntil(tipVisible, 3000));
    const RECT wrapped = windowRect(ctlUniToolTip::Existing()->hWnd());
    EXPECT_LE(wrapped.right - wrapped.left, 150);
    form.manager->UpdateTip(text, 0);
    const RECT oneLine = windowRect(ctlUniToolTip::Existing()->hWnd());
    EXPECT_GT(oneLine.right - oneLine.left, 150);
    EXPECT_GT(wrapped.bottom - wrapped.top, 2 * (oneLine.bottom - oneLine.top) - 12) << "three lines or more";
}

TEST(ctlUniTooltipManager, WithoutAManagerNothingHappensAndTheEndTakesTheServiceDown) {
    {
        TipForm form;
        form.manager->SetTip(u"tip");
        EXPECT_NE(ctlUniToolTip::Existing(), nullptr);
        form.manager->ActivateTips(false);
        EXPECT_FALSE(IsTooltipManagerAlive());
        EXPECT_EQ(ctlUniToolTip::Existing(), nullptr);
        form.manager->SetTip(u"tip");
        form.hover(10, 10);
        EXPECT_EQ(ctlUniToolTip::Existing(), nullptr);
        form.manager->ActivateTips(true);
        EXPECT_TRUE(IsTooltipManagerAlive());
    }
    EXPECT_FALSE(IsTooltipManagerAlive()) << "the manager's end";
    EXPECT_EQ(ctlUniToolTip::Existing(), nullptr);
    PassTipToTooltipLayer(u"tip");
    EXPECT_EQ(ctlUniToolTip::Existing(), nullptr);

    // Design mode: the manager registers nothing.
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 0, 0, 32, 32);
    surface.HostAmbient().UserMode(false);
    ctlUniTooltipManager designed(surface);
    designed.InitProperties();
    EXPECT_FALSE(IsTooltipManagerAlive());
    surface.HostAmbient().UserMode(true);
    surface.NotifyAmbientChanged(u"UserMode");
    EXPECT_TRUE(IsTooltipManagerAlive()) << "the form went to run time";
}

TEST(ctlUniTooltipManager, TipWindowAt192DpiIsTwiceItsSizeAt96) {
    const auto tipSize = [](int32_t dpi) {
        Win32Surface::OverrideDpiForNewSurfaces(dpi);
        TipForm form;
        form.manager->SetTip(u"Sized tip");
        EXPECT_EQ(ctlUniToolTip::Existing()->Dpi(), dpi);
        EXPECT_TRUE(pumpUntil(tipVisible, 3000));
        const RECT r = windowRect(ctlUniToolTip::Existing()->hWnd());
        Win32Surface::OverrideDpiForNewSurfaces(0);
        return SIZE{r.right - r.left, r.bottom - r.top};
    };
    const SIZE at96 = tipSize(96);
    const SIZE at192 = tipSize(192);
    EXPECT_NEAR(at192.cx, 2 * at96.cx, 4);
    EXPECT_NEAR(at192.cy, 2 * at96.cy, 2);
}

TEST(ctlUniTooltipManager, ThousandManagersAndTipWindowsLeaveNothingBehind) {
    testsupport::TestHostWindow host;
    testsupport::LiveGdiObjects();
    {
        Win32Surface surface(host.get(), 0, 0, 32, 32);
        ctlUniTooltipManager warmUp(surface);
        warmUp.InitProperties();
        warmUp.SetTip(u"warm up");
    }
    const size_t gdi = testsupport::LiveGdiObjects();
    const size_t windows = testsupport::ThreadWindowCount();
    for (int i = 0; i < 1000; ++i) {
        Win32Surface surface(host.get(), 0, 0, 32, 32);
        ctlUniTooltipManager manager(surface);
        manager.InitProperties();
        manager.SetTip(u"tip");
        manager.UpdateTip(u"another tip");
    }
    EXPECT_EQ(testsupport::LiveGdiObjects(), gdi);
    EXPECT_EQ(testsupport::ThreadWindowCount(), windows);
}
