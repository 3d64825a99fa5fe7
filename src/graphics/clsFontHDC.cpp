// clsFontHDC: font creation and selection with the thread's shared size cache.
#include "graphics/clsFontHDC.h"

#include <algorithm>
#include <cmath>

#include "common/CtlError.h"
#include "graphics/GdiRaii.h"

namespace {

// Shared by every clsFontHDC of the thread: skip GetDeviceCaps and MulDiv when nothing changed.
struct FontSizeCache {
    int32_t pixelsPerInch = 0;
    int32_t lastSize = 0;
    int32_t height = 0;
    bool lastForce96DPI = false;
};
thread_local FontSizeCache t_sizeCache;

HFONT makeFont(int32_t height, int32_t width, bool bold, bool italic, bool underline, bool strikeout,
               int32_t quality, const CtlString& face) {
    return ::CreateFontW(height, width, 0, 0, bold ? FW_BOLD : FW_NORMAL, italic ? 1 : 0, underline ? 1 : 0,
                         strikeout ? 1 : 0, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                         static_cast<DWORD>(quality), DEFAULT_PITCH | FF_DONTCARE, AsWide(face));
}

bool getProperty(IDispatch* object, const wchar_t* name, VARIANT& value) {
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    if (FAILED(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) return false;
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    ::VariantInit(&value);
    return SUCCEEDED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr,
                                    nullptr));
}

bool boolProperty(IDispatch* object, const wchar_t* name) {
    VARIANT value;
    if (!getProperty(object, name, value)) return false;
    const bool result = SUCCEEDED(::VariantChangeType(&value, &value, 0, VT_BOOL)) && value.boolVal != VARIANT_FALSE;
    ::VariantClear(&value);
    return result;
}

}  // namespace

void clsFontHDC::Destroy() noexcept {
    if (m_hDC != nullptr) {
        if (m_hOldFont != nullptr) ::SelectObject(m_hDC, m_hOldFont);
        m_hDC = nullptr;
        m_hOldFont = nullptr;
    }
    if (m_hFont != nullptr) {
        ::DeleteObject(m_hFont);
        m_hFont = nullptr;
    }
}

void clsFontHDC::SetFontToDC(HDC lHdc, const CtlString& sFontName, int16_t iFontSize, int32_t lForeColor,
                             bool bFontBold, bool bFontItalic, bool bFontUnderline, bool bFontStrikeout,
                             int32_t iQualityType, int16_t iCharWeightInc, bool bForce96DPI) {
    if (lHdc == nullptr) throw CtlError(u"clsFontHDC.SetFontToDC", u"Cannot use this DC!");
    FontSizeCache& cache = t_sizeCache;
    if (lHdc != m_hDC || bForce96DPI != cache.lastForce96DPI) {
        cache.lastForce96DPI = bForce96DPI;
        cache.pixelsPerInch = bForce96DPI ? 96 : ::GetDeviceCaps(lHdc, LOGPIXELSY);
    }
    if (iFontSize != cache.lastSize || lHdc != m_hDC) {
        cache.lastSize = iFontSize;
        cache.height = -::MulDiv(iFontSize, cache.pixelsPerInch, 72);
    }
    Destroy();
    m_hFont = makeFont(cache.height, 0, bFontBold, bFontItalic, bFontUnderline, bFontStrikeout, iQualityType,
                       sFontName);
    if (m_hFont == nullptr) return;
    m_hDC = lHdc;
    m_hOldFont = ::SelectObject(lHdc, m_hFont);
    if (lForeColor != -1) {
        const int32_t color = lForeColor < 0 ? static_cast<int32_t>(::GetSysColor(lForeColor & 31)) : lForeColor;
        ::SetTextColor(lHdc, static_cast<COLORREF>(color));
    }
    if (iCharWeightInc != 0) {
        TEXTMETRICW metrics{};
        ::GetTextMetricsW(lHdc, &metrics);
        const int32_t weight = std::max<int32_t>(1, metrics.tmWeight + iCharWeightInc);
        Destroy();
        // The heavier weight goes in as the width argument: characters come out wider, not
        // bolder. Existing layouts were measured with that look, so it stays.
        m_hFont = makeFont(cache.height, weight, bFontBold, bFontItalic, bFontUnderline, bFontStrikeout,
                           iQualityType, sFontName);
        if (m_hFont == nullptr) return;
        m_hDC = lHdc;
        m_hOldFont = ::SelectObject(lHdc, m_hFont);
    }
}

void clsFontHDC::SetFontToDCStdFont(HDC lHdc, IDispatch* oFont, int32_t lForeColor, int32_t iQualityType,
                                    int16_t iCharWeightInc, bool bForce96DPI) {
    if (oFont == nullptr) return;
    CtlString name;
    VARIANT value;
    if (getProperty(oFont, L"Name", value)) {
        if (SUCCEEDED(::VariantChangeType(&value, &value, 0, VT_BSTR)) && value.bstrVal != nullptr) {
            name = FromWide(value.bstrVal, ::SysStringLen(value.bstrVal));
        }
        ::VariantClear(&value);
    }
    double size = 0.0;
    if (getProperty(oFont, L"Size", value)) {
        if (SUCCEEDED(::VariantChangeType(&value, &value, 0, VT_R8))) size = value.dblVal;
        ::VariantClear(&value);
    }
    const auto points = static_cast<int16_t>(std::clamp(std::nearbyint(size), -32768.0, 32767.0));
    SetFontToDC(lHdc, name, points, lForeColor, boolProperty(oFont, L"Bold"), boolProperty(oFont, L"Italic"),
                boolProperty(oFont, L"Underline"), boolProperty(oFont, L"Strikethrough"), iQualityType,
                iCharWeightInc, bForce96DPI);
}
