#include "common/Utf8Convert.h"

#include <gtest/gtest.h>

#include <string>

TEST(Utf8Convert, EncodesEveryLengthAndBothSurrogateModes) {
    struct Case {
        std::u16string text;
        std::string replaced;
        std::string kept;
    };
    const Case cases[] = {
        {u"", "", ""},
        {u"A\x7F", "A\x7F", "A\x7F"},
        {u"\x80\x7FF", "\xC2\x80\xDF\xBF", "\xC2\x80\xDF\xBF"},
        {u"\x800\xFFFF", "\xE0\xA0\x80\xEF\xBF\xBF", "\xE0\xA0\x80\xEF\xBF\xBF"},
        {u"\xD83D\xDE00", "\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
        {u"\xDBFF\xDFFF", "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
        {u"a\xD800", "a\xEF\xBF\xBD", "a\xED\xA0\x80"},
        {u"\xDC00\xD800", "\xEF\xBF\xBD\xEF\xBF\xBD", "\xED\xB0\x80\xED\xA0\x80"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Utf16ToUtf8(c.text), c.replaced) << c.replaced;
        EXPECT_EQ(Utf16ToUtf8(c.text, LoneSurrogates::Keep), c.kept) << c.kept;
        // The kept form is lossless.
        EXPECT_EQ(Utf8ToUtf16(c.kept), c.text) << c.kept;
    }
}

TEST(Utf8Convert, DecodesEachBadByteAsOneReplacement) {
    const struct {
        std::string bytes;
        std::u16string text;
    } cases[] = {
        {"\x80z", u"\xFFFDz"},                    // stray continuation
        {"\xC0\xAF", u"\xFFFD\xFFFD"},            // overlong '/'
        {"\xE2\x82", u"\xFFFD\xFFFD"},            // truncated at the end
        {"\xE2(\xA1", u"\xFFFD(\xFFFD"},          // broken in the middle
        {"\xF4\x90\x80\x80", u"\xFFFD\xFFFD\xFFFD\xFFFD"},  // above U+10FFFF
        {"\xF8\x88\x80\x80\x80", u"\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"\xFF", u"\xFFFD"},
    };
    for (const auto& c : cases) EXPECT_EQ(Utf8ToUtf16(c.bytes), c.text) << c.bytes;
}

// The ASCII blocks are copied sixteen at a time: every case above, placed at each offset inside
// ASCII text, converts to the same padding around the same bytes.
TEST(Utf8Convert, CasesInsideAsciiTextAtEveryOffsetOfABlock) {
    const struct {
        std::u16string text;
        std::string bytes;
    } cases[] = {
        {u"\x80\x7FF", "\xC2\x80\xDF\xBF"},
        {u"\xD83D\xDE00", "\xF0\x9F\x98\x80"},
        {u"a\xD800", "a\xEF\xBF\xBD"},
        {u"\xFFFF", "\xEF\xBF\xBF"},
    };
    for (const auto& c : cases) {
        for (size_t before = 0; before < 40; ++before) {
            for (const size_t after : {size_t{0}, size_t{1}, size_t{15}, size_t{16}, size_t{33}}) {
                const std::u16string padA(before, u'x');
                const std::u16string padB(after, u'~');
                const std::string bytesA(before, 'x');
                const std::string bytesB(after, '~');
                EXPECT_EQ(Utf16ToUtf8(padA + c.text + padB), bytesA + c.bytes + bytesB) << before << "/" << after;
                if (c.text != u"a\xD800") {
                    EXPECT_EQ(Utf8ToUtf16(bytesA + c.bytes + bytesB), padA + c.text + padB) << before << "/" << after;
                }
            }
        }
    }
    // A bad byte right after a block of ASCII is still one replacement.
    EXPECT_EQ(Utf8ToUtf16(std::string(16, 'q') + "\x80" + std::string(16, 'q')),
              std::u16string(16, u'q') + u"\xFFFD" + std::u16string(16, u'q'));
}

// The SSE2 and the portable block steps give the same bytes and the same mask on any input.
TEST(Utf8Convert, AsciiBlockPathsAgree) {
    uint32_t seed = 12345;
    auto next = [&seed] {
        seed = seed * 1103515245u + 12345u;
        return seed >> 8;
    };
    for (int round = 0; round < 20000; ++round) {
        char16_t units[16];
        uint8_t bytes[16];
        // Mostly ASCII, with a few elements from every range, the edges 0x7F/0x80 and 0xFF80 included.
        const uint32_t rare = next() % 4;
        for (int k = 0; k < 16; ++k) {
            const uint32_t r = next();
            const bool odd = rare != 0 && r % (rare * 5) == 0;
            const uint16_t values[] = {0x7F, 0x80, 0xFF, 0x100, 0x7FF, 0x800, 0xD800, 0xFF80, 0xFFFF};
            units[k] = odd ? static_cast<char16_t>(r % 2 ? values[r % 9] : r & 0xFFFF) : static_cast<char16_t>(r % 128);
            bytes[k] = odd ? static_cast<uint8_t>(0x80 | r) : static_cast<uint8_t>(r % 128);
        }
        uint8_t narrowPortable[16];
        char16_t widePortable[16];
        const uint32_t narrowMask = asciiblock::NarrowPortable(units, narrowPortable);
        const uint32_t wideMask = asciiblock::WidenPortable(bytes, widePortable);
        uint32_t expectNarrow = 0;
        uint32_t expectWide = 0;
        for (int k = 0; k < 16; ++k) {
            expectNarrow |= static_cast<uint32_t>(units[k] >= 0x80) << k;
            expectWide |= static_cast<uint32_t>(bytes[k] >= 0x80) << k;
            ASSERT_EQ(widePortable[k], bytes[k]);
            if (units[k] < 0x80) {
                ASSERT_EQ(narrowPortable[k], units[k]);
            }
        }
        ASSERT_EQ(narrowMask, expectNarrow);
        ASSERT_EQ(wideMask, expectWide);
#if defined(TC_ASCII_SSE2)
        uint8_t narrowFast[16];
        char16_t wideFast[16];
        ASSERT_EQ(asciiblock::NarrowSse2(units, narrowFast), expectNarrow);
        ASSERT_EQ(asciiblock::WidenSse2(bytes, wideFast), expectWide);
        for (int k = 0; k < 16; ++k) {
            ASSERT_EQ(wideFast[k], bytes[k]);
            if (units[k] < 0x80) {
                ASSERT_EQ(narrowFast[k], units[k]);
            }
        }
#endif
    }
}
