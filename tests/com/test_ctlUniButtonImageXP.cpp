// The image button as an ActiveX control: late bound through IDispatch, persisted through the
// container's bag, in place in a container window with its events and its accessible object.
#include <gtest/gtest.h>

#include <vector>

#include "ComTestSupport.h"
#include "TestContainer.h"
#include "support/AccessibleProbe.h"
#include "support/OleSession.h"

namespace comtest {
namespace {

using tc::com::CLSID_ctlUniButtonImageXP;
using tc::com::DIID___ctlUniButtonImageXP;
using testsupport::OleSession;

const std::u16string kCaption = u"&\u0413\u043E\u0442\u043E\u0432\u043E \u5B8C\u6210 \U0001F44D";

template <class I>
ComPtr<I> As(IUnknown* object, REFIID iid) {
    ComPtr<I> out;
    if (object) object->QueryInterface(iid, out.putVoid());
    return out;
}

// A set by reference, as a host assigns an object property.
HRESULT PutRef(IDispatch* object, const wchar_t* name, Var& value) {
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    if (FAILED(object->GetIDsOfNames(IID_NULL, names, 1, 0, &id))) return DISP_E_UNKNOWNNAME;
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{&value.v, &named, 1, 1};
    return object->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUTREF, &params, nullptr, nullptr, nullptr);
}

DISPID EventId(IDispatch* control, const wchar_t* name) {
    ComPtr<ITypeInfo> info;
    ComPtr<ITypeLib> lib;
    ComPtr<ITypeInfo> eventInfo;
    UINT index = 0;
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    if (SUCCEEDED(control->GetTypeInfo(0, 0, info.put())) && SUCCEEDED(info->GetContainingTypeLib(lib.put(), &index)) &&
        SUCCEEDED(lib->GetTypeInfoOfGuid(DIID___ctlUniButtonImageXP, eventInfo.put()))) {
        eventInfo->GetIDsOfNames(names, 1, &id);
    }
    return id;
}

// A button on its site, in place, with a sink recording its events' dispatch ids.
struct HostedButton {
    HostedButton() : site(TestSite::Ambient::RunMode, &extender) {
        button = Server::Instance().Create(CLSID_ctlUniButtonImageXP);
        EXPECT_TRUE(button);
        ole = As<IOleObject>(button.get(), IID_IOleObject);
        EXPECT_EQ(ole->SetClientSite(&site), S_OK);
        EXPECT_EQ(As<IPersistPropertyBag>(button.get(), IID_IPersistPropertyBag)->InitNew(), S_OK);
        EXPECT_EQ(ole->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, site.Window(), &site.Place()), S_OK);
        const auto container = As<IConnectionPointContainer>(button.get(), IID_IConnectionPointContainer);
        EXPECT_EQ(container->FindConnectionPoint(DIID___ctlUniButtonImageXP, point.put()), S_OK);
        EXPECT_EQ(point->Advise(&sink, &cookie), S_OK);
    }
    ~HostedButton() {
        point->Unadvise(cookie);
        ole->Close(OLECLOSE_NOSAVE);
        ole->SetClientSite(nullptr);
    }
    HostedButton(const HostedButton&) = delete;
    HostedButton& operator=(const HostedButton&) = delete;

    TestExtender extender{u"cmdApply"};
    TestSite site;
    ComPtr<IDispatch> button;
    ComPtr<IOleObject> ole;
    ComPtr<IConnectionPoint> point;
    DWORD cookie = 0;
    std::vector<DISPID> seen;
    EventSink sink{[this](DISPID id, DISPPARAMS&) { seen.push_back(id); }};
};

