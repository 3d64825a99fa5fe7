// The graphics and window-plumbing classes as a script host reaches them: created through the
// class factory, called by name through IDispatch only, with records, handles, optional and
// by-reference arguments, owners called back from a real message loop, and raised errors.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <string>
#include <vector>

#include <shlobj.h>

#include "ComTestSupport.h"
#include "support/OleSession.h"
#include "support/TestDataObject.h"
#include "frame/ISubclassOwner.h"
#include "frame/ITimerOwner.h"
#include "graphics/DrawButton.h"
#include "graphics/clsDIBSection.h"

namespace {

using namespace comtest;
using tc::com::ComPtr;

// Keeps COM initialised for one test and checks that every object of the server went away.
class ComGraphics : public ::testing::Test {
protected:
    // Runs before the session ends: the objects must be gone while OLE is still up.
    void TearDown() override { EXPECT_EQ(S_OK, Server::Instance().CanUnloadNow()); }

private:
    testsupport::OleSession m_ole;
};

// A COLORREF as it stands in a 32-bit DIB: red in the high byte.
uint32_t InDib(uint32_t color) {
    return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}

// A handle as a host of this architecture passes it: VT_I8 on x64, VT_I4 on x86.
Var HandleArg(const void* handle) {
    Var v;
    if constexpr (sizeof(void*) == 8) {
        v.v.vt = VT_I8;
        v.v.llVal = reinterpret_cast<LONG_PTR>(handle);
    } else {
        v.v.vt = VT_I4;
        v.v.lVal = static_cast<LONG>(reinterpret_cast<LONG_PTR>(handle));
    }
    return v;
}

LONG_PTR AsHandle(const Var& v) {
    Var copy;
    if (FAILED(::VariantChangeType(&copy.v, const_cast<VARIANT*>(&v.v), 0, VT_I8))) return -1;
    return static_cast<LONG_PTR>(copy.v.llVal);
}

LONG AsLong(const Var& v) {
    Var copy;
    if (FAILED(::VariantChangeType(&copy.v, const_cast<VARIANT*>(&v.v), 0, VT_I4))) return -12345;
    return copy.v.lVal;
}

// A CTL_RECT of the caller's memory, passed by reference as a record described by the server's
// own type library.
class RectArg {
public:
    explicit RectArg(IDispatch* object, const wchar_t* record = L"CTL_RECT") {
        ComPtr<ITypeInfo> objectInfo;
        ComPtr<ITypeLib> library;
        UINT index = 0;
        if (FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, objectInfo.put())) ||
            FAILED(objectInfo->GetContainingTypeLib(library.put(), &index))) {
            return;
        }
        ITypeInfo* found = nullptr;
        MEMBERID member = 0;
        USHORT count = 1;
        std::wstring name = record;
        if (FAILED(library->FindName(name.data(), 0, &found, &member, &count)) || count != 1) return;
        ComPtr<ITypeInfo> recordInfo = ComPtr<ITypeInfo>::Attach(found);
        ::GetRecordInfoFromTypeInfo(recordInfo.get(), m_info.put());
    }
    bool Valid() const { return static_cast<bool>(m_info); }
    Var Arg(CTL_RECT& rect) const {
        Var v;
        v.v.vt = VT_RECORD | VT_BYREF;
        v.v.pvRecord = &rect;
        v.v.pRecInfo = m_info.get();
        return v;
    }

private:
    ComPtr<IRecordInfo> m_info;
};

// A 32-bit section filled with one colour, for exact pixel comparison.
struct Canvas {
    Canvas(int32_t width, int32_t height, uint32_t fill) {
        dib.Create(width, height);
        for (int32_t y = 0; y < height; ++y) {
            for (int32_t x = 0; x < width; ++x) dib.Row(y)[x] = fill;
        }
    }
    HDC hdc() const { return dib.hDC(); }
    uint32_t At(int32_t x, int32_t y) {
        ::GdiFlush();
        return dib.Row(y)[x] & 0x00FFFFFF;
    }
    clsDIBSection dib;
};

int CountDifferent(Canvas& a, Canvas& b) {
    int different = 0;
    for (int32_t y = 0; y < a.dib.Height(); ++y) {
        for (int32_t x = 0; x < a.dib.Width(); ++x) different += a.At(x, y) != b.At(x, y);
    }
    return different;
}

// The minimum of IDispatch for owner objects that the server calls through their own vtables.
template <class Interface>
class OwnerBase : public Interface {
public:
    explicit OwnerBase(const GUID& iid) : m_iid(iid) {}
    virtual ~OwnerBase() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        if (riid == IID_IUnknown || riid == IID_IDispatch || riid == m_iid) {
            *ppv = static_cast<Interface*>(this);
            AddRef();
            return S_OK;
        }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    // Lives on the test's stack; counts references only to show that the hook keeps none.
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
    ULONG STDMETHODCALLTYPE Release() override { return --refs; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count) *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
    ULONG refs = 1;

private:
    GUID m_iid;
};

