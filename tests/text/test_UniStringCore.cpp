// Tests of the string core: UTF-8 transport, string tests, hex envelope, AscW and ChrW.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "RaisedError.h"
#include "common/CtlError.h"
#include "platform/CodePage.h"
#include "text/UniStringCore.h"
#include "text/WindowsVersion.h"

namespace {

using Bytes = std::vector<uint8_t>;

// A reference encoder written from the bit layout of UTF-8 (not from the library's arithmetic):
// 0xxxxxxx, 110xxxxx 10xxxxxx, 1110xxxx 10xxxxxx 10xxxxxx, one code unit at a time.
Bytes referenceEncode(const std::u16string& s) {
    Bytes out;
    for (const char16_t unit : s) {
        const uint32_t c = unit;
        if (c <= 0x7F) {
            out.push_back(static_cast<uint8_t>(c));
        } else if (c <= 0x7FF) {
            out.push_back(static_cast<uint8_t>(0xC0 | (c >> 6)));
            out.push_back(static_cast<uint8_t>(0x80 | (c & 0x3F)));
        } else {
            out.push_back(static_cast<uint8_t>(0xE0 | (c >> 12)));
            out.push_back(static_cast<uint8_t>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<uint8_t>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

// Code units drawn from every class the encoder tells apart, weighted toward the boundaries.
std::u16string randomText(std::mt19937& rng, size_t maxLen) {
    static const char16_t kEdges[] = {0,      1,      0x7F,   0x80,   0xFF,   0x100,  0x7FF, 0x800,
                                      0xFFF,  0x1000, 0xD7FF, 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000,
                                      0xFFFD, 0xFFFE, 0xFFFF, 0x20AC, 0x0081, 0x00E9, 0x0178};
    std::uniform_int_distribution<size_t> len(0, maxLen);
    std::uniform_int_distribution<int> kind(0, 5);
    std::uniform_int_distribution<uint32_t> any(0, 0xFFFF);
    std::uniform_int_distribution<size_t> edge(0, sizeof kEdges / sizeof kEdges[0] - 1);
    std::u16string s(len(rng), u'\0');
    for (char16_t& c : s) {
        switch (kind(rng)) {
        case 0:
            c = static_cast<char16_t>(any(rng) % 0x80);
            break;
        case 1:
            c = static_cast<char16_t>(0x80 + any(rng) % (0x800 - 0x80));
            break;
        case 2:
            c = static_cast<char16_t>(0xD800 + any(rng) % 0x800);  // lone and paired surrogates alike
            break;
        case 3:
            c = kEdges[edge(rng)];
            break;
        default:
            c = static_cast<char16_t>(any(rng));
            break;
        }
    }
    return s;
}

}  // namespace

TEST(UniStringCore, EncodesEachCodeUnitAtTheClassBoundaries) {
    struct Case { char16_t unit; Bytes bytes; };
    const Case cases[] = {
        {0x0000, {0x00}},
        {0x007F, {0x7F}},
        {0x0080, {0xC2, 0x80}},
        {0x07FF, {0xDF, 0xBF}},
        {0x0800, {0xE0, 0xA0, 0x80}},
        {0xD800, {0xED, 0xA0, 0x80}},
        {0xDFFF, {0xED, 0xBF, 0xBF}},
        {0xFFFF, {0xEF, 0xBF, 0xBF}},
    };
    for (const Case& c : cases) {
        const std::u16string s(1, c.unit);
        EXPECT_EQ(StringToUTF8Bytes(s), c.bytes) << "unit " << static_cast<int>(c.unit);
        EXPECT_EQ(UTF8BytesToString(c.bytes), s) << "unit " << static_cast<int>(c.unit);
    }
    // A supplementary character goes out as two three-byte sequences and comes back as a pair.
    const std::u16string pair = u"\xD83D\xDE00";
    const Bytes sixBytes = {0xED, 0xA0, 0xBD, 0xED, 0xB8, 0x80};
    EXPECT_EQ(StringToUTF8Bytes(pair), sixBytes);
    EXPECT_EQ(UTF8BytesToString(sixBytes), pair);
    EXPECT_TRUE(StringToUTF8Bytes(u"").empty());
    EXPECT_EQ(UTF8BytesToString(Bytes{}), u"");
    EXPECT_EQ(UTF8BytesToString(nullptr, 5), u"");
}

TEST(UniStringCore, RoundTripsGeneratedStrings) {
    std::mt19937 rng(20261121);
    // Many short strings, a hundred long ones, and one of a million code units.
    std::u16string big;
    while (big.size() < (size_t{1} << 20)) big += randomText(rng, 4096);
    for (int i = 0; i <= 3000; ++i) {
        const std::u16string s = i == 3000 ? big : randomText(rng, i < 2900 ? 64 : 5000);
        const Bytes bytes = StringToUTF8Bytes(s);
        ASSERT_EQ(bytes, referenceEncode(s)) << "case " << i;
        ASSERT_EQ(UTF8BytesToString(bytes), s) << "case " << i;
        const std::u16string image = StrToUTF8(s);
        ASSERT_EQ(image.size(), bytes.size());
        ASSERT_EQ(UTF8toStr(image), s) << "case " << i;
        ASSERT_TRUE(IsUTF8String(image)) << "case " << i;
        const std::u16string envelope = StrToHex(s);
        ASSERT_EQ(IsHexString(envelope), !s.empty()) << "case " << i;
        ASSERT_FALSE(IsUnicodeString(envelope));
        ASSERT_EQ(HextoStr(envelope), s) << "case " << i;
    }
}

TEST(UniStringCore, DecodesByTheLeadByteAlone) {
    struct Case { const char* what; Bytes in; std::u16string out; };
    const Case cases[] = {
        {"truncated three-byte sequence after A", {0x41, 0xE2, 0x82}, u"A"},
        {"lone three-byte lead", {0xE9}, u""},
        {"two-byte lead at the end", {0x41, 0x42, 0xDF}, u"AB"},
        {"continuation not inspected", {0xC3, 0x41}, u"\u00C1"},
        {"four-byte lead stands for itself", {0xF0, 0x9F, 0x98, 0x80}, u"\u00F0\u009F\u0098\u0080"},
        {"lead 244 stands for itself", {0xF4, 0x41}, u"\u00F4A"},
        {"lead 245 and 255", {0xF5, 0xFF}, u"\u00F5\u00FF"},
        {"overlong leads 192 and 193", {0xC0, 0x80, 0xC1, 0xBF}, u"\u00C0\u0080\u00C1\u00BF"},
        {"stray continuation bytes", {0x80, 0xBF}, u"\u0080\u00BF"},
        {"three-byte maximum", {0xEF, 0xBF, 0xBF, 0x7A}, u"\uFFFFz"},
        {"ASCII run longer than eight", {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i', 0xC3, 0xA9},
         u"abcdefghi\u00E9"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(UTF8BytesToString(c.in), c.out) << c.what;
        EXPECT_EQ(UTF8BytesToString(std::span<const uint8_t>(c.in)), c.out) << c.what;
    }
}

TEST(UniStringCore, CarriesUtf8ThroughCodePage1252) {
    struct Case { std::u16string text; std::u16string image; };
    const Case cases[] = {
        {u"", u""},
        {u"abc", u"abc"},
        {u"\u00E9", u"\u00C3\u00A9"},                          // C3 A9
        {u"\u20AC", u"\u00E2\u201A\u00AC"},                    // E2 82 AC: 82 is U+201A in 1252
        {u"\u0081", u"\u00C2\u0081"},                          // C2 81: 81 is undefined and kept
        {u"\u0800", u"\u00E0\u00A0\u20AC"},                    // E0 A0 80: 80 is the euro sign
        {u"\xD83D\xDE00", u"\u00ED\u00A0\u00BD\u00ED\u00B8\u20AC"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(StrToUTF8(c.text), c.image);
        EXPECT_EQ(UTF8toStr(c.image), c.text);
    }
    // "A" then the images of 226 and 130: the cut sequence and its lead byte are dropped.
    EXPECT_EQ(UTF8toStr(u"A\u00E2\u201A"), u"A");
    // U+0100 is not in code page 1252 and becomes "?" before decoding.
    EXPECT_EQ(UTF8toStr(u"a\u0100b"), u"a?b");
}

TEST(UniStringCore, TestsForUtf8UnicodeAndTheirQuirks) {
    struct Case { const char* what; std::u16string text; bool utf8; bool unicode; };
    const Case cases[] = {
        {"empty", u"", true, false},
        {"ASCII", u"Hello, world", true, false},
        {"U+00E9 alone: a cut three-byte lead", u"\u00E9", false, false},
        {"image of C3 A9", u"\u00C3\u00A9", true, false},
        {"image of E2 82 AC", u"\u00E2\u201A\u00AC", true, true},
        {"overlong C0 80", u"\u00C0\u20AC", false, true},
        {"four-byte F0 9F 98 80", u"\u00F0\u0178\u02DC\u20AC", false, true},
        {"outside code page 1252", u"\u0100", false, true},
        {"image of C2 81, an undefined 1252 byte", u"\u00C2\u0081", true, false},
        {"U+0080 is not a 1252 character", u"\u00C2\u0080", false, false},
        {"only U+00FF", std::u16string(300, u'\u00FF'), false, false},
        {"U+0100 at the end", u"abc\u0100", false, true},
        {"U+FFFF", u"\uFFFF", false, true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(IsUTF8String(c.text), c.utf8) << c.what;
        EXPECT_EQ(IsUnicodeString(c.text), c.unicode) << c.what;
        EXPECT_EQ(IsUTF16String(c.text), c.unicode) << c.what;
    }
}

TEST(UniStringCore, HexEnvelopeChecksumAndRoundTrip) {
    struct Sum { std::u16string text; std::u16string sum; };
    const Sum sums[] = {
        {u"", u"00"},
        {u"A", u"41"},
        {u"AB", u"03"},                 // 41 XOR 42
        {u"\u0102", u"03"},             // low byte 02 XOR high byte 01
        {u"QQA=", u"7C"},               // 51 51 41 3D
        {u"\uFFFF\u00FF", u"FF"},       // FF FF FF
        {u"\u0A0A", u"00"},
    };
    for (const Sum& s : sums) EXPECT_EQ(GetStringChecksum(s.text), s.sum);

    EXPECT_EQ(StrToHex(u""), u"");
    EXPECT_EQ(StrToHex(u"A"), u"0XQQA=7C");
    EXPECT_EQ(HextoStr(u"0XQQA=7C"), u"A");

    struct Check { std::u16string text; bool isHex; };
    const Check checks[] = {
        {u"0X00", true},       {u"0x00", false},     {u"0X0", false},  {u"", false},
        {u"0XQQA=7C", true},   {u"0XQQA=7D", false}, {u"0XQQA=7c", false},  // the digits' case counts
        {u"0X0001", false},    {u"X0QQA=7C", false},
    };
    for (const Check& c : checks) {
        EXPECT_EQ(IsHexString(c.text), c.isHex) << "case of " << c.text.size() << " units";
        if (!c.isHex) {
            EXPECT_EQ(HextoStr(c.text), c.text);
        }
    }
    EXPECT_EQ(HextoStr(u"0X00"), u"");
}

TEST(UniStringCore, AscWAndChrW) {
    struct Asc { std::u16string c; int32_t code; };
    const Asc ascs[] = {
        {u"A", 65}, {u"ab", 97}, {u"\uFFFF", 65535}, {u"\u8000", 32768}, {u"\u7FFF", 32767},
        {std::u16string(1, u'\0'), 0}, {u"\xD83D\xDE00", 0xD83D},
    };
    for (const Asc& a : ascs) EXPECT_EQ(AscW(a.c), a.code);
    struct Chr { int32_t l; char16_t unit; };
    const Chr chrs[] = {{65, u'A'}, {-1, u'\uFFFF'}, {65535, u'\uFFFF'}, {0, u'\0'},
                        {-32768, u'\u8000'}, {-65536, u'\0'}, {32767, u'\u7FFF'}};
    for (const Chr& c : chrs) EXPECT_EQ(ChrW(c.l), std::u16string(1, c.unit)) << c.l;
    for (const int32_t bad : {65536, -65537, INT32_MAX, INT32_MIN}) EXPECT_EQ(RaisedNumber([&] { ChrW(bad); }), 5) << bad;
    EXPECT_EQ(RaisedNumber([] { AscW(u""); }), 5);
}

TEST(UniStringCore, AnsiChoiceFollowsTheCodePage) {
    const bool page1252 = platform::AnsiCodePage() == 1252;
    EXPECT_EQ(IsCodePage1252(), page1252);
    if (!IsUnicodeSystem()) {
        EXPECT_TRUE(CanUseAnsiForString(u"\u0100"));
        return;
    }
    // On a Unicode system even plain ASCII is refused unless the page is 1252.
    EXPECT_EQ(CanUseAnsiForString(u"abc"), page1252);
    EXPECT_EQ(CanUseAnsiForString(u"\u00E9\u00FF"), page1252);
    EXPECT_FALSE(CanUseAnsiForString(u"a\u0100"));
    EXPECT_EQ(CanUseAnsiForString(u""), page1252);
}
