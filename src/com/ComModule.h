// The server's module state: live-object count for DllCanUnloadNow, the module handle, and the
// embedded type library with its type infos.
#pragma once

#include "com/ComPrerequisites.h"
#include "com/ComPtr.h"

#include <string>

namespace tc::com {

// Held by every object (and LockServer) the server hands out.
class ModuleLock {
public:
    ModuleLock() noexcept;
    ~ModuleLock();
    ModuleLock(const ModuleLock&) noexcept : ModuleLock() {}
    ModuleLock& operator=(const ModuleLock&) noexcept { return *this; }
    static long Count() noexcept;
    // LockServer(TRUE/FALSE) of the class factory.
    static void Lock(bool lock) noexcept;
};

// The module that holds this code: the DLL, or a test program linked with the library.
HMODULE ThisModule() noexcept;
// The full path of ThisModule().
std::wstring ThisModulePath();

// The type library embedded in ThisModule(), loaded once.
HRESULT ModuleTypeLib(ITypeLib** lib) noexcept;
// The type info of an interface or coclass of that library.
HRESULT TypeInfoOf(const GUID& guid, ITypeInfo** info) noexcept;

}  // namespace tc::com
