#include "com/GraphicsComSupport.h"

#include <vector>

#include "com/ComPtr.h"
#include "com/clsCollection.h"
#include "frame/StdPicture.h"

namespace tc::com {

CtlPictureRef PictureRefOf(const std::shared_ptr<StdPicture>& picture) {
    if (!picture) return {};
    return CtlPictureRef{picture->Handle(), picture->Type()};
}

namespace {

// One late-bound property access; a failure throws, which ApplyFontToForm skips statement by statement.
void invokeByName(IDispatch* object, const wchar_t* name, WORD flags, VARIANT* value, VARIANT* result) {
    if (!object) throw ComFailure{E_POINTER};
    DISPID id = 0;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    HRESULT hr = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(hr)) throw ComFailure{hr};
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{};
    if (value) {
        params = DISPPARAMS{value, &named, 1, 1};
    }
    hr = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, result, nullptr, nullptr);
    if (FAILED(hr)) throw ComFailure{hr};
}

ComPtr<IDispatch> objectProperty(IDispatch* object, const wchar_t* name) {
    VARIANT v;
    ::VariantInit(&v);
    invokeByName(object, name, DISPATCH_PROPERTYGET, nullptr, &v);
    ComPtr<IDispatch> out;
    if (V_VT(&v) == VT_DISPATCH) out = ComPtr<IDispatch>::Share(V_DISPATCH(&v));
    ::VariantClear(&v);
    return out;
}

class DispatchFontHolder : public IFormWithControls {
public:
    explicit DispatchFontHolder(IDispatch* object) : m_object(ComPtr<IDispatch>::Share(object)) {}

    bool HasFont() const override { return static_cast<bool>(objectProperty(m_object.get(), L"Font")); }
    void SetFontName(const CtlString& sName) override {
        const ComPtr<IDispatch> font = objectProperty(m_object.get(), L"Font");
        VARIANT name;
        name.vt = VT_BSTR;
        name.bstrVal = ToBstr(sName);
        try {
            invokeByName(font.get(), L"Name", DISPATCH_PROPERTYPUT, &name, nullptr);
        } catch (...) {
            ::VariantClear(&name);
            throw;
        }
        ::VariantClear(&name);
    }
    void ReassignFont() override {
        const ComPtr<IDispatch> font = objectProperty(m_object.get(), L"Font");
        VARIANT value;
        value.vt = VT_DISPATCH;
        value.pdispVal = font.get();
        invokeByName(m_object.get(), L"Font", DISPATCH_PROPERTYPUTREF, &value, nullptr);
    }
    std::vector<IFontHolder*> Controls() override {
        const ComPtr<IDispatch> controls = objectProperty(m_object.get(), L"Controls");
        if (!controls) throw ComFailure{DISP_E_TYPEMISMATCH};
        VARIANT enumerator;
        ::VariantInit(&enumerator);
        DISPPARAMS none{};
        HRESULT hr = controls->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                                      DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, &enumerator, nullptr, nullptr);
        if (FAILED(hr)) throw ComFailure{hr};
        ComPtr<IEnumVARIANT> items;
        if (V_VT(&enumerator) == VT_UNKNOWN || V_VT(&enumerator) == VT_DISPATCH) {
            V_UNKNOWN(&enumerator)->QueryInterface(IID_IEnumVARIANT, items.putVoid());
        }
        ::VariantClear(&enumerator);
        if (!items) throw ComFailure{DISP_E_TYPEMISMATCH};
        m_controls.clear();
        VARIANT item;
        ::VariantInit(&item);
        ULONG fetched = 0;
        while (items->Next(1, &item, &fetched) == S_OK && fetched == 1) {
            if (V_VT(&item) == VT_DISPATCH && V_DISPATCH(&item)) {
                m_controls.push_back(std::make_unique<DispatchFontHolder>(V_DISPATCH(&item)));
            }
            ::VariantClear(&item);
        }
        std::vector<IFontHolder*> out;
        for (const auto& control : m_controls) out.push_back(control.get());
        return out;
    }

private:
    ComPtr<IDispatch> m_object;
    std::vector<std::unique_ptr<DispatchFontHolder>> m_controls;
};

}  // namespace

namespace {

// The Files list of a host's data object, item by item as For Each walks it; empty without one.
std::vector<CtlString> filesListOf(IUnknown* data) {
    std::vector<CtlString> files;
    ComPtr<IDispatch> object;
    if (FAILED(data->QueryInterface(IID_IDispatch, object.putVoid()))) return files;
    try {
        const ComPtr<IDispatch> list = objectProperty(object.get(), L"Files");
        if (!list) return files;
        VARIANT enumerator;
        ::VariantInit(&enumerator);
        DISPPARAMS none{};
        if (FAILED(list->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                &none, &enumerator, nullptr, nullptr))) {
            return files;
        }
        ComPtr<IEnumVARIANT> items;
        if (V_VT(&enumerator) == VT_UNKNOWN || V_VT(&enumerator) == VT_DISPATCH) {
            V_UNKNOWN(&enumerator)->QueryInterface(IID_IEnumVARIANT, items.putVoid());
        }
        ::VariantClear(&enumerator);
        VARIANT item;
        ::VariantInit(&item);
        ULONG fetched = 0;
        while (items && items->Next(1, &item, &fetched) == S_OK && fetched == 1) {
            if (SUCCEEDED(::VariantChangeType(&item, &item, 0, VT_BSTR))) files.push_back(FromBstr(V_BSTR(&item)));
            ::VariantClear(&item);
        }
    } catch (const ComFailure&) {
    }
    return files;
}

}  // namespace

std::shared_ptr<clsCollection> DroppedFilesCollection(IUnknown* data) {
    auto collection = std::make_shared<clsCollection>();
    if (!data) return collection;
    ComPtr<IDataObject> platform;
    data->QueryInterface(IID_IDataObject, platform.putVoid());
    for (const CtlString& file : ::GetUnicodeDroppedFiles(platform.get(), filesListOf(data))) {
        VARIANT path;
        path.vt = VT_BSTR;
        path.bstrVal = ToBstr(file);
        collection->Append(OwnedVariant::Adopt(path));
    }
    return collection;
}

void ApplyFontToDispatchForm(IDispatch* form, const CtlString& sFontName) {
    if (!form) return;
    DispatchFontHolder holder(form);
    ::ApplyFontToForm(&holder, sFontName);
}

}  // namespace tc::com
