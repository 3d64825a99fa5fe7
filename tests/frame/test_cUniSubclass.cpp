// Tests of cUniSubclass: hooking once, the message tables, by-reference arguments, and the x86 thunk.
#include <gtest/gtest.h>

#include <string>

#include "frame/PlumbingTestSupport.h"
#include "frame/ThunkMemory.h"
#include "frame/cUniSubclass.h"

using namespace plumbing_test;

namespace {

constexpr UINT kOther = WM_APP + 18;
constexpr UINT kThird = WM_APP + 19;
constexpr UINT kFourth = WM_APP + 20;

CallLog* g_windowLog = nullptr;

// The window's own procedure: logs the message values it receives for the private messages.
LRESULT CALLBACK valueProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= kProbe && message <= kFourth && g_windowLog) {
        g_windowLog->Add("prev:" + std::to_string(message - WM_APP) + "," + std::to_string(wParam) + "," +
                         std::to_string(lParam));
        return 42;
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

// Owns a window of the value-logging class.
class ValueWindow {
public:
    ValueWindow() : m_window(CreateClassWindow(L"PlumbingValueWindow", &valueProc)) {}
    ~ValueWindow() { ::DestroyWindow(m_window); }
    ValueWindow(const ValueWindow&) = delete;
    ValueWindow& operator=(const ValueWindow&) = delete;
    HWND Handle() const { return m_window; }

private:
    HWND m_window;
};

// Records each pass as "B" (before) or "A" (after) with the message and wParam it saw.
class RecordingOwner final : public DispatchStub<ISubclassOwner, IID_ISubclassOwner> {
public:
    explicit RecordingOwner(CallLog& log) : m_log(log) {}
    HRESULT STDMETHODCALLTYPE WindowProc(VARIANT_BOOL bBefore, VARIANT_BOOL* bStopMsg, LRESULT* lReturn, HWND*,
                                         UINT* uMsg, WPARAM* wParam, LPARAM*) override {
        if (*uMsg >= kProbe && *uMsg <= kFourth) {
            m_log.Add(std::string(bBefore ? "B" : "A") + std::to_string(*uMsg - WM_APP) + "," + std::to_string(*wParam) +
                      (bBefore ? "" : ",r" + std::to_string(*lReturn)));
        }
        if (bBefore && rewrite && *uMsg == kProbe) {
            *uMsg = kOther;
            *wParam = 99;
        }
        if (bBefore && stop && *uMsg == kProbe) {
            *bStopMsg = VARIANT_TRUE;
            *lReturn = 5;
        }
        return S_OK;
    }
    bool rewrite = false;
    bool stop = false;

private:
    CallLog& m_log;
};

std::vector<int32_t> entries(const cUniSubclass& hook, bool before) {
    const auto span = hook.TableEntries(before);
    return {span.begin(), span.begin() + std::max(0, hook.TableCount(before))};
}

class CUniSubclassTest : public ::testing::Test {
protected:
    void SetUp() override { g_windowLog = &log; }
    void TearDown() override { g_windowLog = nullptr; }
    CallLog log;
};

}  // namespace

TEST_F(CUniSubclassTest, HooksOneWindowOnceAndRestoresIt) {
    ValueWindow first, second;
    RecordingOwner owner(log);
    const LONG_PTR original = ::GetWindowLongPtrW(first.Handle(), GWLP_WNDPROC);
    {
        cUniSubclass hook;
        EXPECT_FALSE(hook.InIDE());
        EXPECT_EQ(hook.CallOrigWndProc(kProbe, 1, 2), 0);
        EXPECT_FALSE(hook.UnSubclass());
        EXPECT_FALSE(hook.Subclass(nullptr, &owner));
        ASSERT_TRUE(hook.Subclass(first.Handle(), &owner));
        EXPECT_FALSE(hook.Subclass(second.Handle(), &owner));
        EXPECT_EQ(::GetWindowLongPtrW(second.Handle(), GWLP_WNDPROC), original);
        hook.AddMsg(kProbe, 3);

        EXPECT_EQ(::SendMessageW(first.Handle(), kProbe, 7, 8), 42);
        EXPECT_EQ(::SendMessageW(second.Handle(), kProbe, 7, 8), 42);
        EXPECT_EQ(log.Text(), "B17,7 prev:17,7,8 A17,7,r42 prev:17,7,8");
        log.Clear();
        // Straight to the window's own procedure, past the owner.
        EXPECT_EQ(hook.CallOrigWndProc(kProbe, 3, 4), 42);
        EXPECT_EQ(log.Text(), "prev:17,3,4");
    }
    // The destructor unhooked the window.
    EXPECT_EQ(::GetWindowLongPtrW(first.Handle(), GWLP_WNDPROC), original);
    log.Clear();
    ::SendMessageW(first.Handle(), kProbe, 1, 1);
    EXPECT_EQ(log.Text(), "prev:17,1,1");
}

