// The frame and the tooltip manager as ActiveX controls: through IDispatch, persisted through the
// container's bag, and in-place in a container of our own.
#include <gtest/gtest.h>

#include <oleacc.h>

#include <vector>

#include "ComTestSupport.h"
#include "TestContainer.h"
#include "support/AccessibleProbe.h"
#include "support/OleSession.h"

namespace comtest {
namespace {

using tc::com::CLSID_ctlUniFrameXP;
using tc::com::CLSID_ctlUniTooltipManager;
using testsupport::OleSession;

const std::u16string kCaption = u"\u0413\u0440\u0443\u043F\u043F\u0430 \u7EC4 \U0001F4C1";

template <class I>
ComPtr<I> As(IUnknown* object, REFIID iid) {
    ComPtr<I> out;
    if (object) object->QueryInterface(iid, out.putVoid());
    return out;
}

ComPtr<IDispatch> Activated(const GUID& clsid, TestSite& site) {
    ComPtr<IDispatch> control = Server::Instance().Create(clsid);
    const auto ole = As<IOleObject>(control.get(), IID_IOleObject);
    EXPECT_TRUE(ole);
    if (!ole) return control;
    EXPECT_EQ(ole->SetClientSite(&site), S_OK);
    EXPECT_EQ(As<IPersistStreamInit>(control.get(), IID_IPersistStreamInit)->InitNew(), S_OK);
    EXPECT_EQ(ole->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, site.Window(), &site.Place()), S_OK);
    return control;
}

void Detach(IDispatch* control) {
    if (const auto ole = As<IOleObject>(control, IID_IOleObject)) {
        ole->Close(OLECLOSE_NOSAVE);
        ole->SetClientSite(nullptr);
    }
}

}  // namespace

TEST(FrameAndTipHosting, FrameIsAContainerBoxThroughIDispatchAndTheBag) {
    const OleSession ole;
    TestExtender extender(u"fraOptions");
    TestSite site(TestSite::Ambient::RunMode, &extender, RECT{10, 10, 170, 110});
    const auto frame = Activated(CLSID_ctlUniFrameXP, site);
    ASSERT_TRUE(frame);
    EXPECT_EQ(Call(frame.get(), L"Caption").value.Text(), u"fraOptions");
    const HWND hwnd = HwndOf(frame.get());
    ASSERT_TRUE(::IsWindow(hwnd));
    EXPECT_EQ(::GetParent(hwnd), site.Window());

    ASSERT_EQ(Put(frame.get(), L"Caption", Var(kCaption)).hr, S_OK);
    ASSERT_EQ(Put(frame.get(), L"VistaStyle", Var(false)).hr, S_OK);
    ASSERT_EQ(Put(frame.get(), L"Enabled", Var(false)).hr, S_OK);
    EXPECT_FALSE(::IsWindowEnabled(hwnd)) << "run time: the surface follows";
    const auto object = testsupport::AccessibleOf(hwnd);
    ASSERT_TRUE(object);
    EXPECT_EQ(testsupport::AskRole(object.get()), ROLE_SYSTEM_GROUPING);
    EXPECT_EQ(testsupport::AskText(object.get(), &IAccessible::get_accName).text, kCaption);
    EXPECT_NE(testsupport::AskState(object.get()) & STATE_SYSTEM_UNAVAILABLE, 0);

    RecordingBag saved;
    ASSERT_EQ(As<IPersistPropertyBag>(frame.get(), IID_IPersistPropertyBag)->Save(&saved, TRUE, TRUE), S_OK);
    const std::vector<std::u16string> keys = {u"Font",        u"Caption",        u"Enabled",   u"ForeColor",
                                              u"BorderColor", u"BackColor",      u"Tip",       u"VistaStyle",
                                              u"BackColorOut", u"TitleBackColor", u"UseShadow", u"OLEDropMode",
                                              u"MousePointer", u"MouseIcon"};
    EXPECT_EQ(saved.writes, keys);
    TestSite site2(TestSite::Ambient::RunMode, nullptr);
    const auto loaded = Server::Instance().Create(CLSID_ctlUniFrameXP);
    As<IOleObject>(loaded.get(), IID_IOleObject)->SetClientSite(&site2);
    ASSERT_EQ(As<IPersistPropertyBag>(loaded.get(), IID_IPersistPropertyBag)->Load(&saved, nullptr), S_OK);
    EXPECT_EQ(saved.reads, keys);
    EXPECT_EQ(Call(loaded.get(), L"Caption").value.Text(), kCaption);
    EXPECT_EQ(Call(loaded.get(), L"VistaStyle").value.Text(), u"0");
    EXPECT_EQ(Call(loaded.get(), L"Enabled").value.Text(), u"0");
    Detach(loaded.get());
    Detach(frame.get());
}

