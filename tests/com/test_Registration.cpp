// Registration through regsvr32, as an installer runs it: the keys written per machine and per user,
// checked against a listing built from the DLL's own type library, activation by ProgID, and
// complete removal. These tests change the prefix: they run in one made afresh for them.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "ComTestSupport.h"

namespace {

using namespace comtest;

constexpr wchar_t kProgIdPrefix[] = L"TarnwickControls30.";
// The class keys below HKLM (per machine) and HKCU (per user).
constexpr wchar_t kClasses[] = L"Software\\Classes";

std::wstring GuidText(const GUID& guid) {
    wchar_t text[40] = {};
    ::StringFromGUID2(guid, text, 40);
    return text;
}

std::string Utf8(const std::wstring& text) {
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0,
                                           nullptr, nullptr);
    std::string out(static_cast<size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), size, nullptr, nullptr);
    return out;
}

// An open registry key; copying would close it twice.
class Key {
public:
    Key(HKEY root, const std::wstring& path, REGSAM view = 0) {
        if (::RegOpenKeyExW(root, path.c_str(), 0, KEY_READ | view, &m_key) != ERROR_SUCCESS) m_key = nullptr;
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() {
        if (m_key) ::RegCloseKey(m_key);
    }
    HKEY get() const noexcept { return m_key; }

    std::vector<std::wstring> SubkeyNames() const {
        std::vector<std::wstring> names;
        wchar_t name[256];
        for (DWORD i = 0;; ++i) {
            DWORD length = 256;
            if (!m_key) break;
            if (::RegEnumKeyExW(m_key, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
            names.emplace_back(name, length);
        }
        return names;
    }

private:
    HKEY m_key = nullptr;
};

// A registry subtree as lines: "key" for each key, "key|name=data" for each value, so that two
// listings compare as sorted text.
using Listing = std::vector<std::wstring>;

void ListTree(HKEY root, const std::wstring& path, REGSAM view, Listing& out) {
    const Key key(root, path, view);
    if (!key.get()) return;
    out.push_back(path);
    wchar_t name[256];
    std::vector<BYTE> data(4096);
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = 256;
        DWORD type = 0;
        DWORD size = static_cast<DWORD>(data.size());
        if (::RegEnumValueW(key.get(), i, name, &nameLength, nullptr, &type, data.data(), &size) != ERROR_SUCCESS) {
            break;
        }
        std::wstring text = L"<type " + std::to_wstring(type) + L">";
        if (type == REG_SZ) text.assign(reinterpret_cast<const wchar_t*>(data.data()), size / sizeof(wchar_t));
        while (!text.empty() && text.back() == L'\0') text.pop_back();
        out.push_back(path + L"|" + std::wstring(name, nameLength) + L"=" + text);
    }
    for (const std::wstring& sub : key.SubkeyNames()) ListTree(root, path + L"\\" + sub, view, out);
}

std::string Text(Listing lines) {
    std::sort(lines.begin(), lines.end());
    std::wstring text;
    for (const std::wstring& line : lines) text += line + L"\n";
    return Utf8(text);
}

std::wstring ServerPath() {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(Server::Instance().Module(), path, MAX_PATH);
    return path;
}

std::wstring DocumentationOf(ITypeLib* lib, int index, bool docString) {
    BSTR text = nullptr;
    lib->GetDocumentation(index, docString ? nullptr : &text, docString ? &text : nullptr, nullptr, nullptr);
    std::wstring out = text ? std::wstring(text, ::SysStringLen(text)) : std::wstring();
    ::SysFreeString(text);
    return out;
}

// What a registration must write, built from the type library inside the DLL (generated from the
// same class descriptions as the server's class table), and the keys to look under.
struct Expectation {
    Listing lines;
    std::vector<std::wstring> roots;
    GUID libid{};
};

Expectation Expect(const std::wstring& dll) {
    Expectation e;
    ComPtr<ITypeLib> lib;
    EXPECT_EQ(S_OK, ::LoadTypeLibEx(dll.c_str(), REGKIND_NONE, lib.put()));
    if (!lib) return e;
    TLIBATTR* libAttr = nullptr;
    lib->GetLibAttr(&libAttr);
    const TLIBATTR attr = *libAttr;
    lib->ReleaseTLibAttr(libAttr);
    e.libid = attr.guid;
    const std::wstring libid = GuidText(attr.guid);
    const std::wstring version = std::to_wstring(attr.wMajorVerNum) + L"." + std::to_wstring(attr.wMinorVerNum);

    const std::wstring libKey = L"TypeLib\\" + libid;
    const std::wstring versionKey = libKey + L"\\" + version;
#ifdef _WIN64
    const wchar_t* const platform = L"win64";
#else
    const wchar_t* const platform = L"win32";
#endif
    e.roots.push_back(libKey);
    e.lines.insert(e.lines.end(),
                   {libKey, versionKey, versionKey + L"|=" + DocumentationOf(lib.get(), -1, true),
                    versionKey + L"\\FLAGS", versionKey + L"\\FLAGS|=" + std::to_wstring(attr.wLibFlags),
                    versionKey + L"\\HELPDIR", versionKey + L"\\HELPDIR|=" + dll.substr(0, dll.find_last_of(L'\\')),
                    versionKey + L"\\0", versionKey + L"\\0\\" + platform,
                    versionKey + L"\\0\\" + platform + L"|=" + dll});

    // What a control container reads before it creates a control.
    const DWORD controlMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                                    OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;
    for (UINT i = 0; i < lib->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        lib->GetTypeInfo(i, info.put());
        TYPEATTR* typeAttr = nullptr;
        info->GetTypeAttr(&typeAttr);
        const TYPEKIND kind = typeAttr->typekind;
        const GUID guid = typeAttr->guid;
        const WORD flags = typeAttr->wTypeFlags;
        info->ReleaseTypeAttr(typeAttr);
        const std::wstring name = DocumentationOf(lib.get(), static_cast<int>(i), false);
        if (kind == TKIND_COCLASS) {
            const std::wstring progId = kProgIdPrefix + name;
            const std::wstring clsidKey = L"CLSID\\" + GuidText(guid);
            e.roots.push_back(clsidKey);
            if (!(flags & TYPEFLAG_FCANCREATE)) continue;
            e.lines.insert(e.lines.end(),
                           {progId, progId + L"|=" + name, progId + L"\\CLSID", progId + L"\\CLSID|=" + GuidText(guid),
                            clsidKey, clsidKey + L"|=" + name, clsidKey + L"\\InprocServer32",
                            clsidKey + L"\\InprocServer32|=" + dll,
                            clsidKey + L"\\InprocServer32|ThreadingModel=Apartment", clsidKey + L"\\ProgID",
                            clsidKey + L"\\ProgID|=" + progId, clsidKey + L"\\TypeLib",
                            clsidKey + L"\\TypeLib|=" + libid, clsidKey + L"\\Version",
                            clsidKey + L"\\Version|=" + version});
            if (flags & TYPEFLAG_FCONTROL) {
                e.lines.insert(e.lines.end(), {clsidKey + L"\\Control", clsidKey + L"\\MiscStatus",
                                               clsidKey + L"\\MiscStatus|=" + std::to_wstring(controlMiscStatus)});
            }
        } else if (kind == TKIND_DISPATCH || kind == TKIND_INTERFACE) {
            const std::wstring key = L"Interface\\" + GuidText(guid);
            e.roots.push_back(key);
            const bool automation = (flags & (TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION)) != 0;
            if (kind == TKIND_INTERFACE && !automation) continue;
            // The universal marshaller for vtable interfaces, IDispatch's for pure dispinterfaces.
            const std::wstring proxy = automation ? L"{00020424-0000-0000-C000-000000000046}"
                                                  : L"{00020420-0000-0000-C000-000000000046}";
            e.lines.insert(e.lines.end(),
                           {key, key + L"|=" + name, key + L"\\ProxyStubClsid", key + L"\\ProxyStubClsid|=" + proxy,
                            key + L"\\ProxyStubClsid32", key + L"\\ProxyStubClsid32|=" + proxy, key + L"\\TypeLib",
                            key + L"\\TypeLib|=" + libid, key + L"\\TypeLib|Version=" + version});
        }
    }
    return e;
}

// Everything under root\classes that belongs to the server: the roots, and every top-level key
// named like one of its ProgIDs.
std::string Registered(HKEY root, const std::wstring& classes, const Expectation& e, REGSAM view = 0) {
    Listing lines;
    for (const std::wstring& path : e.roots) ListTree(root, classes + L"\\" + path, view, lines);
    for (const std::wstring& name : Key(root, classes, view).SubkeyNames()) {
        if (name.compare(0, std::size(kProgIdPrefix) - 1, kProgIdPrefix) == 0) {
            ListTree(root, classes + L"\\" + name, view, lines);
        }
    }
    const std::wstring prefix = classes + L"\\";
    for (std::wstring& line : lines) line.erase(0, prefix.size());
    return Text(lines);
}

// Under HKEY_CLASSES_ROOT itself (no parent path).
std::string RegisteredInClassesRoot(const Expectation& e) {
    Listing lines;
    for (const std::wstring& path : e.roots) ListTree(HKEY_CLASSES_ROOT, path, 0, lines);
    for (const std::wstring& name : Key(HKEY_CLASSES_ROOT, L"", 0).SubkeyNames()) {
        if (name.compare(0, std::size(kProgIdPrefix) - 1, kProgIdPrefix) == 0) {
            ListTree(HKEY_CLASSES_ROOT, name, 0, lines);
        }
    }
    return Text(lines);
}

// regsvr32's exit code, or a message when it did not run or did not end.
DWORD Regsvr32(const std::wstring& options, const std::wstring& dll) {
    wchar_t system[MAX_PATH] = {};
    ::GetSystemDirectoryW(system, MAX_PATH);
    std::wstring command = L"\"" + std::wstring(system) + L"\\regsvr32.exe\" /s " + options + L" \"" + dll + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        ADD_FAILURE() << "regsvr32 did not start: " << ::GetLastError();
        return ~0u;
    }
    DWORD code = ~0u;
    if (::WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0) {
        ::GetExitCodeProcess(process.hProcess, &code);
    } else {
        ADD_FAILURE() << "regsvr32 " << Utf8(options) << " did not end";
        ::TerminateProcess(process.hProcess, 1);
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return code;
}

// The names right below the class keys of HKLM, in both registry views: a per-user registration
// must not add any.
std::vector<std::wstring> MachineClassNames() {
    std::vector<std::wstring> names;
    for (const REGSAM view : {KEY_WOW64_64KEY, KEY_WOW64_32KEY}) {
        for (const wchar_t* sub : {L"", L"\\CLSID", L"\\Interface", L"\\TypeLib"}) {
            const std::wstring path = std::wstring(kClasses) + sub;
            for (const std::wstring& name : Key(HKEY_LOCAL_MACHINE, path, view).SubkeyNames()) {
                names.push_back(std::to_wstring(view) + path + L"\\" + name);
            }
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Registration : public ::testing::Test {
protected:
    void SetUp() override {
        m_ole = ::OleInitialize(nullptr);
        m_dll = ServerPath();
        m_expected = Expect(m_dll);
        ASSERT_FALSE(m_expected.lines.empty());
        // A registration left over in the prefix would hide what these tests look for.
        ASSERT_EQ("", NothingLeft()) << "the prefix already holds a registration of the server";
        m_started = true;
    }
    void TearDown() override {
        // The prefix is left as it was found, whatever failed.
        if (m_started) {
            Regsvr32(L"/u", m_dll);
            Regsvr32(L"/u /n /i:user", m_dll);
            EXPECT_EQ("", NothingLeft());
        }
        if (SUCCEEDED(m_ole)) ::OleUninitialize();
    }

    // Whatever of the server is still registered anywhere, per machine (both views) or per user.
    std::string NothingLeft() const {
        return RegisteredInClassesRoot(m_expected) +
               Registered(HKEY_LOCAL_MACHINE, kClasses, m_expected, KEY_WOW64_64KEY) +
               Registered(HKEY_LOCAL_MACHINE, kClasses, m_expected, KEY_WOW64_32KEY) +
               Registered(HKEY_CURRENT_USER, kClasses, m_expected);
    }

    HRESULT m_ole = E_FAIL;
    std::wstring m_dll;
    Expectation m_expected;
    bool m_started = false;
};

TEST_F(Registration, PerMachineWritesTheClassTableAndActivatesByProgId) {
    ASSERT_EQ(0u, Regsvr32(L"", m_dll));
    EXPECT_EQ(Text(m_expected.lines), RegisteredInClassesRoot(m_expected));
    EXPECT_EQ(Text(m_expected.lines), Registered(HKEY_LOCAL_MACHINE, kClasses, m_expected));

    {
        CLSID clsid{};
        ASSERT_EQ(S_OK, ::CLSIDFromProgID(L"TarnwickControls30.clsLargeNumber", &clsid));
        EXPECT_EQ(tc::com::CLSID_clsLargeNumber, clsid);
        ComPtr<IDispatch> number;
        ASSERT_EQ(S_OK, ::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, number.putVoid()));
        const CallResult sum = Call(number.get(), L"StrAdd", {L"18446744073709551615", L"1"});
        EXPECT_EQ(S_OK, sum.hr);
        EXPECT_EQ(u"18446744073709551616", sum.value.Text());
    }

    ASSERT_EQ(0u, Regsvr32(L"/u", m_dll));
    EXPECT_EQ("", NothingLeft());
    CLSID clsid{};
    EXPECT_EQ(CO_E_CLASSSTRING, ::CLSIDFromProgID(L"TarnwickControls30.clsLargeNumber", &clsid));
    ComPtr<IDispatch> number;
    EXPECT_EQ(REGDB_E_CLASSNOTREG, ::CoCreateInstance(tc::com::CLSID_clsLargeNumber, nullptr, CLSCTX_INPROC_SERVER,
                                                      IID_IDispatch, number.putVoid()));
    // Removing what is not there is no error.
    EXPECT_EQ(0u, Regsvr32(L"/u", m_dll));
}

// Wine's COM does not activate from HKCU classes, so the per-user keys are checked, not activation.
TEST_F(Registration, PerUserWritesUnderTheUsersClassesOnly) {
    const std::vector<std::wstring> machineBefore = MachineClassNames();
    ASSERT_EQ(0u, Regsvr32(L"/n /i:user", m_dll));
    EXPECT_EQ(Text(m_expected.lines), Registered(HKEY_CURRENT_USER, kClasses, m_expected));
    EXPECT_EQ("", Registered(HKEY_LOCAL_MACHINE, kClasses, m_expected, KEY_WOW64_64KEY));
    EXPECT_EQ("", Registered(HKEY_LOCAL_MACHINE, kClasses, m_expected, KEY_WOW64_32KEY));
    EXPECT_TRUE(machineBefore == MachineClassNames()) << "a per-user registration added keys under HKLM";

    ASSERT_EQ(0u, Regsvr32(L"/u /n /i:user", m_dll));
    EXPECT_EQ("", NothingLeft());
    EXPECT_TRUE(machineBefore == MachineClassNames());
    EXPECT_EQ(0u, Regsvr32(L"/u /n /i:user", m_dll));
}

TEST_F(Registration, UnknownInstallCommandWritesNothing) {
    EXPECT_NE(0u, Regsvr32(L"/n /i:everyone", m_dll));
    EXPECT_EQ("", NothingLeft());
}

}  // namespace