struct TimerOwner final : OwnerBase<ITimerOwner> {
    TimerOwner() : OwnerBase(IID_ITimerOwner) {}
    HRESULT STDMETHODCALLTYPE TimerProc(LONG lElapsedMS, LONG nID) override {
        ticks.push_back({lElapsedMS, nID});
        return S_OK;
    }
    struct Tick {
        LONG elapsed;
        LONG id;
    };
    std::vector<Tick> ticks;
};

struct SubclassOwner final : OwnerBase<ISubclassOwner> {
    SubclassOwner() : OwnerBase(IID_ISubclassOwner) {}
    HRESULT STDMETHODCALLTYPE WindowProc(VARIANT_BOOL bBefore, VARIANT_BOOL*, LRESULT* lReturn, HWND*, UINT* uMsg,
                                         WPARAM* wParam, LPARAM*) override {
        passes.push_back({bBefore != VARIANT_FALSE, *uMsg, *lReturn});
        // Before the window's own procedure the owner rewrites wParam; after it, the result.
        if (bBefore) *wParam = 77;
        else *lReturn = static_cast<LRESULT>(*wParam) + 1000;
        return S_OK;
    }
    struct Pass {
        bool before;
        UINT message;
        LRESULT result;
    };
    std::vector<Pass> passes;
};

// A late-bound object of named properties, as a host form, its Controls collection and its controls
// are: gets hand out copies, puts and putrefs are stored and counted, _NewEnum walks `items`.
class FakeObject final : public IDispatch, public IEnumVARIANT {
public:
    std::map<std::wstring, Var> properties;
    std::map<std::wstring, int> puts;
    std::vector<Var> items;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (riid == IID_IUnknown || riid == IID_IDispatch) *ppv = static_cast<IDispatch*>(this);
        else if (riid == IID_IEnumVARIANT) *ppv = static_cast<IEnumVARIANT*>(this);
        else return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    // Lives on the test's stack.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const auto it = properties.find(names[0]);
        if (it == properties.end()) return DISP_E_UNKNOWNNAME;
        *ids = static_cast<DISPID>(std::distance(properties.begin(), it)) + 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        if (id == DISPID_NEWENUM) {
            m_next = 0;
            V_VT(result) = VT_UNKNOWN;
            V_UNKNOWN(result) = static_cast<IEnumVARIANT*>(this);
            return S_OK;
        }
        if (id < 1 || id > static_cast<DISPID>(properties.size())) return DISP_E_MEMBERNOTFOUND;
        auto it = std::next(properties.begin(), id - 1);
        if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
            ::VariantCopy(&it->second.v, &params->rgvarg[0]);
            ++puts[it->first + (flags & DISPATCH_PROPERTYPUTREF ? L" set" : L" let")];
            return S_OK;
        }
        return ::VariantCopy(result, &it->second.v);
    }
    HRESULT STDMETHODCALLTYPE Next(ULONG, VARIANT* out, ULONG* fetched) override {
        if (m_next >= items.size()) {
            if (fetched) *fetched = 0;
            return S_FALSE;
        }
        ::VariantInit(out);
        ::VariantCopy(out, &items[m_next++].v);
        if (fetched) *fetched = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reset() override {
        m_next = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

private:
    size_t m_next = 0;
};

Var ObjectArg(IDispatch* object) {
    Var v;
    v.v.vt = VT_DISPATCH;
    v.v.pdispVal = object;
    object->AddRef();
    return v;
}

// A real platform font, whose Name a host sets through dispatch.
Var NewFont(const wchar_t* name) {
    FONTDESC desc{sizeof(FONTDESC), const_cast<LPOLESTR>(name), {{90000, 0}}, FW_NORMAL, DEFAULT_CHARSET, FALSE, FALSE,
                  FALSE};
    IDispatch* font = nullptr;
    Var v;
    if (SUCCEEDED(::OleCreateFontIndirect(&desc, IID_IFontDisp, reinterpret_cast<void**>(&font)))) {
        v.v.vt = VT_DISPATCH;
        v.v.pdispVal = font;
    }
    return v;
}

std::u16string FontName(const Var& font) {
    return Call(font.v.pdispVal, L"Name").value.Text();
}

void PumpFor(DWORD milliseconds, const std::function<bool()>& done = [] { return false; }) {
    const DWORD start = ::GetTickCount();
    MSG msg;
    while (::GetTickCount() - start < milliseconds && !done()) {
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&msg);
            ::DispatchMessageW(&msg);
        }
        ::Sleep(5);
    }
}

