#include "text/WindowsVersion.h"

#include <gtest/gtest.h>

namespace {

TEST(WindowsVersion, ClassifiesEveryPlatformAndVersion) {
    const struct { platform::VersionRecord record; eCtlWindowsType expected; } cases[] = {
        {{false, 2, 10, 0, 19041}, ctl_ewt_WinErr},
        {{true, 0, 1, 0, 0}, ctl_ewt_Win32},
        {{true, 3, 4, 0, 0}, ctl_ewt_WinCE},
        {{true, 1, 4, 0, 950}, ctl_ewt_Win95},
        {{true, 1, 4, 10, 1998}, ctl_ewt_Win98},
        {{true, 1, 4, 90, 3000}, ctl_ewt_Win9xPlus},
        {{true, 1, 4, 5, 0}, ctl_ewt_WinErr},  // minor 1..9 has no class
        {{true, 2, 3, 51, 1057}, ctl_ewt_WinNt3},
        {{true, 2, 4, 0, 1381}, ctl_ewt_WinNt4},
        {{true, 2, 5, 0, 2195}, ctl_ewt_Win2000},
        {{true, 2, 5, 1, 2600}, ctl_ewt_WinXP},
        {{true, 2, 5, 2, 3790}, ctl_ewt_Win2003},
        {{true, 2, 5, 3, 0}, ctl_ewt_WinErr},  // 5.3 and up keep 0
        {{true, 2, 6, 2, 9200}, ctl_ewt_WinVistaAndMore},
        {{true, 2, 10, 0, 19041}, ctl_ewt_WinVistaAndMore},
        {{true, 7, 10, 0, 0}, ctl_ewt_WinErr},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ClassifyWindowsVersion(c.record), c.expected)
            << "platform " << c.record.platformId << " version " << c.record.major << "." << c.record.minor;
    }
}

TEST(WindowsVersion, TheSystemWeRunOnIsUnicodeAndConsistent) {
    eCtlWindowsType type = ctl_ewt_WinErr;
    int32_t major = -1, minor = -1, build = -1;
    GetWindowsVersionEx(type, major, minor, build);
    EXPECT_EQ(type, GetWindowsVersion());
    EXPECT_EQ(type, ClassifyWindowsVersion(platform::QueryVersionRecord()));
    EXPECT_GE(major, 6);
    EXPECT_TRUE(IsUnicodeSystem());
}

}  // namespace
