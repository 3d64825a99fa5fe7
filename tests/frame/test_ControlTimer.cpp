// Tests of ControlTimer: ticks while enabled with an interval, restarts, teardown inside a tick.
#include <gtest/gtest.h>

#include <memory>

#include "frame/ControlTimer.h"
#include "frame/PlumbingTestSupport.h"
#include "support/LeakCounters.h"

using plumbing_test::PumpUntil;

TEST(ControlTimer, RunsOnlyWhileEnabledWithAnInterval) {
    int ticks = 0;
    ControlTimer timer([&] { ++ticks; });
    EXPECT_FALSE(timer.IsRunning());
    timer.Interval(20);
    EXPECT_FALSE(timer.IsRunning()) << "not enabled yet";
    timer.Enabled(true);
    EXPECT_TRUE(timer.IsRunning());
    ASSERT_TRUE(PumpUntil([&] { return ticks >= 3; }));

    struct Case {
        const char* what;
        int32_t interval;
        bool enabled;
    };
    for (const Case& c : {Case{"interval 0", 0, true}, Case{"negative interval", -5, true}, Case{"disabled", 20, false}}) {
        timer.Interval(c.interval);
        timer.Enabled(c.enabled);
        EXPECT_FALSE(timer.IsRunning()) << c.what;
        EXPECT_EQ(timer.Interval(), c.interval) << c.what;
        const int before = ticks;
        PumpUntil([] { return false; }, 80);
        EXPECT_EQ(ticks, before) << c.what;
    }
}

TEST(ControlTimer, SettingEnabledAgainStartsTheWaitAfresh) {
    // `reference` runs undisturbed; `restarted` has the same interval but is re-enabled by a fast
    // timer long before it is due, so it never gets to tick.
    int referenceTicks = 0;
    int restartedTicks = 0;
    ControlTimer restarted([&] { ++restartedTicks; }, 300, true);
    ControlTimer reference([&] { ++referenceTicks; }, 300, true);
    ControlTimer rearm([&] { restarted.Enabled(true); }, 30, true);
    ASSERT_TRUE(PumpUntil([&] { return referenceTicks >= 4; }, 5000));
    EXPECT_EQ(restartedTicks, 0);

    rearm.Enabled(false);
    ASSERT_TRUE(PumpUntil([&] { return restartedTicks >= 1; }));
}

TEST(ControlTimer, ATickMayDestroyItsTimerAndTheWindowGoesWithTheLastTimer) {
    const size_t windowsBefore = testsupport::ThreadWindowCount();
    auto timer = std::make_unique<ControlTimer>();
    int ticks = 0;
    timer->OnTick([&] {
        ++ticks;
        timer.reset();
    });
    timer->Interval(10);
    timer->Enabled(true);
    EXPECT_NE(ControlTimer::ThreadTimerWindow(), nullptr);
    ASSERT_TRUE(PumpUntil([&] { return timer == nullptr; }));
    PumpUntil([] { return false; }, 60);
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(ControlTimer::ThreadTimerWindow(), nullptr);
    EXPECT_EQ(testsupport::ThreadWindowCount(), windowsBefore);

    // Many timers come and go without leaving windows behind.
    for (int i = 0; i < 1000; ++i) {
        ControlTimer t([] {}, 1000, true);
    }
    EXPECT_EQ(testsupport::ThreadWindowCount(), windowsBefore);
}
