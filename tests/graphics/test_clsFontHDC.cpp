// clsFontHDC and clsGdiHandle: selection, restoring, derived sizes, weights, colours, ownership.
#include <gtest/gtest.h>

#include <olectl.h>

#include "DibCanvas.h"
#include "common/CtlError.h"
#include "graphics/clsFontHDC.h"
#include "graphics/clsGdiHandle.h"
#include "support/StackComObject.h"

namespace {

LOGFONTW fontOf(HGDIOBJ font) {
    LOGFONTW description{};
    ::GetObjectW(font, sizeof(description), &description);
    return description;
}

TEST(clsFontHDC, RefusesNoDc) {
    clsFontHDC font;
    try {
        font.SetFontToDC(nullptr, u"Arial", 10);
        FAIL() << "no error for DC 0";
    } catch (const CtlError& error) {
        EXPECT_EQ(error.Number(), static_cast<int32_t>(0x80040001u));
        EXPECT_EQ(error.Source(), u"clsFontHDC.SetFontToDC");
        EXPECT_EQ(error.Description(), u"Cannot use this DC!");
    }
    EXPECT_EQ(font.hFont(), nullptr);
}

TEST(clsFontHDC, SelectsDescribedFontAndRestores) {
    const DibCanvas dc(1, 1);
    const int ppi = ::GetDeviceCaps(dc.dc(), LOGPIXELSY);
    struct Case {
        int16_t size;
        bool bold, italic, underline, strike, force96;
        int32_t quality;
        LONG expectedHeight;
    };
    const Case cases[] = {
        {12, false, false, false, false, false, efhat_default, -::MulDiv(12, ppi, 72)},
        {9, true, true, false, false, true, efhat_antialiased, -12},  // 9 pt at 96 dpi
        {20, false, false, true, true, false, efhat_nonantialiased, -::MulDiv(20, ppi, 72)},
        {20, true, false, false, false, true, efhat_default, -27},   // 26.67 rounds to 27
    };
    const HGDIOBJ before = ::GetCurrentObject(dc.dc(), OBJ_FONT);
    for (const Case& c : cases) {
        clsFontHDC font;
        font.SetFontToDC(dc.dc(), u"Tahoma", c.size, -1, c.bold, c.italic, c.underline, c.strike, c.quality, 0,
                         c.force96);
        ASSERT_NE(font.hFont(), nullptr);
        EXPECT_EQ(::GetCurrentObject(dc.dc(), OBJ_FONT), font.hFont());
        const LOGFONTW made = fontOf(font.hFont());
        EXPECT_EQ(made.lfHeight, c.expectedHeight) << c.size;
        EXPECT_EQ(made.lfWidth, 0);
        EXPECT_EQ(made.lfWeight, c.bold ? 700 : 400);
        EXPECT_EQ(made.lfItalic != 0, c.italic);
        EXPECT_EQ(made.lfUnderline != 0, c.underline);
        EXPECT_EQ(made.lfStrikeOut != 0, c.strike);
        EXPECT_EQ(made.lfQuality, c.quality);
        EXPECT_EQ(made.lfCharSet, DEFAULT_CHARSET);
        EXPECT_EQ(FromWide(made.lfFaceName), u"Tahoma");
        const HFONT owned = font.hFont();
        font.Destroy();
        EXPECT_EQ(::GetCurrentObject(dc.dc(), OBJ_FONT), before);
        EXPECT_EQ(font.hFont(), nullptr);
        EXPECT_EQ(::GetObjectType(owned), 0u);
        font.Destroy();
    }
    // Setting again on a live object replaces the font and still restores the original.
    {
        clsFontHDC font;
        font.SetFontToDC(dc.dc(), u"Tahoma", 10);
        const HFONT first = font.hFont();
        font.SetFontToDC(dc.dc(), u"Tahoma", 14);
        EXPECT_EQ(::GetObjectType(first), 0u);
        EXPECT_EQ(::GetCurrentObject(dc.dc(), OBJ_FONT), font.hFont());
    }
    EXPECT_EQ(::GetCurrentObject(dc.dc(), OBJ_FONT), before) << "end of life restores";
}

TEST(clsFontHDC, ForeColourOnlyWhenGiven) {
    const DibCanvas dc(1, 1);
    ::SetTextColor(dc.dc(), 0x00010203);
    clsFontHDC font;
    font.SetFontToDC(dc.dc(), u"Tahoma", 10, -1);
    EXPECT_EQ(::GetTextColor(dc.dc()), 0x00010203u);
    font.SetFontToDC(dc.dc(), u"Tahoma", 10, 0x00A0B0C0);
    EXPECT_EQ(::GetTextColor(dc.dc()), 0x00A0B0C0u);
    font.SetFontToDC(dc.dc(), u"Tahoma", 10, static_cast<int32_t>(0x80000012u));
    EXPECT_EQ(::GetTextColor(dc.dc()), ::GetSysColor(COLOR_BTNTEXT));
}

TEST(clsFontHDC, WeightIncrementWidensTheFont) {
    const DibCanvas dc(1, 1);
    // The weight the system reports for the plain font, measured apart.
    const HFONT probe = ::CreateFontW(-13, 0, 0, 0, 400, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    const HGDIOBJ previous = ::SelectObject(dc.dc(), probe);
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc.dc(), &metrics);
    ::SelectObject(dc.dc(), previous);
    ::DeleteObject(probe);
    struct Case {
        int16_t increment;
        LONG width;
    };
    const Case cases[] = {{100, metrics.tmWeight + 100}, {-5000, 1}};
    for (const Case& c : cases) {
        clsFontHDC font;
        font.SetFontToDC(dc.dc(), u"Tahoma", 10, -1, false, false, false, false, efhat_default, c.increment, true);
        const LOGFONTW made = fontOf(font.hFont());
        EXPECT_EQ(made.lfWidth, c.width) << c.increment;
        EXPECT_EQ(made.lfWeight, 400);
        EXPECT_EQ(made.lfHeight, -13);
        EXPECT_EQ(::GetCurrentObject(dc.dc(), OBJ_FONT), font.hFont());
    }
}

// A font object as the host passes it: properties reached by name through IDispatch.
class FakeFontObject : public testsupport::StackComObject<IDispatch, IID_IDispatch> {
public:
    CtlString name = u"Tahoma";
    double size = 10.6;
    bool bold = true, italic = true, underline = false, strikethrough = true;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        static const wchar_t* const known[] = {L"Name", L"Size", L"Bold", L"Italic", L"Underline", L"Strikethrough"};
        for (UINT i = 0; i < count; ++i) {
            ids[i] = DISPID_UNKNOWN;
            for (int k = 0; k < 6; ++k) {
                if (_wcsicmp(names[i], known[k]) == 0) ids[i] = k + 1;
            }
            if (ids[i] == DISPID_UNKNOWN) return DISP_E_UNKNOWNNAME;
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        if ((flags & DISPATCH_PROPERTYGET) == 0 || result == nullptr) return DISP_E_MEMBERNOTFOUND;
        ::VariantInit(result);
        const auto asBool = [&](bool v) {
            result->vt = VT_BOOL;
            result->boolVal = v ? VARIANT_TRUE : VARIANT_FALSE;
        };
        switch (id) {
        case 1:
            result->vt = VT_BSTR;
            result->bstrVal = ::SysAllocString(AsWide(name));
            return S_OK;
        case 2:
            // The standard font carries its size as currency.
            result->vt = VT_CY;
            result->cyVal.int64 = static_cast<LONGLONG>(size * 10000.0 + (size >= 0 ? 0.5 : -0.5));
            return S_OK;
        case 3: asBool(bold); return S_OK;
        case 4: asBool(italic); return S_OK;
        case 5: asBool(underline); return S_OK;
        case 6: asBool(strikethrough); return S_OK;
        default: return DISP_E_MEMBERNOTFOUND;
        }
    }
};

TEST(clsFontHDC, ReadsAFontObjectByItsMembers) {
    const DibCanvas dc(1, 1);
    struct Case {
        double size;
        LONG height;  // -MulDiv(whole points, 96, 72)
    };
    // Whole points: 10.6 -> 11 -> 14.67 -> 15; 8.4 -> 8 -> 10.67 -> 11; 12 -> 16.
    const Case cases[] = {{10.6, -15}, {8.4, -11}, {12.0, -16}};
    for (const Case& c : cases) {
        FakeFontObject object;
        object.size = c.size;
        clsFontHDC font;
        font.SetFontToDCStdFont(dc.dc(), &object, -1, efhat_default, 0, true);
        const LOGFONTW made = fontOf(font.hFont());
        EXPECT_EQ(FromWide(made.lfFaceName), u"Tahoma");
        EXPECT_EQ(made.lfHeight, c.height) << c.size;
        EXPECT_EQ(made.lfWeight, 700);
        EXPECT_NE(made.lfItalic, 0);
        EXPECT_EQ(made.lfUnderline, 0);
        EXPECT_NE(made.lfStrikeOut, 0);
    }
    // The system's own font object is read the same way. Wine's object reports the size of the
    // font it realised (12 points came back as 11.25), so the expectation follows what it reports.
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    {
        FONTDESC description{};
        description.cbSizeofstruct = sizeof(description);
        description.lpstrName = const_cast<LPOLESTR>(L"Tahoma");
        description.cySize.int64 = 120000;
        description.sWeight = 400;
        description.fUnderline = TRUE;
        IFont* raw = nullptr;
        ASSERT_TRUE(SUCCEEDED(::OleCreateFontIndirect(&description, IID_IFont, reinterpret_cast<void**>(&raw))));
        CY reported{};
        raw->get_Size(&reported);
        const int points = static_cast<int>((reported.int64 + 5000) / 10000);
        IDispatch* asDispatch = nullptr;
        ASSERT_TRUE(SUCCEEDED(raw->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&asDispatch))));
        clsFontHDC font;
        font.SetFontToDCStdFont(dc.dc(), asDispatch, -1, efhat_default, 0, true);
        asDispatch->Release();
        raw->Release();
        const LOGFONTW made = fontOf(font.hFont());
        EXPECT_EQ(made.lfHeight, -::MulDiv(points, 96, 72));
        EXPECT_EQ(made.lfWeight, 400);
        EXPECT_NE(made.lfUnderline, 0);
    }
    ::CoUninitialize();
}

TEST(clsGdiHandle, Ownership) {
    const HBRUSH first = ::CreateSolidBrush(1);
    const HBRUSH second = ::CreateSolidBrush(2);
    HGDIOBJ kept = nullptr;
    {
        clsGdiHandle handle(first);
        EXPECT_EQ(handle.Handle(), first);
        handle.Handle(second);
        EXPECT_EQ(::GetObjectType(first), 0u) << "taking a new handle deletes the old one";
        handle.Handle(second);
        EXPECT_NE(::GetObjectType(second), 0u) << "taking the same handle keeps it";
        kept = handle.ReleaseHandle();
        EXPECT_EQ(handle.Handle(), nullptr);
        handle.Destroy();
        handle.Destroy();
    }
    EXPECT_EQ(kept, second);
    EXPECT_NE(::GetObjectType(second), 0u) << "released: the caller owns it";
    {
        clsGdiHandle handle(second);
        clsGdiHandle moved(std::move(handle));
        EXPECT_EQ(handle.Handle(), nullptr);
    }
    EXPECT_EQ(::GetObjectType(second), 0u) << "end of life deletes";
}

}  // namespace
