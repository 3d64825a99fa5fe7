#include "text/WindowsVersion.h"

namespace {

struct CachedVersion {
    bool known = false;
    eCtlWindowsType type = ctl_ewt_WinErr;
    int32_t major = 0;
    int32_t minor = 0;
    int32_t build = 0;
};

thread_local CachedVersion t_version;

const CachedVersion& cachedVersion() {
    if (!t_version.known) {
        const platform::VersionRecord record = platform::QueryVersionRecord();
        t_version.type = ClassifyWindowsVersion(record);
        if (record.ok) {
            t_version.major = static_cast<int32_t>(record.major);
            t_version.minor = static_cast<int32_t>(record.minor);
            t_version.build = static_cast<int32_t>(record.build);
        }
        t_version.known = true;
    }
    return t_version;
}

}  // namespace

eCtlWindowsType ClassifyWindowsVersion(const platform::VersionRecord& record) noexcept {
    if (!record.ok) return ctl_ewt_WinErr;
    switch (record.platformId) {
        case 0:
            return ctl_ewt_Win32;
        case 3:
            return ctl_ewt_WinCE;
        case 1:
            if (record.minor == 0) return ctl_ewt_Win95;
            if (record.minor == 10) return ctl_ewt_Win98;
            if (record.minor > 10) return ctl_ewt_Win9xPlus;
            return ctl_ewt_WinErr;
        case 2:
            if (record.major == 3) return ctl_ewt_WinNt3;
            if (record.major == 4) return ctl_ewt_WinNt4;
            if (record.major == 5) {
                if (record.minor == 0) return ctl_ewt_Win2000;
                if (record.minor == 1) return ctl_ewt_WinXP;
                if (record.minor == 2) return ctl_ewt_Win2003;
                return ctl_ewt_WinErr;
            }
            if (record.major > 5) return ctl_ewt_WinVistaAndMore;
            return ctl_ewt_WinErr;
        default:
            return ctl_ewt_WinErr;
    }
}

void GetWindowsVersionEx(eCtlWindowsType& ewt, int32_t& lMajor, int32_t& lMinor, int32_t& lBuild) {
    const CachedVersion& version = cachedVersion();
    ewt = version.type;
    lMajor = version.major;
    lMinor = version.minor;
    lBuild = version.build;
}

eCtlWindowsType GetWindowsVersion() { return cachedVersion().type; }

bool IsUnicodeSystem() { return GetWindowsVersion() >= ctl_ewt_Win2000; }