TEST_F(ComGraphics, EachClassCreatedAndCalled) {
    ComPtr<IDispatch> common = Server::Instance().Create(tc::com::CLSID_clsCommonWrapper);
    ASSERT_TRUE(common);
    struct Case {
        const wchar_t* member;
        std::vector<Var> args;
        LONG expected;
    };
    const Case cases[] = {
        {L"ColorInc", {Var(0x00FF0000), Var(51)}, 0x00FF3333},
        {L"BlendColors", {Var(0x000000FF), Var(0x00FF0000), Var(-5)}, 0x000000FF},
        {L"GetColorLuminance", {Var(0x00FFFFFF)}, 255},
        {L"ConvertOLEColor", {Var(static_cast<int32_t>(0x8000000F))}, static_cast<LONG>(::GetSysColor(15))},
        {L"ClipByte", {Var(300)}, 255},
        {L"MakeDWord", {Var(-1), Var(1)}, 0x0001FFFF},
        {L"AscW", {Var(L"\xFFFF")}, 65535},
    };
    for (const Case& c : cases) {
        const CallResult r = Call(common.get(), c.member, c.args);
        EXPECT_EQ(S_OK, r.hr) << static_cast<const void*>(c.member);
        EXPECT_EQ(c.expected, AsLong(r.value)) << static_cast<const void*>(c.member);
    }
    // A stateless front: a second instance reads what the first stored.
    ComPtr<IDispatch> other = Server::Instance().Create(tc::com::CLSID_clsCommonWrapper);
    EXPECT_EQ(3, AsLong(Call(other.get(), L"DefaultButtonStyle").value));
    EXPECT_EQ(S_OK, Put(common.get(), L"DefaultButtonStyle", Var(6)).hr);
    EXPECT_EQ(6, AsLong(Call(other.get(), L"DefaultButtonStyle").value));
    EXPECT_EQ(S_OK, Put(common.get(), L"DefaultButtonStyle", Var(3)).hr);

    // clsMEMDC: a DC of the asked size whose bitmap takes the back colour.
    ComPtr<IDispatch> memdc = Server::Instance().Create(tc::com::CLSID_clsMEMDC);
    ASSERT_TRUE(memdc);
    EXPECT_EQ(S_OK, Call(memdc.get(), L"CreateDC", {Var(12), Var(9)}).hr);
    EXPECT_EQ(12, AsLong(Call(memdc.get(), L"Width").value));
    EXPECT_EQ(9, AsLong(Call(memdc.get(), L"Height").value));
    const auto memHdc = reinterpret_cast<HDC>(AsHandle(Call(memdc.get(), L"hDC").value));
    ASSERT_NE(nullptr, memHdc);
    EXPECT_EQ(S_OK, Call(memdc.get(), L"DrawBackColor", {Var(0x00123456)}).hr);
    EXPECT_EQ(0x00123456u, ::GetPixel(memHdc, 11, 8));

    // clsFontHDC selects its font into that DC and puts the old one back.
    ComPtr<IDispatch> font = Server::Instance().Create(tc::com::CLSID_clsFontHDC);
    ASSERT_TRUE(font);
    const HGDIOBJ before = ::GetCurrentObject(memHdc, OBJ_FONT);
    EXPECT_EQ(S_OK, Call(font.get(), L"SetFontToDC", {HandleArg(memHdc), Var(L"Arial"), Var(12)}).hr);
    const LONG_PTR hFont = AsHandle(Call(font.get(), L"hFont").value);
    EXPECT_NE(0, hFont);
    EXPECT_EQ(hFont, reinterpret_cast<LONG_PTR>(::GetCurrentObject(memHdc, OBJ_FONT)));
    EXPECT_EQ(S_OK, Call(font.get(), L"Destroy").hr);
    EXPECT_EQ(before, ::GetCurrentObject(memHdc, OBJ_FONT));
    EXPECT_EQ(0, ::GetObjectType(reinterpret_cast<HGDIOBJ>(hFont)));

    // clsGdiHandle owns what it is given until it is released or destroyed.
    ComPtr<IDispatch> gdi = Server::Instance().Create(tc::com::CLSID_clsGdiHandle);
    ASSERT_TRUE(gdi);
    const Var brush = Call(common.get(), L"CreateColorBrush", {Var(0x00FF00FF)}).value;
    ASSERT_EQ(OBJ_BRUSH, ::GetObjectType(reinterpret_cast<HGDIOBJ>(AsHandle(brush))));
    EXPECT_EQ(S_OK, Put(gdi.get(), L"Handle", brush).hr);
    EXPECT_EQ(AsHandle(brush), AsHandle(Call(gdi.get(), L"ReleaseHandle").value));
    EXPECT_EQ(0, AsHandle(Call(gdi.get(), L"Handle").value));
    EXPECT_EQ(S_OK, Put(gdi.get(), L"Handle", brush).hr);
    EXPECT_EQ(S_OK, Call(gdi.get(), L"Destroy").hr);
    EXPECT_EQ(0, ::GetObjectType(reinterpret_cast<HGDIOBJ>(AsHandle(brush))));

    // clsDIBSection: a section of the asked size and depth with a DC.
    ComPtr<IDispatch> dib = Server::Instance().Create(tc::com::CLSID_clsDIBSection);
    ASSERT_TRUE(dib);
    EXPECT_EQ(VARIANT_TRUE, Call(dib.get(), L"Create", {Var(5), Var(4)}).value.v.boolVal);
    EXPECT_EQ(5, AsLong(Call(dib.get(), L"Width").value));
    EXPECT_EQ(32, AsLong(Call(dib.get(), L"BitsPerPixel").value));
    EXPECT_EQ(OBJ_MEMDC, ::GetObjectType(reinterpret_cast<HGDIOBJ>(AsHandle(Call(dib.get(), L"hDC").value))));
}

