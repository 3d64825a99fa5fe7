// Tests of the key rule with a small control of our own holding a native EDIT, in a dialog-style loop.
#include <gtest/gtest.h>

#include <string>

#include "frame/IPAOHook.h"
#include "frame/IPAOHookFilter.h"
#include "frame/NativeChildWindow.h"
#include "frame/PlumbingTestSupport.h"
#include "frame/cUniWindow.h"

using namespace plumbing_test;

namespace {

// A control window with a native single-line EDIT inside; it counts the keys the edit receives
// through the subclassing engine and records its KeyDown and KeyUp events.
class KeyControl final : public IPAOHookControl, public IPAOHookKeyTarget, public ISubclass {
public:
    KeyControl(HWND parent, bool trap) : trapTab(trap), m_edit(this) {
        m_window.WindowClassRegister(u"PlumbingKeyControl");
        m_window.WindowCreate(WS_EX_CONTROLPARENT, WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 10, 10, 200, 40, u"", parent);
        m_edit.Create(m_window.hWnd(), u"EDIT", WS_TABSTOP | ES_AUTOHSCROLL, 0, {2, 2, 190, 30}, nullptr,
                      {{WM_KEYDOWN, emr3AttachBefore}});
        IPAOHook::InstallHook(m_hook, nullptr, this);
    }
    ~KeyControl() { IPAOHook::RemoveHook(m_hook); }
    KeyControl(const KeyControl&) = delete;
    KeyControl& operator=(const KeyControl&) = delete;

    bool pvTranslateAccelerator(const MSG& msg) override { return IPAOHookFilter::TranslateKeys(msg, *this); }
    HWND HookWindow() const override { return m_window.hWnd(); }
    bool TrapTab() const override { return trapTab; }
    HWND NativeWindow() const override { return m_edit.Handle(); }
    HWND ControlWindow() const override { return m_window.hWnd(); }
    void RaiseKeyDown(int16_t& KeyCode, int16_t Shift) override {
        events.Add("down" + std::to_string(KeyCode) + "," + std::to_string(Shift));
        if (zeroKeyCode) KeyCode = 0;
    }
    void RaiseKeyUp(int16_t& KeyCode, int16_t Shift) override {
        events.Add("up" + std::to_string(KeyCode) + "," + std::to_string(Shift));
    }
    void WindowProc(bool bBefore, bool&, LRESULT&, HWND, UINT uMsg, WPARAM wParam, LPARAM) override {
        if (bBefore && uMsg == WM_KEYDOWN) editKeys.Add("edit:" + std::to_string(wParam));
    }

    bool trapTab;
    bool zeroKeyCode = false;
    CallLog events;
    CallLog editKeys;
    IPAOHookStruct m_hook;

private:
    cUniWindow m_window;
    NativeChildWindow m_edit;
};

// A form: the control, then a button, both tab stops.
class Form {
public:
    explicit Form(bool trapTab) {
        m_form.WindowClassRegister(u"PlumbingKeyForm");
        m_form.WindowCreate(WS_EX_CONTROLPARENT, WS_OVERLAPPEDWINDOW, 0, 0, 0, 300, 200);
        control = std::make_unique<KeyControl>(m_form.hWnd(), trapTab);
        m_button.WindowCreate(0, WS_CHILD | WS_VISIBLE | WS_TABSTOP, 1, 10, 80, 80, 24, u"Next", m_form.hWnd());
        ::ShowWindow(m_form.hWnd(), SW_SHOW);
        ::SetFocus(control->NativeWindow());
    }
    HWND Handle() const { return m_form.hWnd(); }
    HWND Button() const { return m_button.hWnd(); }

    // One turn of a C++ host's loop: the hook's call first, then the dialog navigation.
    bool Deliver(UINT message, WPARAM key) {
        MSG msg{::GetFocus(), message, key, 1, static_cast<DWORD>(::GetMessageTime()), {}};
        if (IPAOHook::PreTranslateMessage(msg)) return true;
        if (!::IsDialogMessageW(m_form.hWnd(), &msg)) {
            ::TranslateMessage(&msg);
            ::DispatchMessageW(&msg);
        }
        return false;
    }

    std::unique_ptr<KeyControl> control;

private:
    cUniWindow m_form;
    cUniWindow m_button;
};

std::string focusName(const Form& form) {
    const HWND focus = ::GetFocus();
    if (focus == form.control->NativeWindow()) return "edit";
    if (focus == form.control->ControlWindow()) return "control";
    if (focus == form.Button()) return "button";
    return focus ? "other" : "none";
}

}  // namespace

