// Leak checks: the GDI and window counters themselves, then long cycles of the graphics classes.
#include <gtest/gtest.h>

#include "DibCanvas.h"
#include "common/CtlError.h"
#include "graphics/DrawButton.h"
#include "graphics/clsFontHDC.h"
#include "graphics/clsMEMDC.h"
#include "graphics/modCommonDraw.h"
#include "graphics/vba_cMemDC.h"
#include "support/LeakCounters.h"

namespace {

using testsupport::HeldWindowDCs;
using testsupport::LiveGdiObjects;
using testsupport::ThreadWindowCount;

TEST(LeakCounters, SeeADeliberateLeak) {
    const size_t before = LiveGdiObjects();
    const HBRUSH leaked = ::CreateSolidBrush(0x123456);
    const HPEN pen = ::CreatePen(PS_SOLID, 1, 0);
    EXPECT_EQ(LiveGdiObjects(), before + 2);
    ::DeleteObject(leaked);
    EXPECT_EQ(LiveGdiObjects(), before + 1);
    ::DeleteObject(pen);
    EXPECT_EQ(LiveGdiObjects(), before);

    // A font selected through the class, destroyed by the class.
    const HDC dc = ::CreateCompatibleDC(nullptr);
    EXPECT_EQ(LiveGdiObjects(), before + 1);
    {
        clsFontHDC font;
        font.SetFontToDC(dc, u"Tahoma", 9);
        EXPECT_EQ(LiveGdiObjects(), before + 2);
    }
    ::DeleteDC(dc);
    EXPECT_EQ(LiveGdiObjects(), before);

    const size_t heldBefore = HeldWindowDCs();
    const HDC screen = ::GetDC(nullptr);
    EXPECT_EQ(HeldWindowDCs(), heldBefore + 1);
    ::ReleaseDC(nullptr, screen);
    EXPECT_EQ(HeldWindowDCs(), heldBefore);
}

TEST(LeakCounters, CountTheThreadsWindows) {
    const size_t before = ThreadWindowCount();
    const HWND top = ::CreateWindowExW(0, L"STATIC", L"top", WS_OVERLAPPEDWINDOW, 0, 0, 50, 50, nullptr, nullptr,
                                       nullptr, nullptr);
    ASSERT_NE(top, nullptr);
    const HWND child = ::CreateWindowExW(0, L"STATIC", L"child", WS_CHILD, 0, 0, 10, 10, top, nullptr, nullptr, nullptr);
    const HWND messageOnly = ::CreateWindowExW(0, L"STATIC", L"m", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    ASSERT_NE(child, nullptr);
    ASSERT_NE(messageOnly, nullptr);
    EXPECT_EQ(ThreadWindowCount(), before + 3);
    ::DestroyWindow(messageOnly);
    ::DestroyWindow(top);
    EXPECT_EQ(ThreadWindowCount(), before);
}

// One cycle of everything the graphics classes own: a memory DC with a button drawn, resized,
// cloned, turned into a picture; a font; a scratch DC; an image overlay; an error path.
void oneCycle(int i, HBITMAP picture) {
    clsMEMDC dc;
    dc.CreateDC(40, 24, eMemDcBkMode_OPAQUE);
    CTL_RECT rc{0, 0, 40, 24};
    DrawButton(dc.hDC(), rc, 0x00D08040, true, -1, (i & 1) != 0, (i & 2) != 0, (i & 4) != 0, (i & 8) != 0,
               (i & 16) != 0, i % 9, -1);
    dc.ResizeCutDC(30, 30);
    dc.ResizeAdaptDC(20, 10);
    clsMEMDC copy;
    copy.CloneFromHdc(dc.hDC(), 0, 0, -1, -1, SRCCOPY);
    copy.CloneFromHBmp(picture, eMemDcBkMode_OPAQUE);
    {
        clsFontHDC font;
        font.SetFontToDC(dc.hDC(), u"Tahoma", static_cast<int16_t>(8 + i % 5), 0, true, false, false, false,
                         efhat_default, static_cast<int16_t>(i % 3), false);
        int32_t w = 0, h = 0;
        CalculateStringDim(dc.hDC(), u"Tarnwick", true, w, h);
    }
    OverlapImageCoords(dc.hDC(), 0, 0, 20, 10, (i & 1) != 0, CtlPictureRef{picture, kPicTypeBitmap}, (i & 2) != 0);
    DrawRRectCoords(dc.hDC(), 0, 0, 10, 10, true, 0xFF, 0xFF00, i % 2, PS_SOLID, 4);
    pvDrawEllipse(dc.hDC(), 0, 0, 10, 10, true, 0xFF, 0xFF00, 1, PS_SOLID);
    pvDrawFlatFrame(dc.hDC(), CTL_RECT{0, 0, 20, 10}, 0x00F0F0F0, -1, (i & 1) != 0, -1, (i & 2) != 0);
    ::DeleteObject(CreateRoundRegion(10, 10, 4));
    vba_cMemDC scratch;
    scratch.Width(8 + i % 4);
    scratch.Height(6);
    try {
        clsMEMDC refused;
        refused.CreateDC(200000, 200000);
    } catch (const CtlError&) {
    }
    if (i % 7 == 0) {
        ComRef<IDispatch> asPicture = dc.Picture();
    }
}

TEST(GdiLeaks, ThousandsOfCyclesLeaveTheCountUnchanged) {
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    // A bitmap selected in no DC, as a picture's bitmap is.
    std::vector<uint32_t> bits(12 * 8, 0x00336699u);
    bits[5] = 0x00FFFFFFu;
    const HBITMAP picture = ::CreateBitmap(12, 8, 1, 32, bits.data());
    // The image routines keep reusable pixel buffers per thread: let every path make its own first.
    for (int i = 0; i < 32; ++i) oneCycle(i, picture);
    const size_t before = LiveGdiObjects();
    const size_t heldBefore = HeldWindowDCs();
    for (int i = 0; i < 3000; ++i) oneCycle(i, picture);
    EXPECT_EQ(LiveGdiObjects(), before);
    EXPECT_EQ(HeldWindowDCs(), heldBefore);
    ::DeleteObject(picture);
    ::CoUninitialize();
}

// Past the per-process handle limit: a leak of one object per cycle would have run out long
// before the end, and the last drawing would not match the first.
TEST(GdiLeaks, AHundredThousandButtonsStillDrawCorrectly) {
    DibCanvas first(30, 20, 0), last(30, 20, 0);
    CTL_RECT rc{1, 1, 29, 19};
    DrawButton(first.dc(), rc, 0x00D08040, true, -1, false, true, false, false, true, iCtlBtnStyle_Vista4, -1);
    DibCanvas scratch(30, 20, 0);
    const size_t before = LiveGdiObjects();
    for (int i = 0; i < 100000; ++i) {
        DrawButton(scratch.dc(), rc, 0x00D08040 + (i & 0xFF), true, -1, (i & 1) != 0, true, false, false, true,
                   i % 9, -1);
        if (i % 10 == 0) {
            clsFontHDC font;
            font.SetFontToDC(scratch.dc(), u"Tahoma", 9);
            clsMEMDC dc;
            dc.CreateDC(4, 4);
        }
    }
    EXPECT_EQ(LiveGdiObjects(), before);
    DrawButton(last.dc(), rc, 0x00D08040, true, -1, false, true, false, false, true, iCtlBtnStyle_Vista4, -1);
    EXPECT_EQ(last.Snapshot(), first.Snapshot());
}

}  // namespace
