#include "com/ComModule.h"

#include <atomic>
#include <mutex>

namespace tc::com {

namespace {

std::atomic<long> g_liveObjects{0};

}  // namespace

ModuleLock::ModuleLock() noexcept { ++g_liveObjects; }
ModuleLock::~ModuleLock() { --g_liveObjects; }
long ModuleLock::Count() noexcept { return g_liveObjects; }
void ModuleLock::Lock(bool lock) noexcept {
    if (lock) {
        ++g_liveObjects;
    } else {
        --g_liveObjects;
    }
}

HMODULE ThisModule() noexcept {
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<LPCWSTR>(&ThisModule), &module);
    return module;
}

std::wstring ThisModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetModuleFileNameW(ThisModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

HRESULT ModuleTypeLib(ITypeLib** lib) noexcept {
    if (!lib) return E_POINTER;
    *lib = nullptr;
    // Type libraries are free-threaded objects: one per process serves every apartment.
    static std::once_flag once;
    static ITypeLib* loaded = nullptr;
    static HRESULT loadResult = E_FAIL;
    std::call_once(once, [] {
        try {
            loadResult = ::LoadTypeLibEx(ThisModulePath().c_str(), REGKIND_NONE, &loaded);
        } catch (...) {
            loadResult = E_OUTOFMEMORY;
        }
    });
    if (FAILED(loadResult)) return loadResult;
    loaded->AddRef();
    *lib = loaded;
    return S_OK;
}

HRESULT TypeInfoOf(const GUID& guid, ITypeInfo** info) noexcept {
    if (!info) return E_POINTER;
    *info = nullptr;
    ComPtr<ITypeLib> lib;
    const HRESULT hr = ModuleTypeLib(lib.put());
    if (FAILED(hr)) return hr;
    return lib->GetTypeInfoOfGuid(guid, info);
}

}  // namespace tc::com
