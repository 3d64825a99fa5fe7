#include "platform/PrivateProfile.h"

#include <vector>

#include "platform/win32/WinApi.h"

namespace platform {
namespace {

// The platform's DWORD sizes: a caller's buffer beyond that is clamped, never wrapped.
DWORD bufferSize(size_t chars) { return chars > 0x7FFFFFFFu ? 0x7FFFFFFFu : static_cast<DWORD>(chars); }

}  // namespace

std::u16string ProfileGetString(const std::u16string& path, const std::u16string& section, const std::u16string& key,
                                const std::u16string& defaultValue, size_t bufferChars) {
    if (bufferChars == 0) return {};
    std::vector<wchar_t> buffer(bufferChars, L'\0');
    const DWORD count = ::GetPrivateProfileStringW(AsWide(section), AsWide(key), AsWide(defaultValue), buffer.data(),
                                                   bufferSize(bufferChars), AsWide(path));
    return FromWide(buffer.data(), count);
}

std::u16string ProfileGetKeys(const std::u16string& path, const std::u16string& section, size_t bufferChars) {
    if (bufferChars == 0) return {};
    std::vector<wchar_t> buffer(bufferChars, L'\0');
    const DWORD count = ::GetPrivateProfileStringW(AsWide(section), nullptr, L"", buffer.data(),
                                                   bufferSize(bufferChars), AsWide(path));
    return FromWide(buffer.data(), count);
}

std::u16string ProfileGetSection(const std::u16string& path, const std::u16string& section, size_t bufferChars) {
    if (bufferChars == 0) return {};
    std::vector<wchar_t> buffer(bufferChars, L'\0');
    const DWORD count =
        ::GetPrivateProfileSectionW(AsWide(section), buffer.data(), bufferSize(bufferChars), AsWide(path));
    return FromWide(buffer.data(), count);
}

std::u16string ProfileGetSectionNames(const std::u16string& path, size_t bufferChars) {
    if (bufferChars == 0) return {};
    std::vector<wchar_t> buffer(bufferChars, L'\0');
    const DWORD count = ::GetPrivateProfileSectionNamesW(buffer.data(), bufferSize(bufferChars), AsWide(path));
    return FromWide(buffer.data(), count);
}

bool ProfileWriteString(const std::u16string& path, const std::u16string& section,
                        const std::optional<std::u16string>& key, const std::optional<std::u16string>& value) {
    return ::WritePrivateProfileStringW(AsWide(section), key ? AsWide(*key) : nullptr,
                                        value ? AsWide(*value) : nullptr, AsWide(path)) != FALSE;
}

}  // namespace platform
