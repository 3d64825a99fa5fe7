// Tests of clsBase64: encoding, the decoder's unchecked arithmetic and truncation, Span and Unspan.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "RaisedError.h"
#include "common/CtlError.h"
#include "platform/CodePage.h"
#include "text/clsBase64.h"

namespace {

using Bytes = std::vector<uint8_t>;

Bytes bytesOf(const std::string& s) {
    return Bytes(s.begin(), s.end());
}

Bytes decode(const Bytes& in) {
    Bytes out;
    ThreadBase64().DecodeB64(in, out);
    return out;
}

}  // namespace

TEST(clsBase64, Tables) {
    const clsBase64& codec = ThreadBase64();
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (size_t i = 0; i < 64; ++i) {
        EXPECT_EQ(codec.EncodeTable()[i], static_cast<uint8_t>(alphabet[i]));
        EXPECT_EQ(codec.DecodeTable()[static_cast<uint8_t>(alphabet[i])], i);
    }
    EXPECT_EQ(codec.DecodeTable()[61], 64);  // "="
    for (const int other : {0, 64, 91, 96, 123, 45, 95, 128, 200, 233}) {  // NUL @ [ ` { - _ and high bytes
        EXPECT_EQ(codec.DecodeTable()[other], 255) << other;
    }
}

TEST(clsBase64, EncodesKnownVectors) {
    struct Case { std::u16string text; bool unicode; std::u16string b64; };
    const Case cases[] = {
        {u"", false, u""},          {u"f", false, u"Zg=="},         {u"fo", false, u"Zm8="},
        {u"foo", false, u"Zm9v"},   {u"foob", false, u"Zm9vYg=="},  {u"fooba", false, u"Zm9vYmE="},
        {u"foobar", false, u"Zm9vYmFy"},
        {u"A", true, u"QQA="},      {u"", true, u""},
        {u"\u00FF", false, u"/w=="},                 // one byte 255
        {u"\u20AC", true, u"rCA="},                  // AC 20
        {u"\uFBFF", true, u"//s="},                  // FF FB
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ThreadBase64().GetEncodedB64String(c.text, c.unicode), c.b64);
        EXPECT_EQ(ThreadBase64().GetDecodedB64String(c.b64, c.unicode), c.text);
    }
}

TEST(clsBase64, RoundTripsAllByteValuesAndWrappedText) {
    std::mt19937 rng(4648);
    std::uniform_int_distribution<int> byteValue(0, 255);
    const clsBase64& codec = ThreadBase64();
    for (size_t len = 0; len < 300; ++len) {
        Bytes data(len);
        for (uint8_t& b : data) b = static_cast<uint8_t>(byteValue(rng));
        Bytes text;
        codec.EncodeB64(data, text);
        ASSERT_EQ(text.size(), (len + 2) / 3 * 4);
        ASSERT_EQ(decode(text), data) << "length " << len;
        Bytes wrapped;
        codec.Span(static_cast<int32_t>(1 + len % 19), text, wrapped);
        ASSERT_EQ(decode(wrapped), data) << "wrapped, length " << len;
    }
}

TEST(clsBase64, DecoderTruncatesAndDoesNotCheck) {
    struct Case { const char* text; Bytes out; };
    const Case cases[] = {
        {"", {}},
        {"Zg==", {'f'}},
        {"Zg=\r\n=", {'f'}},
        {" Z g = =\t", {'f'}},
        {"Zm8", {'f', 'o'}},               // 3 characters: 2.25 rounds to 2 bytes
        {"Zg", {'f', 0}},                  // 1.5 rounds half to even: 2 bytes
        {"Zm9vY", {'f', 'o', 'o', 96}},    // 3.75 rounds to 4; "Y" alone gives 24 × 4
        {"Zm9vYg", {'f', 'o', 'o', 'b'}},  // 4.5 rounds to 4
        {"Zm9vYmE", {'f', 'o', 'o', 'b', 'a'}},
        {"=", {}},
        {"==", {}},
        {"A===", {0}},                     // padding 2: one byte, 0 × 4 + (64 \ 16 AND 3)
        {"*AAA", {252, 0, 0}},             // 255 × 4 keeps its low eight bits
        {"A*AA", {3, 240, 0}},             // 255 \ 16 AND 3, then 255 × 16
        {"AA*A", {0, 15, 192}},            // 255 \ 4 AND 15, then 255 × 64
        {"QQ=A", {'A', 0, 0}},             // "=" inside counts 64: 16 × 16 + (64 \ 4 AND 15) wraps to 0
    };
    for (const Case& c : cases) EXPECT_EQ(decode(bytesOf(c.text)), c.out) << '"' << c.text << '"';
    // Byte 233 is the table's last entry (value 255); 234 and above lie beyond it.
    EXPECT_EQ(decode(Bytes{233, 'A', 'A', 'A'}), (Bytes{252, 0, 0}));
    for (const uint8_t beyond : {234, 240, 255}) {
        Bytes out{1, 2, 3};
        EXPECT_EQ(RaisedNumber([&] { ThreadBase64().DecodeB64(Bytes{'Q', 'Q', 'A', '=', beyond, 'A', 'A', 'A'}, out); }), 9);
        EXPECT_TRUE(out.empty()) << static_cast<int>(beyond);
    }
    // The string calls swallow that error and give an empty string.
    EXPECT_EQ(ThreadBase64().GetDecodedB64String(u"Zm9v\u00EA", false), u"");
    EXPECT_EQ(ThreadBase64().GetDecodedB64String(u"Zm9v\u00E9", false), u"foo\u00FC");  // 233: value 255, × 4 gives 252
    // An odd byte count leaves the last byte without a code unit.
    EXPECT_EQ(ThreadBase64().GetDecodedB64String(u"QUI=", true), u"\u4241");
    EXPECT_EQ(ThreadBase64().GetDecodedB64String(u"QQ==", true), u"");
}

TEST(clsBase64, SpanAndUnspan) {
    const clsBase64& codec = ThreadBase64();
    struct Case { int32_t line; const char* in; const char* out; };
    const Case cases[] = {
        {3, "abcdefg", "abc\r\ndef\r\ng"},
        {3, "abcdef", "abc\r\ndef\r\n"},
        {1, "ab", "a\r\nb\r\n"},
        {10, "abc", "abc"},
        {4, "", ""},
    };
    for (const Case& c : cases) {
        Bytes out{9, 9};
        codec.Span(c.line, bytesOf(c.in), out);
        EXPECT_EQ(out, bytesOf(c.out)) << c.in << " / " << c.line;
    }
    for (const int32_t bad : {0, -1}) {
        Bytes out;
        EXPECT_EQ(RaisedNumber([&] { codec.Span(bad, bytesOf("abc"), out); }), 5) << bad;
    }
    Bytes cleaned;
    codec.Unspan(u" Zm\t9v\r\nYm\nFy ", cleaned);
    EXPECT_EQ(cleaned, bytesOf("Zm9vYmFy"));
    if (platform::AnsiCodePage() == 1252) {
        codec.Unspan(u"\u00E9 \u20AC", cleaned);
        EXPECT_EQ(cleaned, (Bytes{0xE9, 0x80}));
    }
}

TEST(clsBase64, OneCodecPerThread) {
    const clsBase64* here = &ThreadBase64();
    EXPECT_EQ(here, &ThreadBase64());
    const clsBase64* there = nullptr;
    std::thread other([&there] { there = &ThreadBase64(); });
    other.join();
    EXPECT_NE(there, nullptr);
    EXPECT_NE(there, here);
}
