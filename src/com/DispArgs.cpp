#include "com/DispArgs.h"

namespace tc::com {

DispArgs::~DispArgs() {
    for (VARIANT& v : m_converted) ::VariantClear(&v);
}

bool DispArgs::Expect(UINT total, UINT required) noexcept {
    if (m_params.cNamedArgs != 0) {
        m_error = DISP_E_NONAMEDARGS;
        return false;
    }
    if (m_params.cArgs < required || m_params.cArgs > total) {
        m_error = DISP_E_BADPARAMCOUNT;
        return false;
    }
    return true;
}

VARIANT* DispArgs::At(UINT index) const noexcept {
    if (index >= m_params.cArgs) return nullptr;
    VARIANT* arg = &m_params.rgvarg[m_params.cArgs - 1 - index];
    if (V_VT(arg) == VT_ERROR && V_ERROR(arg) == DISP_E_PARAMNOTFOUND) return nullptr;
    return arg;
}

bool DispArgs::Fail(HRESULT hr, UINT index) noexcept {
    m_error = hr;
    if (m_argError && index < m_params.cArgs) *m_argError = m_params.cArgs - 1 - index;
    return false;
}

}  // namespace tc::com
