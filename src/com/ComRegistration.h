// Registration of the server: ProgIDs, CLSIDs, the type library and its interfaces, per machine or
// per user (HKCU\Software\Classes), and their complete removal.
#pragma once

#include "com/ComPrerequisites.h"

namespace tc::com {

HRESULT RegisterServer(bool perUser) noexcept;
HRESULT UnregisterServer(bool perUser) noexcept;

}  // namespace tc::com
