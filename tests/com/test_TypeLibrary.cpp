// The type library inside TarnwickControls30.dll, as a host loads it: every dual interface and
// event interface against the class descriptions, stock dispatch ids, and enumeration member names
// with their blanks, bound by name and stored with the platform's hash.
#include <gtest/gtest.h>

#include <olectl.h>

#include <cctype>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "ComTestSupport.h"

namespace {

using namespace comtest;

// ------------------------------------------------------------------ the descriptions, read again

struct DescribedParam {
    std::string mode;  // "", "ref" or "opt"
    std::string type, name, defaultText;
};

struct DescribedMember {
    std::string kind, name, type;
    std::vector<DescribedParam> params;
    std::string flags;
};

struct DescribedClass {
    std::vector<DescribedMember> members, events;
};

struct Descriptions {
    std::map<std::string, DescribedClass> classes;
    std::set<std::string> enums;
};

std::vector<std::string> SplitParams(const std::string& text) {
    std::vector<std::string> parts;
    std::string current;
    int depth = 0;
    for (char c : text) {
        if (c == ',' && depth == 0) {
            parts.push_back(current);
            current.clear();
            continue;
        }
        depth += (c == '(' || c == '<') - (c == ')' || c == '>');
        current += c;
    }
    if (current.find_first_not_of(" \t") != std::string::npos) parts.push_back(current);
    return parts;
}

// The signatures of the description files (the call text after "=" is the adapter's business).
Descriptions ReadDescriptions() {
    static const std::regex member(
        R"((method|get|let|set|prop|propobj|event)\s+(\w+)\s*(?:\((.*?)\))?\s*(?::\s*(\w+)|->\s*(\w+))?\s*(\[[^\]]*\])?\s*(?:=\s*(.+))?)");
    static const std::regex param(R"(\s*(ref\s+|opt\s+)?(\w+)\s+(\w+)\s*(?:=\s*(.+?))?\s*)");
    Descriptions d;
    WIN32_FIND_DATAA found{};
    const std::string dir = TC_COM_CLASSES_DIR;
    HANDLE find = ::FindFirstFileA((dir + "/*.com").c_str(), &found);
    if (find == INVALID_HANDLE_VALUE) return d;
    std::unique_ptr<void, decltype(&::FindClose)> closeFind(find, &::FindClose);
    do {
        std::ifstream file(dir + "/" + found.cFileName);
        std::string line;
        DescribedClass* current = nullptr;
        while (std::getline(file, line)) {
            line = line.substr(0, line.find('#'));
            while (!line.empty() && std::isspace(static_cast<unsigned char>(line.back()))) line.pop_back();
            const size_t start = line.find_first_not_of(" \t");
            if (start == std::string::npos) continue;
            line = line.substr(start);
            const std::string word = line.substr(0, line.find_first_of(" \t"));
            std::smatch m;
            if (word == "class" || word == "control") {
                std::smatch name;
                std::regex_search(line, name, std::regex(R"(^\w+\s+(\w+))"));
                current = &d.classes[name[1]];
            } else if (word == "enum") {
                std::regex_search(line, m, std::regex(R"(^enum\s+(\w+))"));
                d.enums.insert(m[1]);
            } else if (current && std::regex_match(line, m, member)) {
                DescribedMember dm{m[1], m[2], m[4].matched ? m[4].str() : m[5].str(), {}, m[6]};
                for (const std::string& p : SplitParams(m[3])) {
                    std::smatch pm;
                    if (!std::regex_match(p, pm, param)) {
                        ADD_FAILURE() << found.cFileName << ": cannot read parameter '" << p << "'";
                        continue;
                    }
                    std::string mode = pm[1];
                    mode.erase(mode.find_last_not_of(" \t") + 1);
                    dm.params.push_back({mode, pm[2], pm[3], pm[4]});
                }
                (dm.kind == "event" ? current->events : current->members).push_back(dm);
            }
        }
    } while (::FindNextFileA(find, &found));
    return d;
}

// ------------------------------------------------------------------------- the type library side

std::string Narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

std::wstring NameOf(ITypeInfo* info, MEMBERID id) {
    BSTR name = nullptr;
    info->GetDocumentation(id, &name, nullptr, nullptr, nullptr);
    std::wstring text = name ? name : L"";
    ::SysFreeString(name);
    return text;
}

auto AttrOf(ITypeInfo* info) {
    TYPEATTR* attr = nullptr;
    info->GetTypeAttr(&attr);
    auto release = [info](TYPEATTR* a) { info->ReleaseTypeAttr(a); };
    return std::unique_ptr<TYPEATTR, decltype(release)>(attr, release);
}

auto FuncOf(ITypeInfo* info, UINT index) {
    FUNCDESC* func = nullptr;
    info->GetFuncDesc(index, &func);
    auto release = [info](FUNCDESC* f) { info->ReleaseFuncDesc(f); };
    return std::unique_ptr<FUNCDESC, decltype(release)>(func, release);
}

ComPtr<ITypeLib> ServerTypeLib() {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(Server::Instance().Module(), path, MAX_PATH);
    ComPtr<ITypeLib> lib;
    EXPECT_EQ(S_OK, ::LoadTypeLibEx(path, REGKIND_NONE, lib.put())) << Narrow(path);
    return lib;
}

// A readable form of a type: "*" for a pointer, "[]" for a safe array, a user type by its name.
std::string TypeText(ITypeInfo* owner, const TYPEDESC& t) {
    if (t.vt == VT_PTR) return "*" + TypeText(owner, *t.lptdesc);
    if (t.vt == VT_SAFEARRAY) return "[]" + TypeText(owner, *t.lptdesc);
    if (t.vt == VT_USERDEFINED) {
        ComPtr<ITypeInfo> ref;
        owner->GetRefTypeInfo(t.hreftype, ref.put());
        return ref ? Narrow(NameOf(ref.get(), MEMBERID_NIL)) : "<unresolved>";
    }
    static const std::map<VARTYPE, const char*> names = {
        {VT_BSTR, "BSTR"}, {VT_BOOL, "BOOL"}, {VT_UI1, "UI1"}, {VT_I2, "I2"}, {VT_I4, "I4"},
        {VT_R4, "R4"}, {VT_R8, "R8"}, {VT_CY, "CY"}, {VT_I8, "I8"}, {VT_VARIANT, "VARIANT"},
        {VT_DISPATCH, "DISPATCH"}, {VT_UNKNOWN, "UNKNOWN"}, {VT_HRESULT, "HRESULT"}, {VT_VOID, "VOID"},
        {VT_UI4, "UI4"}, {VT_INT, "INT"}, {VT_UINT, "UINT"}};
    const auto it = names.find(t.vt);
    return it != names.end() ? it->second : "VT" + std::to_string(t.vt);
}

// What a description's type becomes in the library.
std::string ExpectedType(const std::string& type, const Descriptions& d) {
    static const std::map<std::string, std::string> simple = {
        {"string", "BSTR"}, {"bool", "BOOL"}, {"byte", "UI1"}, {"short", "I2"}, {"long", "I4"},
        {"float", "R4"}, {"double", "R8"}, {"currency", "CY"},
        // Handles are pointer-sized.
        {"handle", sizeof(void*) == 8 ? "I8" : "I4"},
        {"color", "OLE_COLOR"}, {"bytes", "[]UI1"}, {"variant", "VARIANT"}, {"font", "*IFontDisp"},
        {"picture", "*IPictureDisp"}, {"dispatch", "DISPATCH"}, {"unknown", "UNKNOWN"},
        {"rect", "CTL_RECT"}, {"point", "CTL_POINTAPI"}};
    if (const auto it = simple.find(type); it != simple.end()) return it->second;
    if (d.enums.count(type)) return type;
    if (d.classes.count(type)) return "*_" + type;
    return "<unknown description type " + type + ">";
}

struct ExpectedParam {
    std::string type;
    USHORT flags;
    std::string defaultText;
};

struct ExpectedEntry {
    std::string name;
    INVOKEKIND invoke;
    MEMBERID id;  // 1 for "any positive id"
    std::vector<ExpectedParam> params;
};

MEMBERID ExpectedId(const DescribedMember& m) {
    static const std::map<std::string, MEMBERID> stock = {
        {"Enabled", DISPID_ENABLED}, {"Font", DISPID_FONT}, {"BackColor", DISPID_BACKCOLOR},
        {"ForeColor", DISPID_FORECOLOR}, {"Caption", DISPID_CAPTION}, {"Text", DISPID_TEXT},
        {"hWnd", DISPID_HWND}, {"Hwnd", DISPID_HWND}, {"Click", DISPID_CLICK}, {"DblClick", DISPID_DBLCLICK},
        {"KeyDown", DISPID_KEYDOWN}, {"KeyPress", DISPID_KEYPRESS}, {"KeyUp", DISPID_KEYUP},
        {"MouseDown", DISPID_MOUSEDOWN}, {"MouseMove", DISPID_MOUSEMOVE}, {"MouseUp", DISPID_MOUSEUP},
        {"_NewEnum", DISPID_NEWENUM}};
    if (m.flags.find("default") != std::string::npos) return DISPID_VALUE;
    const auto it = stock.find(m.name);
    return it != stock.end() ? it->second : 1;
}

// The vtable entries of one description member, in the order the interface must have them.
std::vector<ExpectedEntry> ExpectedEntries(const DescribedMember& m, const Descriptions& d) {
    std::vector<ExpectedParam> params;
    for (const DescribedParam& p : m.params) {
        const bool ref = p.mode == "ref";
        USHORT flags = ref ? (PARAMFLAG_FIN | PARAMFLAG_FOUT) : PARAMFLAG_FIN;
        if (!p.defaultText.empty()) flags |= PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT;
        if (p.mode == "opt") flags |= PARAMFLAG_FOPT;
        params.push_back({(ref ? "*" : "") + ExpectedType(p.type, d), flags, p.defaultText});
    }
    const std::string type = m.type.empty() ? "" : ExpectedType(m.type, d);
    const ExpectedParam retval{"*" + type, PARAMFLAG_FOUT | PARAMFLAG_FRETVAL, ""};
    const ExpectedParam newValue{type, PARAMFLAG_FIN, ""};
    auto with = [&](const ExpectedParam& last) {
        auto all = params;
        all.push_back(last);
        return all;
    };
    const MEMBERID id = ExpectedId(m);
    std::vector<ExpectedEntry> out;
    if (m.kind == "get" || m.kind == "prop" || m.kind == "propobj")
        out.push_back({m.name, INVOKE_PROPERTYGET, id, with(retval)});
    if (m.kind == "let" || m.kind == "prop") out.push_back({m.name, INVOKE_PROPERTYPUT, id, with(newValue)});
    if (m.kind == "set" || m.kind == "propobj") out.push_back({m.name, INVOKE_PROPERTYPUTREF, id, with(newValue)});
    if (m.kind == "method" || m.kind == "event")
        out.push_back({m.name, INVOKE_FUNC, id, type.empty() || m.kind == "event" ? params : with(retval)});
    return out;
}

bool SameName(const std::string& a, const std::string& b) {
    return a.size() == b.size() && ::CompareStringA(LOCALE_INVARIANT, NORM_IGNORECASE, a.data(), static_cast<int>(a.size()),
                                                    b.data(), static_cast<int>(b.size())) == CSTR_EQUAL;
}

std::string DefaultText(const VARIANT& value) {
    Var text;
    if (FAILED(::VariantChangeType(&text.v, const_cast<VARIANT*>(&value), 0, VT_BSTR))) return "<no text>";
    return Narrow(text.v.bstrVal);
}

// What the comparisons met, so that a library without some kind of parameter cannot pass unseen.
struct Seen {
    std::set<std::string> types;  // parameter types without pointer marks
    std::set<USHORT> flags;
};

// Compares the functions of an interface (or event dispinterface) with the description's entries.
void ExpectFunctions(ITypeInfo* info, const std::vector<ExpectedEntry>& expected, bool vtable,
                     const std::string& where, Seen& seen) {
    auto attr = AttrOf(info);
    ASSERT_TRUE(attr) << where;
    ASSERT_EQ(expected.size(), size_t{attr->cFuncs}) << where;
    const int pointer = static_cast<int>(sizeof(void*));
    // IUnknown's three and IDispatch's four methods come first in every dual vtable.
    if (vtable) {
        EXPECT_EQ((7 + attr->cFuncs) * pointer, attr->cbSizeVft) << where;
    }
    for (UINT i = 0; i < attr->cFuncs; ++i) {
        const ExpectedEntry& e = expected[i];
        auto f = FuncOf(info, i);
        ASSERT_TRUE(f) << where << " #" << i;
        const std::string at = where + "." + e.name + " (#" + std::to_string(i) + ")";
        // A type library keeps one spelling per name, the first it meets (a parameter "hdc" makes a
        // later member "hDC" read "hdc"), on Windows as under Wine: names compare without case.
        EXPECT_TRUE(SameName(e.name, Narrow(NameOf(info, f->memid)))) << at << " reads " << Narrow(NameOf(info, f->memid));
        EXPECT_EQ(e.invoke, f->invkind) << at;
        if (e.id == 1) {
            EXPECT_GT(f->memid, 0) << at;
        } else {
            EXPECT_EQ(e.id, f->memid) << at;
        }
        if (vtable) {
            EXPECT_EQ((7 + static_cast<int>(i)) * pointer, f->oVft) << at;
            EXPECT_EQ(VT_HRESULT, f->elemdescFunc.tdesc.vt) << at;
        }
        ASSERT_EQ(e.params.size(), static_cast<size_t>(f->cParams)) << at;
        for (size_t p = 0; p < e.params.size(); ++p) {
            const ELEMDESC& actual = f->lprgelemdescParam[p];
            const USHORT flags = actual.paramdesc.wParamFlags &
                (PARAMFLAG_FIN | PARAMFLAG_FOUT | PARAMFLAG_FRETVAL | PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT);
            EXPECT_EQ(e.params[p].type, TypeText(info, actual.tdesc)) << at << " parameter " << p;
            EXPECT_EQ(e.params[p].flags, flags) << at << " parameter " << p;
            seen.types.insert(e.params[p].type.substr(e.params[p].type.find_first_not_of('*')));
            seen.flags.insert(flags);
            if ((flags & PARAMFLAG_FHASDEFAULT) && actual.paramdesc.pparamdescex) {
                std::string text = e.params[p].defaultText;
                if (text.size() >= 2 && text.front() == '"') text = text.substr(1, text.size() - 2);
                EXPECT_EQ(text, DefaultText(actual.paramdesc.pparamdescex->varDefaultValue)) << at << " default " << p;
            }
        }
    }
}

struct ClassFaces {
    ComPtr<ITypeInfo> coclass, dual, events;
};

// Every coclass of the library by name, with its default interface and its event source.
std::map<std::string, ClassFaces> CoclassesOf(ITypeLib* lib) {
    std::map<std::string, ClassFaces> out;
    for (UINT i = 0; i < lib->GetTypeInfoCount(); ++i) {
        ClassFaces faces;
        lib->GetTypeInfo(i, faces.coclass.put());
        auto attr = AttrOf(faces.coclass.get());
        if (!attr || attr->typekind != TKIND_COCLASS) continue;
        for (UINT k = 0; k < attr->cImplTypes; ++k) {
            INT flags = 0;
            HREFTYPE ref = 0;
            ComPtr<ITypeInfo> face;
            faces.coclass->GetImplTypeFlags(k, &flags);
            faces.coclass->GetRefTypeOfImplType(k, &ref);
            faces.coclass->GetRefTypeInfo(ref, face.put());
            if (!(flags & IMPLTYPEFLAG_FDEFAULT) || !face) continue;
            if (flags & IMPLTYPEFLAG_FSOURCE) {
                faces.events = face;
                continue;
            }
            // A dual interface is listed as its dispatch face; its vtable face is the one behind -1.
            HREFTYPE vtableRef = 0;
            if (SUCCEEDED(face->GetRefTypeOfImplType(static_cast<UINT>(-1), &vtableRef)))
                face->GetRefTypeInfo(vtableRef, faces.dual.put());
            else faces.dual = face;
        }
        out[Narrow(NameOf(faces.coclass.get(), MEMBERID_NIL))] = faces;
    }
    return out;
}

TEST(TypeLibrary, DualInterfacesFollowTheirDescriptions) {
    const Descriptions d = ReadDescriptions();
    ASSERT_FALSE(d.classes.empty()) << "no descriptions found in " << TC_COM_CLASSES_DIR;
    ComPtr<ITypeLib> lib = ServerTypeLib();
    ASSERT_TRUE(lib);
    const auto coclasses = CoclassesOf(lib.get());
    EXPECT_EQ(d.classes.size(), coclasses.size());
    Seen seen;
    for (const auto& [name, cls] : d.classes) {
        SCOPED_TRACE(name);
        const auto found = coclasses.find(name);
        ASSERT_NE(found, coclasses.end()) << "no coclass";
        ITypeInfo* dual = found->second.dual.get();
        ASSERT_TRUE(dual);
        auto attr = AttrOf(dual);
        EXPECT_EQ(TKIND_INTERFACE, attr->typekind);
        EXPECT_TRUE(attr->wTypeFlags & TYPEFLAG_FDUAL);
        EXPECT_EQ("_" + name, Narrow(NameOf(dual, MEMBERID_NIL)));

        // The base is IDispatch declared in full: seven slots before the first own member.
        HREFTYPE baseRef = 0;
        ComPtr<ITypeInfo> base;
        ASSERT_EQ(S_OK, dual->GetRefTypeOfImplType(0, &baseRef));
        ASSERT_EQ(S_OK, dual->GetRefTypeInfo(baseRef, base.put()));
        EXPECT_EQ(L"IDispatch", NameOf(base.get(), MEMBERID_NIL));
        EXPECT_EQ(static_cast<int>(7 * sizeof(void*)), AttrOf(base.get())->cbSizeVft);
        if (attr->cFuncs > 0) {
            EXPECT_EQ(sizeof(void*) == 8 ? 56 : 28, FuncOf(dual, 0)->oVft);
        }

        std::vector<ExpectedEntry> members, events;
        for (const DescribedMember& m : cls.members)
            for (ExpectedEntry& e : ExpectedEntries(m, d)) members.push_back(std::move(e));
        for (const DescribedMember& m : cls.events)
            for (ExpectedEntry& e : ExpectedEntries(m, d)) events.push_back(std::move(e));
        ExpectFunctions(dual, members, true, "_" + name, seen);
        ComPtr<ITypeInfo> source = found->second.events;
        EXPECT_EQ(!events.empty(), static_cast<bool>(source));
        if (source) {
            EXPECT_EQ(TKIND_DISPATCH, AttrOf(source.get())->typekind);
            ExpectFunctions(source.get(), events, false, "__" + name, seen);
        }
    }
    // Pointer-sized handles, Booleans, currency, objects, by-reference and defaulted parameters
    // were all among the compared ones.
    for (const char* type : {sizeof(void*) == 8 ? "I8" : "I4", "BOOL", "CY", "BSTR", "IFontDisp", "OLE_COLOR"})
        EXPECT_TRUE(seen.types.count(type)) << "no parameter of type " << type << " compared";
    for (USHORT flags : {USHORT(PARAMFLAG_FIN | PARAMFLAG_FOUT), USHORT(PARAMFLAG_FIN | PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT),
                         USHORT(PARAMFLAG_FOUT | PARAMFLAG_FRETVAL)})
        EXPECT_TRUE(seen.flags.count(flags)) << "no parameter with flags " << flags << " compared";
}

// ------------------------------------------------------------------ enumeration names with blanks

size_t PublishedNameCount() {
    size_t count = 0;
    for (const auto& entry : tc::com::kPublishedEnumNames) count += entry.name != nullptr;
    return count;
}

TEST(TypeLibrary, EnumerationMembersBindByTheirPublishedNames) {
    if (PublishedNameCount() == 0) GTEST_SKIP() << "no enumeration member name with a blank in this library";
    ComPtr<ITypeLib> lib = ServerTypeLib();
    ASSERT_TRUE(lib);
    TLIBATTR* libAttr = nullptr;
    ASSERT_EQ(S_OK, lib->GetLibAttr(&libAttr));
    const SYSKIND sysKind = libAttr->syskind;
    const LCID lcid = libAttr->lcid;
    lib->ReleaseTLibAttr(libAttr);
    EXPECT_EQ(sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32, sysKind);
    ComPtr<ITypeComp> comp;
    ASSERT_EQ(S_OK, lib->GetTypeComp(comp.put()));

    for (const auto& entry : tc::com::kPublishedEnumNames) {
        if (!entry.name) continue;
        const std::string name = Narrow(entry.name);
        ComPtr<ITypeInfo> owner;
        DESCKIND kind = DESCKIND_NONE;
        BINDPTR bound{};
        const ULONG hash = ::LHashValOfNameSys(sysKind, lcid, entry.name);
        ASSERT_EQ(S_OK, comp->Bind(const_cast<LPOLESTR>(entry.name), hash, 0, owner.put(), &kind, &bound)) << name;
        ASSERT_EQ(DESCKIND_VARDESC, kind) << name;
        EXPECT_EQ(VAR_CONST, bound.lpvardesc->varkind) << name;
        EXPECT_EQ(TKIND_ENUM, AttrOf(owner.get())->typekind) << name;
        EXPECT_EQ(entry.name, NameOf(owner.get(), bound.lpvardesc->memid)) << name;
        Var value;
        EXPECT_EQ(S_OK, ::VariantChangeType(&value.v, bound.lpvardesc->lpvarValue, 0, VT_I4)) << name;
        EXPECT_EQ(entry.value, value.v.lVal) << name;
        owner->ReleaseVarDesc(bound.lpvardesc);

        // The spelling widl had to use is gone.
        ComPtr<ITypeInfo> none;
        kind = DESCKIND_FUNCDESC;
        const ULONG idlHash = ::LHashValOfNameSys(sysKind, lcid, entry.idlName);
        EXPECT_EQ(S_OK, comp->Bind(const_cast<LPOLESTR>(entry.idlName), idlHash, 0, none.put(), &kind, &bound));
        EXPECT_EQ(DESCKIND_NONE, kind) << Narrow(entry.idlName);
    }
}

// The name table of the compiled library, read from the DLL's resource.
struct NameEntry {
    int32_t next;
    uint32_t storedHash;  // the low 16 bits of the platform's hash
    std::string name;
};

struct NameTable {
    SYSKIND sysKind = SYS_WIN32;
    LCID lcid = 0;
    std::vector<int32_t> buckets;
    std::map<int32_t, NameEntry> entries;  // by offset in the table
};

NameTable ReadNameTable(const std::vector<char>& data) {
    auto word = [&](size_t at) {
        uint32_t value = 0;
        if (at + 4 <= data.size()) std::memcpy(&value, &data[at], 4);
        return value;
    };
    NameTable table;
    const uint32_t varFlags = word(0x14);
    table.sysKind = static_cast<SYSKIND>(varFlags & 0xF);
    table.lcid = word(0x0C);
    const size_t segments = 0x54 + ((varFlags & 0x100) ? 4 : 0) + 4 * size_t{word(0x20)};
    const size_t hashAt = word(segments + 6 * 16), hashLength = word(segments + 6 * 16 + 4);
    const size_t namesAt = word(segments + 7 * 16), namesLength = word(segments + 7 * 16 + 4);
    for (size_t b = 0; b < hashLength / 4; ++b) table.buckets.push_back(static_cast<int32_t>(word(hashAt + 4 * b)));
    for (size_t at = 0; at + 12 <= namesLength;) {
        const uint32_t lengthWord = word(namesAt + at + 8);
        const size_t length = lengthWord & 0xFF;
        const char* chars = &data[namesAt + at + 12];
        table.entries[static_cast<int32_t>(at)] = {static_cast<int32_t>(word(namesAt + at + 4)), lengthWord >> 16,
                                                   std::string(chars, length)};
        at += 12 + ((length + 3) & ~size_t{3});
    }
    return table;
}

// Hosts on Windows find a name through its stored hash and its bucket chain (Wine compares the
// names themselves), so every entry, restored ones included, must carry the platform's hash and sit
// in the chain that hash selects.
// Every name's stored hash and bucket chain; the names the table holds.
std::set<std::string> ExpectPlatformHashes(const std::vector<char>& data) {
    std::set<std::string> names;
    if (data.size() < 0x54 || std::memcmp(data.data(), "MSFT", 4) != 0) {
        ADD_FAILURE() << "not a compiled type library";
        return names;
    }
    const NameTable table = ReadNameTable(data);
    EXPECT_EQ(128u, table.buckets.size());
    EXPECT_FALSE(table.entries.empty());
    std::set<int32_t> chained;
    for (size_t b = 0; b < table.buckets.size(); ++b) {
        for (int32_t at = table.buckets[b]; at != -1;) {
            const auto entry = table.entries.find(at);
            if (entry == table.entries.end()) {
                ADD_FAILURE() << "bucket " << b << " points between names";
                break;
            }
            EXPECT_EQ(b, entry->second.storedHash & 0x7F) << entry->second.name;
            if (!chained.insert(at).second) {
                ADD_FAILURE() << "chain loops at " << entry->second.name;
                break;
            }
            at = entry->second.next;
        }
    }
    for (const auto& [at, entry] : table.entries) {
        names.insert(entry.name);
        EXPECT_TRUE(chained.count(at)) << entry.name << " is in no hash chain";
        const ULONG hash = ::LHashValOfNameSysA(table.sysKind, table.lcid, entry.name.c_str());
        EXPECT_EQ(hash & 0xFFFF, entry.storedHash) << entry.name;
    }
    return names;
}

TEST(TypeLibrary, NameTableCarriesThePlatformHashes) {
    HMODULE module = Server::Instance().Module();
    ASSERT_TRUE(module);
    HRSRC found = ::FindResourceW(module, MAKEINTRESOURCEW(1), L"TYPELIB");
    ASSERT_TRUE(found);
    const auto* bytes = static_cast<const char*>(::LockResource(::LoadResource(module, found)));
    ASSERT_TRUE(bytes);
    const std::set<std::string> names =
        ExpectPlatformHashes(std::vector<char>(bytes, bytes + ::SizeofResource(module, found)));
    for (const auto& entry : tc::com::kPublishedEnumNames) {
        if (!entry.name) continue;
        EXPECT_TRUE(names.count(Narrow(entry.name))) << Narrow(entry.name);
        EXPECT_FALSE(names.count(Narrow(entry.idlName))) << Narrow(entry.idlName);
    }
}

// ----------------------------------------------------------------- the fixer on a probe library

// typelib/TypeLibProbe.idl, compiled by widl and fixed as the server's library is, beside the test.
std::wstring ProbePath() {
    wchar_t exe[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, exe, MAX_PATH);
    const std::wstring path(exe);
    return path.substr(0, path.find_last_of(L"\\/") + 1) + L"TypeLibProbe.tlb";
}

TEST(TypeLibrary, FixerWritesWhatWidlCannot) {
    ComPtr<ITypeLib> lib;
    ASSERT_EQ(S_OK, ::LoadTypeLibEx(ProbePath().c_str(), REGKIND_NONE, lib.put())) << Narrow(ProbePath());
    ComPtr<ITypeInfo> dispatch, probe;
    ASSERT_EQ(S_OK, lib->GetTypeInfoOfGuid({0x004B6A1B, 0x1D2B, 0x5B57, {0x9A, 0x67, 0xC2, 0x34, 0xB6, 0x10, 0x4F, 0x80}},
                                           dispatch.put()));
    HREFTYPE vtableRef = 0;
    ASSERT_EQ(S_OK, dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &vtableRef));
    ASSERT_EQ(S_OK, dispatch->GetRefTypeInfo(vtableRef, probe.put()));

