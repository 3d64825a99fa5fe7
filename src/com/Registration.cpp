#include "com/ComRegistration.h"

#include <cwchar>
#include <string>
#include <vector>

#include "com/ComClassTable.h"
#include "com/ComModule.h"
#include "com/ComPtr.h"

namespace tc::com {

namespace {

constexpr wchar_t kProgIdPrefix[] = L"TarnwickControls30.";
// What a control container reads before it creates the control (OleRegGetMiscStatus).
constexpr DWORD kControlMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                                     OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;

std::wstring GuidText(const GUID& guid) {
    wchar_t text[40] = {};
    ::StringFromGUID2(guid, text, 40);
    return text;
}

// An open registry key; copying would close it twice.
class RegKey {
public:
    RegKey() noexcept = default;
    RegKey(const RegKey&) = delete;
    RegKey& operator=(const RegKey&) = delete;
    ~RegKey() {
        if (m_key) ::RegCloseKey(m_key);
    }
    HKEY get() const noexcept { return m_key; }
    HKEY* put() noexcept { return &m_key; }

private:
    HKEY m_key = nullptr;
};

// One value the registration writes: the key (under HKEY_CLASSES_ROOT), the value name (empty for
// the default value) and its text.
struct RegValue {
    std::wstring key;
    const wchar_t* name;
    std::wstring data;
};

std::wstring ProgIdOf(const ComClassEntry& entry) { return kProgIdPrefix + std::wstring(entry.name); }
std::wstring ClsidKeyOf(const ComClassEntry& entry) { return L"CLSID\\" + GuidText(entry.clsid); }

std::vector<RegValue> ClassValues(const ComClassEntry& entry, const std::wstring& serverPath,
                                  const std::wstring& libid, const std::wstring& version) {
    const std::wstring progId = ProgIdOf(entry);
    const std::wstring clsid = GuidText(entry.clsid);
    const std::wstring clsidKey = ClsidKeyOf(entry);
    std::vector<RegValue> values = {
        {progId, L"", entry.name},
        {progId + L"\\CLSID", L"", clsid},
        {clsidKey, L"", entry.name},
        {clsidKey + L"\\InprocServer32", L"", serverPath},
        {clsidKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {clsidKey + L"\\ProgID", L"", progId},
        {clsidKey + L"\\TypeLib", L"", libid},
        {clsidKey + L"\\Version", L"", version},
    };
    if (entry.control) {
        values.push_back({clsidKey + L"\\Control", L"", L""});
        values.push_back({clsidKey + L"\\MiscStatus", L"", std::to_wstring(kControlMiscStatus)});
    }
    return values;
}

LSTATUS WriteValue(const RegValue& value) {
    RegKey key;
    LSTATUS status = ::RegCreateKeyExW(HKEY_CLASSES_ROOT, value.key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                       KEY_SET_VALUE, nullptr, key.put(), nullptr);
    if (status != ERROR_SUCCESS) return status;
    // A key that only marks (Control) gets no value at all.
    if (value.data.empty() && !*value.name) return ERROR_SUCCESS;
    const DWORD bytes = static_cast<DWORD>((value.data.size() + 1) * sizeof(wchar_t));
    return ::RegSetValueExW(key.get(), value.name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.data.c_str()),
                            bytes);
}

bool DeleteTree(const std::wstring& key) {
    const LSTATUS status = ::RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

bool KeyExists(const std::wstring& key) {
    RegKey open;
    return ::RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ, open.put()) == ERROR_SUCCESS;
}

// For a per-user call, HKEY_CLASSES_ROOT of this process stands for HKCU\Software\Classes until the
// object dies, so that the same writes land there.
class ClassesRootRedirect {
public:
    ClassesRootRedirect() noexcept = default;
    ClassesRootRedirect(const ClassesRootRedirect&) = delete;
    ClassesRootRedirect& operator=(const ClassesRootRedirect&) = delete;
    ~ClassesRootRedirect() {
        if (m_active) ::RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
    }
    HRESULT Start() {
        const LSTATUS opened = ::RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, nullptr,
                                                 REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, m_userClasses.put(),
                                                 nullptr);
        if (opened != ERROR_SUCCESS) return HRESULT_FROM_WIN32(opened);
        const LSTATUS redirected = ::RegOverridePredefKey(HKEY_CLASSES_ROOT, m_userClasses.get());
        if (redirected != ERROR_SUCCESS) return HRESULT_FROM_WIN32(redirected);
        m_active = true;
        return S_OK;
    }

private:
    RegKey m_userClasses;
    bool m_active = false;
};

// The library's identity as registered: LIBID, version, locale and platform.
struct LibraryIdentity {
    GUID libid{};
    WORD major = 0;
    WORD minor = 0;
    LCID lcid = 0;
    SYSKIND syskind = SYS_WIN32;
    WORD flags = 0;
};

HRESULT IdentityOf(ITypeLib* lib, LibraryIdentity& identity) {
    TLIBATTR* attr = nullptr;
    const HRESULT hr = lib->GetLibAttr(&attr);
    if (FAILED(hr)) return hr;
    identity = {attr->guid, attr->wMajorVerNum, attr->wMinorVerNum, attr->lcid, attr->syskind, attr->wLibFlags};
    lib->ReleaseTLibAttr(attr);
    return S_OK;
}

std::wstring VersionText(const LibraryIdentity& identity) {
    return std::to_wstring(identity.major) + L"." + std::to_wstring(identity.minor);
}

std::wstring TypeLibKey(const LibraryIdentity& identity) {
    return L"TypeLib\\" + GuidText(identity.libid) + L"\\" + VersionText(identity);
}

std::wstring HexText(unsigned long value) {
    wchar_t text[16] = {};
    std::swprintf(text, 16, L"%lx", value);
    return text;
}

// For the library itself (index -1) its help string, for one of its types the type's name.
std::wstring NameOf(ITypeLib* lib, int index) {
    BSTR name = nullptr;
    if (FAILED(lib->GetDocumentation(index, index < 0 ? nullptr : &name, index < 0 ? &name : nullptr, nullptr,
                                     nullptr)) ||
        !name) {
        return {};
    }
    std::wstring text(name, ::SysStringLen(name));
    ::SysFreeString(name);
    return text;
}

// The keys that make the library and its automation interfaces known (what RegisterTypeLib writes):
// the library's version key with its file, and per interface its name, the universal marshaller
// and the library it comes from.
struct LibraryKeys {
    std::vector<RegValue> values;
    // The keys removed with their subtree: one per interface.
    std::vector<std::wstring> interfaceKeys;
};

HRESULT CollectLibraryKeys(ITypeLib* lib, const LibraryIdentity& identity, const std::wstring& path,
                           LibraryKeys& keys) {
    const std::wstring libKey = TypeLibKey(identity);
    const std::wstring folder = path.substr(0, path.find_last_of(L'\\'));
    const wchar_t* const platform = identity.syskind == SYS_WIN64 ? L"win64" : L"win32";
    keys.values = {
        {libKey, L"", NameOf(lib, -1)},
        {libKey + L"\\FLAGS", L"", std::to_wstring(identity.flags)},
        {libKey + L"\\HELPDIR", L"", folder},
        {libKey + L"\\" + HexText(identity.lcid) + L"\\" + platform, L"", path},
    };
    const std::wstring libid = GuidText(identity.libid);
    const std::wstring version = VersionText(identity);
    const UINT count = lib->GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i) {
        ComPtr<ITypeInfo> info;
        HRESULT hr = lib->GetTypeInfo(i, info.put());
        if (FAILED(hr)) return hr;
        TYPEATTR* attr = nullptr;
        hr = info->GetTypeAttr(&attr);
        if (FAILED(hr)) return hr;
        const TYPEKIND kind = attr->typekind;
        const GUID iid = attr->guid;
        const WORD typeFlags = attr->wTypeFlags;
        info->ReleaseTypeAttr(attr);
        const bool automation = (typeFlags & (TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION)) != 0;
        if (kind != TKIND_DISPATCH && !(kind == TKIND_INTERFACE && automation)) continue;
        // Dual and automation interfaces marshal through their vtable, pure dispinterfaces as IDispatch.
        const std::wstring proxy = automation ? L"{00020424-0000-0000-C000-000000000046}"
                                              : L"{00020420-0000-0000-C000-000000000046}";
        const std::wstring key = L"Interface\\" + GuidText(iid);
        keys.interfaceKeys.push_back(key);
        keys.values.push_back({key, L"", NameOf(lib, static_cast<int>(i))});
        keys.values.push_back({key + L"\\ProxyStubClsid", L"", proxy});
        keys.values.push_back({key + L"\\ProxyStubClsid32", L"", proxy});
        keys.values.push_back({key + L"\\TypeLib", L"", libid});
        keys.values.push_back({key + L"\\TypeLib", L"Version", version});
    }
    return S_OK;
}