TEST(IPAOHookFilter, TabFollowsTrapTabAndTheKeyDownHandler) {
    struct Case {
        const char* what;
        bool trapTab;
        bool zeroKeyCode;
        bool handled;
        const char* focus;
        const char* events;
    };
    const Case cases[] = {
        {"not trapped: the host moves on", false, false, false, "button", ""},
        {"trapped, code kept: focus stays", true, false, true, "edit", "down9,0"},
        {"trapped, code zeroed: the control's window", true, true, true, "control", "down9,0"},
    };
    // One form for all cases: showing a top-level window costs seconds under Wine without a
    // window manager.
    Form form(false);
    for (const Case& c : cases) {
        ::SetFocus(form.control->NativeWindow());
        form.control->trapTab = c.trapTab;
        form.control->zeroKeyCode = c.zeroKeyCode;
        form.control->events.Clear();
        form.control->editKeys.Clear();
        ASSERT_EQ(focusName(form), "edit") << c.what;
        EXPECT_EQ(form.Deliver(WM_KEYDOWN, VK_TAB), c.handled) << c.what;
        EXPECT_EQ(focusName(form), c.focus) << c.what;
        EXPECT_EQ(form.control->events.Text(), c.events) << c.what;
        // The edit never receives the Tab by this path.
        EXPECT_EQ(form.control->editKeys.Text(), "") << c.what;
    }
    // Key-up of a trapped Tab raises KeyUp and moves nothing.
    ::SetFocus(form.control->NativeWindow());
    form.control->trapTab = true;
    form.control->zeroKeyCode = true;
    form.control->events.Clear();
    EXPECT_TRUE(form.Deliver(WM_KEYUP, VK_TAB));
    EXPECT_EQ(form.control->events.Text(), "up9,0");
    EXPECT_EQ(focusName(form), "edit");
}

TEST(IPAOHookFilter, NavigationKeysReachTheNativeWindowOnce) {
    Form form(false);
    const HWND edit = form.control->NativeWindow();
    ::SetWindowTextW(edit, L"abcdef");
    struct Case {
        WPARAM key;
        DWORD caretBefore;
        DWORD caretAfter;
    };
    // Caret moves are counted: a key delivered twice would move it twice.
    const Case cases[] = {{VK_LEFT, 3, 2}, {VK_RIGHT, 3, 4}, {VK_HOME, 3, 0}, {VK_END, 1, 6}};
    for (const Case& c : cases) {
        ::SendMessageW(edit, EM_SETSEL, c.caretBefore, c.caretBefore);
        form.control->editKeys.Clear();
        EXPECT_TRUE(form.Deliver(WM_KEYDOWN, c.key)) << c.key;
        EXPECT_EQ(form.control->editKeys.Text(), "edit:" + std::to_string(c.key));
        DWORD start = 0, end = 0;
        ::SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(end, c.caretAfter) << c.key;
        EXPECT_EQ(focusName(form), "edit");
    }
    // Other keys take the host's normal path, unseen by the filter.
    form.control->editKeys.Clear();
    EXPECT_FALSE(form.Deliver(WM_KEYDOWN, 'X'));
    EXPECT_EQ(form.control->editKeys.Text(), "edit:88");
    EXPECT_EQ(form.control->events.Text(), "");
}

TEST(IPAOHookFilter, TreeVariant) {
    struct TreeTarget final : IPAOHookTreeTarget {
        HWND window = nullptr;
        CallLog log;
        HWND NativeWindow() const override { return window; }
        void HandKeyToHost(const MSG& msg, int32_t shiftBit) override {
            log.Add("host:" + std::to_string(msg.wParam) + "," + std::to_string(shiftBit));
        }
    } target;
    CallLog windowLog;
    RecordingWindow tree(&windowLog);
    target.window = tree.Handle();
    struct Case {
        UINT message;
        WPARAM key;
        bool handled;
        const char* windowSees;
    };
    const Case cases[] = {
        {WM_KEYDOWN, VK_TAB, true, "prev:keydown"},  // no Ctrl held: to the tree
        {WM_KEYDOWN, VK_DOWN, true, "prev:keydown"},
        {WM_IME_KEYDOWN, VK_UP, true, ""},  // sent on as is; the recording window logs only WM_KEYDOWN
        {WM_KEYDOWN, VK_RETURN, false, ""},
        {WM_CHAR, VK_TAB, false, ""},
    };
    for (const Case& c : cases) {
        windowLog.Clear();
        MSG msg{nullptr, c.message, c.key, 0, 0, {}};
        EXPECT_EQ(IPAOHookFilter::TranslateTreeKeys(msg, target), c.handled) << c.message << "/" << c.key;
        EXPECT_EQ(windowLog.Text(), c.windowSees) << c.message << "/" << c.key;
    }
    EXPECT_EQ(target.log.Text(), "");
}
