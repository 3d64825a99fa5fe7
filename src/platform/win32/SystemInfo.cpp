#include "platform/SystemInfo.h"

#include "platform/win32/WinApi.h"

#include <vector>

namespace platform {

VersionRecord QueryVersionRecord() {
    OSVERSIONINFOA info{};
    info.dwOSVersionInfoSize = sizeof info;
    static_assert(sizeof(OSVERSIONINFOA) == 148, "the version record is 148 bytes");
    VersionRecord record;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    // The library classifies systems by what this call reports, manifest or not.
    record.ok = ::GetVersionExA(&info) != FALSE;
#pragma GCC diagnostic pop
    if (record.ok) {
        record.platformId = info.dwPlatformId;
        record.major = info.dwMajorVersion;
        record.minor = info.dwMinorVersion;
        record.build = info.dwBuildNumber;
    }
    return record;
}

std::u16string ModuleFileName() {
    std::vector<wchar_t> buffer(MAX_PATH);
    for (;;) {
        const DWORD length = ::GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length == 0) return {};
        if (length < buffer.size()) return FromWide(buffer.data(), length);
        if (buffer.size() >= 32768) return {};
        buffer.resize(buffer.size() * 2);
    }
}

std::u16string CommandLine() { return FromWide(::GetCommandLineW()); }

}  // namespace platform
