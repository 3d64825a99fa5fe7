#include "ComTestSupport.h"

#include <algorithm>

namespace comtest {

namespace {

// An export of the server as the function type it has.
template <class F>
F Export(HMODULE module, const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void*>(::GetProcAddress(module, name)));
}

}  // namespace

Server& Server::Instance() {
    static Server server;
    return server;
}

Server::Server() : m_module(::LoadLibraryW(L"TarnwickControls30.dll")) {}

ComPtr<IDispatch> Server::Create(const GUID& clsid) {
    ComPtr<IDispatch> object;
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    auto get = Export<GetClassObject>(m_module, "DllGetClassObject");
    if (!get) {
        ADD_FAILURE() << "DllGetClassObject not found";
        return object;
    }
    ComPtr<IClassFactory> factory;
    if (FAILED(get(clsid, IID_IClassFactory, factory.putVoid()))) return object;
    factory->CreateInstance(nullptr, IID_IDispatch, object.putVoid());
    return object;
}

HRESULT Server::CanUnloadNow() {
    using CanUnload = HRESULT(STDAPICALLTYPE*)();
    auto can = Export<CanUnload>(m_module, "DllCanUnloadNow");
    return can ? can() : E_FAIL;
}

CallResult Call(IDispatch* object, const wchar_t* name, std::vector<Var> args, WORD flags) {
    CallResult result;
    DISPID id = 0;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    result.hr = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(result.hr)) return result;
    std::vector<VARIANT> reversed;
    for (auto it = args.rbegin(); it != args.rend(); ++it) reversed.push_back(it->v);
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
        params.rgdispidNamedArgs = &named;
        params.cNamedArgs = 1;
    }
    EXCEPINFO excep{};
    UINT argError = 0;
    result.hr = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, &result.value.v, &excep, &argError);
    if (result.hr == DISP_E_EXCEPTION) {
        result.scode = excep.scode;
        if (excep.bstrSource) result.source = reinterpret_cast<const char16_t*>(excep.bstrSource);
        if (excep.bstrDescription) result.description = reinterpret_cast<const char16_t*>(excep.bstrDescription);
        ::SysFreeString(excep.bstrSource);
        ::SysFreeString(excep.bstrDescription);
        ::SysFreeString(excep.bstrHelpFile);
    }
    return result;
}

CallResult Put(IDispatch* object, const wchar_t* name, const Var& value) {
    return Call(object, name, {value}, DISPATCH_PROPERTYPUT);
}

HWND HwndOf(IDispatch* control) {
    const CallResult r = Call(control, L"Hwnd");
    EXPECT_EQ(r.hr, S_OK);
    Var copy;
    ::VariantChangeType(&copy.v, const_cast<VARIANT*>(&r.value.v), 0, VT_I8);
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(copy.v.llVal));
}

}  // namespace comtest
