// Tests of the direct-creation pattern: parent, font, text kept over re-creation, messages attached.
#include <gtest/gtest.h>

#include "frame/MSubclass.h"
#include "frame/NativeChildWindow.h"
#include "frame/PlumbingTestSupport.h"

using namespace plumbing_test;

namespace {

class KeyClient final : public ISubclass {
public:
    void WindowProc(bool bBefore, bool&, LRESULT&, HWND Hwnd, UINT uMsg, WPARAM wParam, LPARAM) override {
        if (bBefore && uMsg == WM_KEYDOWN) seen.push_back({Hwnd, wParam});
    }
    std::vector<std::pair<HWND, WPARAM>> seen;
};

}  // namespace

TEST(NativeChildWindow, CreateRecreateAndDestroy) {
    RecordingWindow parent(nullptr);
    KeyClient client;
    const HFONT font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    const auto keyOf = [](HWND window) { return reinterpret_cast<plumbing::WindowKey>(window); };
    {
        NativeChildWindow child(&client);
        const HWND first = child.Create(parent.Handle(), u"EDIT", ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, {2, 3, 102, 23}, font,
                                        {{WM_KEYDOWN, emr3AttachBefore}}, 7);
        ASSERT_NE(first, nullptr);
        EXPECT_EQ(::GetParent(first), parent.Handle());
        EXPECT_EQ(::GetDlgCtrlID(first), 7);
        const LONG_PTR style = ::GetWindowLongPtrW(first, GWL_STYLE);
        EXPECT_EQ(style & (WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL), WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL);
        EXPECT_EQ(reinterpret_cast<HFONT>(::SendMessageW(first, WM_GETFONT, 0, 0)), font);
        RECT rect{};
        ::GetWindowRect(first, &rect);
        EXPECT_EQ(rect.right - rect.left, 100);
        EXPECT_EQ(rect.bottom - rect.top, 20);

        ::SetWindowTextW(first, L"Ünïcødé Ελληνικά");
        ::SendMessageW(first, EM_SETSEL, 2, 5);
        ::SendMessageW(first, WM_KEYDOWN, VK_F2, 0);
        ASSERT_EQ(client.seen.size(), 1u);

        // A style that a live edit cannot take: the window is made again, text and selection kept,
        // the messages moved over.
        const HWND second = child.Recreate(ES_AUTOHSCROLL | ES_RIGHT, 0);
        ASSERT_NE(second, nullptr);
        EXPECT_FALSE(::IsWindow(first));
        EXPECT_EQ(::GetWindowLongPtrW(second, GWL_STYLE) & ES_RIGHT, ES_RIGHT);
        EXPECT_EQ(child.Text(), u"Ünïcødé Ελληνικά");
        DWORD start = 0, end = 0;
        ::SendMessageW(second, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(start, 2u);
        EXPECT_EQ(end, 5u);
        EXPECT_EQ(reinterpret_cast<HFONT>(::SendMessageW(second, WM_GETFONT, 0, 0)), font);
        ::SendMessageW(second, WM_KEYDOWN, VK_F3, 0);
        ASSERT_EQ(client.seen.size(), 2u);
        EXPECT_EQ(client.seen[1].first, second);
        EXPECT_EQ(client.seen[1].second, static_cast<WPARAM>(VK_F3));
        EXPECT_EQ(MSubclass::Table().ItemCount(keyOf(first)), 0u);
        EXPECT_EQ(MSubclass::Table().MessageClientCount(keyOf(second), WM_KEYDOWN), 1);

        // A class the system does not know: no window, nothing attached, nothing raised.
        NativeChildWindow broken(&client);
        EXPECT_EQ(broken.Create(parent.Handle(), u"NoSuchPlumbingClass", 0, 0, {0, 0, 10, 10}, nullptr,
                                {{WM_KEYDOWN, emr3AttachBefore}}),
                  nullptr);
        EXPECT_EQ(broken.Handle(), nullptr);
    }
    // The destructor detached and destroyed.
    EXPECT_EQ(MSubclass::Table().WindowCount(), 0u);
    HWND leftover = ::FindWindowExW(parent.Handle(), nullptr, L"Edit", nullptr);
    EXPECT_EQ(leftover, nullptr);
}
