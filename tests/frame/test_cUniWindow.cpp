// Tests of cUniWindow: shared registration by name, the class-number table, creation and destruction.
#include <gtest/gtest.h>

#include "frame/PlumbingTestSupport.h"
#include "frame/cUniWindow.h"
#include "frame/modcUniWindow.h"

using namespace plumbing_test;

namespace {

std::u16string classNameOf(HWND window) {
    wchar_t name[64] = {};
    ::GetClassNameW(window, name, 64);
    return FromWide(name);
}

int countTopLevelWindowsOfClass(const wchar_t* name) {
    int count = 0;
    for (HWND w = ::FindWindowExW(nullptr, nullptr, name, nullptr); w; w = ::FindWindowExW(nullptr, w, name, nullptr)) {
        ++count;
    }
    return count;
}

// What the window received as its creation parameter, read by a hook during creation.
thread_local LPARAM g_seenThroughCreateParams = 0;
LRESULT CALLBACK cbtHook(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_CREATEWND) {
        const auto* create = reinterpret_cast<CBT_CREATEWNDW*>(lParam)->lpcs;
        if (create->lpCreateParams) g_seenThroughCreateParams = *static_cast<const LPARAM*>(create->lpCreateParams);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

TEST(cUniWindow, InstancesShareOneRegistration) {
    cUniWindow first, second;
    ASSERT_TRUE(first.WindowClassRegister(u"PlumbingSharedClass", CS_DBLCLKS));
    // Another style, but the name is known: nothing is registered again.
    EXPECT_TRUE(second.WindowClassRegister(u"PlumbingSharedClass", CS_HREDRAW | CS_VREDRAW));
    EXPECT_EQ(second.Class(), u"PlumbingSharedClass");
    const HWND a = first.WindowCreate(0, WS_OVERLAPPED, 0, 0, 0, 50, 50, u"Ελληνικά");
    const HWND b = second.WindowCreate(0, WS_OVERLAPPED, 0, 0, 0, 50, 50);
    ASSERT_NE(a, nullptr);
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(classNameOf(b), u"PlumbingSharedClass");
    EXPECT_EQ(::GetClassLongPtrW(b, GCL_STYLE), static_cast<ULONG_PTR>(CS_DBLCLKS));
    EXPECT_EQ(::GetClassLongPtrW(a, GCLP_HBRBACKGROUND), reinterpret_cast<ULONG_PTR>(::GetSysColorBrush(COLOR_BTNFACE)));
    wchar_t caption[16] = {};
    ::GetWindowTextW(a, caption, 16);
    EXPECT_EQ(FromWide(caption), u"Ελληνικά");

    // Unregistering (with no window left) keeps the name listed: registering again answers
    // True, registers nothing, and creation then fails.
    EXPECT_FALSE(first.WindowDestroy());
    EXPECT_FALSE(second.WindowDestroy());
    EXPECT_FALSE(::IsWindow(a));
    first.WindowClassUnregister();
    EXPECT_EQ(first.Class(), u"");
    EXPECT_TRUE(modcUniWindow::IsRegistered(u"PlumbingSharedClass"));
    EXPECT_TRUE(first.WindowClassRegister(u"PlumbingSharedClass"));
    EXPECT_EQ(first.WindowCreate(0, WS_OVERLAPPED, 0, 0, 0, 50, 50), nullptr);
    // A name the system refuses is reported.
    cUniWindow empty;
    EXPECT_FALSE(empty.WindowClassRegister(u""));
}

TEST(cUniWindow, ClassNumbers) {
    struct Case {
        int32_t number;
        const char16_t* expectedClass;  // nullptr: creation fails
    };
    const Case cases[] = {
        {1, u"Button"}, {2, u"ComboBox"}, {3, u"Edit"}, {4, u"ListBox"}, {8, u"ScrollBar"}, {9, u"Static"},
        {7, nullptr},   {10, nullptr},    {-1, nullptr},
    };
    RecordingWindow parent(nullptr);
    for (const Case& c : cases) {
        cUniWindow window;
        const HWND created = window.WindowCreate(0, WS_CHILD, c.number, 0, 0, 40, 20, u"", parent.Handle());
        if (c.expectedClass == nullptr) {
            EXPECT_EQ(created, nullptr) << c.number;
            EXPECT_EQ(window.hWnd(), nullptr) << c.number;
            continue;
        }
        ASSERT_NE(created, nullptr) << c.number;
        // The system's class names differ in case from the letters passed.
        EXPECT_EQ(::lstrcmpiW(AsWide(classNameOf(created)), AsWide(std::u16string(c.expectedClass))), 0) << c.number;
    }
}

TEST(cUniWindow, CreationTwiceLeavesOneWindowAndPassesTheAddressOfLParam) {
    cUniWindow window;
    ASSERT_TRUE(window.WindowClassRegister(u"PlumbingSingleWindow"));
    const HHOOK hook = ::SetWindowsHookExW(WH_CBT, &cbtHook, nullptr, ::GetCurrentThreadId());
    const HWND first = window.WindowCreate(0, WS_OVERLAPPED, 0, 0, 0, 50, 50, u"", nullptr, nullptr, 0x5A5A);
    EXPECT_EQ(g_seenThroughCreateParams, 0x5A5A);
    const HWND second = window.WindowCreate(0, WS_OVERLAPPED, 0, 0, 0, 50, 50, u"", nullptr, nullptr, 0x1234);
    EXPECT_EQ(g_seenThroughCreateParams, 0x1234);
    ::UnhookWindowsHookEx(hook);
    ASSERT_NE(second, nullptr);
    EXPECT_FALSE(::IsWindow(first));
    EXPECT_EQ(window.hWnd(), second);
    EXPECT_EQ(countTopLevelWindowsOfClass(L"PlumbingSingleWindow"), 1);
    {
        cUniWindow scoped;
        scoped.WindowClassRegister(u"PlumbingSingleWindow");
        scoped.WindowCreate(0, WS_OVERLAPPED, 0, 0, 0, 50, 50);
        EXPECT_EQ(countTopLevelWindowsOfClass(L"PlumbingSingleWindow"), 2);
    }
    // The destructor destroyed its window.
    EXPECT_EQ(countTopLevelWindowsOfClass(L"PlumbingSingleWindow"), 1);
}
