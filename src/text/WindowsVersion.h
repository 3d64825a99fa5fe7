// eCtlWindowsType and the cached system classification behind GetWindowsVersion and IsUnicodeSystem.
#pragma once

#include <cstdint>

#include "platform/SystemInfo.h"

enum eCtlWindowsType : int32_t {
    ctl_ewt_WinErr = 0,
    ctl_ewt_Win32 = 1,
    ctl_ewt_WinCE = 2,
    ctl_ewt_Win95 = 3,
    ctl_ewt_Win98 = 4,
    ctl_ewt_Win9xPlus = 5,
    ctl_ewt_WinNt3 = 6,
    ctl_ewt_WinNt4 = 7,
    ctl_ewt_Win2000 = 8,
    ctl_ewt_WinXP = 9,
    ctl_ewt_Win2003 = 10,
    ctl_ewt_WinVistaAndMore = 11,
};

// The class of a version record, with no caching: the rule itself.
eCtlWindowsType ClassifyWindowsVersion(const platform::VersionRecord& record) noexcept;

// Computed on the first request of the thread and kept for its life. When the query failed
// the three numbers are 0.
void GetWindowsVersionEx(eCtlWindowsType& ewt, int32_t& lMajor, int32_t& lMinor, int32_t& lBuild);
eCtlWindowsType GetWindowsVersion();

// True from Windows 2000 on (class 8 and above); NT 4 counts as not Unicode here.
bool IsUnicodeSystem();
