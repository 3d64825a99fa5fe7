#include "text/clsFileIni.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "RaisedError.h"
#include "IniTestSupport.h"
#include "common/CtlError.h"
#include "platform/PrivateProfile.h"
#include "text/modLongPath.h"

// The same tests run against the platform's own profile calls under Wine and against the
// library's POSIX version of them natively, so both are held to one behaviour.

namespace {

using testsupport::Bytes;
using testsupport::Utf8;
using testsupport::TempDir;

using Rows = std::vector<std::u16string>;

const std::u16string kGreek = u"\u03A9\u03BC\u03AD\u03B3\u03B1";

bool StartsWithUtf16Mark(const std::vector<uint8_t>& bytes) {
    return bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE;
}

TEST(clsFileIni, ValuesAreReadAsTheProfileCallsGiveThem) {
    TempDir folder;
    clsFileIni ini;
    ini.IniFile(folder.File(u"values.ini"));
    TempDir::WriteBytes(ini.IniFile(), Bytes("[Q]\r\n"
                                    "a=\"quoted\"\r\n"
                                    "b='single'\r\n"
                                    "c=\"unbalanced\r\n"
                                    "d=  spaced  \r\n"
                                    "  e  =  5\r\n"
                                    "empty=\r\n"
                                    "t=1\r\n"
                                    "f=true\r\n"
                                    "; k=commented\r\n"
                                    "[other]\r\n"
                                    "a=other a\r\n"));
    const struct { std::u16string section, key, fallback, expected; } cases[] = {
        {u"q", u"A", u"", u"quoted"},
        {u"Q", u"b", u"", u"single"},
        {u"Q", u"c", u"", u"\"unbalanced"},
        {u"Q", u"d", u"", u"spaced"},
        {u"Q", u"e", u"", u"5"},
        {u"Q", u"empty", u"dflt", u""},  // present but empty: not the default
        {u"Q", u"missing", u"dflt", u"dflt"},
        {u"missing", u"a", u"dflt", u"dflt"},
        {u"OTHER", u"a", u"", u"other a"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ini.ReadString(c.section, c.key, c.fallback), c.expected)
            << "[" << Utf8(c.section) << "] " << Utf8(c.key);
    }
    const struct {
        std::u16string key;
        bool fallback, expected;
    } bools[] = {{u"t", false, true}, {u"f", true, false}, {u"missing", true, true}, {u"missing", false, false}};
    for (const auto& c : bools) EXPECT_EQ(ini.ReadBool(u"Q", c.key, c.fallback), c.expected) << Utf8(c.key);

    clsFileIni absent;
    absent.IniFile(folder.File(u"absent.ini"));
    EXPECT_EQ(absent.ReadString(u"s", u"k", u"dflt"), u"dflt");
    absent.IniFile(folder.File(u"no\\such\\folder.ini"));
    absent.WriteString(u"s", u"k", u"v");  // nowhere to go, and no error
    EXPECT_EQ(absent.ReadString(u"s", u"k", u"dflt"), u"dflt");
}

TEST(clsFileIni, WritesAddReplaceAndRoundTrip) {
    TempDir folder;
    clsFileIni ini;
    ini.IniFile(folder.File(u"written.ini"));
    ini.WriteString(u"first", u"k", u"1");
    ini.WriteString(u"second", u"k", u"2");
    ini.WriteString(u"FIRST", u"j", u"added");
    ini.WriteString(u"first", u"K", u"replaced");
    ini.WriteBool(u"second", u"on", true);
    ini.WriteBool(u"second", u"off", false);
    EXPECT_EQ(ini.ReadString(u"first", u"k"), u"replaced");
    EXPECT_EQ(ini.ReadString(u"first", u"j"), u"added");
    EXPECT_TRUE(ini.ReadBool(u"second", u"on"));
    EXPECT_FALSE(ini.ReadBool(u"second", u"off", true));
    EXPECT_EQ(ini.ReadString(u"second", u"on"), u"1");

    Rows rows;
    ini.GetSectionNames(rows);
    EXPECT_EQ(rows, (Rows{u"first", u"second", u""}));
    ini.GetSectionRows(u"First", rows);
    EXPECT_EQ(rows, (Rows{u"k=replaced", u"j=added", u""}));
    ini.GetSectionRows(u"", rows);
    EXPECT_TRUE(rows.empty());
    ini.GetSectionRows(u"missing", rows);
    EXPECT_TRUE(rows.empty());

    // A value of a few kilobytes goes whole; the read buffer holds 10,239 characters and the end.
    const std::u16string longValue(20000, u'x');
    ini.WriteString(u"long", u"v", longValue);
    EXPECT_EQ(ini.ReadString(u"long", u"v"), longValue.substr(0, 10239));

    // Nothing here writes a mark into a file whose text the code page holds.
    EXPECT_FALSE(StartsWithUtf16Mark(TempDir::ReadBytes(ini.IniFile())));
}

TEST(clsFileIni, TheFirstTextThatNeedsItTurnsTheFileUtf16) {
    TempDir folder;
    // A Greek value on a new file: the file is made UTF-16 first.
    clsFileIni greekValue;
    greekValue.IniFile(folder.File(u"value.ini"));
    greekValue.WriteString(u"s", u"k", kGreek);
    EXPECT_TRUE(StartsWithUtf16Mark(TempDir::ReadBytes(greekValue.IniFile())));
    EXPECT_EQ(greekValue.ReadString(u"s", u"k"), kGreek);
    greekValue.WriteString(u"\u0394", u"k", u"plain");  // a Greek section in a file that is UTF-16 now
    EXPECT_EQ(greekValue.ReadString(u"\u0394", u"K"), u"plain");

    // A Greek key alone doesn't count: the key is narrowed and its letters are lost.
    clsFileIni greekKey;
    greekKey.IniFile(folder.File(u"key.ini"));
    greekKey.WriteString(u"s", u"\u03BA\u03BB", u"v");
    EXPECT_FALSE(StartsWithUtf16Mark(TempDir::ReadBytes(greekKey.IniFile())));
    EXPECT_EQ(greekKey.ReadString(u"s", u"\u03BA\u03BB", u"dflt"), u"dflt");
    EXPECT_EQ(greekKey.ReadString(u"s", u"??"), u"v");

    // An ANSI file keeps what it had when it turns.
    clsFileIni existing;
    existing.IniFile(folder.File(u"existing.ini"));
    TempDir::WriteBytes(existing.IniFile(), Bytes("[old]\r\nx=1\r\ny=caf\xE9\r\n"));
    existing.WriteString(u"new", u"g", kGreek);
    EXPECT_TRUE(StartsWithUtf16Mark(TempDir::ReadBytes(existing.IniFile())));
    EXPECT_EQ(existing.ReadString(u"old", u"x"), u"1");
    EXPECT_EQ(existing.ReadString(u"old", u"y"), u"caf\u00E9");
    EXPECT_EQ(existing.ReadString(u"new", u"g"), kGreek);
}

TEST(clsFileIni, RepeatedSectionsLinesWithoutEqualsAndThePreamble) {
    TempDir folder;
    clsFileIni ini;
    ini.IniFile(folder.File(u"shapes.ini"));
    TempDir::WriteBytes(ini.IniFile(), Bytes("top=1\r\n[Q]\r\na=\"quoted\"\r\n  e  =  5  \r\nnoeq\r\n; k=c\r\n\r\n"
                                    "empty=\r\n[Q]\r\nz=dup\r\n[ Sp ]\r\nx=1\r\n"));
    Rows rows;
    // Section lines come trimmed around the "=", unquoted values stay quoted, comments are left out.
    ini.GetSectionRows(u"Q", rows);
    EXPECT_EQ(rows, (Rows{u"a=\"quoted\"", u"e=5", u"noeq", u"empty=", u""}));
    ini.GetSectionNames(rows);
    EXPECT_EQ(rows, (Rows{u"Q", u"Q", u"Sp", u""}));
    const struct { std::u16string section, key, expected; } cases[] = {
        {u"Q", u"z", u"dflt"},     // only the first [Q] is read
        {u"Q", u"noeq", u"dflt"},  // a line without "=" is no key
        {u"", u"top", u"1"},       // the lines before the first header
        {u"sp", u"x", u"1"},
    };
    for (const auto& c : cases) EXPECT_EQ(ini.ReadString(c.section, c.key, u"dflt"), c.expected) << Utf8(c.key);
    // A new key goes behind the last line of the first section of its name.
    ini.WriteString(u"q", u"new", u"n");
    ini.GetSectionRows(u"Q", rows);
    EXPECT_EQ(rows, (Rows{u"a=\"quoted\"", u"e=5", u"noeq", u"empty=", u"new=n", u""}));
}

TEST(clsFileIni, PathsBeyond260Characters) {
#if defined(_WIN32)
    // Seen under Wine 8: the profile calls refuse a path beyond MAX_PATH, prefix or not, while
    // the library's own file calls take it (see the clsFileIniEx test of the same path).
    GTEST_SKIP() << "the platform's profile calls stop at MAX_PATH";
#endif
    TempDir folder;
    std::u16string deep = folder.Path();
    while (deep.size() < 300) deep += u"\\" + std::u16string(40, u'd');
    ASSERT_TRUE(ufu_MakePath(deep));
    clsFileIni ini;
    ini.IniFile(deep + u"\\long.ini");
    ini.WriteString(u"s", u"k", u"v");
    ini.WriteString(u"s", u"g", kGreek);
    EXPECT_EQ(ini.ReadString(u"s", u"k"), u"v");
    EXPECT_EQ(ini.ReadString(u"s", u"g"), kGreek);
    EXPECT_TRUE(StartsWithUtf16Mark(TempDir::ReadBytes(ini.IniFile())));
}

TEST(clsFileIni, SectionRowsSplitAtTheFirstEquals) {
    clsFileIni ini;
    ini.IniFile(u"unused.ini");
    const Rows rows{u"k=v", u"=x", u"noeq", u"", u"a=b=c", u" k = v "};
    const struct { int16_t idx; std::u16string key, value; } cases[] = {
        {0, u"k", u"v"}, {1, u"", u""}, {2, u"", u""}, {3, u"", u""}, {4, u"a", u"b=c"}, {5, u" k ", u" v "},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ini.GetSectionRowKey(rows, c.idx), c.key) << c.idx;
        EXPECT_EQ(ini.GetSectionRowValue(rows, c.idx), c.value) << c.idx;
    }
    EXPECT_THROW(ini.GetSectionRowKey(rows, 6), CtlError);
    EXPECT_THROW(ini.GetSectionRowValue(rows, -1), CtlError);
}