// True when the interface key names this library as its own: another library's registration of
// the same interface is not ours to remove.
bool InterfaceIsOurs(const std::wstring& interfaceKey, const LibraryIdentity& identity) {
    wchar_t text[40] = {};
    LONG bytes = sizeof(text);
    if (::RegQueryValueW(HKEY_CLASSES_ROOT, (interfaceKey + L"\\TypeLib").c_str(), text, &bytes) != ERROR_SUCCESS) {
        return false;
    }
    return ::CompareStringOrdinal(text, -1, GuidText(identity.libid).c_str(), -1, TRUE) == CSTR_EQUAL;
}

// Per machine the system registers the library. Per user the registration writes the same keys
// itself: under Wine 8, RegisterTypeLib(ForUser) with HKEY_CLASSES_ROOT redirected still writes
// the 32-bit view of each interface to HKLM\Software\Classes\Wow6432Node, and Wine has no
// OaEnablePerUserTLibRegistration.
HRESULT RegisterLibrary(ITypeLib* lib, const LibraryIdentity& identity, const std::wstring& path, bool perUser) {
    if (!perUser) return ::RegisterTypeLib(lib, const_cast<wchar_t*>(path.c_str()), nullptr);
    LibraryKeys keys;
    const HRESULT hr = CollectLibraryKeys(lib, identity, path, keys);
    if (FAILED(hr)) return hr;
    for (const RegValue& value : keys.values) {
        const LSTATUS status = WriteValue(value);
        if (status != ERROR_SUCCESS) return HRESULT_FROM_WIN32(status);
    }
    return S_OK;
}

