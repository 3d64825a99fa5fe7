#include "com/ComConvert.h"

#include <cstring>

namespace tc::com {

std::u16string FromBstr(BSTR text) {
    return text ? FromWide(text, ::SysStringLen(text)) : std::u16string();
}

BSTR ToBstr(const std::u16string& text) {
    BSTR out = ::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
    if (!out) throw ComFailure{E_OUTOFMEMORY};
    return out;
}

std::vector<uint8_t> FromByteArray(SAFEARRAY* array) {
    std::vector<uint8_t> bytes;
    if (!array) return bytes;
    if (::SafeArrayGetDim(array) != 1 || ::SafeArrayGetElemsize(array) != 1) throw ComFailure{DISP_E_TYPEMISMATCH};
    LONG lower = 0;
    LONG upper = -1;
    ::SafeArrayGetLBound(array, 1, &lower);
    ::SafeArrayGetUBound(array, 1, &upper);
    if (upper < lower) return bytes;
    void* data = nullptr;
    const HRESULT hr = ::SafeArrayAccessData(array, &data);
    if (FAILED(hr)) throw ComFailure{hr};
    bytes.assign(static_cast<const uint8_t*>(data), static_cast<const uint8_t*>(data) + (upper - lower + 1));
    ::SafeArrayUnaccessData(array);
    return bytes;
}

SAFEARRAY* ToByteArray(const std::vector<uint8_t>& bytes) {
    SAFEARRAY* array = ::SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (!array) throw ComFailure{E_OUTOFMEMORY};
    if (!bytes.empty()) {
        void* data = nullptr;
        if (SUCCEEDED(::SafeArrayAccessData(array, &data))) {
            std::memcpy(data, bytes.data(), bytes.size());
            ::SafeArrayUnaccessData(array);
        }
    }
    return array;
}

}  // namespace tc::com
