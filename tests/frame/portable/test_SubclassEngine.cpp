// Tests of the subclassing engine's order, table and rollback against a recorded fake window system.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "frame/portable/PlumbingErrors.h"
#include "frame/portable/SubclassEngine.h"

using namespace plumbing;
using plumbing_test::ErrorNumberOf;
using plumbing_test::PlumbingNumber;

namespace {

constexpr uint32_t kPaint = 15;
constexpr uint32_t kKeyDown = 256;
constexpr ProcAddress kOriginalProc = 0x1000;
constexpr ProcAddress kEngineProc = 0x2000;
constexpr intptr_t kPreviousResult = 42;

struct FakeClient {
    std::string name;
    bool stop = false;
    intptr_t setReturn = 0;  // written to lReturn when not 0
};

// Records every call in one list so that order across clients and the previous procedure shows.
class FakeWindows final : public WindowSystem {
public:
    std::set<WindowKey> windows;
    std::set<WindowKey> foreign;
    std::map<WindowKey, ProcAddress> procs;  // current procedure per window
    bool refuseHook = false;
    std::vector<std::string> log;

    WindowKey Create(WindowKey key) {
        windows.insert(key);
        procs[key] = kOriginalProc + key;
        return key;
    }
    ProcAddress& Proc(WindowKey key) { return procs.at(key); }

    bool IsWindow(WindowKey window) override { return windows.count(window) != 0; }
    bool IsOwnProcess(WindowKey window) override { return foreign.count(window) == 0; }
    ProcAddress InstallHook(WindowKey window) override {
        if (refuseHook) return 0;
        const ProcAddress old = Proc(window);
        Proc(window) = kEngineProc;
        return old;
    }
    void RestoreProc(WindowKey window, ProcAddress previous) override { Proc(window) = previous; }
    intptr_t CallProc(ProcAddress proc, WindowKey window, uint32_t message, uintptr_t, intptr_t) override {
        log.push_back("prev:" + std::to_string(message) + (proc == kOriginalProc + window ? "" : "?wrong-proc"));
        return kPreviousResult;
    }
    void CallClient(void* client, bool bBefore, bool& bStopMsg, intptr_t& lReturn, WindowKey, uint32_t, uintptr_t,
                    intptr_t) noexcept override {
        FakeClient* const fake = static_cast<FakeClient*>(client);
        log.push_back(fake->name + (bBefore ? "+" : "-"));
        if (fake->stop) bStopMsg = true;
        if (fake->setReturn != 0) lReturn = fake->setReturn;
        if (afterClient) afterClient(fake);
    }
    // Runs after each client, as code inside the client would.
    std::function<void(FakeClient*)> afterClient;
};

std::string joined(const std::vector<std::string>& items) {
    std::string out;
    for (const std::string& item : items) out += (out.empty() ? "" : " ") + item;
    return out;
}

// One engine over a fake window system holding window 1, and three clients.
class SubclassEngineTest : public ::testing::Test {
protected:
    FakeWindows system;
    SubclassEngine engine{system};
    const WindowKey window = system.Create(1);
    FakeClient a{"A"}, b{"B"}, c{"C"};
    const SubclassTable& table = engine.Table();
};

}  // namespace

// Clients are listed in attachment order; "+" is bBefore true, "-" false; the walk runs from the
// last attached down to the first, and the first alone decides when the previous procedure runs.
// The two-client cases run on real windows too; these are the rest.
TEST(SubclassEngine, DispatchOrderFollowsTheFirstClient) {
    struct Attach {
        int32_t response;
        bool stop;
        intptr_t setReturn;
    };
    struct Case {
        const char* what;
        std::vector<Attach> clients;  // named A, B, C in order
        const char* expected;
        intptr_t result;
    };
    const std::vector<Case> cases = {
        {"stop does not end the walk", {{9, false, 0}, {9, true, 0}, {9, false, 0}}, "C+ B+ A-", 0},
        {"instead-of client sets the result", {{11, false, 5}}, "A+", 5},
        {"two after-clients", {{10, false, 0}, {10, false, 0}}, "B+ prev:256 A-", kPreviousResult},
        {"after-client overrides result", {{10, false, 9}}, "prev:256 A-", 9},
        {"stop before an after-client", {{10, false, 0}, {9, true, 0}}, "B+ A-", 0},
    };
    for (const Case& c : cases) {
        FakeWindows system;
        SubclassEngine engine(system);
        const WindowKey window = system.Create(1);
        std::vector<FakeClient> clients;
        for (const Attach& a : c.clients) clients.push_back({std::string(1, static_cast<char>('A' + clients.size())), a.stop, a.setReturn});
        for (size_t i = 0; i < clients.size(); ++i) engine.AttachClient(&clients[i], window, kKeyDown, c.clients[i].response);

        EXPECT_EQ(engine.Dispatch(window, kKeyDown, 0, 0), c.result) << c.what;
        EXPECT_EQ(joined(system.log), c.expected) << c.what;
    }
}

TEST_F(SubclassEngineTest, MessagesWithoutClientsGoStraightToThePreviousProc) {
    engine.AttachClient(&a, window, kPaint, kResponseBefore);
    EXPECT_EQ(system.Proc(window), kEngineProc);
    EXPECT_EQ(engine.Dispatch(window, kKeyDown, 0, 0), kPreviousResult);
    EXPECT_EQ(joined(system.log), "prev:256");
    // A window the engine does not hold answers 0 and calls nobody.
    EXPECT_EQ(engine.Dispatch(99, kPaint, 0, 0), 0);
    EXPECT_EQ(engine.CallPreviousWindowProc(99, kPaint, 0, 0), 0);
    EXPECT_EQ(joined(system.log), "prev:256");
    EXPECT_EQ(engine.CallPreviousWindowProc(window, kPaint, 0, 0), kPreviousResult);
}