TEST(FrameAndTipHosting, TooltipManagerRunsTheServiceThroughIDispatchAndHasNoEvents) {
    const OleSession ole;
    TestSite site(TestSite::Ambient::RunMode, nullptr, RECT{10, 10, 42, 42});
    const auto manager = Activated(CLSID_ctlUniTooltipManager, site);
    ASSERT_TRUE(manager);
    EXPECT_FALSE(As<IConnectionPointContainer>(manager.get(), IID_IConnectionPointContainer)) << "it raises no events";
    // It has no Hwnd member: its window is the one the container holds.
    const HWND hwnd = ::GetWindow(site.Window(), GW_CHILD);
    ASSERT_TRUE(::IsWindow(hwnd));
    // The container shows the window on activation; its first paint at run time hides it.
    MSG msg;
    for (int i = 0; i < 50 && ::IsWindowVisible(hwnd); ++i) {
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&msg);
        ::Sleep(10);
    }
    EXPECT_FALSE(::IsWindowVisible(hwnd)) << "no look at run time";
    EXPECT_EQ(Call(manager.get(), L"ActivateTips").value.Text(), u"-1");
    EXPECT_EQ(Call(manager.get(), L"Style").value.Text(), u"-1");
    EXPECT_EQ(Call(manager.get(), L"TipBgColor").value.Text(), std::u16string(u"2147483672"));

    // Optional arguments omitted, then given.
    ASSERT_EQ(Call(manager.get(), L"SetTip", {Var(kCaption)}).hr, S_OK);
    EXPECT_EQ(Call(manager.get(), L"GetTip").value.Text(), kCaption);
    EXPECT_EQ(Call(manager.get(), L"TipIsVisible").value.Text(), u"0") << "not before the show delay";
    ASSERT_EQ(Call(manager.get(), L"UpdateTip", {Var(std::u16string(u"second")), Var(int32_t{200}), Var(std::u16string(u"tag-7"))}).hr, S_OK);
    EXPECT_EQ(Call(manager.get(), L"GetTip").value.Text(), u"second");
    EXPECT_EQ(Call(manager.get(), L"GetTipTag").value.Text(), u"tag-7");
    EXPECT_EQ(Call(manager.get(), L"HideTip").hr, S_OK);
    ASSERT_EQ(Put(manager.get(), L"Transparency", Var(int32_t{30})).hr, S_OK);
    EXPECT_EQ(Call(manager.get(), L"Transparency").value.Text(), u"30");

    ASSERT_EQ(Put(manager.get(), L"ActivateTips", Var(false)).hr, S_OK);
    EXPECT_EQ(Call(manager.get(), L"GetTip").value.Text(), u"") << "the service is down";
    ASSERT_EQ(Call(manager.get(), L"SetTip", {Var(std::u16string(u"ignored"))}).hr, S_OK);
    EXPECT_EQ(Call(manager.get(), L"GetTip").value.Text(), u"");

    RecordingBag saved;
    ASSERT_EQ(As<IPersistPropertyBag>(manager.get(), IID_IPersistPropertyBag)->Save(&saved, TRUE, TRUE), S_OK);
    const std::vector<std::u16string> keys = {u"PersistentTip", u"ActivateTips", u"Font",        u"TipBgColor",
                                              u"TipFgColor",    u"Style",        u"Transparency"};
    EXPECT_EQ(saved.writes, keys);
    Detach(manager.get());
}

}  // namespace comtest
