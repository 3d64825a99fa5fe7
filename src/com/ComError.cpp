#include "com/ComError.h"

#include "com/ComPtr.h"

namespace tc::com {

HRESULT HresultOfErrorNumber(int32_t number) noexcept {
    if (number < 0) return static_cast<HRESULT>(number);
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number & 0xFFFF);
}

HRESULT ReportError(const CtlError& error, const wchar_t* defaultSource) noexcept {
    const HRESULT hr = HresultOfErrorNumber(error.Number());
    ComPtr<ICreateErrorInfo> create;
    if (SUCCEEDED(::CreateErrorInfo(create.put()))) {
        const std::u16string& source = error.Source();
        create->SetSource(const_cast<LPOLESTR>(source.empty() ? defaultSource : AsWide(source)));
        create->SetDescription(const_cast<LPOLESTR>(AsWide(error.Description())));
        create->SetGUID(GUID_NULL);
        ComPtr<IErrorInfo> info;
        if (SUCCEEDED(create->QueryInterface(IID_IErrorInfo, info.putVoid()))) ::SetErrorInfo(0, info.get());
    }
    return hr;
}

HRESULT ExceptionFromErrorInfo(HRESULT hr, EXCEPINFO* excepInfo) noexcept {
    if (SUCCEEDED(hr) || hr == DISP_E_BADPARAMCOUNT || hr == DISP_E_TYPEMISMATCH || hr == DISP_E_PARAMNOTFOUND ||
        hr == DISP_E_MEMBERNOTFOUND) {
        return hr;
    }
    if (excepInfo) {
        *excepInfo = EXCEPINFO{};
        excepInfo->scode = hr;
        ComPtr<IErrorInfo> info;
        if (::GetErrorInfo(0, info.put()) == S_OK && info) {
            info->GetSource(&excepInfo->bstrSource);
            info->GetDescription(&excepInfo->bstrDescription);
        }
    }
    return DISP_E_EXCEPTION;
}

}  // namespace tc::com
