#include "frame/ClickArbiter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(ClickArbiter, OnlyTheLeftButtonAndItsKeysClick) {
    ClickArbiter arbiter;
    const struct {
        int16_t button;
        bool acts;
    } buttons[] = {{1, true}, {2, false}, {4, false}, {3, true}, {0, false}};
    for (const auto& c : buttons) {
        arbiter.MouseDown(c.button);
        EXPECT_EQ(arbiter.ClickEnabled(), c.acts) << c.button;
    }

    const struct {
        int16_t typed;
        int16_t rewrittenTo;  // what a KeyPress handler turns it into (-1: unchanged)
        bool clicks;
    } keys[] = {{32, -1, true}, {13, -1, true}, {65, -1, false}, {65, 32, true}, {32, 0, false}};
    for (const auto& c : keys) {
        arbiter.MouseDown(2);
        std::string trace;
        int16_t key = c.typed;
        arbiter.KeyPress(
            key,
            [&](int16_t& k) {
                trace += "K";
                if (c.rewrittenTo >= 0) k = c.rewrittenTo;
            },
            [&] { trace += arbiter.ClickEnabled() ? "C" : "x"; });
        EXPECT_EQ(trace, c.clicks ? "KC" : "K") << c.typed;
    }
}

TEST(ClickArbiter, AccessKeysAndDoubleClicks) {
    ClickArbiter arbiter;
    std::string trace;
    const auto click = [&] { trace += "C"; };
    const auto dbl = [&] { trace += "D"; };

    arbiter.MouseDown(2);
    arbiter.AccessKeyPress(false, click);  // disabled surface: nothing
    EXPECT_EQ(trace, "");
    EXPECT_FALSE(arbiter.ClickEnabled());
    arbiter.AccessKeyPress(true, click);
    EXPECT_EQ(trace, "C");
    EXPECT_TRUE(arbiter.ClickEnabled());

    trace.clear();
    arbiter.MouseDown(1);
    arbiter.DblClick(click, dbl);  // a double click on a check box toggles twice
    EXPECT_EQ(trace, "CD");

    trace.clear();
    arbiter.MouseDown(2);
    arbiter.DblClick(click, dbl);
    EXPECT_EQ(trace, "D");
}

}  // namespace
