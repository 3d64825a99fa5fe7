// The labels as ActiveX controls: in a container of our own, in the platform's "AtlAxWin" host,
// and with no container at all.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "ComTestSupport.h"
#include "TestContainer.h"
#include "support/OleSession.h"
#include "support/StackComObject.h"
#include "support/TestDataObject.h"

namespace comtest {
namespace {

using tc::com::CLSID_ctlUniLabel;
using tc::com::CLSID_ctlUniLabelNoFlick;
using tc::com::DIID___ctlUniLabel;

using testsupport::OleSession;

const std::u16string kUnicodeCaption = u"\u041F\u0440\u0438\u0432\u0435\u0442 \u4E16\u754C \U0001F600!";
constexpr int32_t kRed = 0x0000FF;  // OLE colour BGR

template <class I>
ComPtr<I> As(IUnknown* object, REFIID iid) {
    ComPtr<I> out;
    if (object) object->QueryInterface(iid, out.putVoid());
    return out;
}

ComPtr<IDispatch> NewControl(const GUID& clsid, TestSite* site) {
    ComPtr<IDispatch> control = Server::Instance().Create(clsid);
    if (control && site) {
        const auto ole = As<IOleObject>(control.get(), IID_IOleObject);
        EXPECT_TRUE(ole);
        if (ole) {
            EXPECT_EQ(ole->SetClientSite(site), S_OK);
        }
    }
    return control;
}

void Detach(IDispatch* control) {
    if (const auto ole = As<IOleObject>(control, IID_IOleObject)) {
        ole->Close(OLECLOSE_NOSAVE);
        ole->SetClientSite(nullptr);
    }
}

std::u16string CaptionOf(IDispatch* control) { return Call(control, L"Caption").value.Text(); }

// A dispatch id of the control's event interface, by name.
DISPID EventId(IDispatch* control, const GUID& events, const wchar_t* name) {
    ComPtr<ITypeInfo> info;
    ComPtr<ITypeLib> lib;
    ComPtr<ITypeInfo> eventInfo;
    UINT index = 0;
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    if (SUCCEEDED(control->GetTypeInfo(0, 0, info.put())) && SUCCEEDED(info->GetContainingTypeLib(lib.put(), &index)) &&
        SUCCEEDED(lib->GetTypeInfoOfGuid(events, eventInfo.put()))) {
        eventInfo->GetIDsOfNames(names, 1, &id);
    }
    return id;
}

// A top-down 32-bit DIB in a memory DC, filled white.
class Canvas {
public:
    Canvas(int width, int height) : m_dc(::CreateCompatibleDC(nullptr)), m_width(width) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_bitmap = ::CreateDIBSection(m_dc, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&m_bits), nullptr, 0);
        m_old = ::SelectObject(m_dc, m_bitmap);
        std::memset(m_bits, 0xFF, static_cast<size_t>(width) * height * 4);
    }
    ~Canvas() {
        ::SelectObject(m_dc, m_old);
        ::DeleteObject(m_bitmap);
        ::DeleteDC(m_dc);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    HDC dc() const noexcept { return m_dc; }
    // 0x00RRGGBB
    uint32_t At(int x, int y) const { return m_bits[y * m_width + x] & 0xFFFFFF; }

private:
    HDC m_dc;
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_old = nullptr;
    uint32_t* m_bits = nullptr;
    int m_width;
};

std::vector<uint8_t> BytesOf(const VARIANT& v) {
    std::vector<uint8_t> bytes;
    if (v.vt != (VT_ARRAY | VT_UI1) || !v.parray) return bytes;
    void* data = nullptr;
    ::SafeArrayAccessData(v.parray, &data);
    bytes.assign(static_cast<uint8_t*>(data), static_cast<uint8_t*>(data) + v.parray->rgsabound[0].cElements);
    ::SafeArrayUnaccessData(v.parray);
    return bytes;
}

TEST(ControlHosting, PropertyBagOrderAndUnicodeCaptionSurviveSaveAndLoad) {
    const OleSession ole;
    TestSite site(TestSite::Ambient::RunMode, nullptr);
    const auto label = NewControl(CLSID_ctlUniLabel, &site);
    ASSERT_TRUE(label);
    const auto persist = As<IPersistPropertyBag>(label.get(), IID_IPersistPropertyBag);
    ASSERT_TRUE(persist);

    RecordingBag empty;
    ASSERT_EQ(persist->Load(&empty, nullptr), S_OK);
    const std::vector<std::u16string> readOrder = {
        u"Caption", u"BackColor", u"ForeColor", u"BorderColor", u"Alignment", u"VAlignment", u"BackStyle",
        u"BorderStyle", u"AutoSize", u"Tip", u"Style", u"Enabled", u"Margin", u"RoundedBorders", u"BackColorOut",
        u"UseRoundRegions", u"Font", u"OLEDropMode", u"MousePointer", u"MouseIcon"};
    EXPECT_EQ(empty.reads, readOrder);
    EXPECT_EQ(CaptionOf(label.get()), u"");

    ASSERT_EQ(Put(label.get(), L"Caption", Var(kUnicodeCaption)).hr, S_OK);
    ASSERT_EQ(Put(label.get(), L"BackColor", Var(int32_t{0x123456})).hr, S_OK);
    RecordingBag saved;
    ASSERT_EQ(persist->Save(&saved, TRUE, TRUE), S_OK);
    const std::vector<std::u16string> writeOrder = {
        u"Font", u"Caption", u"BackColor", u"ForeColor", u"BorderColor", u"Alignment", u"VAlignment", u"BackStyle",
        u"BorderStyle", u"AutoSize", u"Tip", u"Style", u"Enabled", u"Margin", u"RoundedBorders", u"BackColorOut",
        u"UseRoundRegions", u"OLEDropMode", u"MousePointer", u"MouseIcon"};
    EXPECT_EQ(saved.writes, writeOrder);
    // The caption goes into the bag as the bytes of its UTF-16LE code units.
    std::vector<uint8_t> expectedBytes;
    for (const char16_t unit : kUnicodeCaption) {
        expectedBytes.push_back(static_cast<uint8_t>(unit & 0xFF));
        expectedBytes.push_back(static_cast<uint8_t>(unit >> 8));
    }
    EXPECT_EQ(BytesOf(saved.values[u"Caption"]), expectedBytes);
    EXPECT_EQ(saved.values[u"Font"].vt, VT_DISPATCH);

    // A second label loads the saved bag; a third the stream form of the same properties.
    TestSite site2(TestSite::Ambient::RunMode, nullptr);
    const auto loaded = NewControl(CLSID_ctlUniLabel, &site2);
    ASSERT_EQ(As<IPersistPropertyBag>(loaded.get(), IID_IPersistPropertyBag)->Load(&saved, nullptr), S_OK);
    EXPECT_EQ(Units(CaptionOf(loaded.get())), Units(kUnicodeCaption));
    EXPECT_EQ(Call(loaded.get(), L"BackColor").value.Text(), u"1193046");

    ComPtr<IStream> stream;
    ASSERT_EQ(::CreateStreamOnHGlobal(nullptr, TRUE, stream.put()), S_OK);
    ASSERT_EQ(As<IPersistStreamInit>(loaded.get(), IID_IPersistStreamInit)->Save(stream.get(), TRUE), S_OK);
    const LARGE_INTEGER start{};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    const auto streamed = NewControl(CLSID_ctlUniLabelNoFlick, nullptr);
    ASSERT_EQ(As<IPersistStreamInit>(streamed.get(), IID_IPersistStreamInit)->Load(stream.get()), S_OK);
    EXPECT_EQ(Units(CaptionOf(streamed.get())), Units(kUnicodeCaption));
    EXPECT_EQ(Call(streamed.get(), L"BackColor").value.Text(), u"1193046");

    Detach(label.get());
    Detach(loaded.get());
}

TEST(ControlHosting, NewLabelShowsExtenderName) {
    const OleSession ole;
    struct Case {
        const GUID* clsid;
        bool withExtender;
        std::u16string caption;
    };
    const Case cases[] = {{&CLSID_ctlUniLabel, true, u"lblGreeting"},
                          {&CLSID_ctlUniLabelNoFlick, true, u"lblGreeting"},
                          {&CLSID_ctlUniLabel, false, u""}};
    for (const Case& c : cases) {
        TestExtender extender(u"lblGreeting");
        TestSite site(TestSite::Ambient::DesignMode, c.withExtender ? &extender : nullptr);
        const auto label = NewControl(*c.clsid, &site);
        ASSERT_TRUE(label);
        ASSERT_EQ(As<IPersistStreamInit>(label.get(), IID_IPersistStreamInit)->InitNew(), S_OK);
        EXPECT_EQ(CaptionOf(label.get()), c.caption) << "extender: " << c.withExtender;
        Detach(label.get());
    }
}

TEST(ControlHosting, DesignModeDrawsThroughTheViewWithoutAWindow) {
    const OleSession ole;
    for (const GUID* clsid : {&CLSID_ctlUniLabel, &CLSID_ctlUniLabelNoFlick}) {
        TestSite site(TestSite::Ambient::DesignMode, nullptr);
        const auto label = NewControl(*clsid, &site);
        ASSERT_TRUE(label);
        ASSERT_EQ(As<IPersistPropertyBag>(label.get(), IID_IPersistPropertyBag)->InitNew(), S_OK);
        ASSERT_EQ(Put(label.get(), L"BackColor", Var(kRed)).hr, S_OK);
        EXPECT_EQ(HwndOf(label.get()), nullptr);

        const auto view = As<IViewObject2>(label.get(), IID_IViewObject2);
        ASSERT_TRUE(view);
        Canvas canvas(160, 60);
        const RECTL bounds{20, 10, 120, 40};
        ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc(), &bounds, nullptr, nullptr, 0),
                  S_OK);
        EXPECT_EQ(canvas.At(70, 25), 0xFF0000u) << "inside";
        EXPECT_EQ(canvas.At(119, 39), 0xFF0000u) << "last pixel inside";
        EXPECT_EQ(canvas.At(19, 25), 0xFFFFFFu) << "left of the bounds";
        EXPECT_EQ(canvas.At(120, 39), 0xFFFFFFu) << "right of the bounds";
        EXPECT_EQ(canvas.At(70, 40), 0xFFFFFFu) << "below the bounds";
        SIZEL extent{};
        EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, -1, nullptr, &extent), S_OK);
        EXPECT_GT(extent.cx, 0);
        Detach(label.get());
    }
}