TEST_F(ComGraphics, WindowAndSubclassOwner) {
    ComPtr<IDispatch> window = Server::Instance().Create(tc::com::CLSID_cUniWindow);
    ASSERT_TRUE(window);
    const CallResult registered = Call(window.get(), L"WindowClassRegister", {Var(L"TcGfxComWindow")});
    EXPECT_EQ(S_OK, registered.hr) << std::hex << registered.hr;
    EXPECT_EQ(VARIANT_TRUE, registered.value.v.boolVal);
    EXPECT_EQ(u"TcGfxComWindow", Call(window.get(), L"Class").value.Text());
    const std::u16string caption = u"\u0416\u4E2D caption";
    const Var created = Call(window.get(), L"WindowCreate",
                             {Var(0), Var(static_cast<int32_t>(WS_OVERLAPPEDWINDOW)), Var(0), Var(10), Var(10),
                              Var(120), Var(80), Var(caption)})
                            .value;
    const auto hwnd = reinterpret_cast<HWND>(AsHandle(created));
    ASSERT_TRUE(::IsWindow(hwnd));
    wchar_t text[64] = {};
    ::GetWindowTextW(hwnd, text, 64);
    EXPECT_EQ(caption, std::u16string(reinterpret_cast<const char16_t*>(text)));

    // The owner sees the message before the window's procedure (and changes wParam for it) and
    // after it (and sets the result that SendMessage returns).
    ComPtr<IDispatch> subclass = Server::Instance().Create(tc::com::CLSID_cUniSubclass);
    ASSERT_TRUE(subclass);
    SubclassOwner owner;
    const Var ownerArg = [&] {
        Var v;
        v.v.vt = VT_DISPATCH;
        v.v.pdispVal = &owner;
        owner.AddRef();
        return v;
    }();
    EXPECT_EQ(VARIANT_TRUE, Call(subclass.get(), L"Subclass", {created, ownerArg}).value.v.boolVal);
    const UINT message = WM_APP + 5;
    EXPECT_EQ(S_OK, Call(subclass.get(), L"AddMsg", {Var(static_cast<int32_t>(message)), Var(3)}).hr);
    EXPECT_EQ(1077, ::SendMessageW(hwnd, message, 1, 2));
    ASSERT_EQ(2u, owner.passes.size());
    EXPECT_TRUE(owner.passes[0].before);
    EXPECT_FALSE(owner.passes[1].before);
    EXPECT_EQ(message, owner.passes[1].message);
    // The window's own procedure through the hook, which the owner does not see.
    EXPECT_EQ(0, AsHandle(Call(subclass.get(), L"CallOrigWndProc", {Var(static_cast<int32_t>(message)), HandleArg(nullptr),
                                                                   HandleArg(nullptr)})
                              .value));
    EXPECT_EQ(2u, owner.passes.size());
    EXPECT_EQ(VARIANT_TRUE, Call(subclass.get(), L"UnSubclass").value.v.boolVal);
    EXPECT_EQ(0, ::SendMessageW(hwnd, message, 1, 2));
    EXPECT_EQ(2u, owner.passes.size());
    // The hook holds the owner unowned: only the argument above holds a reference.
    EXPECT_EQ(2u, owner.refs);

    EXPECT_EQ(VARIANT_FALSE, Call(window.get(), L"WindowDestroy").value.v.boolVal);
    EXPECT_FALSE(::IsWindow(hwnd));
    Call(window.get(), L"WindowClassUnregister");
}

TEST_F(ComGraphics, TimerOwnerTicksInMessageLoop) {
    ComPtr<IDispatch> timer = Server::Instance().Create(tc::com::CLSID_cUniTimer);
    ASSERT_TRUE(timer);
    TimerOwner owner;
    Var ownerArg;
    ownerArg.v.vt = VT_DISPATCH;
    ownerArg.v.pdispVal = &owner;
    owner.AddRef();

    // An object without the owner interface is refused.
    ComPtr<IDispatch> notOwner = Server::Instance().Create(tc::com::CLSID_clsGdiHandle);
    Var notOwnerArg;
    notOwnerArg.v.vt = VT_DISPATCH;
    notOwnerArg.v.pdispVal = notOwner.get();
    notOwner->AddRef();
    const CallResult refused = Call(timer.get(), L"TmrStart", {notOwnerArg, Var(10)});
    EXPECT_EQ(DISP_E_EXCEPTION, refused.hr);
    EXPECT_EQ(DISP_E_TYPEMISMATCH, refused.scode);
    EXPECT_EQ(VARIANT_FALSE, Call(timer.get(), L"IsActive").value.v.boolVal);

    const DWORD start = ::GetTickCount();
    EXPECT_EQ(VARIANT_TRUE, Call(timer.get(), L"TmrStart", {ownerArg, Var(20), Var(7)}).value.v.boolVal);
    EXPECT_EQ(VARIANT_TRUE, Call(timer.get(), L"IsActive").value.v.boolVal);
    // A running timer keeps its owner, interval and id.
    EXPECT_EQ(VARIANT_FALSE, Call(timer.get(), L"TmrStart", {ownerArg, Var(500), Var(9)}).value.v.boolVal);
    PumpFor(3000, [&] { return owner.ticks.size() >= 3; });
    const DWORD waited = ::GetTickCount() - start;
    ASSERT_GE(owner.ticks.size(), 3u);
    LONG previous = 0;
    for (const TimerOwner::Tick& tick : owner.ticks) {
        EXPECT_EQ(7, tick.id);
        EXPECT_GE(tick.elapsed, previous);
        EXPECT_LE(tick.elapsed, static_cast<LONG>(waited) + 50);
        previous = tick.elapsed;
    }
    EXPECT_GE(owner.ticks.back().elapsed, 40);

    EXPECT_EQ(VARIANT_TRUE, Call(timer.get(), L"TmrStop").value.v.boolVal);
    EXPECT_EQ(VARIANT_FALSE, Call(timer.get(), L"IsActive").value.v.boolVal);
    const size_t stopped = owner.ticks.size();
    PumpFor(120);
    EXPECT_EQ(stopped, owner.ticks.size());
    EXPECT_EQ(VARIANT_TRUE, Call(timer.get(), L"TmrStop").value.v.boolVal);
}

