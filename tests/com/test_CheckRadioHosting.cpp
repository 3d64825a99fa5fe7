// ctlUniCheckXP and ctlUniRadioXP as ActiveX controls: members through IDispatch, keys through the
// container's bag, events of real messages, screen readers, and the radio group across two
// containers of the test container's form.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <oleacc.h>

#include "ComTestSupport.h"
#include "TestContainer.h"
#include "support/AccessibleProbe.h"
#include "support/OleSession.h"

namespace comtest {
namespace {

using tc::com::CLSID_ctlUniCheckXP;
using tc::com::CLSID_ctlUniRadioXP;
using testsupport::OleSession;

// A control of the server on `site` (none for a bare object).
ComPtr<IDispatch> Attached(const GUID& clsid, TestSite* site) {
    ComPtr<IDispatch> control = Server::Instance().Create(clsid);
    ComPtr<IOleObject> ole;
    if (control && site && SUCCEEDED(control->QueryInterface(IID_IOleObject, ole.putVoid()))) {
        EXPECT_EQ(ole->SetClientSite(site), S_OK);
    }
    return control;
}

void Detach(IDispatch* control) {
    ComPtr<IOleObject> ole;
    if (control && SUCCEEDED(control->QueryInterface(IID_IOleObject, ole.putVoid()))) {
        ole->Close(OLECLOSE_NOSAVE);
        ole->SetClientSite(nullptr);
    }
}

bool PressedOf(IDispatch* control) {
    const CallResult r = Call(control, L"Pressed");
    return r.value.v.vt == VT_BOOL && r.value.v.boolVal != VARIANT_FALSE;
}

TEST(CheckRadioHosting, MembersThroughDispatch) {
    const OleSession ole;
    const auto check = Attached(CLSID_ctlUniCheckXP, nullptr);
    const auto radio = Attached(CLSID_ctlUniRadioXP, nullptr);
    ASSERT_TRUE(check && radio);
    const std::u16string caption = u"\u0416\u0443\u043A \u4E2D\u6587 \U0001F600";
    EXPECT_EQ(Put(check.get(), L"Caption", Var(caption)).hr, S_OK);
    EXPECT_EQ(Units(Call(check.get(), L"Caption").value.Text()), Units(caption));
    // The check's Value is 1 or 0, a number; the radio's a Boolean.
    EXPECT_EQ(Put(check.get(), L"Value", Var(int32_t{5})).hr, S_OK);
    const CallResult value = Call(check.get(), L"Value");
    EXPECT_EQ(value.value.v.vt, VT_I2);
    EXPECT_EQ(value.value.Text(), u"1");
    EXPECT_TRUE(PressedOf(check.get()));
    EXPECT_EQ(Put(check.get(), L"Pressed", Var(false)).hr, S_OK);
    EXPECT_EQ(Call(check.get(), L"Value").value.Text(), u"0");
    EXPECT_EQ(Put(radio.get(), L"Value", Var(true)).hr, S_OK);
    EXPECT_EQ(Call(radio.get(), L"Value").value.v.vt, VT_BOOL);
    EXPECT_EQ(Put(check.get(), L"Align", Var(int32_t{1})).hr, S_OK);
    EXPECT_EQ(Call(check.get(), L"Align").value.Text(), u"1");
    EXPECT_EQ(Put(radio.get(), L"RadioForeColor", Var(int32_t{0x008000})).hr, S_OK);
    EXPECT_EQ(Put(check.get(), L"CheckBackColor", Var(int32_t{0xFFFFFF})).hr, S_OK);
    EXPECT_EQ(Call(check.get(), L"CheckBackColor").value.Text(), u"16777215");
    // ExternUnpress with and without the index: no container, no group, nothing released.
    EXPECT_EQ(Call(radio.get(), L"ExternUnpress", {Var(L"")}).hr, S_OK);
    EXPECT_EQ(Call(radio.get(), L"ExternUnpress", {Var(L"fra"), Var(int32_t{1})}).hr, S_OK);
    EXPECT_TRUE(PressedOf(radio.get()));
    EXPECT_EQ(Call(check.get(), L"ExternUnpress", {Var(L"")}).hr, DISP_E_UNKNOWNNAME);
}

TEST(CheckRadioHosting, KeysEventsAndScreenReadersInPlace) {
    const OleSession ole;
    TestSite site(TestSite::Ambient::RunMode, nullptr);
    const auto check = Attached(CLSID_ctlUniCheckXP, &site);
    ASSERT_TRUE(check);
    ComPtr<IPersistPropertyBag> persist;
    ASSERT_EQ(check->QueryInterface(IID_IPersistPropertyBag, persist.putVoid()), S_OK);
    RecordingBag empty;
    ASSERT_EQ(persist->Load(&empty, nullptr), S_OK);
    EXPECT_EQ(empty.reads, (std::vector<std::u16string>{u"Font", u"Caption", u"Enabled", u"Align", u"CheckBackColor",
                                                        u"CheckForeColor", u"BackColor", u"ForeColor", u"BorderColor",
                                                        u"Pressed", u"Tip", u"Style", u"OLEDropMode", u"MousePointer",
                                                        u"MouseIcon", u"ShowFocus"}));

    ComPtr<IOleObject> object;
    ASSERT_EQ(check->QueryInterface(IID_IOleObject, object.putVoid()), S_OK);
    ASSERT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, site.Window(), &site.Place()), S_OK);
    Var handle = Call(check.get(), L"Hwnd").value;
    ::VariantChangeType(&handle.v, &handle.v, 0, VT_I8);
    const HWND hwnd = reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle.v.llVal));
    ASSERT_TRUE(::IsWindow(hwnd));

    std::vector<DISPID> seen;
    EventSink sink([&](DISPID id, DISPPARAMS& params) {
        seen.push_back(id);
        if (id == DISPID_KEYPRESS && params.cArgs == 1 && *params.rgvarg[0].piVal == 13) *params.rgvarg[0].piVal = 0;
    });
    ComPtr<IConnectionPointContainer> points;
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(check->QueryInterface(IID_IConnectionPointContainer, points.putVoid()), S_OK);
    ASSERT_EQ(points->FindConnectionPoint(tc::com::DIID___ctlUniCheckXP, point.put()), S_OK);
    DWORD cookie = 0;
    ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);
    ::SendMessageW(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    ::SendMessageW(hwnd, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    ::SendMessageW(hwnd, WM_CHAR, 13, 0);  // vetoed by the sink
    ::SendMessageW(hwnd, WM_CHAR, 32, 0);
    EXPECT_EQ(seen, (std::vector<DISPID>{DISPID_MOUSEDOWN, DISPID_MOUSEUP, DISPID_CLICK, DISPID_KEYPRESS,
                                         DISPID_KEYPRESS, DISPID_CLICK}));
    EXPECT_FALSE(PressedOf(check.get()));
    point->Unadvise(cookie);

    // A screen reader sees a check button, checked after its default action.
    EXPECT_EQ(Put(check.get(), L"Caption", Var(L"&Mail \u4E2D")).hr, S_OK);
    const auto accessible = testsupport::AccessibleOf(hwnd);
    ASSERT_TRUE(accessible);
    EXPECT_EQ(testsupport::AskRole(accessible.get()), ROLE_SYSTEM_CHECKBUTTON);
    EXPECT_EQ(testsupport::AskText(accessible.get(), &IAccessible::get_accName).text, u"Mail \u4E2D");
    EXPECT_EQ(testsupport::AskText(accessible.get(), &IAccessible::get_accDefaultAction).text, u"Check");
    EXPECT_EQ(accessible->accDoDefaultAction(testsupport::ChildId(CHILDID_SELF)), S_OK);
    EXPECT_TRUE(PressedOf(check.get()));
    EXPECT_NE(testsupport::AskState(accessible.get()) & STATE_SYSTEM_CHECKED, 0);
    EXPECT_NE(testsupport::AskState(accessible.get()) & STATE_SYSTEM_FOCUSABLE, 0);
    EXPECT_EQ(testsupport::AskText(accessible.get(), &IAccessible::get_accDefaultAction).text, u"Uncheck");
    Detach(check.get());
}

// Two radios in frame "fraA", two in "fraB", each with its extender on the test container's form.
TEST(CheckRadioHosting, RadiosReleaseOnlyTheirOwnContainersGroup) {
    const OleSession ole;
    TestForm form;
    TestContainerObject frameA(u"fraA");
    TestContainerObject frameB(u"fraB");
    TestExtender extenders[] = {TestExtender(u"optA", 0), TestExtender(u"optA", 1), TestExtender(u"optB1"),
                                TestExtender(u"optB2")};
    std::vector<std::unique_ptr<TestSite>> sites;
    std::vector<ComPtr<IDispatch>> radios;
    for (int i = 0; i < 4; ++i) {
        TestExtender& extender = extenders[i];
        extender.Container(i < 2 ? &frameA : &frameB);
        extender.Parent(&form);
        form.Add(&extender);
        sites.push_back(std::make_unique<TestSite>(TestSite::Ambient::RunMode, &extender));
        radios.push_back(Attached(CLSID_ctlUniRadioXP, sites.back().get()));
        ASSERT_TRUE(radios.back());
        extender.Control(radios.back().get());
    }
    auto pressed = [&] {
        std::string state;
        for (const auto& r : radios) state += PressedOf(r.get()) ? '1' : '0';
        return state;
    };
    ASSERT_EQ(Put(radios[0].get(), L"Pressed", Var(true)).hr, S_OK);
    ASSERT_EQ(Put(radios[2].get(), L"Pressed", Var(true)).hr, S_OK);
    EXPECT_EQ(pressed(), "1010");
    ASSERT_EQ(Put(radios[1].get(), L"Pressed", Var(true)).hr, S_OK);  // optA(1) releases optA(0)
    EXPECT_EQ(pressed(), "0110");
    ASSERT_EQ(Put(radios[3].get(), L"Value", Var(true)).hr, S_OK);
    EXPECT_EQ(pressed(), "0101");

    for (auto& r : radios) Detach(r.get());
}

}  // namespace
}  // namespace comtest
