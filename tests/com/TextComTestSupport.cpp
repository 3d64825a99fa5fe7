#include "TextComTestSupport.h"

#include <fstream>

namespace comtest {

ScratchFolder::ScratchFolder(const wchar_t* name) {
    wchar_t temp[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, temp);
    m_path = std::filesystem::path(temp) / (std::wstring(name) + L"_" + std::to_wstring(::GetCurrentProcessId()));
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
    std::filesystem::create_directories(m_path);
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

void ScratchFolder::WriteFile(const std::wstring& name, const std::string& bytes) const {
    std::ofstream out(m_path / name, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::vector<Var> Enumerate(IDispatch* collection) {
    std::vector<Var> items;
    DISPPARAMS none{};
    Var enumerator;
    const HRESULT hr = collection->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                                          DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, &enumerator.v, nullptr,
                                          nullptr);
    EXPECT_EQ(S_OK, hr);
    if (FAILED(hr) || (enumerator.v.vt != VT_UNKNOWN && enumerator.v.vt != VT_DISPATCH) || !enumerator.v.punkVal) {
        ADD_FAILURE() << "_NewEnum gave no object";
        return items;
    }
    ComPtr<IEnumVARIANT> walk;
    EXPECT_EQ(S_OK, enumerator.v.punkVal->QueryInterface(IID_IEnumVARIANT, walk.putVoid()));
    if (!walk) return items;
    for (;;) {
        Var item;
        ULONG fetched = 0;
        if (walk->Next(1, &item.v, &fetched) != S_OK || fetched != 1) break;
        items.push_back(item);
    }
    return items;
}

std::vector<std::u16string> StringsIn(const VARIANT& value) {
    std::vector<std::u16string> strings;
    const VARIANT& v = value.vt == (VT_BYREF | VT_VARIANT) ? *value.pvarVal : value;
    EXPECT_EQ(VT_ARRAY | VT_BSTR, v.vt);
    if (v.vt != (VT_ARRAY | VT_BSTR) || !v.parray) return strings;
    LONG lower = 0;
    LONG upper = -1;
    ::SafeArrayGetLBound(v.parray, 1, &lower);
    ::SafeArrayGetUBound(v.parray, 1, &upper);
    EXPECT_EQ(0, lower);
    BSTR* data = nullptr;
    if (FAILED(::SafeArrayAccessData(v.parray, reinterpret_cast<void**>(&data)))) return strings;
    for (LONG i = 0; i <= upper - lower; ++i) {
        strings.emplace_back(reinterpret_cast<const char16_t*>(data[i]), ::SysStringLen(data[i]));
    }
    ::SafeArrayUnaccessData(v.parray);
    return strings;
}

}  // namespace comtest