TEST_F(ComGraphics, DrawButtonRecordThroughDispatchMatchesDirectCall) {
    ComPtr<IDispatch> common = Server::Instance().Create(tc::com::CLSID_clsCommonWrapper);
    ASSERT_TRUE(common);
    const RectArg rects(common.get());
    ASSERT_TRUE(rects.Valid());

    struct Case {
        int32_t style;
        int32_t back;
        bool pressed, isDefault, focus, rounded;
    };
    const Case cases[] = {
        {iCtlBtnStyle_Vista, 0x00E0C090, false, false, false, true},
        {iCtlBtnStyle_Glass, 0x00306090, true, false, true, true},
        {iCtlBtnStyle_XpEx, 0x00FFFFFF, false, true, true, false},
        {iCtlBtnStyle_Flat, 0x00808080, true, false, false, false},
        {iCtlBtnStyle_Xp2, 0x0040A040, false, false, false, true},
    };
    const uint32_t fill = 0x00FF00FF;
    for (const Case& c : cases) {
        Canvas viaCom(48, 30, fill), direct(48, 30, fill);
        CTL_RECT rect{3, 2, 45, 27};
        const CallResult r = Call(common.get(), L"DrawButton",
                                  {HandleArg(viaCom.hdc()), rects.Arg(rect), Var(c.back), Var(true), Var(-1),
                                   Var(c.pressed), Var(c.isDefault), Var(false), Var(c.focus), Var(c.rounded),
                                   Var(c.style), Var(-1)});
        ASSERT_EQ(S_OK, r.hr) << c.style;
        CTL_RECT same{3, 2, 45, 27};
        ::DrawButton(direct.hdc(), same, c.back, true, -1, c.pressed, c.isDefault, false, c.focus, c.rounded, c.style,
                     -1, true);
        EXPECT_EQ(0, CountDifferent(viaCom, direct)) << "style " << c.style;
        // The button was really painted, and the rectangle came back as it went in.
        EXPECT_NE(fill, viaCom.At(24, 15));
        EXPECT_EQ(fill, viaCom.At(1, 1));
        EXPECT_EQ(3, rect.left);
        EXPECT_EQ(45, rect.right);
        EXPECT_EQ(27, rect.bottom);
    }

    // The record also comes wrapped in a by-reference VARIANT, as some hosts pass it.
    Canvas wrapped(20, 12, fill);
    CTL_RECT small{0, 0, 20, 12};
    Var inner = rects.Arg(small);
    EXPECT_EQ(S_OK, Call(common.get(), L"DrawRect",
                         {HandleArg(wrapped.hdc()), Ref(VT_VARIANT, &inner.v), Var(0x00102030), Var(true)})
                        .hr);
    EXPECT_EQ(InDib(0x00102030), wrapped.At(19, 11));

    // No record where one is due: a type mismatch naming the argument (counted from the right).
    CallResult wrong = Call(common.get(), L"DrawRect", {HandleArg(wrapped.hdc()), Var(5), Var(0), Var(true)});
    EXPECT_EQ(DISP_E_TYPEMISMATCH, wrong.hr);
    EXPECT_EQ(DISP_E_BADPARAMCOUNT, Call(common.get(), L"DrawRect", {HandleArg(wrapped.hdc())}).hr);
    // Nor a point where a rectangle is due: it would be read and written past its end.
    const RectArg points(common.get(), L"CTL_POINTAPI");
    ASSERT_TRUE(points.Valid());
    CTL_RECT guarded[2] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
    wrong = Call(common.get(), L"DrawText",
                 {HandleArg(wrapped.hdc()), Var(L"x"), points.Arg(guarded[0]), Var(DT_CALCRECT)});
    EXPECT_EQ(DISP_E_TYPEMISMATCH, wrong.hr);
    EXPECT_EQ(3, guarded[0].right);
}