    // Handles are 8 bytes on x64, where widl leaves their defaults out; currency is 8 bytes on
    // both. The long is one widl writes itself, which the fixer must leave alone.
    const VARTYPE handle = sizeof(void*) == 8 ? VT_I8 : VT_I4;
    struct Case {
        UINT func;
        SHORT param;
        VARTYPE vt;
        const char* value;
    };
    const Case cases[] = {
        {0, 1, handle, "0"}, {0, 2, handle, "4096"}, {0, 3, VT_CY, "7"}, {0, 4, VT_I4, "5"}, {1, 0, handle, "-3"},
    };
    for (const Case& c : cases) {
        const std::string at = "function " + std::to_string(c.func) + " parameter " + std::to_string(c.param);
        auto f = FuncOf(probe.get(), c.func);
        ASSERT_TRUE(f) << at << ": the platform cannot read the function";
        ASSERT_LT(c.param, f->cParams) << at;
        const PARAMDESC& desc = f->lprgelemdescParam[c.param].paramdesc;
        ASSERT_TRUE(desc.wParamFlags & PARAMFLAG_FHASDEFAULT) << at;
        ASSERT_TRUE(desc.pparamdescex) << at;
        EXPECT_EQ(c.vt, desc.pparamdescex->varDefaultValue.vt) << at;
        EXPECT_EQ(c.value, DefaultText(desc.pparamdescex->varDefaultValue)) << at;
    }

    ComPtr<ITypeComp> comp;
    ASSERT_EQ(S_OK, lib->GetTypeComp(comp.put()));
    ComPtr<ITypeInfo> owner;
    DESCKIND kind = DESCKIND_NONE;
    BINDPTR bound{};
    wchar_t name[] = L"Probe One Two";
    ASSERT_EQ(S_OK, comp->Bind(name, ::LHashValOfNameSys(sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32, 0x409, name), 0,
                               owner.put(), &kind, &bound));
    ASSERT_EQ(DESCKIND_VARDESC, kind);
    EXPECT_EQ(12, bound.lpvardesc->lpvarValue->lVal);
    owner->ReleaseVarDesc(bound.lpvardesc);

    // The file as a whole: hashes and chains hold after the custom data segment grew.
    std::ifstream file(std::filesystem::path(ProbePath()), std::ios::binary);
    const std::vector<char> data((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const std::set<std::string> names = ExpectPlatformHashes(data);
    EXPECT_TRUE(names.count("Probe One Two"));
    EXPECT_FALSE(names.count("Probe_One_Two"));
}

}  // namespace
