// Tests of the fixed code page 1252 table and of the ANSI conversions of the platform seam.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/CodePage.h"

#if !defined(_WIN32)
#include <iconv.h>
#endif

TEST(CodePage, Table1252AgainstKnownEntriesAndInverse) {
    struct Entry { uint8_t byte; char16_t unit; };
    // Entries of the published code page 1252, and the five bytes it leaves undefined.
    const Entry entries[] = {
        {0x41, u'A'},     {0x7F, 0x007F},   {0x80, 0x20AC}, {0x81, 0x0081}, {0x82, 0x201A}, {0x83, 0x0192},
        {0x85, 0x2026},   {0x8A, 0x0160},   {0x8C, 0x0152}, {0x8D, 0x008D}, {0x8E, 0x017D}, {0x8F, 0x008F},
        {0x90, 0x0090},   {0x91, 0x2018},   {0x94, 0x201D}, {0x96, 0x2013}, {0x97, 0x2014}, {0x99, 0x2122},
        {0x9C, 0x0153},   {0x9D, 0x009D},   {0x9F, 0x0178}, {0xA0, 0x00A0}, {0xE9, 0x00E9}, {0xFF, 0x00FF},
    };
    for (const Entry& e : entries) EXPECT_EQ(platform::Cp1252ByteToUnit(e.byte), e.unit) << static_cast<int>(e.byte);
    for (int b = 0; b < 256; ++b) {
        const char16_t unit = platform::Cp1252ByteToUnit(static_cast<uint8_t>(b));
        EXPECT_EQ(platform::Cp1252UnitToByte(unit), b) << b;
    }
    // Characters the page lacks take "?".
    for (const char16_t missing : {char16_t{0x0080}, char16_t{0x009F}, char16_t{0x0100}, char16_t{0x20AD},
                                   char16_t{0xFFFF}, char16_t{0xD800}}) {
        EXPECT_EQ(platform::Cp1252UnitToByte(missing), 63) << static_cast<int>(missing);
    }
}

#if !defined(_WIN32)
// The C library's own CP1252 converter is an independent source for the 251 defined bytes.
TEST(CodePage, Table1252MatchesTheSystemConverter) {
    iconv_t cd = iconv_open("UTF-16LE", "CP1252");
    if (cd == reinterpret_cast<iconv_t>(-1)) GTEST_SKIP() << "no CP1252 converter in this C library";
    int compared = 0;
    for (int b = 0; b < 256; ++b) {
        char in[1] = {static_cast<char>(b)};
        char out[4] = {};
        char* inPtr = in;
        char* outPtr = out;
        size_t inLeft = 1;
        size_t outLeft = sizeof out;
        iconv(cd, nullptr, nullptr, nullptr, nullptr);
        if (iconv(cd, &inPtr, &inLeft, &outPtr, &outLeft) == static_cast<size_t>(-1)) {
            continue;  // one of the undefined bytes
        }
        const char16_t unit = static_cast<char16_t>(static_cast<uint8_t>(out[0]) | (static_cast<uint8_t>(out[1]) << 8));
        EXPECT_EQ(platform::Cp1252ByteToUnit(static_cast<uint8_t>(b)), unit) << b;
        ++compared;
    }
    iconv_close(cd);
    EXPECT_GE(compared, 251);
}
#endif

TEST(CodePage, AnsiConversionsOfTheSystem) {
    if (platform::AnsiCodePage() != 1252) GTEST_SKIP() << "the system's ANSI code page is " << platform::AnsiCodePage();
    const std::u16string text = u"A\u00E9\u20AC\u0178";
    const std::vector<uint8_t> bytes = {0x41, 0xE9, 0x80, 0x9F};
    EXPECT_EQ(platform::WideToAnsi(text), bytes);
    EXPECT_EQ(platform::AnsiToWide(bytes), text);
    EXPECT_TRUE(platform::WideToAnsi(u"").empty());
    EXPECT_TRUE(platform::AnsiToWide(std::vector<uint8_t>{}).empty());
    // One byte per character either way, whatever the character.
    EXPECT_EQ(platform::WideToAnsi(u"\u4E2D\u6587").size(), 2u);
}
