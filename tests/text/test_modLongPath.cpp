#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "RaisedError.h"
#include "support/TempDir.h"
#include "common/CtlError.h"
#include "text/WindowsVersion.h"
#include "text/modLongPath.h"

using testsupport::Utf8;

TEST(modLongPath, MakeLongPathPrefixesAllButUncAndPrefixedPaths) {
    // Every host these tests run on reports a system of class 7 or above.
    ASSERT_GE(GetWindowsVersion(), ctl_ewt_WinNt4);
    struct Case { std::u16string in; std::u16string out; };
    const Case cases[] = {
        {u"c:\\a", u"\\\\?\\c:\\a"},
        {u"\\\\server\\share", u"\\\\server\\share"},
        {u"\\\\?\\c:\\a", u"\\\\?\\c:\\a"},
        {u"relative\\x.txt", u"\\\\?\\relative\\x.txt"},
        {u"c:/web/style", u"\\\\?\\c:/web/style"},
        {u"\\single", u"\\\\?\\\\single"},
        {u"", u"\\\\?\\"},
    };
    for (const Case& c : cases) EXPECT_EQ(MakeLongPath(c.in), c.out) << Utf8(c.in);
}

TEST(modLongPath, FilePathTakesTheFolderPart) {
    struct Case { std::u16string in; std::u16string noSlash; std::u16string withSlash; };
    const Case cases[] = {
        {u"c:\\a\\b.txt", u"c:\\a", u"c:\\a\\"},
        {u"b.txt", u"", u""},
        {u"c:\\a\\\\\\b.txt", u"c:\\a", u"c:\\a\\"},
        {u"c:\\a\\", u"c:\\a", u"c:\\a\\"},
        {u"c:\\", u"c:", u"c:\\"},
        {u"\\\\server\\share\\f.ini", u"\\\\server\\share", u"\\\\server\\share\\"},
        {u"\\f", u"", u""},
        {u"", u"", u""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ufu_FilePath(c.in, false), c.noSlash) << Utf8(c.in);
        EXPECT_EQ(ufu_FilePath(c.in, true), c.withSlash) << Utf8(c.in);
    }
    for (const std::u16string web : {u"c:/a/b.txt", u"c:\\a/b", u"/"}) {
        EXPECT_EQ(RaisedBy([&] { ufu_FilePath(web, false); }), "ufu_FilePath|Not a local path|-2147221503") << Utf8(web);
    }
}

TEST(modLongPath, Utf8FileDecoderFollowsItsOwnLeadByteTable) {
    struct Case { const char* name; std::vector<uint8_t> in; std::u16string out; };
    const Case cases[] = {
        {"empty", {}, u""},
        {"ascii", {65, 66}, u"AB"},
        {"220 is no lead byte here", {220, 128}, std::u16string{char16_t(220), char16_t(128)}},
        {"two-byte form", {195, 169}, u"\u00E9"},
        {"last two-byte lead", {219, 191}, std::u16string{char16_t(27 * 64 + 63)}},
        {"192 and 193 stand alone", {192, 193, 65}, std::u16string{char16_t(192), char16_t(193), u'A'}},
        {"three-byte form", {226, 130, 172}, u"\u20AC"},
        // 240 takes the three-byte form: (240 AND 15) * 4096 + 31 * 64 + 24, then 128 alone.
        {"240 counts as three-byte lead", {240, 159, 152, 128}, std::u16string{char16_t(2008), char16_t(128)}},
        {"surrogates as two three-byte forms", {237, 160, 189, 237, 184, 128}, u"\xD83D\xDE00"},
        {"truncated three-byte form", {65, 226, 130}, u"A"},
        {"truncated two-byte form", {65, 200}, u"A"},
        {"lone continuation", {128, 65}, std::u16string{char16_t(128), u'A'}},
    };
    for (const Case& c : cases) EXPECT_EQ(ufu_UTF8BytesToString(c.in), c.out) << c.name;
}

TEST(modLongPath, UniAppPathIsTheFolderOfThisProgram) {
    const std::u16string folder = UniAppPath();
    ASSERT_FALSE(folder.empty());
    EXPECT_NE(folder.back(), u'\\');
    EXPECT_EQ(folder.find(u'/'), std::u16string::npos);
#if defined(_WIN32)
    const std::u16string program = folder + u"\\test_text.exe";
#else
    const std::u16string program = folder + u"\\test_text";
#endif
    EXPECT_TRUE(testsupport::TempDir::Exists(program)) << Utf8(program);
}