// Counts the container's view notifications.
class ViewSink final : public testsupport::StackComObject<IAdviseSink, IID_IAdviseSink> {
public:
    void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override {}
    void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override { ++changes; }
    void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
    void STDMETHODCALLTYPE OnSave() override {}
    void STDMETHODCALLTYPE OnClose() override {}
    int changes = 0;
};

TEST(ControlHosting, WithoutAWindowOnlyDesignModeRepaintsAtOnce) {
    const OleSession ole;
    struct Case {
        TestSite::Ambient ambient;
        int viewChangesPerLet;
    };
    // In design mode every let repaints at once, which for a control without a window is the
    // container's view; at run time a let only asks its window, and there is none.
    for (const Case c : {Case{TestSite::Ambient::DesignMode, 1}, Case{TestSite::Ambient::RunMode, 0},
                         Case{TestSite::Ambient::None, 0}}) {
        TestSite site(c.ambient, nullptr);
        const auto label = NewControl(CLSID_ctlUniLabel, &site);
        ASSERT_TRUE(label);
        ViewSink sink;
        ASSERT_EQ(As<IViewObject2>(label.get(), IID_IViewObject2)->SetAdvise(DVASPECT_CONTENT, 0, &sink), S_OK);
        ASSERT_EQ(Put(label.get(), L"BackColor", Var(kRed)).hr, S_OK);
        ASSERT_EQ(Put(label.get(), L"ForeColor", Var(int32_t{0})).hr, S_OK);
        EXPECT_EQ(sink.changes, 2 * c.viewChangesPerLet) << static_cast<int>(c.ambient);
        // Any ambient change asks for a repaint in the same way.
        EXPECT_EQ(As<IOleControl>(label.get(), IID_IOleControl)->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE), S_OK);
        EXPECT_EQ(sink.changes, 3 * c.viewChangesPerLet) << static_cast<int>(c.ambient);
        As<IViewObject2>(label.get(), IID_IViewObject2)->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
        Detach(label.get());
    }
}

