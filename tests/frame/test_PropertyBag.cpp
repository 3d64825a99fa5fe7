#include "frame/PropertyBag.h"

#include <gtest/gtest.h>

#include "frame/MemoryPropertyBag.h"

namespace {

TEST(PropertyBag, StringsTravelAsUtf16LeBytes) {
    // Bytes worked out by hand: each code unit low byte first.
    const struct {
        CtlString text;
        CtlByteArray bytes;
    } cases[] = {
        {u"", {}},
        {u"A", {0x41, 0x00}},
        {u"\u00E9\u03A9", {0xE9, 0x00, 0xA9, 0x03}},                     // é, Greek capital omega
        {u"\u05D0\u0627", {0xD0, 0x05, 0x27, 0x06}},                     // Hebrew alef, Arabic alef
        {u"\U0001F600", {0x3D, 0xD8, 0x00, 0xDE}},                        // emoji: surrogates D83D DE00
        {CtlString(u"a\0b", 3), {0x61, 0x00, 0x00, 0x00, 0x62, 0x00}},  // an embedded NUL survives
    };
    for (const auto& c : cases) {
        const CtlVariant packed = pvStringToBag(c.text);
        ASSERT_TRUE(std::holds_alternative<CtlByteArray>(packed));
        EXPECT_EQ(std::get<CtlByteArray>(packed), c.bytes);
        EXPECT_EQ(pvBagToString(packed), c.text);
    }
}

TEST(PropertyBag, ReadingAcceptsStringsBytesAndNothingElse) {
    const struct {
        CtlVariant held;
        CtlString expected;
    } cases[] = {
        {CtlString(u"plain"), u"plain"},
        {CtlByteArray{0x48, 0x00, 0x69}, u"H"},  // an odd trailing byte is dropped
        {CtlVariant(), u""},
        {int32_t{42}, u""},
        {true, u""},
    };
    for (const auto& c : cases) EXPECT_EQ(pvBagToString(c.held), c.expected);
}

TEST(PropertyBag, MemoryBagKeepsOrderDropsDefaultsAndIsCaseExact) {
    MemoryPropertyBag bag;
    bag.WriteProperty(u"Second", int32_t{2}, CtlVariant());
    bag.WriteProperty(u"First", int32_t{1}, CtlVariant());
    bag.WriteProperty(u"Equal", int32_t{7}, int32_t{7});  // equal to its default: not stored
    bag.WriteProperty(u"Second", int32_t{3}, CtlVariant());

    EXPECT_EQ(bag.Keys(), (std::vector<CtlString>{u"Second", u"First"}));
    EXPECT_FALSE(bag.Contains(u"Equal"));
    EXPECT_EQ(VariantToLong(bag.ReadProperty(u"Second", int32_t{0}), -1), 3);
    EXPECT_EQ(VariantToLong(bag.ReadProperty(u"second", int32_t{99}), -1), 99);  // keys are case-exact
    EXPECT_EQ(VariantToLong(bag.ReadProperty(u"Equal", int32_t{7}), -1), 7);

    // Writing a value equal to its default removes what an earlier save stored.
    bag.WriteProperty(u"First", int32_t{5}, int32_t{5});
    EXPECT_FALSE(bag.Contains(u"First"));
}

TEST(PropertyBag, TypedReadsConvertOrFallBack) {
    MemoryPropertyBag bag;
    bag.Set(u"BoolAsLong", int32_t{-1});
    bag.Set(u"LongAsText", CtlString(u"  12 "));
    bag.Set(u"Garbage", CtlString(u"12a"));
    bag.Set(u"TooBig", int32_t{40000});
    bag.Set(u"Bytes", pvStringToBag(u"\u0416"));

    EXPECT_TRUE(ReadBoolProperty(bag, u"BoolAsLong", false));
    EXPECT_EQ(ReadLongProperty(bag, u"LongAsText", 0), 12);
    EXPECT_EQ(ReadLongProperty(bag, u"Garbage", 5), 5);
    EXPECT_EQ(ReadIntegerProperty(bag, u"TooBig", 3), 3);  // does not fit 16 bits
    EXPECT_EQ(ReadLongProperty(bag, u"Missing", -7), -7);
    EXPECT_EQ(ReadStringProperty(bag, u"Bytes"), u"\u0416");
    EXPECT_EQ(ReadStringProperty(bag, u"Missing"), u"");
}

}  // namespace