TEST_F(SubclassEngineTest, AttachRefusalsRaiseTheirNumbersAndChangeNothing) {
    const WindowKey external = system.Create(2);
    system.foreign.insert(external);
    engine.AttachClient(&a, window, kKeyDown, kResponseBefore);
    engine.AttachClient(&a, window, kPaint, kResponseBefore);  // another message is fine
    EXPECT_EQ(table.WindowClientCount(window), 2);
    const size_t items = table.ItemCount(window);

    struct Case {
        const char* what;
        WindowKey window;
        FakeClient* client;
        int32_t response;
        int32_t number;
    };
    const Case cases[] = {
        {"same client twice", window, &a, kResponseAfter, PlumbingNumber(13082)},
        {"no such window", 77, &b, kResponseBefore, PlumbingNumber(13083)},
        {"other process", external, &b, kResponseBefore, PlumbingNumber(13084)},
        {"response 0", window, &b, 0, 5},
        {"no client", window, nullptr, kResponseBefore, 5},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ErrorNumberOf([&] { engine.AttachClient(c.client, c.window, kKeyDown, c.response); }), c.number)
            << c.what;
        EXPECT_EQ(table.ItemCount(window), items) << c.what;
        EXPECT_EQ(table.WindowCount(), 1u) << c.what;
    }
    const auto error = plumbing_test::ErrorOf([&] { engine.AttachClient(&a, window, kKeyDown, kResponseBefore); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->Source(), u"TarnwickControls30.WindowProc");
    EXPECT_EQ(error->Description(), u"Message already handled by another class");

    // A window whose procedure cannot be replaced: 13081, and no trace of the attempt.
    system.refuseHook = true;
    EXPECT_EQ(ErrorNumberOf([&] { engine.AttachClient(&b, system.Create(3), kPaint, kResponseBefore); }),
              PlumbingNumber(13081));
    EXPECT_EQ(table.WindowCount(), 1u);
}

// Fails each write of an attachment in turn: every failure raises 5 and leaves the table and the
// window's procedure exactly as before the call.
TEST(SubclassEngine, EveryPartialAttachmentIsRolledBack) {
    for (const bool firstOnWindow : {true, false}) {
        for (int32_t failing = 1;; ++failing) {
            FakeWindows system;
            SubclassEngine engine(system);
            const WindowKey window = system.Create(1);
            FakeClient a{"A"}, b{"B"};
            if (!firstOnWindow) engine.AttachClient(&a, window, kKeyDown, kResponseBefore);
            const size_t items = engine.Table().ItemCount(window);
            const ProcAddress proc = system.Proc(window);

            engine.Table().FailWriteNumber(failing);
            const int32_t number = ErrorNumberOf([&] { engine.AttachClient(&b, window, kKeyDown, kResponseAfter); });
            engine.Table().FailWriteNumber(0);
            const void* const attached = engine.Table().MessageClient(window, kKeyDown, firstOnWindow ? 1 : 2);
            if (number == 0) {
                // Past the last write: the attachment went through.
                EXPECT_GT(failing, 3) << "too few writes seen";
                EXPECT_EQ(attached, &b);
                break;
            }
            const std::string where = "write " + std::to_string(failing) + (firstOnWindow ? " first" : " second");
            EXPECT_EQ(number, 5) << where;
            EXPECT_EQ(engine.Table().ItemCount(window), items) << where;
            EXPECT_EQ(system.Proc(window), proc) << where;
            EXPECT_EQ(attached, nullptr) << where;
            ASSERT_LT(failing, 20);
        }
    }
}

// The release on WM_DESTROY runs on real windows; a client of WM_DESTROY is responsible for itself:
// no release, it is called, and the window's last message still clears the dead handle. Detaching
// from a window the system no longer has does nothing.
TEST_F(SubclassEngineTest, ADestroyClientKeepsTheHookUntilTheLastMessage) {
    engine.AttachClient(&a, window, kMessageDestroy, kResponseBefore);
    engine.Dispatch(window, kMessageDestroy, 0, 0);
    EXPECT_EQ(joined(system.log), "A+ prev:2");
    EXPECT_EQ(system.Proc(window), kEngineProc);

    system.windows.erase(window);
    engine.DetachClient(&a, window, kMessageDestroy);
    EXPECT_EQ(table.MessageClient(window, kMessageDestroy, 1), &a);
    EXPECT_EQ(table.WindowClientCount(window), 1);

    engine.Dispatch(window, kMessageNcDestroy, 0, 0);
    EXPECT_EQ(joined(system.log), "A+ prev:2 prev:130");
    EXPECT_EQ(table.WindowCount(), 0u);
}

// A client that detaches itself and its neighbour mid-walk: the walk reads the table afresh,
// skips the emptied entries and still delivers the message to the previous procedure.
TEST_F(SubclassEngineTest, ClientsMayDetachWhileTheyRun) {
    system.afterClient = [&](FakeClient* client) {
        if (client != &c) return;
        engine.DetachClient(&c, window, kKeyDown);
        engine.DetachClient(&b, window, kKeyDown);
    };
    for (FakeClient* client : {&a, &b, &c}) engine.AttachClient(client, window, kKeyDown, kResponseBefore);
    engine.Dispatch(window, kKeyDown, 0, 0);
    EXPECT_EQ(joined(system.log), "C+ A+ prev:256");
    EXPECT_EQ(table.MessageClientCount(window, kKeyDown), 1);
}
