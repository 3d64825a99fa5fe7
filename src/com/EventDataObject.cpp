#include "com/EventDataObject.h"

#include <cstring>
#include <string>
#include <vector>

#include <shlobj.h>

#include "com/ComConvert.h"
#include "common/CtlError.h"
#include "frame/OleDragDrop.h"

namespace {

constexpr int16_t kText = 1;
constexpr int16_t kUnicodeText = 13;

// The bytes of one format of a data object through global memory, or nothing.
bool readGlobal(IDataObject* data, CLIPFORMAT format, std::vector<uint8_t>& bytes) {
    if (!data) return false;
    FORMATETC wanted{format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM medium{};
    if (FAILED(data->GetData(&wanted, &medium))) return false;
    bool ok = false;
    if (medium.tymed == TYMED_HGLOBAL && medium.hGlobal) {
        const auto* start = static_cast<const uint8_t*>(::GlobalLock(medium.hGlobal));
        if (start) {
            bytes.assign(start, start + ::GlobalSize(medium.hGlobal));
            ::GlobalUnlock(medium.hGlobal);
            ok = true;
        }
    }
    ::ReleaseStgMedium(&medium);
    return ok;
}

// The names of a file list (a DROPFILES header, then names each ended by a zero, then a zero).
std::vector<std::u16string> fileNames(const std::vector<uint8_t>& bytes) {
    std::vector<std::u16string> names;
    DROPFILES header{};
    if (bytes.size() < sizeof(header)) return names;
    std::memcpy(&header, bytes.data(), sizeof(header));
    size_t at = header.pFiles;
    while (at < bytes.size()) {
        std::u16string name;
        if (header.fWide) {
            for (; at + 1 < bytes.size(); at += 2) {
                const auto unit = static_cast<char16_t>(bytes[at] | (bytes[at + 1] << 8));
                if (unit == 0) break;
                name.push_back(unit);
            }
            at += 2;
        } else {
            std::string narrow;
            for (; at < bytes.size() && bytes[at] != 0; ++at) narrow.push_back(static_cast<char>(bytes[at]));
            ++at;
            const int units = ::MultiByteToWideChar(CP_ACP, 0, narrow.data(), static_cast<int>(narrow.size()), nullptr, 0);
            name.resize(static_cast<size_t>(units));
            ::MultiByteToWideChar(CP_ACP, 0, narrow.data(), static_cast<int>(narrow.size()),
                                  reinterpret_cast<wchar_t*>(name.data()), units);
        }
        if (name.empty()) break;
        names.push_back(std::move(name));
    }
    return names;
}

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

EventDataObject::EventDataObject(SurfaceDataObject& data) noexcept
    : m_data(&data), m_platform(nullptr) {
    ::VariantInit(&m_result);
    if (const auto* view = dynamic_cast<const OleDataView*>(&data)) m_platform = view->Platform();
}

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
    std::vector<uint8_t> bytes;
    if (wanted == kText || wanted == kUnicodeText) {
        if (data.GetFormat(wanted)) {
            result.vt = VT_BSTR;
            result.bstrVal = tc::com::ToBstr(data.GetText());
        }
    } else if (readGlobal(m_platform, static_cast<CLIPFORMAT>(wanted), bytes)) {
        result.vt = VT_ARRAY | VT_UI1;
        result.parray = tc::com::ToByteArray(bytes);
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
    std::vector<uint8_t> bytes;
    const std::vector<std::u16string> names =
        readGlobal(m_platform, CF_HDROP, bytes) ? fileNames(bytes) : std::vector<std::u16string>();
    VARIANT result;
    ::VariantInit(&result);
    result.vt = VT_ARRAY | VT_BSTR;
    result.parray = ::SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(names.size()));
    for (LONG index = 0; index < static_cast<LONG>(names.size()); ++index) {
        BSTR name = tc::com::ToBstr(names[static_cast<size_t>(index)]);
        ::SafeArrayPutElement(result.parray, &index, name);  // copies the string
        ::SysFreeString(name);
    }
    return keep(result);
}