TEST_F(ComGraphics, RecordsAndArgumentsComeBackChanged) {
    ComPtr<IDispatch> common = Server::Instance().Create(tc::com::CLSID_clsCommonWrapper);
    ASSERT_TRUE(common);
    const RectArg rects(common.get());
    ASSERT_TRUE(rects.Valid());
    Canvas canvas(64, 40, 0x00FFFFFF);
    const HFONT font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    const HGDIOBJ old = ::SelectObject(canvas.hdc(), font);

    // DrawText with DT_CALCRECT reports the measured rectangle into the caller's record.
    const std::u16string text = u"Measure \u4E2D\u6587";
    CTL_RECT measured{0, 0, 0, 0};
    ASSERT_EQ(S_OK, Call(common.get(), L"DrawText",
                         {HandleArg(canvas.hdc()), Var(text), rects.Arg(measured), Var(DT_CALCRECT | DT_SINGLELINE)})
                        .hr);
    RECT expected{0, 0, 0, 0};
    ::DrawTextW(canvas.hdc(), reinterpret_cast<const wchar_t*>(text.c_str()), static_cast<int>(text.size()), &expected,
                DT_CALCRECT | DT_SINGLELINE);
    EXPECT_GT(expected.right, 0);
    EXPECT_EQ(expected.right, measured.right);
    EXPECT_EQ(expected.bottom, measured.bottom);

    // The same measure through by-reference longs.
    LONG wDim = -1, hMax = -1;
    ASSERT_EQ(S_OK, Call(common.get(), L"CalculateStringDim",
                         {HandleArg(canvas.hdc()), Var(text), Var(false), Ref(VT_I4, &wDim), Ref(VT_I4, &hMax)})
                        .hr);
    EXPECT_EQ(expected.right, wDim);
    EXPECT_EQ(expected.bottom, hMax);
    ::SelectObject(canvas.hdc(), old);

    SHORT red = -1, green = -1, blue = -1;
    ASSERT_EQ(S_OK, Call(common.get(), L"ColorToComponents",
                         {Var(0x00332211), Ref(VT_I2, &red), Ref(VT_I2, &green), Ref(VT_I2, &blue)})
                        .hr);
    EXPECT_EQ(0x11, red);
    EXPECT_EQ(0x22, green);
    EXPECT_EQ(0x33, blue);

    LONG ewt = -1, major = -1, minor = -1, build = -1;
    ASSERT_EQ(S_OK, Call(common.get(), L"GetWindowsVersionEx",
                         {Ref(VT_I4, &ewt), Ref(VT_I4, &major), Ref(VT_I4, &minor), Ref(VT_I4, &build)})
                        .hr);
    EXPECT_EQ(AsLong(Call(common.get(), L"GetWindowsVersion").value), ewt);
    EXPECT_GE(major, 5);
}

// Rows painted in one column by a horizontal line drawn through the record form of DrawLine.
int LineThickness(IDispatch* common, const RectArg& rects, std::vector<Var> optional) {
    Canvas canvas(40, 30, 0x00FFFFFF);
    CTL_RECT line{2, 15, 36, 15};
    std::vector<Var> args = {HandleArg(canvas.hdc()), rects.Arg(line), Var(0x000000FF)};
    args.insert(args.end(), optional.begin(), optional.end());
    if (Call(common, L"DrawLine", args).hr != S_OK) return -1;
    int rows = 0;
    for (int32_t y = 0; y < 30; ++y) rows += canvas.At(20, y) == InDib(0x000000FF);
    return rows;
}

TEST_F(ComGraphics, OptionalArgumentsOmittedAndGiven) {
    ComPtr<IDispatch> common = Server::Instance().Create(tc::com::CLSID_clsCommonWrapper);
    ASSERT_TRUE(common);
    const RectArg rects(common.get());
    EXPECT_EQ(1, LineThickness(common.get(), rects, {}));
    EXPECT_EQ(1, LineThickness(common.get(), rects, {Missing(), Missing()}));
    EXPECT_EQ(5, LineThickness(common.get(), rects, {Var(5)}));
    EXPECT_EQ(5, LineThickness(common.get(), rects, {Var(5), Missing()}));

    // The same through the type library's own dispatch (no record): DrawLineCoords.
    for (const auto& [width, rows] : {std::pair{Var(), 1}, std::pair{Var(3), 3}}) {
        Canvas canvas(40, 30, 0x00FFFFFF);
        std::vector<Var> args = {HandleArg(canvas.hdc()), Var(2), Var(15), Var(36), Var(15), Var(0x00FF0000)};
        if (width.v.vt != VT_EMPTY) args.push_back(width);
        ASSERT_EQ(S_OK, Call(common.get(), L"DrawLineCoords", args).hr);
        int painted = 0;
        for (int32_t y = 0; y < 30; ++y) painted += canvas.At(20, y) == InDib(0x00FF0000);
        EXPECT_EQ(rows, painted);
    }
}

