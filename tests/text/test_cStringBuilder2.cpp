// Tests of cStringBuilder2: its value, the two merge thresholds and ReplaceString.
#include <gtest/gtest.h>

#include <string>

#include "text/cStringBuilder2.h"

namespace {

std::u16string text(size_t n, char16_t c = u'x') { return std::u16string(n, c); }

}  // namespace

TEST(cStringBuilder2, MergesAtBothThresholds) {
    struct Step {
        size_t append;    // length of the appended text
        size_t main;      // expected lengths afterwards
        size_t buffer;
    };
    struct Case {
        const char* what;
        size_t start;     // short appends of one character first
        std::vector<Step> steps;
    };
    const Case cases[] = {
        {"short appends stay in the buffer below 1024", 1023, {{1, 0, 1024}}},
        {"the 1025th short append merges", 1024, {{1, 1025, 0}}},
        {"1023 buffered, a further 1024 joins them, the next short merges", 1023,
         {{1024, 0, 2047}, {1, 2048, 0}}},
        {"long appends grow the buffer up to 8192", 0, {{1025, 0, 1025}, {5000, 0, 6025}, {2166, 0, 8191},
                                                        {1025, 0, 9216}, {1025, 10241, 0}}},
        {"a short append merges a buffer that a long one would still grow", 1024,
         {{2000, 0, 3024}, {10, 3034, 0}}},
        {"an empty append merges a full buffer", 1024, {{0, 1024, 0}}},
        {"an empty append keeps a small buffer", 5, {{0, 0, 5}}},
    };
    for (const Case& c : cases) {
        cStringBuilder2 sb;
        std::u16string expected;
        for (size_t i = 0; i < c.start; ++i) {
            const std::u16string one(1, static_cast<char16_t>(u'a' + i % 26));
            sb.Append(one);
            expected += one;
        }
        for (const Step& s : c.steps) {
            const std::u16string piece = text(s.append, static_cast<char16_t>(u'0' + s.append % 10));
            sb.Append(piece);
            expected += piece;
            EXPECT_EQ(sb.MainPart().size(), s.main) << c.what << ", after " << s.append;
            EXPECT_EQ(sb.BufferPart().size(), s.buffer) << c.what << ", after " << s.append;
        }
        EXPECT_EQ(sb.ToString(), expected) << c.what;
        EXPECT_EQ(static_cast<size_t>(sb.Length()), expected.size()) << c.what;
    }
}

TEST(cStringBuilder2, NewLineIsOneAppend) {
    // 1023 + 2 = 1025 characters: a long append, which a buffer of 1023 simply takes.
    cStringBuilder2 sb;
    sb.Append(text(1023, u'a'));
    sb.AppendWithNewLine(text(1023, u'b'));
    EXPECT_EQ(sb.MainPart().size(), 0u);
    EXPECT_EQ(sb.BufferPart().size(), 2048u);
    EXPECT_EQ(sb.ToString(), text(1023, u'a') + text(1023, u'b') + u"\r\n");

    cStringBuilder2 small;
    small.AppendWithNewLine(u"");
    small.AppendWithNewLine(u"x");
    EXPECT_EQ(small.ToString(), u"\r\nx\r\n");
}

TEST(cStringBuilder2, ValueReadsAndSets) {
    cStringBuilder2 sb;
    EXPECT_EQ(sb.ToString(), u"");
    for (int i = 0; i < 1030; ++i) sb.Append(u"ab");
    // Reading merges nothing.
    const size_t bufferBefore = sb.BufferPart().size();
    EXPECT_EQ(sb.ToString().size(), 2060u);
    EXPECT_EQ(sb.BufferPart().size(), bufferBefore);
    sb.TheString(u"fresh");
    EXPECT_EQ(sb.MainPart(), u"fresh");
    EXPECT_TRUE(sb.BufferPart().empty());
    sb.Append(u"!");
    EXPECT_EQ(sb.ToString(), u"fresh!");
    EXPECT_EQ(sb.Length(), 6);
}

TEST(cStringBuilder2, ReplaceString) {
    struct Case {
        std::u16string start;
        std::u16string find;
        std::u16string replace;
        eCtlCompareMethod compare;
        std::u16string result;
    };
    const Case cases[] = {
        {u"aAbBaa", u"a", u"x", ctl_BinaryCompare, u"xAbBxx"},
        {u"aAbBaa", u"a", u"x", ctl_TextCompare, u"xxbBxx"},
        {u"aaa", u"aa", u"b", ctl_BinaryCompare, u"ba"},
        {u"abc", u"", u"z", ctl_BinaryCompare, u"abc"},
        {u"abc", u"abcd", u"z", ctl_BinaryCompare, u"abc"},
        {u"a.b.c", u".", u"", ctl_BinaryCompare, u"abc"},
        {u"x", u"x", u"xx", ctl_BinaryCompare, u"xx"},
        {u"\u00C9cole \u00E9cole", u"\u00E9", u"e", ctl_TextCompare, u"ecole ecole"},
        {u"\u00C9cole \u00E9cole", u"\u00E9", u"e", ctl_BinaryCompare, u"\u00C9cole ecole"},
        {u"", u"a", u"b", ctl_TextCompare, u""},
    };
    for (const Case& c : cases) {
        cStringBuilder2 sb;
        sb.Append(c.start);
        sb.ReplaceString(c.find, c.replace, c.compare);
        EXPECT_EQ(sb.ToString(), c.result);
        EXPECT_TRUE(sb.BufferPart().empty());
    }
    // Across the boundary of the two parts.
    cStringBuilder2 split;
    split.Append(text(1024, u'a'));
    split.Append(u"b");
    split.Append(u"c");
    ASSERT_FALSE(split.BufferPart().empty());
    split.ReplaceString(u"bc", u"!");
    EXPECT_EQ(split.ToString(), text(1024, u'a') + u"!");
}
