// clsCommonWrapper: shared default style across instances, the tooltip listener, and forwards reaching their routines.
#include <gtest/gtest.h>

#include <thread>

#include "DibCanvas.h"
#include "graphics/clsCommonWrapper.h"

namespace {

TEST(clsCommonWrapper, DefaultStyleIsOneValuePerThread) {
    std::thread([] {
        clsCommonWrapper first, second;
        EXPECT_EQ(first.DefaultButtonStyle(), iCtlBtnStyle_Vista);
        int heard = -100;
        clsCommonWrapper::SetTooltipStyleListener([&](int32_t style) { heard = style; });
        first.DefaultButtonStyle(iCtlBtnStyle_Xp2);
        EXPECT_EQ(second.DefaultButtonStyle(), iCtlBtnStyle_Xp2);
        EXPECT_EQ(GetDefaultButtonStyle(), iCtlBtnStyle_Xp2);
        EXPECT_EQ(heard, iCtlBtnStyle_Xp2);
        clsCommonWrapper::SetTooltipStyleListener(nullptr);
        second.DefaultButtonStyle(iCtlBtnStyle_Flat);
        EXPECT_EQ(heard, iCtlBtnStyle_Xp2) << "no listener after it left";
        EXPECT_EQ(first.DefaultButtonStyle(), iCtlBtnStyle_Flat);
    }).join();
}

TEST(clsCommonWrapper, ForwardsReachTheRoutines) {
    clsCommonWrapper wrapper;
    // Drawing through the front and directly gives the same pixels.
    DibCanvas front(30, 20), direct(30, 20);
    CTL_RECT a{2, 2, 28, 18}, b{2, 2, 28, 18};
    wrapper.DrawButton(front.dc(), a, 0x00D08040, true, -1, true, true, false, false, true, iCtlBtnStyle_Glass, -1);
    DrawButton(direct.dc(), b, 0x00D08040, true, -1, true, true, false, false, true, iCtlBtnStyle_Glass, -1);
    EXPECT_EQ(front.Snapshot(), direct.Snapshot());

    EXPECT_EQ(wrapper.ColorInc(0x00FFFFFF, -68), 0x00BBBBBB);
    EXPECT_EQ(wrapper.BlendColors(0, 0x00FFFFFF, 100), 0x00FFFFFF);
    EXPECT_EQ(wrapper.MakeDWord(-1, 0), 65535);
    EXPECT_FALSE(wrapper.InIDE());
    // The string members: the hex envelope round-trips and one UTF-16 unit is its code.
    const CtlString text = u"\u0416\u03A9 x";
    EXPECT_EQ(wrapper.HextoStr(wrapper.StrToHex(text)), text);
    EXPECT_EQ(wrapper.UTF8toStr(wrapper.StrToUTF8(text)), text);
    EXPECT_EQ(wrapper.AscW(u"\u0416"), 0x0416);
    EXPECT_EQ(wrapper.ChrW(0x03A9), u"\u03A9");
    EXPECT_FALSE(wrapper.UniAppPath().empty());
    EXPECT_EQ(wrapper.IsUnicodeSystem(), wrapper.GetWindowsVersion() >= ctl_ewt_Win2000);
}

}  // namespace
