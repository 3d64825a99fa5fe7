#include "com/EventDataObject.h"

#include "com/ComConvert.h"
#include "common/CtlError.h"

namespace {

constexpr int16_t kText = 1;
constexpr int16_t kUnicodeText = 13;

bool isAbsent(const VARIANT& value) noexcept {
    return value.vt == VT_EMPTY || (value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND);
}

int16_t formatOf(const VARIANT& format, int16_t fallback) {
    if (isAbsent(format)) return fallback;
    VARIANT number;
    ::VariantInit(&number);
    if (FAILED(::VariantChangeType(&number, const_cast<VARIANT*>(&format), 0, VT_I2))) {
        throw tc::com::ComFailure{DISP_E_TYPEMISMATCH};
    }
    return number.iVal;
}

}  // namespace

SurfaceDataObject& EventDataObject::live() const {
    if (m_data == nullptr) throw CtlError(u"DataObject", u"The data object is only valid during its event");
    return *m_data;
}

const VARIANT& EventDataObject::keep(VARIANT value) noexcept {
    ::VariantClear(&m_result);
    m_result = value;
    return m_result;
}

const VARIANT& EventDataObject::GetData(const VARIANT& format) {
    const int16_t wanted = formatOf(format, kUnicodeText);
    VARIANT result;
    ::VariantInit(&result);
    SurfaceDataObject& data = live();
    if ((wanted == kText || wanted == kUnicodeText) && data.GetFormat(wanted)) {
        result.vt = VT_BSTR;
        result.bstrVal = tc::com::ToBstr(data.GetText());
    }
    return keep(result);
}

void EventDataObject::SetData(const VARIANT& data, const VARIANT& format) {
    SurfaceDataObject& target = live();
    const int16_t given = formatOf(format, kUnicodeText);
    if (isAbsent(data)) return;
    if (given != kText && given != kUnicodeText) throw tc::com::ComFailure{DV_E_FORMATETC};
    VARIANT text;
    ::VariantInit(&text);
    if (FAILED(::VariantChangeType(&text, const_cast<VARIANT*>(&data), 0, VT_BSTR))) {
        throw tc::com::ComFailure{DISP_E_TYPEMISMATCH};
    }
    target.SetText(tc::com::FromBstr(text.bstrVal));
    ::VariantClear(&text);
}

bool EventDataObject::GetFormat(int16_t format) const { return live().GetFormat(format); }

void EventDataObject::Clear() { live().Clear(); }

const VARIANT& EventDataObject::Files() {
    live();
    // The surface's data view carries text only: a file drag shows an empty list here.
    VARIANT result;
    ::VariantInit(&result);
    result.vt = VT_ARRAY | VT_BSTR;
    result.parray = ::SafeArrayCreateVector(VT_BSTR, 0, 0);
    return keep(result);
}
