// The labels as a screen reader reads them, hosted in a Win32Surface.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "controls/ctlUniLabel.h"
#include "controls/ctlUniLabelNoFlick.h"
#include "frame/Win32Surface.h"
#include "support/AccessibleProbe.h"
#include "support/OleSession.h"
#include "support/TestHostWindow.h"

using testsupport::AccessibleOf;
using testsupport::AskLocation;
using testsupport::AskRole;
using testsupport::AskState;
using testsupport::AskText;
using testsupport::ChildId;

namespace {

const std::u16string kCaption = u"\u041F\u0440\u0438&\u0432\u0435\u0442 \u4E16\u754C \U0001F600 &&";
const std::u16string kName = u"\u041F\u0440\u0438\u0432\u0435\u0442 \u4E16\u754C \U0001F600 &";

// Name-change events of one window, recorded by an out-of-context hook on this thread.
std::vector<HWND> t_nameChanges;
void CALLBACK recordNameChange(HWINEVENTHOOK, DWORD, HWND hwnd, LONG object, LONG child, DWORD, DWORD) {
    if (object == OBJID_CLIENT && child == CHILDID_SELF) t_nameChanges.push_back(hwnd);
}

void pumpMessages() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
}

template <class Label>
void checkLabel(bool autoRedraw) {
    testsupport::TestHostWindow host;
    auto surface = std::make_unique<Win32Surface>(host.get(), 15, 25, 160, 30, autoRedraw);
    auto label = std::make_unique<Label>(*surface);
    label->InitProperties();
    label->Caption(kCaption);
    label->Tip(u"\u4E16 tip");
    const HWND hwnd = surface->hWnd();
    const auto object = AccessibleOf(hwnd);
    ASSERT_TRUE(object);

    // Never the generic client role (10) of the system's proxy.
    EXPECT_EQ(AskRole(object.get()), ROLE_SYSTEM_STATICTEXT);
    const auto name = AskText(object.get(), &IAccessible::get_accName);
    EXPECT_EQ(name.hr, S_OK);
    EXPECT_EQ(std::vector<int>(name.text.begin(), name.text.end()), std::vector<int>(kName.begin(), kName.end()));
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accDescription).text, u"\u4E16 tip");
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accValue).hr, S_FALSE);
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accDefaultAction).hr, S_FALSE);
    EXPECT_EQ(object->accDoDefaultAction(ChildId(CHILDID_SELF)), DISP_E_MEMBERNOTFOUND);
    LONG count = -1;
    EXPECT_EQ(object->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(AskState(object.get()), 0);
    label->Enabled(false);
    EXPECT_EQ(AskState(object.get()), STATE_SYSTEM_UNAVAILABLE);
    label->Enabled(true);

    RECT window{};
    ::GetWindowRect(hwnd, &window);
    const RECT location = AskLocation(object.get());
    EXPECT_EQ(location.left, window.left);
    EXPECT_EQ(location.top, window.top);
    EXPECT_EQ(location.right, window.right);
    EXPECT_EQ(location.bottom, window.bottom);

    for (const LONG bad : {-1L, 1L, 99L}) {
        EXPECT_EQ(AskText(object.get(), &IAccessible::get_accName, bad).hr, E_INVALIDARG) << bad;
        EXPECT_EQ(AskRole(object.get(), bad), -1) << bad;
    }

    // A new caption is announced and read at once.
    t_nameChanges.clear();
    const HWINEVENTHOOK hook = ::SetWinEventHook(EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_NAMECHANGE, nullptr,
                                                 &recordNameChange, ::GetCurrentProcessId(), 0,
                                                 WINEVENT_OUTOFCONTEXT);
    ASSERT_NE(hook, nullptr);
    label->Caption(u"&Next");
    pumpMessages();
    ::UnhookWinEvent(hook);
    EXPECT_EQ(t_nameChanges, std::vector<HWND>{hwnd});
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accName).text, u"Next");

    label.reset();
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accName).hr, RPC_E_DISCONNECTED);
    surface.reset();
    VARIANT role;
    ::VariantInit(&role);
    EXPECT_EQ(object->get_accRole(ChildId(CHILDID_SELF), &role), RPC_E_DISCONNECTED);
    LONG l = 0, t = 0, w = 0, h = 0;
    EXPECT_EQ(object->accLocation(&l, &t, &w, &h, ChildId(CHILDID_SELF)), RPC_E_DISCONNECTED);
}

TEST(ctlUniLabelAccessibility, ReadsAsStaticTextNamedByItsUnicodeCaption) {
    const testsupport::OleSession ole;
    checkLabel<ctlUniLabel>(false);
}

TEST(ctlUniLabelAccessibility, NoFlickLabelReadsTheSame) {
    const testsupport::OleSession ole;
    checkLabel<ctlUniLabelNoFlick>(true);
}

}  // namespace