TEST_F(ComGraphics, MemDCPictureOverlaidThroughRecordDispatch) {
    ComPtr<IDispatch> common = Server::Instance().Create(tc::com::CLSID_clsCommonWrapper);
    ComPtr<IDispatch> memdc = Server::Instance().Create(tc::com::CLSID_clsMEMDC);
    ASSERT_TRUE(common && memdc);
    ASSERT_EQ(S_OK, Call(memdc.get(), L"CreateDC", {Var(4), Var(4)}).hr);
    Call(memdc.get(), L"DrawBackColor", {Var(0x000000FF)});
    // Reading Picture hands the bitmap over: the second read is nothing.
    const CallResult picture = Call(memdc.get(), L"Picture");
    ASSERT_EQ(S_OK, picture.hr);
    ASSERT_EQ(VT_DISPATCH, picture.value.v.vt);
    ASSERT_NE(nullptr, picture.value.v.pdispVal);
    ComPtr<IPicture> platform;
    ASSERT_EQ(S_OK, picture.value.v.pdispVal->QueryInterface(IID_IPicture, platform.putVoid()));
    SHORT type = PICTYPE_NONE;
    platform->get_Type(&type);
    EXPECT_EQ(PICTYPE_BITMAP, type);
    EXPECT_EQ(nullptr, Call(memdc.get(), L"Picture").value.v.pdispVal);
    EXPECT_EQ(0, AsHandle(Call(memdc.get(), L"hDC").value));
    // Omitted sizes are -1, which becomes 1.
    ASSERT_EQ(S_OK, Call(memdc.get(), L"CreateDC", {Var(5)}).hr);
    EXPECT_EQ(5, AsLong(Call(memdc.get(), L"Width").value));
    EXPECT_EQ(1, AsLong(Call(memdc.get(), L"Height").value));
    ASSERT_EQ(S_OK, Call(memdc.get(), L"CreateDC", {Missing(), Missing()}).hr);
    EXPECT_EQ(1, AsLong(Call(memdc.get(), L"Width").value));

    // Centred in a 10 x 10 rectangle: columns and rows 3 to 6.
    const RectArg rects(common.get());
    Canvas canvas(12, 12, 0x00FFFFFF);
    CTL_RECT area{0, 0, 10, 10};
    ASSERT_EQ(S_OK, Call(common.get(), L"OverlapImageRect",
                         {HandleArg(canvas.hdc()), rects.Arg(area), Var(false), picture.value})
                        .hr);
    EXPECT_EQ(InDib(0x000000FF), canvas.At(3, 3));
    EXPECT_EQ(InDib(0x000000FF), canvas.At(6, 6));
    EXPECT_EQ(0x00FFFFFFu, canvas.At(2, 3));
    EXPECT_EQ(0x00FFFFFFu, canvas.At(7, 6));
}

TEST_F(ComGraphics, ApplyFontToFormWalksTheHostForm) {
    ComPtr<IDispatch> common = Server::Instance().Create(tc::com::CLSID_clsCommonWrapper);
    ASSERT_TRUE(common);
    FakeObject form, controls, withFont, withoutFont;
    form.properties[L"Font"] = NewFont(L"Arial");
    ASSERT_EQ(VT_DISPATCH, form.properties[L"Font"].v.vt);
    form.properties[L"Controls"] = ObjectArg(&controls);
    withFont.properties[L"Font"] = NewFont(L"Courier New");
    withoutFont.properties[L"Caption"] = Var(L"no font");
    controls.items = {ObjectArg(&withoutFont), ObjectArg(&withFont)};

    // Wine's font object reports the face it realised, so the new name is one that is installed.
    const std::u16string name = u"Liberation Serif";
    ASSERT_EQ(S_OK, Call(common.get(), L"ApplyFontToForm", {ObjectArg(&form), Var(name)}).hr);
    EXPECT_EQ(name, FontName(form.properties[L"Font"]));
    EXPECT_EQ(name, FontName(withFont.properties[L"Font"]));
    // The control's font is assigned back to itself once, so that its setter redraws it.
    EXPECT_EQ(1, withFont.puts[L"Font set"]);
    EXPECT_EQ(0, form.puts[L"Font set"]);
    EXPECT_TRUE(withoutFont.puts.empty());
    EXPECT_EQ(u"no font", withoutFont.properties[L"Caption"].Text());
}

TEST_F(ComGraphics, DroppedFilesComeAsCollectionOfWidePaths) {
    ComPtr<IDispatch> common = Server::Instance().Create(tc::com::CLSID_clsCommonWrapper);
    ASSERT_TRUE(common);
    const std::vector<std::u16string> files = {u"C:\\\u0414\u0430\u043D\u043D\u044B\u0435\\a.txt",
                                               u"C:\\\u6587\u4EF6\\\xD83D\xDE00.bin"};
    testsupport::TestDataObject data(files);
    Var dataArg;
    dataArg.v.vt = VT_UNKNOWN;
    dataArg.v.punkVal = &data;
    const CallResult dropped = Call(common.get(), L"GetUnicodeDroppedFiles", {dataArg});
    ASSERT_EQ(S_OK, dropped.hr);
    ASSERT_EQ(VT_DISPATCH, dropped.value.v.vt);
    IDispatch* collection = dropped.value.v.pdispVal;
    ASSERT_EQ(2, AsLong(Call(collection, L"Count").value));
    EXPECT_EQ(files[0], Call(collection, L"Item", {Var(1)}).value.Text());
    EXPECT_EQ(files[1], Call(collection, L"Item", {Var(2)}).value.Text());

    // Without CF_HDROP the collection is empty.
    testsupport::TestDataObject none;
    dataArg.v.punkVal = &none;
    const CallResult empty = Call(common.get(), L"GetUnicodeDroppedFiles", {dataArg});
    ASSERT_EQ(S_OK, empty.hr);
    EXPECT_EQ(0, AsLong(Call(empty.value.v.pdispVal, L"Count").value));
    dataArg.v.vt = VT_EMPTY;
}

