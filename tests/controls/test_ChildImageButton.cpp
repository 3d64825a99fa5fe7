// An image button as the child window of another control: its clicks, its arrow and its teardown.
#include <gtest/gtest.h>

#include <memory>

#include "ImageButtonTestSupport.h"
#include "controls/ChildImageButton.h"
#include "support/LeakCounters.h"

namespace {

using imagebuttontest::BoundsOfColor;
using imagebuttontest::PixelAt;
using testsupport::PumpMessages;

TEST(ChildImageButton, ClicksReachTheOwnerAndTheArrowShowsThroughItsBackground) {
    testsupport::TestHostWindow owner;
    int clicks = 0;
    ChildImageButton child(owner.get(), 20, 30, 17, 21, [&] { ++clicks; });
    EXPECT_EQ(::GetParent(child.Hwnd()), owner.get());
    RECT placed{};
    ::GetWindowRect(child.Hwnd(), &placed);
    ::MapWindowPoints(nullptr, owner.get(), reinterpret_cast<POINT*>(&placed), 2);
    EXPECT_EQ(placed.left, 20);
    EXPECT_EQ(placed.bottom, 51);

    ::SendMessageW(child.Hwnd(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    ::SendMessageW(child.Hwnd(), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    child.Button().Value(true);
    EXPECT_EQ(clicks, 2);

    // A red down arrow, 9 x 9 at 96 DPI, centred: (17 - 9) / 2 = 4 and (21 - 9) / 2 = 6; its
    // triangle (rows 2 to 5 of the picture, 7 pixels wide at the top) is all that shows.
    child.Button().BackColor(0x00FFFFFF);
    child.Button().Style(0);
    child.ShowArrow(eArrowDirection::Down, 0x000000FF);
    PumpMessages();
    const RECT arrow = BoundsOfColor(child.Hwnd(), RGB(255, 0, 0));
    const RECT expected{4 + 1, 6 + 2, 4 + 8, 6 + 6};
    EXPECT_TRUE(::EqualRect(&arrow, &expected)) << arrow.left << "," << arrow.top << "-" << arrow.right << "," << arrow.bottom;
    EXPECT_EQ(BoundsOfColor(child.Hwnd(), RGB(255, 0, 255)).right, 0);  // the background is see-through
    EXPECT_EQ(PixelAt(child.Hwnd(), 4 + 1, 6 + 5), RGB(255, 255, 255));  // beside the apex

    child.Move(0, 0, 30, 30);
    child.Show(false);
    EXPECT_FALSE(::IsWindowVisible(child.Hwnd()));
}

TEST(ChildImageButton, AThousandChildrenLeaveNothingBehind) {
    testsupport::TestHostWindow owner;
    const auto cycle = [&](int i) {
        auto child = std::make_unique<ChildImageButton>(owner.get(), i % 50, 0, 16, 16);
        child->ShowArrow(static_cast<eArrowDirection>(i % 4), 0x00000000);
        PumpMessages();
    };
    cycle(0);
    const size_t gdiBefore = testsupport::LiveGdiObjects();
    const size_t windowsBefore = testsupport::ThreadWindowCount();
    for (int i = 0; i < 1000; ++i) cycle(i);
    EXPECT_EQ(testsupport::LiveGdiObjects(), gdiBefore);
    EXPECT_EQ(testsupport::ThreadWindowCount(), windowsBefore);
}

}  // namespace
