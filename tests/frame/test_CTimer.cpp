// Tests of CTimer and its shared table: ticks on a pumped loop, identifiers, places and the limit.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "frame/CTimer.h"
#include "frame/MTimer.h"
#include "frame/PlumbingTestSupport.h"
#include "frame/portable/PlumbingErrors.h"

using namespace plumbing_test;

namespace {

class CountingSink final : public CTimerEvents {
public:
    void ThatTime() override { ++ticks; }
    int ticks = 0;
};

// A very long interval: the timer exists but never fires during a test.
constexpr int32_t kNeverFires = 10000000;

}  // namespace

TEST(CTimer, TicksThroughThePumpedLoopUntilStopped) {
    CountingSink sink;
    CTimer timer;
    timer.SetEventSink(&sink);
    timer.Interval(15);
    EXPECT_NE(timer.TimerID(), 0u);
    EXPECT_NE(MTimer::PlaceOf(timer), 0);
    ASSERT_TRUE(PumpUntil([&] { return sink.ticks >= 3; }));

    timer.Interval(0);
    EXPECT_EQ(timer.Interval(), 0);
    EXPECT_EQ(timer.TimerID(), 0u);
    EXPECT_EQ(MTimer::PlaceOf(timer), 0);
    const int ticks = sink.ticks;
    PumpUntil([] { return false; }, 100);
    EXPECT_EQ(sink.ticks, ticks);
    // Below 1 on a stopped timer does nothing.
    timer.Interval(-5);
    EXPECT_EQ(timer.Interval(), 0);
}

TEST(CTimer, IntervalChangesAndIdentifiers) {
    CTimer timer;
    timer.Interval(kNeverFires);
    const UINT_PTR id = timer.TimerID();
    const int32_t place = MTimer::PlaceOf(timer);
    ASSERT_NE(id, 0u);
    timer.Interval(kNeverFires);  // same value: the running timer stays
    EXPECT_EQ(timer.TimerID(), id);
    EXPECT_EQ(MTimer::PlaceOf(timer), place);

    timer.Interval(kNeverFires - 1);  // another value: restarted in the same place
    EXPECT_NE(timer.TimerID(), 0u);
    EXPECT_EQ(MTimer::PlaceOf(timer), place);
    EXPECT_EQ(timer.Interval(), kNeverFires - 1);
}

TEST(CTimer, TicksReachOnlyTheMatchingInstance) {
    CountingSink first, second;
    CTimer a, b;
    a.SetEventSink(&first);
    b.SetEventSink(&second);
    a.Interval(kNeverFires);
    b.Interval(kNeverFires);
    struct Tick {
        UINT_PTR id;
        int first;
        int second;
    };
    const Tick ticks[] = {
        {a.TimerID(), 1, 0},
        {b.TimerID(), 1, 1},
        {a.TimerID() + b.TimerID() + 1000, 1, 1},  // an identifier in no place is ignored
        {0, 1, 1},
        {b.TimerID(), 1, 2},
    };
    for (const Tick& tick : ticks) {
        MTimer::TimerProc(nullptr, WM_TIMER, tick.id, 0);
        EXPECT_EQ(first.ticks, tick.first) << tick.id;
        EXPECT_EQ(second.ticks, tick.second) << tick.id;
    }
}

TEST(CTimer, TheHundredAndFirstTimerIsRefused) {
    std::vector<std::unique_ptr<CTimer>> timers;
    // Fill every place still free on this thread.
    for (int i = 0; i < MTimer::kPlaces; ++i) {
        auto timer = std::make_unique<CTimer>();
        timer->Interval(kNeverFires);
        timers.push_back(std::move(timer));
    }
    EXPECT_EQ(MTimer::HighWaterMark(), 100);
    CountingSink sink;
    CTimer extra;
    extra.SetEventSink(&sink);
    const auto error = ErrorOf([&] { extra.Interval(kNeverFires); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->Number(), PlumbingNumber(13651));
    EXPECT_EQ(error->Description(), u"No more than 10 timers allowed per class");
    EXPECT_EQ(error->Source(), u"TarnwickControls30.WindowProc");
    // The refused instance keeps its system timer, identifier and interval, without a place: its
    // ticks reach nobody, and the same interval again changes nothing.
    EXPECT_EQ(MTimer::PlaceOf(extra), 0);
    EXPECT_NE(extra.TimerID(), 0u);
    EXPECT_EQ(extra.Interval(), kNeverFires);
    MTimer::TimerProc(nullptr, WM_TIMER, extra.TimerID(), 0);
    EXPECT_EQ(sink.ticks, 0);
    extra.Interval(kNeverFires);
    EXPECT_EQ(MTimer::PlaceOf(extra), 0);

    // Free one place in the middle: the next timer takes it; the mark never goes down.
    const int32_t freed = MTimer::PlaceOf(*timers[40]);
    timers[40].reset();
    // A stop that finds no place does nothing more than clear the interval.
    extra.Interval(0);
    EXPECT_EQ(extra.Interval(), 0);
    EXPECT_NE(extra.TimerID(), 0u);
    extra.Interval(kNeverFires);
    EXPECT_EQ(MTimer::PlaceOf(extra), freed);
    timers.clear();
    extra.Interval(0);
    EXPECT_EQ(MTimer::HighWaterMark(), 100);
}
