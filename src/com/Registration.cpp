#include "com/ComRegistration.h"

namespace tc::com {

HRESULT RegisterServer(bool) noexcept { return E_NOTIMPL; }
HRESULT UnregisterServer(bool) noexcept { return E_NOTIMPL; }

}  // namespace tc::com
