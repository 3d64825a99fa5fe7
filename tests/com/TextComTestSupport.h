// Helpers of the text-class COM tests: currency and by-reference string arguments, a scratch folder in
// the Windows temp folder, and the items of a collection walked through its enumerator.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "ComTestSupport.h"
#include "support/OleSession.h"

namespace comtest {

using testsupport::OleSession;

// A whole number as the fixed-point currency type that file sizes and positions cross in.
inline Var Cy(int64_t whole) {
    Var v;
    v.v.vt = VT_CY;
    v.v.cyVal.int64 = whole * 10000;
    return v;
}

// Owns a BSTR that a by-reference string argument reads and replaces.
struct StringSlot {
    explicit StringSlot(const std::u16string& text)
        : value(::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()))) {}
    ~StringSlot() { ::SysFreeString(value); }
    // Owns the string: a copy would free it twice.
    StringSlot(const StringSlot&) = delete;
    StringSlot& operator=(const StringSlot&) = delete;
    std::u16string Text() const {
        return std::u16string(reinterpret_cast<const char16_t*>(value), ::SysStringLen(value));
    }
    Var Arg() { return Ref(VT_BSTR, &value); }
    BSTR value;
};

// A folder of its own under the Windows temp folder, removed with its content.
class ScratchFolder {
public:
    explicit ScratchFolder(const wchar_t* name);
    ~ScratchFolder();
    // Removes a folder tree: copying would remove it twice.
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    // The folder with a final backslash, followed by `name`.
    std::wstring Path(const std::wstring& name = std::wstring()) const { return m_path.wstring() + L"\\" + name; }
    void WriteFile(const std::wstring& name, const std::string& bytes) const;

private:
    std::filesystem::path m_path;
};

// The items of a collection in the order its _NewEnum gives them.
std::vector<Var> Enumerate(IDispatch* collection);

// The strings of a string array held in a VARIANT (directly or by reference).
std::vector<std::u16string> StringsIn(const VARIANT& value);

// The dispatch object inside a result, or null.
inline IDispatch* DispatchOf(const Var& value) { return value.v.vt == VT_DISPATCH ? value.v.pdispVal : nullptr; }

}  // namespace comtest
