// Tests of the shared subclassing engine on real windows, with the calls recorded in order.
#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

#include "frame/MSubclass.h"
#include "frame/PreviousProcCall.h"
#include "frame/SubclassAttachments.h"
#include "frame/PlumbingTestSupport.h"
#include "frame/portable/PlumbingErrors.h"

using namespace plumbing_test;

namespace {

class RecordingClient final : public ISubclass {
public:
    RecordingClient(CallLog& log, std::string name, bool stop = false) : m_log(log), m_name(std::move(name)), m_stop(stop) {}
    void WindowProc(bool bBefore, bool& bStopMsg, LRESULT& lReturn, HWND, UINT uMsg, WPARAM, LPARAM) override {
        m_log.Add(m_name + (bBefore ? "+" : "-") + (uMsg == kProbe ? "" : ":" + messageName(uMsg)));
        if (m_stop) {
            bStopMsg = true;
            lReturn = 7;
        }
        if (throws) throw std::runtime_error("client failure");
    }
    bool throws = false;

private:
    CallLog& m_log;
    std::string m_name;
    bool m_stop;
};

int32_t attachError(ISubclass* client, HWND window, UINT message, EMsgResponse3 response) {
    return ErrorNumberOf([&] { MSubclass::AttachClient(client, window, message, response); });
}

}  // namespace

TEST(MSubclass, OrderOfClientsAndPreviousProcedure) {
    struct Case {
        const char* what;
        EMsgResponse3 first;
        EMsgResponse3 second;
        bool secondStops;
        const char* expected;
        LRESULT result;
    };
    const Case cases[] = {
        {"two before-clients", emr3AttachBefore, emr3AttachBefore, false, "B+ A+ prev:probe", 42},
        {"after then before", emr3AttachAfter, emr3AttachBefore, false, "B+ prev:probe A-", 42},
        {"before then after", emr3AttachBefore, emr3AttachAfter, false, "B+ A+ prev:probe", 42},
        {"later client stops", emr3AttachBefore, emr3AttachBefore, true, "B+ A-", 7},
        {"instead-of first", emr3AttachInsteadOf, emr3AttachBefore, false, "B+ A+", 0},
    };
    for (const Case& c : cases) {
        CallLog log;
        RecordingWindow window(&log);
        RecordingClient a(log, "A");
        RecordingClient b(log, "B", c.secondStops);
        SubclassAttachments attachA(&a), attachB(&b);
        attachA.Attach(window.Handle(), kProbe, c.first);
        attachB.Attach(window.Handle(), kProbe, c.second);

        const LRESULT result = ::SendMessageW(window.Handle(), kProbe, 0, 0);
        EXPECT_EQ(log.Text(), c.expected) << c.what;
        EXPECT_EQ(result, c.result) << c.what;
    }
}