TEST(clsFileIni, EveryMemberNeedsAFile) {
    clsFileIni ini;
    Rows rows;
    const struct { const char* what; void (*call)(clsFileIni&, Rows&); } calls[] = {
        {"ReadString", [](clsFileIni& i, Rows&) { i.ReadString(u"a", u"b"); }},
        {"WriteString", [](clsFileIni& i, Rows&) { i.WriteString(u"a", u"b", u"c"); }},
        {"GetSectionRowKey", [](clsFileIni& i, Rows& r) { i.GetSectionRowKey(r, 0); }},
        {"GetSectionRows", [](clsFileIni& i, Rows& r) { i.GetSectionRows(u"a", r); }},
    };
    for (const auto& c : calls) {
        EXPECT_THAT(RaisedBy([&] { c.call(ini, rows); }), testing::EndsWith("|I need a file!|-2147221503")) << c.what;
    }
    EXPECT_EQ(ini.IniFile(), u"");
}

TEST(clsFileIni, ProfileDeletionsAndReadOnlyFiles) {
    TempDir folder;
    const std::u16string path = folder.File(u"delete.ini");
    const std::u16string longPath = MakeLongPath(path);
    TempDir::WriteBytes(path, Bytes("[a]\r\nk=1\r\nj=2\r\n[b]\r\nm=3\r\n"));
    // No value deletes the key; no key deletes the section.
    EXPECT_TRUE(platform::ProfileWriteString(longPath, u"A", u"K", std::nullopt));
    EXPECT_EQ(platform::ProfileGetString(longPath, u"a", u"k", u"gone", 100), u"gone");
    EXPECT_EQ(platform::ProfileGetString(longPath, u"a", u"j", u"", 100), u"2");
    EXPECT_EQ(platform::ProfileGetKeys(longPath, u"a", 100), std::u16string(u"j\0", 2));
    EXPECT_TRUE(platform::ProfileWriteString(longPath, u"a", std::nullopt, std::nullopt));
    EXPECT_EQ(platform::ProfileGetSectionNames(longPath, 100), std::u16string(u"b\0", 2));
    // A list too long for its buffer is cut, leaving room for the two final zeros.
    TempDir::WriteBytes(path, Bytes("[abc]\r\n[def]\r\n"));
    EXPECT_EQ(platform::ProfileGetSectionNames(longPath, 6), std::u16string(u"abc\0", 4));

    clsFileIni ini;
    ini.IniFile(folder.File(u"locked.ini"));
    TempDir::WriteBytes(ini.IniFile(), Bytes("[s]\r\nk=1\r\n"));
    if (!initest::MakeReadOnly(ini.IniFile())) GTEST_SKIP() << "this host writes into read-only files";
    ini.WriteString(u"s", u"k", u"2");
    EXPECT_EQ(ini.ReadString(u"s", u"k"), u"1");
    // Turning a read-only file into UTF-16 fails loudly.
    EXPECT_THROW(ini.WriteString(u"s", u"g", kGreek), CtlError);
    EXPECT_EQ(TempDir::ReadBytes(ini.IniFile()), Bytes("[s]\r\nk=1\r\n"));
}

}  // namespace