TEST(ctlUniButtonImageXPCom, MembersThroughIDispatchAndKeysThroughTheContainersBag) {
    const OleSession ole;
    HostedButton h;
    IDispatch* b = h.button.get();
    // A new button shows its extender's name and starts flat, black-bordered, without focus rectangle.
    EXPECT_EQ(Call(b, L"Caption").value.Text(), u"cmdApply");
    EXPECT_EQ(Call(b, L"Style").value.Text(), u"0");
    EXPECT_EQ(Call(b, L"BorderColor").value.Text(), u"0");
    EXPECT_EQ(Call(b, L"ShowFocus").value.Text(), u"0");

    struct Case {
        const wchar_t* name;
        Var value;
        std::u16string readBack;
    };
    const std::vector<Case> cases = {
        {L"Caption", Var(kCaption), kCaption},
        {L"ImagePos", Var(int32_t{11}), u"11"},
        {L"TransparencyType", Var(int32_t{-1}), u"-1"},
        {L"TransparentColor", Var(int32_t{0xFF00FF}), u"16711935"},
        {L"xTranspColor", Var(int32_t{4}), u"4"},
        {L"Tristate", Var(true), u"-1"},
        {L"DblClickEvent", Var(true), u"-1"},
        {L"Tip", Var(std::u16string(u"\u4E16")), u"\u4E16"},
    };
    for (const Case& c : cases) {
        ASSERT_EQ(Put(b, c.name, c.value).hr, S_OK) << std::string(c.name, c.name + wcslen(c.name));
        EXPECT_EQ(Units(Call(b, c.name).value.Text()), Units(c.readBack));
    }

    // A picture set by reference is the host's object, handed back as it is.
    PICTDESC desc{sizeof(PICTDESC), PICTYPE_BITMAP, {}};
    desc.bmp.hbitmap = ::CreateBitmap(8, 8, 1, 32, nullptr);
    ComPtr<IPictureDisp> picture;
    ASSERT_EQ(::OleCreatePictureIndirect(&desc, IID_IPictureDisp, TRUE, picture.putVoid()), S_OK);
    Var byReference;
    byReference.v.vt = VT_DISPATCH;
    byReference.v.pdispVal = picture.get();
    picture->AddRef();
    ASSERT_EQ(PutRef(b, L"Picture", byReference), S_OK);
    const CallResult got = Call(b, L"Picture");
    ASSERT_EQ(got.value.v.vt, VT_DISPATCH);
    EXPECT_EQ(Call(got.value.v.pdispVal, L"Handle").value.Text(),
              Call(picture.get(), L"Handle").value.Text());

    // Saved through the container's bag and read back by a second button (the key order is the C++ test's).
    RecordingBag saved;
    ASSERT_EQ(As<IPersistPropertyBag>(b, IID_IPersistPropertyBag)->Save(&saved, TRUE, TRUE), S_OK);
    const auto loaded = Server::Instance().Create(CLSID_ctlUniButtonImageXP);
    ASSERT_EQ(As<IPersistPropertyBag>(loaded.get(), IID_IPersistPropertyBag)->Load(&saved, nullptr), S_OK);
    EXPECT_EQ(Units(Call(loaded.get(), L"Caption").value.Text()), Units(kCaption));
    EXPECT_EQ(Call(loaded.get(), L"ImagePos").value.Text(), u"11");
    EXPECT_EQ(Call(loaded.get(), L"DblClickEvent").value.Text(), u"-1");
    EXPECT_EQ(Call(loaded.get(), L"Picture").value.v.vt, VT_DISPATCH);
}

TEST(ctlUniButtonImageXPCom, InPlaceItClicksByMouseKeyValueAndScreenReader) {
    const OleSession ole;
    HostedButton h;
    IDispatch* b = h.button.get();
    const HWND hwnd = HwndOf(b);
    ASSERT_TRUE(::IsWindow(hwnd));
    const DISPID keyPress = EventId(b, L"KeyPress");
    ASSERT_NE(keyPress, DISPID_UNKNOWN);

    ::SendMessageW(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    ::SendMessageW(hwnd, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    ::SendMessageW(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    ::SendMessageW(hwnd, WM_LBUTTONUP, 0, MAKELPARAM(500, 5));  // released outside: no click
    ::SendMessageW(hwnd, WM_CHAR, VK_SPACE, 0);
    EXPECT_EQ(h.seen, (std::vector<DISPID>{DISPID_MOUSEDOWN, DISPID_MOUSEUP, DISPID_CLICK, DISPID_MOUSEDOWN,
                                           DISPID_MOUSEUP, keyPress, DISPID_CLICK}));

    // Value = True is the host's click, and under Tristate it sticks the button in.
    h.seen.clear();
    ASSERT_EQ(Put(b, L"Tristate", Var(true)).hr, S_OK);
    ASSERT_EQ(Put(b, L"Value", Var(true)).hr, S_OK);
    EXPECT_EQ(h.seen, std::vector<DISPID>{DISPID_CLICK});
    EXPECT_EQ(Call(b, L"Pressed").value.Text(), u"-1");
    EXPECT_EQ(Call(b, L"Value").value.Text(), u"-1");

    ASSERT_EQ(Put(b, L"Caption", Var(kCaption)).hr, S_OK);
    const auto accessible = testsupport::AccessibleOf(hwnd);
    ASSERT_TRUE(accessible);
    EXPECT_EQ(testsupport::AskRole(accessible.get()), ROLE_SYSTEM_CHECKBUTTON);
    EXPECT_EQ(testsupport::AskState(accessible.get()) & STATE_SYSTEM_PRESSED, STATE_SYSTEM_PRESSED);
    ASSERT_EQ(Put(b, L"Tristate", Var(false)).hr, S_OK);
    EXPECT_EQ(testsupport::AskRole(accessible.get()), ROLE_SYSTEM_PUSHBUTTON);
    EXPECT_EQ(Units(testsupport::AskText(accessible.get(), &IAccessible::get_accName).text), Units(kCaption.substr(1)));
    EXPECT_EQ(testsupport::AskText(accessible.get(), &IAccessible::get_accKeyboardShortcut).text, u"Alt+\u0413");
    h.seen.clear();
    EXPECT_EQ(accessible->accDoDefaultAction(testsupport::ChildId(CHILDID_SELF)), S_OK);
    EXPECT_EQ(h.seen, std::vector<DISPID>{DISPID_CLICK});
    RECT window{};
    ::GetWindowRect(hwnd, &window);
    const RECT location = testsupport::AskLocation(accessible.get());
    EXPECT_TRUE(::EqualRect(&location, &window));
}

}  // namespace
}  // namespace comtest