TEST(MSubclass, AttachDetachKeepsTheTableExact) {
    CallLog log;
    RecordingWindow window(&log);
    const HWND hwnd = window.Handle();
    const auto key = reinterpret_cast<plumbing::WindowKey>(hwnd);
    RecordingClient a(log, "A"), b(log, "B"), c(log, "C");
    MSubclass::AttachClient(&a, hwnd, kProbe, emr3AttachAfter);
    MSubclass::AttachClient(&b, hwnd, kProbe, emr3AttachBefore);
    MSubclass::AttachClient(&c, hwnd, kProbe, emr3AttachBefore);
    EXPECT_NE(::GetWindowLongPtrW(hwnd, GWLP_WNDPROC), reinterpret_cast<LONG_PTR>(RecordingWindow::OriginalProc()));

    // The same object on the same message again: 13082, nothing changes.
    const size_t items = MSubclass::Table().ItemCount(key);
    EXPECT_EQ(attachError(&b, hwnd, kProbe, emr3AttachBefore), PlumbingNumber(13082));
    EXPECT_EQ(MSubclass::Table().ItemCount(key), items);
    EXPECT_EQ(MSubclass::Table().MessageClientCount(key, kProbe), 3);
    EXPECT_EQ(MSubclass::Table().WindowClientCount(key), 3);

    MSubclass::DetachClient(&b, hwnd, kProbe);
    // Detaching a client that is not there, or from a message it never had, changes nothing.
    MSubclass::DetachClient(&b, hwnd, kProbe);
    MSubclass::DetachClient(&a, hwnd, WM_PAINT);
    EXPECT_EQ(MSubclass::Table().ItemCount(key), items - 2);  // one client and its response fewer
    EXPECT_EQ(::SendMessageW(hwnd, kProbe, 0, 0), 42);
    EXPECT_EQ(log.Text(), "C+ prev:probe A-");
    EXPECT_EQ(MSubclass::Table().MessageClientResponse(key, kProbe, 1), emr3AttachAfter);
    EXPECT_EQ(MSubclass::Table().MessageClientResponse(key, kProbe, 2), emr3AttachBefore);

    // A client's own call of the previous procedure, as the controls use it to work on the result.
    EXPECT_EQ(MSubclass::CallPreviousWindowProc(hwnd, kProbe, 0, 0), 42);
    MSubclass::DetachClient(&a, hwnd, kProbe);
    MSubclass::DetachClient(&c, hwnd, kProbe);
    EXPECT_EQ(::GetWindowLongPtrW(hwnd, GWLP_WNDPROC), reinterpret_cast<LONG_PTR>(RecordingWindow::OriginalProc()));
    EXPECT_EQ(MSubclass::Table().ItemCount(key), 0u);
    EXPECT_EQ(MSubclass::CallPreviousWindowProc(hwnd, kProbe, 0, 0), 0);
}

TEST(MSubclass, RefusedWindows) {
    CallLog log;
    RecordingClient a(log, "A");
    RecordingWindow window(&log);
    const HWND gone = window.Handle();
    ::DestroyWindow(gone);
    EXPECT_EQ(attachError(&a, gone, kProbe, emr3AttachBefore), PlumbingNumber(13083));
    EXPECT_EQ(attachError(&a, nullptr, kProbe, emr3AttachBefore), PlumbingNumber(13083));
    // The desktop window belongs to another process, on Windows and under Wine alike.
    EXPECT_EQ(attachError(&a, ::GetDesktopWindow(), kProbe, emr3AttachBefore), PlumbingNumber(13084));
    EXPECT_EQ(MSubclass::Table().WindowCount(), 0u);
}

// Without a client of WM_DESTROY the engine lets go before the window's own procedure sees it;
// with one, that client is called first. Either way no dead handle lingers.
TEST(MSubclass, DestroyReleasesTheWindow) {
    for (const bool destroyClient : {false, true}) {
        CallLog log;
        RecordingWindow window(&log);
        const HWND hwnd = window.Handle();
        RecordingClient a(log, "A"), b(log, "B");
        b.throws = true;
        SubclassAttachments attachA(&a), attachB(&b);
        attachA.Attach(hwnd, destroyClient ? WM_DESTROY : WM_PAINT, emr3AttachBefore);
        attachB.Attach(hwnd, kProbe, emr3AttachBefore);
        attachA.Attach(hwnd, kProbe, emr3AttachAfter);

        // B throws: A still runs, the previous procedure still answers.
        EXPECT_EQ(::SendMessageW(hwnd, kProbe, 0, 0), 42);
        EXPECT_EQ(log.Text(), "A+ B+ prev:probe");
        log.Clear();
        ::DestroyWindow(hwnd);
        EXPECT_EQ(log.Text(), destroyClient ? "A+:destroy prev:destroy" : "prev:destroy");
        if (!destroyClient) {
            EXPECT_EQ(window.procAtDestroy, reinterpret_cast<LONG_PTR>(RecordingWindow::OriginalProc()));
        }
        EXPECT_EQ(MSubclass::Table().WindowCount(), 0u);
        // The attachments' destructors detach from the dead window: nothing happens, nothing raised.
    }
}

