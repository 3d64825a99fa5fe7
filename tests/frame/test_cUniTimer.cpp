// Tests of cUniTimer: ticks with elapsed time and identifier, start and stop rules, and its thunk.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "frame/PlumbingTestSupport.h"
#include "frame/ThunkMemory.h"
#include "frame/cUniTimer.h"

using namespace plumbing_test;

namespace {

struct Tick {
    LONG elapsed;
    LONG id;
    DWORD sinceStart;  // measured by the test when the tick arrived
};

class RecordingTimerOwner final : public DispatchStub<ITimerOwner, IID_ITimerOwner> {
public:
    HRESULT STDMETHODCALLTYPE TimerProc(LONG lElapsedMS, LONG nID) override {
        ticks.push_back({lElapsedMS, nID, ::GetTickCount() - started});
        return S_OK;
    }
    DWORD started = 0;
    std::vector<Tick> ticks;
};

}  // namespace

TEST(cUniTimer, TicksCarryElapsedTimeAndIdentifier) {
    RecordingTimerOwner owner;
    RecordingTimerOwner other;
    cUniTimer timer;
    EXPECT_FALSE(timer.InIDE());
    EXPECT_FALSE(timer.IsActive());
    EXPECT_TRUE(timer.TmrStop());  // nothing running: still true
    EXPECT_FALSE(timer.TmrStart(nullptr, 10, 1));

    owner.started = ::GetTickCount();
    ASSERT_TRUE(timer.TmrStart(&owner, 15, 7));
    EXPECT_TRUE(timer.IsActive());
    // A second start changes nothing: owner, interval and identifier stay.
    EXPECT_FALSE(timer.TmrStart(&other, 1, 99));
    ASSERT_TRUE(PumpUntil([&] { return owner.ticks.size() >= 3; }));
    EXPECT_TRUE(other.ticks.empty());

    LONG previous = 0;
    for (const Tick& tick : owner.ticks) {
        EXPECT_EQ(tick.id, 7);
        // Elapsed since the start, never more than the test itself measured.
        EXPECT_GE(tick.elapsed, previous);
        EXPECT_LE(static_cast<DWORD>(tick.elapsed), tick.sinceStart);
        previous = tick.elapsed;
    }
    EXPECT_TRUE(timer.TmrStop());
    EXPECT_FALSE(timer.IsActive());
    const size_t ticks = owner.ticks.size();
    PumpUntil([] { return false; }, 100);
    EXPECT_EQ(owner.ticks.size(), ticks);
}

// 0 goes to the system as it is, which raises it to its own minimum; the destructor stops the timer.
TEST(cUniTimer, ZeroIntervalAndDestructionWhileRunning) {
    RecordingTimerOwner owner;
    {
        cUniTimer timer;
        ASSERT_TRUE(timer.TmrStart(&owner, 0));
        ASSERT_TRUE(PumpUntil([&] { return !owner.ticks.empty(); }));
        EXPECT_EQ(owner.ticks.front().id, 0);
    }
    const size_t ticks = owner.ticks.size();
    PumpUntil([] { return false; }, 100);
    EXPECT_EQ(owner.ticks.size(), ticks);
}

#if !defined(_WIN64)
TEST(cUniTimer, ThunkBytesAndSlots) {
    const std::string_view reference =
        "EB0EE8xxxxx01x83F802741E85C0741D68xxxxx02x8B4424142Dxxxxx03x50B8xxxxx04x508B00FF501CC210008B4C240C5150E8xxxxx0"
        "5xEBF0";
    RecordingTimerOwner owner;
    cUniTimer timer;
    const DWORD before = ::GetTickCount();
    ASSERT_TRUE(timer.TmrStart(&owner, 10000000, 1234));
    const DWORD after = ::GetTickCount();
    const auto bytes = timer.ThunkBytes();
    ASSERT_EQ(bytes.size(), 58u);
    EXPECT_EQ(ThunkMismatches(bytes, reference, {3, 17, 26, 32, 52}), std::vector<size_t>{});
    const uint8_t* block = bytes.data();
    EXPECT_EQ(ThunkMemory::ReadSlot(block, 17), 1234u);
    EXPECT_GE(ThunkMemory::ReadSlot(block, 26), before);
    EXPECT_LE(ThunkMemory::ReadSlot(block, 26), after);
    EXPECT_EQ(ThunkMemory::ReadSlot(block, 32), reinterpret_cast<uintptr_t>(&owner));
    const uintptr_t killTarget = reinterpret_cast<uintptr_t>(block) + 56 + ThunkMemory::ReadSlot(block, 52);
    EXPECT_EQ(killTarget, reinterpret_cast<uintptr_t>(::GetProcAddress(::GetModuleHandleW(L"user32"), "KillTimer")));
    EXPECT_EQ(bytes[0], 0xEB);  // the mode test stays skipped
    EXPECT_TRUE(timer.TmrStop());
}
#endif