TEST_F(ComGraphics, FontHDCFromHostFontObject) {
    ComPtr<IDispatch> fontHdc = Server::Instance().Create(tc::com::CLSID_clsFontHDC);
    ASSERT_TRUE(fontHdc);
    Canvas canvas(8, 8, 0);
    Var font = NewFont(L"Liberation Serif");
    ASSERT_EQ(S_OK, Put(font.v.pdispVal, L"Bold", Var(true)).hr);
    ASSERT_EQ(S_OK, Call(fontHdc.get(), L"SetFontToDCStdFont", {HandleArg(canvas.hdc()), font, Var(0x00123456)}).hr);
    const auto selected = reinterpret_cast<HFONT>(AsHandle(Call(fontHdc.get(), L"hFont").value));
    ASSERT_EQ(selected, ::GetCurrentObject(canvas.hdc(), OBJ_FONT));
    LOGFONTW described{};
    ASSERT_NE(0, ::GetObjectW(selected, sizeof(described), &described));
    EXPECT_EQ(std::wstring(L"Liberation Serif"), described.lfFaceName);
    EXPECT_EQ(FW_BOLD, described.lfWeight);
    // The font object's Size, rounded to whole points, at the DC's resolution (Wine's font object
    // reports the size it realised, which need not be the 9 points asked).
    Var size = Call(font.v.pdispVal, L"Size").value;
    ASSERT_EQ(S_OK, ::VariantChangeType(&size.v, &size.v, 0, VT_I4));
    EXPECT_EQ(-::MulDiv(size.v.lVal, ::GetDeviceCaps(canvas.hdc(), LOGPIXELSY), 72), described.lfHeight);
    EXPECT_EQ(0x00123456u, ::GetTextColor(canvas.hdc()));
    EXPECT_EQ(S_OK, Call(fontHdc.get(), L"Destroy").hr);
}

TEST_F(ComGraphics, HexEnvelopeRoundTripsEveryCodeUnit) {
    ComPtr<IDispatch> common = Server::Instance().Create(tc::com::CLSID_clsCommonWrapper);
    ASSERT_TRUE(common);
    // Cyrillic, CJK, a surrogate pair, a lone high and a lone low surrogate, and a NUL inside.
    const std::u16string text = u"\u0416\u0438\u0437\u043D\u044C \u4E2D\u6587 \xD83D\xDE00 \xD800 x\xDC00" +
                                std::u16string(1, u'\0') + u"end";
    Var original(text);
    const CallResult hex = Call(common.get(), L"StrToHex", {Ref(VT_BSTR, &original.v.bstrVal)});
    ASSERT_EQ(S_OK, hex.hr);
    const std::u16string envelope = hex.value.Text();
    EXPECT_EQ(u"0X", envelope.substr(0, 2));
    for (char16_t unit : envelope) EXPECT_LT(unit, 128) << "the envelope is ASCII";
    // The by-reference argument comes back unchanged.
    EXPECT_EQ(text, original.Text());
    EXPECT_EQ(VARIANT_TRUE, Call(common.get(), L"IsHexString", {hex.value}).value.v.boolVal);

    // A by-value string, as script hosts pass it, to the by-reference parameter.
    const CallResult back = Call(common.get(), L"HextoStr", {hex.value});
    ASSERT_EQ(S_OK, back.hr);
    const std::u16string decoded = back.value.Text();
    ASSERT_EQ(text.size(), decoded.size());
    for (size_t i = 0; i < text.size(); ++i) EXPECT_EQ(text[i], decoded[i]) << "code unit " << i;
    EXPECT_EQ(u"", Call(common.get(), L"StrToHex", {Var(L"")}).value.Text());
}

TEST_F(ComGraphics, RaisedErrorCarriesNumberSourceAndText) {
    ComPtr<IDispatch> font = Server::Instance().Create(tc::com::CLSID_clsFontHDC);
    ASSERT_TRUE(font);
    const CallResult r = Call(font.get(), L"SetFontToDC", {HandleArg(nullptr), Var(L"Arial"), Var(10)});
    EXPECT_EQ(DISP_E_EXCEPTION, r.hr);
    EXPECT_EQ(-2147221503, r.scode);
    EXPECT_EQ(u"Cannot use this DC!", r.description);
    EXPECT_EQ(u"clsFontHDC.SetFontToDC", r.source);

    // The language runtime's invalid procedure call keeps its number in the control facility.
    ComPtr<IDispatch> common = Server::Instance().Create(tc::com::CLSID_clsCommonWrapper);
    const CallResult empty = Call(common.get(), L"AscW", {Var(L"")});
    EXPECT_EQ(DISP_E_EXCEPTION, empty.hr);
    EXPECT_EQ(static_cast<LONG>(0x800A0005), empty.scode);
}

}  // namespace
