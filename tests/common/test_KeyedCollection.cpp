#include "common/KeyedCollection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<int> valuesOf(const KeyedCollection<int>& collection) {
    std::vector<int> values;
    collection.ForEach([&](const std::u16string&, int value) { values.push_back(value); });
    return values;
}

TEST(KeyedCollection, KeysAreCaseInsensitiveAcrossScripts) {
    KeyedCollection<int> collection;
    collection.Add(1, u"Alpha");
    collection.Add(2, u"\u0394\u03AD\u03BB\u03C4\u03B1");  // Greek capital delta...
    collection.Add(3, u"\u0416\u0443\u043A");              // Cyrillic capital zhe...

    const struct {
        std::u16string key;
        int expected;
    } cases[] = {
        {u"alpha", 1}, {u"ALPHA", 1}, {u"\u03B4\u03AD\u03BB\u03C4\u03B1", 2}, {u"\u0436\u0423\u041A", 3},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(collection.Contains(c.key));
        EXPECT_EQ(collection.Item(c.key), c.expected);
    }
    EXPECT_FALSE(collection.Contains(u"alph"));
}

TEST(KeyedCollection, InsertAndRemoveKeepOrderAndKeyPositions) {
    KeyedCollection<int> collection;
    collection.Add(10, u"a");
    collection.Add(30, u"c");
    collection.Add(20, u"b", 1);  // before "c"
    collection.Add(40);           // no key
    EXPECT_EQ(valuesOf(collection), (std::vector<int>{10, 20, 30, 40}));
    EXPECT_EQ(collection.IndexOf(u"C"), 2u);

    collection.Remove(u"A");
    EXPECT_EQ(valuesOf(collection), (std::vector<int>{20, 30, 40}));
    EXPECT_EQ(collection.IndexOf(u"b"), 0u);
    EXPECT_EQ(collection.IndexOf(u"c"), 1u);
    EXPECT_FALSE(collection.Contains(u"a"));

    collection.RemoveAt(2);
    EXPECT_EQ(valuesOf(collection), (std::vector<int>{20, 30}));
    collection.Add(50, u"a");  // a removed key can be used again
    EXPECT_EQ(collection.Item(u"a"), 50);
}

TEST(KeyedCollection, ErrorsCarryTheHostNumbers) {
    KeyedCollection<int> collection;
    collection.Add(1, u"Key");
    const struct {
        void (*call)(KeyedCollection<int>&);
        int32_t number;
    } cases[] = {
        {[](KeyedCollection<int>& c) { c.Add(2, u"KEY"); }, 457},
        {[](KeyedCollection<int>& c) { c.Item(u"missing"); }, 5},
        {[](KeyedCollection<int>& c) { c.Remove(u"missing"); }, 5},
        {[](KeyedCollection<int>& c) { c.RemoveAt(1); }, 9},
        {[](KeyedCollection<int>& c) { c[7]; }, 9},
        {[](KeyedCollection<int>& c) { c.Add(3, u"x", 5); }, 9},
    };
    for (const auto& c : cases) {
        try {
            c.call(collection);
            ADD_FAILURE() << "expected error " << c.number;
        } catch (const CtlError& error) {
            EXPECT_EQ(error.Number(), c.number);
        }
    }
    EXPECT_EQ(collection.Count(), 1u);  // a failed call leaves the collection as it was
    EXPECT_EQ(collection.Item(u"key"), 1);
}

TEST(CtlError, PlumbingErrorsCombineTheBaseAndNameTheWindowProc) {
    const CtlError plain(u"clsMemDC.CreateDC", u"clsMemDC.CreateDC.HDC not created");
    EXPECT_EQ(plain.Number(), -2147221503);
    const CtlError plumbing = CtlError::Plumbing(13082, u"Client already attached");
    EXPECT_EQ(static_cast<uint32_t>(plumbing.Number()), 0x80040000u | 13082u);
    EXPECT_EQ(plumbing.Source(), u"TarnwickControls30.WindowProc");
    EXPECT_NE(std::string(plumbing.what()).find("Client already attached"), std::string::npos);
}

}  // namespace
