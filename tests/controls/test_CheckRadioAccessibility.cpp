// The check box and the radio as a screen reader reads them, hosted in a Win32Surface.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "CheckRadioTestSupport.h"
#include "controls/ctlUniCheckXP.h"
#include "controls/ctlUniRadioXP.h"
#include "support/AccessibleProbe.h"
#include "support/OleSession.h"

using testsupport::AccessibleOf;
using testsupport::AskRole;
using testsupport::AskState;
using testsupport::AskText;
using testsupport::ChildId;

namespace {

// State changes of the client objects, recorded by an out-of-context hook on this thread.
std::vector<HWND> t_stateChanges;
void CALLBACK recordStateChange(HWINEVENTHOOK, DWORD, HWND hwnd, LONG object, LONG child, DWORD, DWORD) {
    if (object == OBJID_CLIENT && child == CHILDID_SELF) t_stateChanges.push_back(hwnd);
}

void pumpMessages() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
}

template <class Control>
void checkReading(LONG role, const std::u16string& actionOff, const std::u16string& actionOn, bool secondActionUnchecks) {
    auto surface = std::make_unique<Win32Surface>(checkradio::SharedHost(), 5, 5, 160, 20);
    auto control = std::make_unique<Control>(*surface);
    control->InitProperties();
    control->Caption(u"&\u041F\u043E\u0447\u0442\u0430 \u4E2D && \U0001F600");
    const HWND hwnd = surface->hWnd();
    const auto object = AccessibleOf(hwnd);
    ASSERT_TRUE(object);
    EXPECT_EQ(AskRole(object.get()), role);
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accName).text, u"\u041F\u043E\u0447\u0442\u0430 \u4E2D & \U0001F600");
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accKeyboardShortcut).text, u"Alt+\u041F");
    EXPECT_EQ(AskState(object.get()) & ~STATE_SYSTEM_FOCUSED, STATE_SYSTEM_FOCUSABLE);
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accDefaultAction).text, actionOff);

    t_stateChanges.clear();
    const HWINEVENTHOOK hook = ::SetWinEventHook(EVENT_OBJECT_STATECHANGE, EVENT_OBJECT_STATECHANGE, nullptr,
                                                 &recordStateChange, ::GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    ASSERT_NE(hook, nullptr);
    EXPECT_EQ(object->accDoDefaultAction(ChildId(CHILDID_SELF)), S_OK);  // as a click
    pumpMessages();
    EXPECT_EQ(t_stateChanges, std::vector<HWND>{hwnd});
    EXPECT_TRUE(control->Pressed());
    EXPECT_EQ(AskState(object.get()) & STATE_SYSTEM_CHECKED, STATE_SYSTEM_CHECKED);
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accDefaultAction).text, actionOn);
    EXPECT_EQ(object->accDoDefaultAction(ChildId(CHILDID_SELF)), S_OK);
    pumpMessages();
    ::UnhookWinEvent(hook);
    EXPECT_EQ(control->Pressed(), !secondActionUnchecks);

    ::SetFocus(hwnd);
    EXPECT_EQ(AskState(object.get()) & STATE_SYSTEM_FOCUSED, ::GetFocus() == hwnd ? STATE_SYSTEM_FOCUSED : 0);
    control->Enabled(false);
    EXPECT_EQ(AskState(object.get()) & STATE_SYSTEM_UNAVAILABLE, STATE_SYSTEM_UNAVAILABLE);
    EXPECT_EQ(object->accDoDefaultAction(ChildId(CHILDID_SELF)), DISP_E_MEMBERNOTFOUND);

    control.reset();
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accName).hr, RPC_E_DISCONNECTED);
}

TEST(CheckRadioAccessibility, CheckBoxReadsAsACheckButtonThatItsDefaultActionToggles) {
    const testsupport::OleSession ole;
    checkReading<ctlUniCheckXP>(ROLE_SYSTEM_CHECKBUTTON, u"Check", u"Uncheck", true);
}

TEST(CheckRadioAccessibility, RadioReadsAsARadioButtonThatItsDefaultActionSelects) {
    const testsupport::OleSession ole;
    checkReading<ctlUniRadioXP>(ROLE_SYSTEM_RADIOBUTTON, u"Select", u"Select", false);
}

}  // namespace