HRESULT UnregisterLibrary(ITypeLib* lib, const LibraryIdentity& identity, bool perUser) {
    // Nothing registered is nothing to remove (UnRegisterTypeLib would fail on the missing key).
    const std::wstring libKey = TypeLibKey(identity);
    if (!KeyExists(libKey)) return S_OK;
    if (!perUser) {
        return ::UnRegisterTypeLib(identity.libid, identity.major, identity.minor, identity.lcid, identity.syskind);
    }
    LibraryKeys keys;
    const HRESULT hr = CollectLibraryKeys(lib, identity, std::wstring(), keys);
    if (FAILED(hr)) return hr;
    bool removed = true;
    for (const std::wstring& key : keys.interfaceKeys) {
        if (InterfaceIsOurs(key, identity)) removed = DeleteTree(key) && removed;
    }
    removed = DeleteTree(libKey) && removed;
    // The LIBID key goes too once no other version is left under it.
    ::RegDeleteKeyW(HKEY_CLASSES_ROOT, (L"TypeLib\\" + GuidText(identity.libid)).c_str());
    return removed ? S_OK : SELFREG_E_TYPELIB;
}

// Removes the class keys of every creatable class; true when none is left.
bool RemoveClasses() {
    bool removed = true;
    for (const ComClassEntry* entry : ComClasses()) {
        if (!entry->creatable) continue;
        removed = DeleteTree(ProgIdOf(*entry)) && removed;
        removed = DeleteTree(ClsidKeyOf(*entry)) && removed;
    }
    return removed;
}

HRESULT Register(bool perUser) {
    ClassesRootRedirect redirect;
    if (perUser) {
        const HRESULT hr = redirect.Start();
        if (FAILED(hr)) return hr;
    }
    ComPtr<ITypeLib> lib;
    LibraryIdentity identity;
    if (FAILED(ModuleTypeLib(lib.put())) || FAILED(IdentityOf(lib.get(), identity))) return SELFREG_E_TYPELIB;
    const std::wstring path = ThisModulePath();
    if (FAILED(RegisterLibrary(lib.get(), identity, path, perUser))) {
        UnregisterLibrary(lib.get(), identity, perUser);
        return SELFREG_E_TYPELIB;
    }
    const std::wstring libid = GuidText(identity.libid);
    const std::wstring version = VersionText(identity);
    for (const ComClassEntry* entry : ComClasses()) {
        if (!entry->creatable) continue;
        for (const RegValue& value : ClassValues(*entry, path, libid, version)) {
            if (WriteValue(value) != ERROR_SUCCESS) {
                // Half a registration would point a client at classes that are not all there.
                RemoveClasses();
                UnregisterLibrary(lib.get(), identity, perUser);
                return SELFREG_E_CLASS;
            }
        }
    }
    return S_OK;
}

HRESULT Unregister(bool perUser) {
    ClassesRootRedirect redirect;
    if (perUser) {
        const HRESULT hr = redirect.Start();
        if (FAILED(hr)) return hr;
    }
    // Every step runs even when an earlier one failed, so that as much as possible is gone.
    HRESULT result = RemoveClasses() ? S_OK : SELFREG_E_CLASS;
    ComPtr<ITypeLib> lib;
    LibraryIdentity identity;
    if (FAILED(ModuleTypeLib(lib.put())) || FAILED(IdentityOf(lib.get(), identity)) ||
        FAILED(UnregisterLibrary(lib.get(), identity, perUser))) {
        if (result == S_OK) result = SELFREG_E_TYPELIB;
    }
    return result;
}

}  // namespace

HRESULT RegisterServer(bool perUser) noexcept {
    try {
        return Register(perUser);
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

HRESULT UnregisterServer(bool perUser) noexcept {
    try {
        return Unregister(perUser);
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace tc::com