TEST_F(CUniSubclassTest, OwnerSeesWhatTheTablesSay) {
    ValueWindow window;
    RecordingOwner owner(log);
    cUniSubclass hook;
    ASSERT_TRUE(hook.Subclass(window.Handle(), &owner));
    using Entries = std::vector<int32_t>;
    struct Step {
        const char* what;
        void (*change)(cUniSubclass&);
        Entries before;  // the before-table's entries after the change
        const char* expected;
    };
    const Step steps[] = {
        {"no messages", [](cUniSubclass&) {}, {}, "prev:17,1,0 prev:18,1,0"},
        {"all before", [](cUniSubclass& h) { h.AddMsg(-1, 2); }, {}, "B17,1 prev:17,1,0 B18,1 prev:18,1,0"},
        // The walk for a free place sees no entries under "all", so the message lands in entry 1.
        {"then one before", [](cUniSubclass& h) { h.AddMsg(kOther, 2); }, {kOther}, "prev:17,1,0 B18,1 prev:18,1,0"},
        {"two more, one twice", [](cUniSubclass& h) {
             h.AddMsg(kProbe, 2);
             h.AddMsg(kThird, 2);
             h.AddMsg(kOther, 2);
         },
         {kOther, kProbe, kThird}, "B17,1 prev:17,1,0 B18,1 prev:18,1,0"},
        {"deleted, and one not there", [](cUniSubclass& h) {
             h.DelMsg(kProbe, 2);
             h.DelMsg(kFourth, 2);
         },
         {kOther, -1, kThird}, "prev:17,1,0 B18,1 prev:18,1,0"},
        {"free place reused, after too", [](cUniSubclass& h) { h.AddMsg(kProbe, 3); }, {kOther, kProbe, kThird},
         "B17,1 prev:17,1,0 A17,1,r42 B18,1 prev:18,1,0"},
        {"all deleted from both", [](cUniSubclass& h) { h.DelMsg(-1, 3); }, {}, "prev:17,1,0 prev:18,1,0"},
    };
    for (const Step& step : steps) {
        step.change(hook);
        EXPECT_EQ(entries(hook, true), step.before) << step.what;
        log.Clear();
        ::SendMessageW(window.Handle(), kProbe, 1, 0);
        ::SendMessageW(window.Handle(), kOther, 1, 0);
        EXPECT_EQ(log.Text(), step.expected) << step.what;
    }
    EXPECT_EQ(hook.TableCount(false), 0);
}

TEST_F(CUniSubclassTest, ArgumentsByReferenceAndStop) {
    ValueWindow window;
    RecordingOwner owner(log);
    cUniSubclass hook;
    ASSERT_TRUE(hook.Subclass(window.Handle(), &owner));
    hook.AddMsg(kProbe, 2);
    hook.AddMsg(kOther, 1);

    // The owner turns the probe into another message with another wParam in its before-pass:
    // the window's procedure and the after-pass both see the new values.
    owner.rewrite = true;
    EXPECT_EQ(::SendMessageW(window.Handle(), kProbe, 1, 6), 42);
    EXPECT_EQ(log.Text(), "B17,1 prev:18,99,6 A18,99,r42");

    // A stop in the before-pass: neither the procedure nor the after-pass runs.
    owner.rewrite = false;
    owner.stop = true;
    hook.AddMsg(kProbe, 1);
    log.Clear();
    EXPECT_EQ(::SendMessageW(window.Handle(), kProbe, 1, 6), 5);
    EXPECT_EQ(log.Text(), "B17,1");

    EXPECT_TRUE(hook.UnSubclass());
    EXPECT_FALSE(hook.UnSubclass());
    log.Clear();
    ::SendMessageW(window.Handle(), kProbe, 1, 6);
    EXPECT_EQ(log.Text(), "prev:17,1,6");
}