namespace {

// Our own ANSI procedure: the system's DefWindowProcA itself would come back as plain code.
LRESULT CALLBACK ansiProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::DefWindowProcA(window, message, wParam, lParam);
}

}  // namespace

// An ANSI window's procedure comes back from GetWindowLongPtrW as a handle that only
// CallWindowProcW can call; the engine must still reach it, with the text translated.
TEST(MSubclass, AnsiWindowsKeepTheirTranslation) {
    WNDCLASSEXA wc{};
    wc.cbSize = sizeof wc;
    wc.lpfnWndProc = &ansiProc;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.lpszClassName = "PlumbingAnsiWindow";
    ::RegisterClassExA(&wc);
    const HWND window = ::CreateWindowExA(0, wc.lpszClassName, "", WS_OVERLAPPED, 0, 0, 50, 50, nullptr, nullptr,
                                          wc.hInstance, nullptr);
    ASSERT_NE(window, nullptr);
    const auto previous = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(window, GWLP_WNDPROC));

    CallLog log;
    RecordingClient client(log, "A");
    {
        SubclassAttachments attachments(&client);
        attachments.Attach(window, WM_SETTEXT, emr3AttachBefore);
        EXPECT_TRUE(::SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"plain text")));
        EXPECT_EQ(log.Text(), "A+:" + std::to_string(WM_SETTEXT));
        char text[32] = {};
        ::GetWindowTextA(window, text, 32);
        EXPECT_STREQ(text, "plain text");
    }
    EXPECT_EQ(::GetWindowLongPtrW(window, GWLP_WNDPROC), reinterpret_cast<LONG_PTR>(previous));
    ::DestroyWindow(window);
}

// The handle an ANSI window's procedure comes back as can lie in executable memory (here memory
// placed there on purpose, holding code that answers 0x5A5A): the engine must still not call it
// directly, only through CallWindowProcW, which knows the handle.
TEST(MSubclass, PreviousProcedureHandlesGoThroughCallWindowProcEvenInExecutableMemory) {
    WNDCLASSEXA wc{};
    wc.cbSize = sizeof wc;
    wc.lpfnWndProc = &ansiProc;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.lpszClassName = "PlumbingAnsiWindow2";
    ::RegisterClassExA(&wc);
    const HWND window = ::CreateWindowExA(0, wc.lpszClassName, "", WS_OVERLAPPED, 0, 0, 50, 50, nullptr, nullptr,
                                          wc.hInstance, nullptr);
    ASSERT_NE(window, nullptr);
    const auto previous = static_cast<uintptr_t>(::GetWindowLongPtrW(window, GWLP_WNDPROC));
    ASSERT_NE(previous, reinterpret_cast<uintptr_t>(&ansiProc)) << "the wide query gave the code itself";
    constexpr uintptr_t kGranularity = 0x10000;
    const uintptr_t base = previous & ~(kGranularity - 1);
    void* const block = ::VirtualAlloc(reinterpret_cast<void*>(base), kGranularity, MEM_RESERVE | MEM_COMMIT,
                                       PAGE_EXECUTE_READWRITE);
    if (block == nullptr) {
        ::DestroyWindow(window);
        GTEST_SKIP() << "the memory around the handle is taken";
    }
    // mov eax, 0x5A5A; ret
    const unsigned char answer[] = {0xB8, 0x5A, 0x5A, 0x00, 0x00, 0xC3};
    std::memcpy(reinterpret_cast<void*>(previous), answer, sizeof answer);
    ::FlushInstructionCache(::GetCurrentProcess(), block, kGranularity);

    CallLog log;
    RecordingClient client(log, "A");
    {
        SubclassAttachments attachments(&client);
        attachments.Attach(window, WM_SETTEXT, emr3AttachBefore);
        const LRESULT result = ::SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"through the handle"));
        EXPECT_NE(result, 0x5A5A);
        char text[32] = {};
        ::GetWindowTextA(window, text, 32);
        EXPECT_STREQ(text, "through the handle");
    }
    ::DestroyWindow(window);
    ::VirtualFree(block, 0, MEM_RELEASE);
}
