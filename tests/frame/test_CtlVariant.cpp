#include "frame/CtlVariant.h"

#include <gtest/gtest.h>

#include "frame/StdFont.h"

namespace {

TEST(CtlVariant, NumericConversionsFollowTheHostRuntime) {
    const struct {
        CtlVariant value;
        int32_t asLong;
        bool asBool;
    } cases[] = {
        {true, -1, true},
        {false, 0, false},
        {int16_t{-5}, -5, true},
        {2.5, 2, true},              // half to even
        {3.5F, 4, true},             // half to even
        {-2.5, -2, true},
        {CtlString(u"0"), 0, false},
        {CtlString(u"True"), 77, true},  // no number, but a Boolean word
        {CtlString(u"abc"), 77, false},  // neither: both fall back
        {3e12, 77, true},                // out of range for Long
        {CtlVariant(), 77, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(VariantToLong(c.value, 77), c.asLong) << c.value.index();
        EXPECT_EQ(VariantToBool(c.value, false), c.asBool) << c.value.index();
    }
    EXPECT_EQ(VariantToInteger(int32_t{32767}, 0), 32767);
    EXPECT_EQ(VariantToInteger(int32_t{32768}, 9), 9);
}

TEST(CtlVariant, FontsArePassedByReference) {
    auto font = std::make_shared<StdFont>(u"Arial", 10.0F);
    const auto fallback = std::make_shared<StdFont>();
    EXPECT_EQ(VariantToFont(CtlVariant(font), fallback), font);
    EXPECT_EQ(VariantToFont(CtlVariant(int32_t{1}), fallback), fallback);
    EXPECT_EQ(VariantToFont(CtlVariant(std::shared_ptr<StdFont>()), fallback), fallback);
    font->Bold(true);  // the holder sees the change: same object
    EXPECT_TRUE(VariantToFont(CtlVariant(font), fallback)->Bold());
}

}  // namespace