#if !defined(_WIN64)
// The thunk's bytes and patched slots, read without running the code.
TEST_F(CUniSubclassTest, ThunkBytesAndSlots) {
    const std::string_view reference =
        "5589E583C4F85731C08945FC8945F8EB0EE8xxxxx01x83F802742185C07424E830000000837DF800750AE838000000E84D000000"
        "5F8B45FCC9C21000E826000000EBF168xxxxx02x6AFCFF7508E8xxxxx03xEBE031D24ABFxxxxx04xB9xxxxx05xE82D000000C3FF"
        "7514FF7510FF750CFF750868xxxxx06xE8xxxxx07x8945FCC331D2BFxxxxx08xB9xxxxx09xE801000000C3E32F09C978078B450C"
        "F2AF75248D4514508D4510508D450C508D4508508D45FC508D45F85052B8xxxxx0Ax508B00FF501CC3";
    cUniSubclass hook;
    hook.AddMsg(kProbe, 2);
    hook.AddMsg(-1, 1);
    const auto bytes = hook.ThunkBytes();
    ASSERT_EQ(bytes.size(), 197u);
    EXPECT_EQ(ThunkMismatches(bytes, reference, {18, 68, 78, 88, 93, 116, 121, 132, 137, 186}), std::vector<size_t>{});
    const uint8_t* block = bytes.data();
    auto relativeTarget = [&](size_t offset) {
        return reinterpret_cast<uintptr_t>(block) + offset + 4 + ThunkMemory::ReadSlot(block, offset);
    };
    const HMODULE user32 = ::GetModuleHandleW(L"user32");
    EXPECT_EQ(relativeTarget(78), reinterpret_cast<uintptr_t>(::GetProcAddress(user32, "SetWindowLongW")));
    EXPECT_EQ(relativeTarget(121), reinterpret_cast<uintptr_t>(::GetProcAddress(user32, "CallWindowProcW")));
    EXPECT_EQ(ThunkMemory::ReadSlot(block, 88), reinterpret_cast<uintptr_t>(hook.TableEntries(true).data()));
    EXPECT_EQ(ThunkMemory::ReadSlot(block, 93), 1u);
    EXPECT_EQ(ThunkMemory::ReadSlot(block, 137), 0xFFFFFFFFu);
    // Free places are not patched; deleting all empties the count slot.
    hook.DelMsg(-1, 1);
    EXPECT_EQ(ThunkMemory::ReadSlot(block, 137), 0u);
    // The mode test stays skipped: no design environment in a released library.
    EXPECT_EQ(bytes[15], 0xEB);
    EXPECT_EQ(ThunkMemory::ReadSlot(block, 18), 0u);
}
#endif

#if defined(_WIN64)
namespace {

// Captures the stack from inside the owner, as a debugger or the system's exception dispatch
// would walk it.
class StackOwner final : public DispatchStub<ISubclassOwner, IID_ISubclassOwner> {
public:
    HRESULT STDMETHODCALLTYPE WindowProc(VARIANT_BOOL, VARIANT_BOOL*, LRESULT*, HWND*, UINT*, WPARAM*, LPARAM*) override {
        frames = ::RtlCaptureStackBackTrace(0, 62, stack, nullptr);
        return S_OK;
    }
    void* stack[62] = {};
    USHORT frames = 0;
};

// Uses the answer after the call, so that the send cannot become a tail jump that leaves no frame.
volatile LRESULT g_answer = 0;
__attribute__((noinline)) void sendProbeFromHere(HWND window) { g_answer = ::SendMessageW(window, kProbe, 0, 0) + 1; }

}  // namespace

// The 64-bit thunk moves the stack pointer, so it must describe itself to the unwinder: a walk
// from inside the owner has to pass through the thunk and reach the code that sent the message.
TEST_F(CUniSubclassTest, StackWalksPassThroughTheThunk) {
    ValueWindow window;
    StackOwner owner;
    cUniSubclass hook;
    ASSERT_TRUE(hook.Subclass(window.Handle(), &owner));
    hook.AddMsg(kProbe, 2);
    const auto block = reinterpret_cast<uintptr_t>(hook.ThunkBytes().data());
    DWORD64 base = 0;
    EXPECT_NE(::RtlLookupFunctionEntry(block + 10, &base, nullptr), nullptr);
    EXPECT_EQ(base, block);

    sendProbeFromHere(window.Handle());
    bool throughThunk = false;
    bool reachedSender = false;
    const auto sender = reinterpret_cast<uintptr_t>(&sendProbeFromHere);
    for (USHORT i = 0; i < owner.frames; ++i) {
        const auto address = reinterpret_cast<uintptr_t>(owner.stack[i]);
        if (address > block && address < block + 64) throughThunk = true;
        // The return address into the sender lies a few bytes past its start.
        if (throughThunk && address > sender && address < sender + 256) reachedSender = true;
    }
    EXPECT_TRUE(throughThunk);
    EXPECT_TRUE(reachedSender);
}
#endif
