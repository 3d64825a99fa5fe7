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
