// Every control with a caption, hosted as an ActiveX control, reads as a screen reader asks for it:
// its in-place window answers with the control's own accessible object.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ComTestSupport.h"
#include "TestContainer.h"
#include "support/AccessibleProbe.h"

namespace comtest {
namespace {

using testsupport::AccessibleOf;
using testsupport::AskLocation;
using testsupport::AskRole;
using testsupport::AskState;
using testsupport::AskText;
using testsupport::ChildId;

struct CaptionedControl {
    const char* name;
    CLSID clsid;
    LONG role;
};

const std::u16string kCaption = u"&\u041F\u0440\u0438\u0432\u0435\u0442 \u4E16\u754C \U0001F600";
const std::u16string kCaptionWithoutMarker = u"\u041F\u0440\u0438\u0432\u0435\u0442 \u4E16\u754C \U0001F600";

const CaptionedControl kControls[] = {
    {"ctlUniLabel", tc::com::CLSID_ctlUniLabel, ROLE_SYSTEM_STATICTEXT},
    {"ctlUniLabelNoFlick", tc::com::CLSID_ctlUniLabelNoFlick, ROLE_SYSTEM_STATICTEXT},
    {"ctlUniButtonImageXP", tc::com::CLSID_ctlUniButtonImageXP, ROLE_SYSTEM_PUSHBUTTON},
    {"ctlUniCheckXP", tc::com::CLSID_ctlUniCheckXP, ROLE_SYSTEM_CHECKBUTTON},
    {"ctlUniRadioXP", tc::com::CLSID_ctlUniRadioXP, ROLE_SYSTEM_RADIOBUTTON},
    {"ctlUniFrameXP", tc::com::CLSID_ctlUniFrameXP, ROLE_SYSTEM_GROUPING},
};

TEST(ControlAccessibility, InPlaceControlsHaveTheirRoleAndUnicodeNameUntilDeactivated) {
    ASSERT_TRUE(SUCCEEDED(::OleInitialize(nullptr)));
    for (const CaptionedControl& control : kControls) {
        SCOPED_TRACE(control.name);
        TestSite site(TestSite::Ambient::RunMode, nullptr);
        ComPtr<IDispatch> instance = Server::Instance().Create(control.clsid);
        ASSERT_TRUE(instance);
        ComPtr<IOleObject> object;
        ASSERT_EQ(instance->QueryInterface(IID_IOleObject, object.putVoid()), S_OK);
        ASSERT_EQ(object->SetClientSite(&site), S_OK);
        ASSERT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, site.Window(), &site.Place()), S_OK);
        // The frame draws its title without access keys, so its "&" stays in the name.
        const std::u16string& name = control.role == ROLE_SYSTEM_GROUPING ? kCaption : kCaptionWithoutMarker;
        ASSERT_EQ(Put(instance.get(), L"Caption", Var(kCaption)).hr, S_OK);
        const HWND hwnd = HwndOf(instance.get());
        ASSERT_TRUE(::IsWindow(hwnd));

        auto accessible = AccessibleOf(hwnd);
        ASSERT_TRUE(accessible);
        EXPECT_EQ(AskRole(accessible.get()), control.role);
        const auto read = AskText(accessible.get(), &IAccessible::get_accName);
        EXPECT_EQ(std::vector<int>(read.text.begin(), read.text.end()), std::vector<int>(name.begin(), name.end()));
        ASSERT_EQ(Put(instance.get(), L"Enabled", Var(false)).hr, S_OK);
        EXPECT_EQ(AskState(accessible.get()) & STATE_SYSTEM_UNAVAILABLE, STATE_SYSTEM_UNAVAILABLE);
        ASSERT_EQ(Put(instance.get(), L"Enabled", Var(true)).hr, S_OK);
        EXPECT_EQ(AskState(accessible.get()) & STATE_SYSTEM_UNAVAILABLE, 0);
        RECT window{};
        ::GetWindowRect(hwnd, &window);
        const RECT location = AskLocation(accessible.get());
        EXPECT_TRUE(::EqualRect(&location, &window));
        EXPECT_EQ(AskText(accessible.get(), &IAccessible::get_accName, 1).hr, E_INVALIDARG);

        // Deactivation destroys the window; the held object answers an error from then on.
        ComPtr<IOleInPlaceObject> inPlace;
        ASSERT_EQ(instance->QueryInterface(IID_IOleInPlaceObject, inPlace.putVoid()), S_OK);
        EXPECT_EQ(inPlace->InPlaceDeactivate(), S_OK);
        EXPECT_FALSE(::IsWindow(hwnd));
        EXPECT_EQ(AskText(accessible.get(), &IAccessible::get_accName).hr, RPC_E_DISCONNECTED);
        EXPECT_EQ(AskRole(accessible.get()), -1);
        object->Close(OLECLOSE_NOSAVE);
        object->SetClientSite(nullptr);
        inPlace.reset();
        object.reset();
        instance.reset();
        // The control itself gone too: still an error, never a crash.
        EXPECT_EQ(AskText(accessible.get(), &IAccessible::get_accDescription).hr, RPC_E_DISCONNECTED);
        // Its code must stay loaded while it is held.
        EXPECT_EQ(Server::Instance().CanUnloadNow(), S_FALSE);
        accessible.reset();
        EXPECT_EQ(Server::Instance().CanUnloadNow(), S_OK);
    }
    ::OleUninitialize();
}

}  // namespace
}  // namespace comtest
