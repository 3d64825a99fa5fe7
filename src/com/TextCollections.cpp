#include "com/TextCollections.h"

#include "com/ComConvert.h"
#include "com/generated/ComInterfaces.h"

namespace tc::com {

namespace {

// A library object as a dispatch VARIANT, through its class's adapter.
template <class Tag>
OwnedVariant Wrapped(std::shared_ptr<typename Tag::Cpp> object) {
    typename Tag::Interface* itf = nullptr;
    const HRESULT hr = Tag::Wrap(std::move(object), &itf);
    if (FAILED(hr)) throw ComFailure{hr};
    VARIANT v;
    ::VariantInit(&v);
    v.vt = VT_DISPATCH;
    v.pdispVal = itf;
    return OwnedVariant::Adopt(v);
}

// The library object behind an item, which must be an object of the tag's class.
template <class Tag>
std::shared_ptr<typename Tag::Cpp> Unwrapped(const VARIANT& item, const GUID& iid) {
    if ((item.vt != VT_DISPATCH && item.vt != VT_UNKNOWN) || !item.punkVal) throw ComFailure{DISP_E_TYPEMISMATCH};
    ComPtr<typename Tag::Interface> itf;
    if (FAILED(item.punkVal->QueryInterface(iid, itf.putVoid()))) throw ComFailure{DISP_E_TYPEMISMATCH};
    return Tag::Unwrap(itf.get());
}

}  // namespace

std::shared_ptr<clsCollection> CollectionOf(const SearchFilesCollection& entries) {
    auto collection = std::make_shared<clsCollection>();
    for (const auto& entry : entries) collection->Append(Wrapped<comtype::Obj_clsSearchFilesFInfo>(entry));
    return collection;
}

SearchFilesCollection SearchEntriesOf(const std::shared_ptr<clsCollection>& collection) {
    SearchFilesCollection entries;
    if (!collection) return entries;
    for (int32_t i = 0; i < collection->Count(); ++i) {
        entries.push_back(Unwrapped<comtype::Obj_clsSearchFilesFInfo>(collection->At(i), IID__clsSearchFilesFInfo));
    }
    return entries;
}

std::shared_ptr<clsCollection> CollectionOf(const std::shared_ptr<clsFileIniEx_RowCollection>& rows) {
    if (!rows) return nullptr;
    auto collection = std::make_shared<clsCollection>();
    rows->ForEach([&](const std::u16string& key, const std::shared_ptr<clsFileIniEx_Row>& row) {
        collection->Append(Wrapped<comtype::Obj_clsFileIniEx_Row>(row), key);
    });
    return collection;
}

std::shared_ptr<clsFileIniEx_RowCollection> RowsOf(const std::shared_ptr<clsCollection>& collection) {
    if (!collection) return nullptr;
    auto rows = std::make_shared<clsFileIniEx_RowCollection>();
    for (int32_t i = 0; i < collection->Count(); ++i) {
        rows->Add(Unwrapped<comtype::Obj_clsFileIniEx_Row>(collection->At(i), IID__clsFileIniEx_Row),
                  collection->KeyAt(i));
    }
    return rows;
}

std::vector<std::u16string> StringsOf(const VARIANT& value) {
    std::vector<std::u16string> strings;
    const OwnedVariant v(value);
    const VARTYPE vt = v.get().vt;
    if (!(vt & VT_ARRAY) || !v.get().parray || ::SafeArrayGetDim(v.get().parray) != 1) return strings;
    SAFEARRAY* array = v.get().parray;
    LONG lower = 0;
    LONG upper = -1;
    ::SafeArrayGetLBound(array, 1, &lower);
    ::SafeArrayGetUBound(array, 1, &upper);
    for (LONG i = lower; i <= upper; ++i) {
        if ((vt & VT_TYPEMASK) == VT_BSTR) {
            BSTR text = nullptr;
            if (SUCCEEDED(::SafeArrayGetElement(array, &i, &text))) {
                strings.push_back(FromBstr(text));
                ::SysFreeString(text);
            }
        } else if ((vt & VT_TYPEMASK) == VT_VARIANT) {
            VARIANT element;
            ::VariantInit(&element);
            if (SUCCEEDED(::SafeArrayGetElement(array, &i, &element))) {
                const OwnedVariant owned = OwnedVariant::Adopt(element);
                VARIANT text;
                ::VariantInit(&text);
                if (FAILED(::VariantChangeType(&text, const_cast<VARIANT*>(&owned.get()), 0, VT_BSTR))) {
                    throw ComFailure{DISP_E_TYPEMISMATCH};
                }
                strings.push_back(FromBstr(OwnedVariant::Adopt(text).get().bstrVal));
            }
        } else {
            throw ComFailure{DISP_E_TYPEMISMATCH};
        }
    }
    return strings;
}

std::u16string TextOr(const VARIANT& value, const char16_t* fallback) {
    const OwnedVariant given(value);
    const VARIANT& v = given.get();
    if (v.vt == VT_EMPTY || (v.vt == VT_ERROR && v.scode == DISP_E_PARAMNOTFOUND)) return fallback;
    VARIANT text;
    ::VariantInit(&text);
    if (FAILED(::VariantChangeType(&text, const_cast<VARIANT*>(&v), 0, VT_BSTR))) throw ComFailure{DISP_E_TYPEMISMATCH};
    return FromBstr(OwnedVariant::Adopt(text).get().bstrVal);
}

void StoreStrings(const std::vector<std::u16string>& strings, VARIANT& out) {
    SAFEARRAY* array = ::SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(strings.size()));
    if (!array) throw ComFailure{E_OUTOFMEMORY};
    for (LONG i = 0; i < static_cast<LONG>(strings.size()); ++i) {
        BSTR text = ::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(strings[i].data()),
                                        static_cast<UINT>(strings[i].size()));
        // SafeArrayPutElement stores a copy of the string.
        const HRESULT hr = text ? ::SafeArrayPutElement(array, &i, text) : E_OUTOFMEMORY;
        ::SysFreeString(text);
        if (FAILED(hr)) {
            ::SafeArrayDestroy(array);
            throw ComFailure{hr};
        }
    }
    ::VariantClear(&out);
    out.vt = VT_ARRAY | VT_BSTR;
    out.parray = array;
}

}  // namespace tc::com

void MessagePumpingSearch::DoEvents(clsSearchFiles&) {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            // The quit belongs to the host's own loop: put it back and let the walk go on.
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}