TEST(ControlHosting, EventsReachSinksAndTheirByReferenceChangesComeBack) {
    const OleSession ole;
    TestSite site(TestSite::Ambient::RunMode, nullptr);
    const auto label = NewControl(CLSID_ctlUniLabel, &site);
    ASSERT_TRUE(label);
    const auto object = As<IOleObject>(label.get(), IID_IOleObject);
    ASSERT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, site.Window(), &site.Place()), S_OK);
    const HWND hwnd = HwndOf(label.get());
    ASSERT_TRUE(::IsWindow(hwnd));
    EXPECT_EQ(::GetParent(hwnd), site.Window());
    RECT client{};
    ::GetClientRect(hwnd, &client);
    EXPECT_EQ(client.right, 120);
    EXPECT_EQ(client.bottom, 30);

    const DISPID dragOver = EventId(label.get(), DIID___ctlUniLabel, L"OLEDragOver");
    const DISPID dragDrop = EventId(label.get(), DIID___ctlUniLabel, L"OLEDragDrop");
    ASSERT_NE(dragOver, DISPID_UNKNOWN);
    std::vector<DISPID> seen;
    std::vector<int> mouseDown;
    std::u16string draggedText;
    std::vector<std::u16string> droppedFiles;
    bool platformHasText = false;
    ComPtr<IDispatch> keptData;
    EventSink sink([&](DISPID id, DISPPARAMS& params) {
        seen.push_back(id);
        if (id == DISPID_MOUSEDOWN && params.cArgs == 4) {
            // Button, Shift, x, y arrive by reference, last first.
            mouseDown = {*params.rgvarg[3].piVal, *params.rgvarg[2].piVal, static_cast<int>(*params.rgvarg[1].pfltVal),
                         static_cast<int>(*params.rgvarg[0].pfltVal)};
        } else if (id == dragOver && params.cArgs == 7) {
            IDispatch* data = params.rgvarg[6].pdispVal;
            draggedText = Call(data, L"GetData", {Var(int32_t{13})}).value.Text();
            const CallResult files = Call(data, L"Files");
            if (files.value.v.vt == (VT_ARRAY | VT_BSTR)) {
                BSTR* names = nullptr;
                ::SafeArrayAccessData(files.value.v.parray, reinterpret_cast<void**>(&names));
                for (ULONG i = 0; i < files.value.v.parray->rgsabound[0].cElements; ++i) {
                    droppedFiles.emplace_back(reinterpret_cast<const char16_t*>(names[i]), ::SysStringLen(names[i]));
                }
                ::SafeArrayUnaccessData(files.value.v.parray);
            }
            // The platform's data object answers under the same identity while the event runs.
            if (const auto platform = As<IDataObject>(data, IID_IDataObject)) {
                FORMATETC text{CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
                platformHasText = platform->QueryGetData(&text) == S_OK;
            }
            keptData = ComPtr<IDispatch>::Share(data);
            *params.rgvarg[5].plVal = DROPEFFECT_LINK;
        } else if (id == dragDrop && params.cArgs == 6) {
            *params.rgvarg[4].plVal = DROPEFFECT_COPY;
        }
    });
    const auto container = As<IConnectionPointContainer>(label.get(), IID_IConnectionPointContainer);
    ASSERT_TRUE(container);
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(container->FindConnectionPoint(DIID___ctlUniLabel, point.put()), S_OK);
    DWORD cookie = 0;
    ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);

    ::SendMessageW(hwnd, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(15, 7));
    ::SendMessageW(hwnd, WM_LBUTTONUP, MK_SHIFT, MAKELPARAM(15, 7));
    const std::vector<DISPID> mouse = {DISPID_MOUSEDOWN, DISPID_MOUSEUP, DISPID_CLICK};
    EXPECT_EQ(seen, mouse);
    EXPECT_EQ(mouseDown, (std::vector<int>{1, 1, 15, 7}));

    // A drop target registered by OLEDropMode 1: the sink's effects are what the drag source sees.
    ASSERT_EQ(Put(label.get(), L"OLEDropMode", Var(int32_t{1})).hr, S_OK);
    // Wine and Windows both keep the registered target in this window property.
    auto* target = static_cast<IDropTarget*>(::GetPropW(hwnd, L"OleDropTargetInterface"));
    ASSERT_NE(target, nullptr);
    const std::vector<std::u16string> files = {u"C:\\\u0444\u0430\u0439\u043B.txt", u"D:\\b"};
    testsupport::TestDataObject data(u"dragged \u00E9", files);
    POINT at{5, 5};
    ::ClientToScreen(hwnd, &at);
    DWORD effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    EXPECT_EQ(target->DragEnter(&data, MK_LBUTTON, POINTL{at.x, at.y}, &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_LINK));
    EXPECT_EQ(draggedText, u"dragged \u00E9");
    EXPECT_EQ(droppedFiles, files);
    EXPECT_TRUE(platformHasText);
    effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    EXPECT_EQ(target->Drop(&data, 0, POINTL{at.x, at.y}, &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    // A data object kept past its event no longer reaches the drag's data.
    ASSERT_TRUE(keptData);
    EXPECT_EQ(Call(keptData.get(), L"GetData", {Var(int32_t{13})}).hr, DISP_E_EXCEPTION);
    EXPECT_FALSE(As<IDataObject>(keptData.get(), IID_IDataObject));
    keptData.reset();

    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    ASSERT_EQ(Put(label.get(), L"OLEDropMode", Var(int32_t{0})).hr, S_OK);
    EXPECT_EQ(As<IOleInPlaceObject>(label.get(), IID_IOleInPlaceObject)->InPlaceDeactivate(), S_OK);
    EXPECT_FALSE(::IsWindow(hwnd));
    EXPECT_EQ(site.InPlaceActivations(), 1);
    Detach(label.get());
}

TEST(ControlHosting, FontIsTheHostsObjectAndChangesShowAfterApplyFontChanges) {
    const OleSession ole;
    const auto label = NewControl(CLSID_ctlUniLabel, nullptr);
    ASSERT_TRUE(label);
    FONTDESC desc{sizeof(FONTDESC), const_cast<LPOLESTR>(L"Tahoma"), {{120000, 0}}, FW_NORMAL, DEFAULT_CHARSET,
                  FALSE, FALSE, FALSE};
    ComPtr<IFontDisp> font;
    ASSERT_EQ(::OleCreateFontIndirect(&desc, IID_IFontDisp, font.putVoid()), S_OK);
    Var byReference;
    byReference.v.vt = VT_DISPATCH;
    byReference.v.pdispVal = font.get();
    font->AddRef();
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{&byReference.v, &named, 1, 1};
    ASSERT_EQ(label->Invoke(DISPID_FONT, IID_NULL, 0, DISPATCH_PROPERTYPUTREF, &params, nullptr, nullptr, nullptr), S_OK);
    const CallResult got = Call(label.get(), L"Font");
    ASSERT_EQ(got.value.v.vt, VT_DISPATCH);
    EXPECT_EQ(As<IUnknown>(got.value.v.pdispVal, IID_IUnknown).get(), As<IUnknown>(font.get(), IID_IUnknown).get());

    // The stream keeps the control's own reading of the font: a change the control has not
    // taken yet is not in it.
    const auto boldInStream = [&] {
        ComPtr<IStream> stream;
        ::CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
        As<IPersistStreamInit>(label.get(), IID_IPersistStreamInit)->Save(stream.get(), TRUE);
        const LARGE_INTEGER start{};
        stream->Seek(start, STREAM_SEEK_SET, nullptr);
        const auto copy = NewControl(CLSID_ctlUniLabel, nullptr);
        As<IPersistStreamInit>(copy.get(), IID_IPersistStreamInit)->Load(stream.get());
        const CallResult copyFont = Call(copy.get(), L"Font");
        return copyFont.value.v.vt == VT_DISPATCH ? Call(copyFont.value.v.pdispVal, L"Bold").value.Text() : u"none";
    };
    // Booleans as text are -1 and 0.
    EXPECT_EQ(boldInStream(), u"0");
    ASSERT_EQ(Put(font.get(), L"Bold", Var(true)).hr, S_OK);
    EXPECT_EQ(boldInStream(), u"0");
    ASSERT_EQ(Call(label.get(), L"ApplyFontChanges").hr, S_OK);
    EXPECT_EQ(boldInStream(), u"-1");
}

TEST(ControlHosting, WithoutAContainerTheControlIsStillAnObject) {
    {
        const auto label = NewControl(CLSID_ctlUniLabel, nullptr);
        ASSERT_TRUE(label);
        ASSERT_EQ(Put(label.get(), L"Caption", Var(kUnicodeCaption)).hr, S_OK);
        EXPECT_EQ(Units(CaptionOf(label.get())), Units(kUnicodeCaption));
        EXPECT_EQ(HwndOf(label.get()), nullptr);
        EXPECT_EQ(Call(label.get(), L"Refresh", {Var(true)}).hr, S_OK);
        EXPECT_EQ(Put(label.get(), L"AutoSize", Var(true)).hr, S_OK);
        EXPECT_EQ(Put(label.get(), L"UseRoundRegions", Var(true)).hr, S_OK);
        EXPECT_EQ(Call(label.get(), L"RoundedBorders").value.Text(), u"-1");
        EXPECT_EQ(Call(label.get(), L"ApplyFontChanges").hr, S_OK);
        const auto flick = NewControl(CLSID_ctlUniLabelNoFlick, nullptr);
        EXPECT_EQ(Put(flick.get(), L"BackStyle", Var(int32_t{0})).hr, S_OK);
        EXPECT_EQ(Call(flick.get(), L"BackStyle").value.Text(), u"0");
        EXPECT_EQ(Put(flick.get(), L"Caption", Var(L"x")).hr, S_OK);
    }
    EXPECT_EQ(Server::Instance().CanUnloadNow(), S_OK);
}

TEST(ControlHosting, AtlAxWinHostsTheLabelByProgId) {
    const OleSession ole;
    const HMODULE atl = ::LoadLibraryW(L"atl.dll");
    ASSERT_NE(atl, nullptr);
    using Init = BOOL(WINAPI*)();
    using GetControl = HRESULT(WINAPI*)(HWND, IUnknown**);
    const auto init = reinterpret_cast<Init>(reinterpret_cast<void*>(::GetProcAddress(atl, "AtlAxWinInit")));
    const auto getControl =
        reinterpret_cast<GetControl>(reinterpret_cast<void*>(::GetProcAddress(atl, "AtlAxGetControl")));
    ASSERT_TRUE(init && getControl);
    ASSERT_TRUE(init());
    using Entry = HRESULT(STDAPICALLTYPE*)();
    const auto registerServer = reinterpret_cast<Entry>(
        reinterpret_cast<void*>(::GetProcAddress(Server::Instance().Module(), "DllRegisterServer")));
    const auto unregisterServer = reinterpret_cast<Entry>(
        reinterpret_cast<void*>(::GetProcAddress(Server::Instance().Module(), "DllUnregisterServer")));
    ASSERT_TRUE(registerServer && unregisterServer);
    const HRESULT registered = registerServer();
    if (registered == E_NOTIMPL) GTEST_SKIP() << "this build's DllRegisterServer registers nothing yet";
    ASSERT_EQ(registered, S_OK);

    TestSite form(TestSite::Ambient::RunMode, nullptr);
    for (const wchar_t* progId : {L"TarnwickControls30.ctlUniLabel", L"TarnwickControls30.ctlUniLabelNoFlick"}) {
        SCOPED_TRACE(testing::Message() << progId);
        const HWND host = ::CreateWindowExW(0, L"AtlAxWin", progId, WS_CHILD | WS_VISIBLE, 10, 10, 120, 30,
                                            form.Window(), nullptr, ::GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(host, nullptr);
        ComPtr<IUnknown> unknown;
        ASSERT_EQ(getControl(host, unknown.put()), S_OK);
        const auto label = As<IDispatch>(unknown.get(), IID_IDispatch);
        ASSERT_TRUE(label);
        // Without an extender a new label has no name to show.
        EXPECT_EQ(CaptionOf(label.get()), u"");
        ASSERT_EQ(Put(label.get(), L"Caption", Var(L"Hosted")).hr, S_OK);
        EXPECT_EQ(CaptionOf(label.get()), u"Hosted");
        ASSERT_EQ(Put(label.get(), L"BackColor", Var(kRed)).hr, S_OK);

        // The host's extent is in other units: the size is the in-place rectangle's.
        const HWND hwnd = HwndOf(label.get());
        ASSERT_TRUE(::IsWindow(hwnd));
        RECT client{};
        ::GetClientRect(hwnd, &client);
        EXPECT_EQ(client.right, 120);
        EXPECT_EQ(client.bottom, 30);
        ::UpdateWindow(form.Window());
        ::UpdateWindow(hwnd);
        PumpMessages();
        const HDC screen = ::GetDC(hwnd);
        // Below the caption's line and away from it: the back colour only.
        EXPECT_EQ(::GetPixel(screen, 110, 25), RGB(255, 0, 0));
        EXPECT_EQ(::GetPixel(screen, 2, 28), RGB(255, 0, 0));
        ::ReleaseDC(hwnd, screen);

        unknown.reset();
        ::DestroyWindow(host);
        PumpMessages();
    }
    EXPECT_EQ(unregisterServer(), S_OK);
}

}  // namespace
}  // namespace comtest
