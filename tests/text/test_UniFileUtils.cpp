#include "RaisedError.h"
#include "text/UniFileUtils.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "IniTestSupport.h"
#include "common/CtlError.h"
#include "platform/CodePage.h"
#include "text/clsUniFile.h"

namespace {

using testsupport::Bytes;
using testsupport::Utf8;
using testsupport::TempDir;

TEST(UniFileUtils, PathPartsFollowTheLastSeparators) {
    const struct { std::u16string path, name, ext, nameNoExt; } cases[] = {
        {u"c:\\a\\b.txt", u"b.txt", u"txt", u"b"},
        {u"c:\\a.b\\c", u"c", u"", u"c"},  // the point belongs to a folder
        {u"a.tar.gz", u"a.tar.gz", u"gz", u"a.tar"},
        {u"c:\\dir\\.ini", u".ini", u"ini", u""},
        {u"file:///c:/a%20b.txt?x=1", u"a b.txt?x=1", u"txt?x=1", u"a b"},
        {u"noext", u"noext", u"", u"noext"},
        {u"c:\\dir\\", u"", u"", u""},
        {u"c|/x/y.z", u"y.z", u"z", u"y"},
        {u"http://host/a.b", u"a.b", u"b", u"a"},  // links are localized without complaint here
        {u"a&amp;b.txt", u"a&b.txt", u"txt", u"a&b"},
        {u"", u"", u"", u""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ufu_FileName(c.path), c.name) << Utf8(c.path);
        EXPECT_EQ(ufu_FileExt(c.path), c.ext) << Utf8(c.path);
        EXPECT_EQ(ufu_FileNameNoExt(c.path), c.nameNoExt) << Utf8(c.path);
    }
}

TEST(UniFileUtils, TrailingSeparatorsAreAddedAndRemoved) {
    const struct { std::u16string in, none, one; } local[] = {
        {u"c:\\\\\\", u"c:", u"c:\\"},
        {u"c:\\a", u"c:\\a", u"c:\\a\\"},
        {u"c:", u"c:", u"c:\\"},
        {u"\\\\", u"", u""},
        {u"", u"", u""},
    };
    for (const auto& c : local) {
        EXPECT_EQ(ufu_NoBackSlash(c.in), c.none) << Utf8(c.in);
        EXPECT_EQ(ufu_OneBackSlash(c.in), c.one) << Utf8(c.in);
    }
    const struct { std::u16string in, none, one; } web[] = {
        {u"http://h/a//", u"http://h/a", u"http://h/a/"},
        {u"a", u"a", u"a/"},
        {u"///", u"", u""},
        {u"", u"", u""},
    };
    for (const auto& c : web) {
        EXPECT_EQ(ufu_NoSlashWeb(c.in), c.none) << Utf8(c.in);
        EXPECT_EQ(ufu_OneSlashWeb(c.in), c.one) << Utf8(c.in);
    }
}

TEST(UniFileUtils, PathsAreClassifiedByTheirCharactersAndPrefixes) {
    const struct { std::u16string path; bool local, web, unc, fileUrl, link; } cases[] = {
        {u"c:\\a", true, false, false, false, false},
        {u"a\\b/c", true, true, false, false, false},
        {u"name.txt", false, false, false, false, false},
        {u"\\\\server\\x", true, false, true, false, false},
        {u"File:///c:/x", false, true, false, true, true},
        {u"HTTPS://x", false, true, false, false, true},
        {u"mailto:me", false, false, false, false, true},
        {u"project://x", false, true, false, false, true},
        {u"ftp:/x", false, true, false, false, false},
        {u" http://x", false, true, false, false, false},  // prefixes only
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ufu_IsLocalPath(c.path), c.local) << Utf8(c.path);
        EXPECT_EQ(ufu_IsWebPath(c.path), c.web) << Utf8(c.path);
        EXPECT_EQ(ufu_IsUncPath(c.path), c.unc) << Utf8(c.path);
        EXPECT_EQ(ufu_IsFileUrl(c.path), c.fileUrl) << Utf8(c.path);
        EXPECT_EQ(ufu_IsLinkUrl(c.path), c.link) << Utf8(c.path);
    }
}

TEST(UniFileUtils, LocalizePathTurnsFileLinksIntoPaths) {
    const struct { std::u16string in, out; } cases[] = {
        {u"file:///c:/dir/a%20b.txt", u"c:\\dir\\a b.txt"},
        {u"FILE://server/share/x", u"server\\share\\x"},
        {u"c|/a", u"c:\\a"},
        {u"a/b#frag?q", u"a\\b#frag?q"},
        {u"x&amp;y%20z%20", u"x&y z "},
        {u"file://a:///b", u"b"},  // the first ":///" wins over the scheme's own "://"
    };
    for (const auto& c : cases) EXPECT_EQ(ufu_LocalizePath(c.in, true), c.out) << Utf8(c.in);
    EXPECT_EQ(ufu_LocalizePath(u"http://h/p", false), u"http:\\\\h\\p");
}

TEST(UniFileUtils, PathErrorsNameTheFunctionThatRaised) {
    const struct { std::u16string (*call)(const std::u16string&); std::u16string argument, source, text; } cases[] = {
        {ufu_OneBackSlash, u"a/b", u"ufu_OneBackSlash", u"Not a local path"},
        {ufu_NoBackSlash, u"a/", u"ufu_NoBackSlash", u"Not a local path"},
        {ufu_OneSlashWeb, u"a\\b", u"ufu_OneSlashWeb", u"Not a web path"},
        {ufu_NoSlashWeb, u"a\\", u"ufu_NoSlashWeb", u"Not a web path"},
        {[](const std::u16string& s) { return ufu_LocalizePath(s, true); }, u"http://x", u"ufu_LocalizePath",
         u"Cannot Localize Link!"},
        {[](const std::u16string& s) { return ufu_LocalizePath(s, true); }, u"mailto:a@b", u"ufu_LocalizePath",
         u"Cannot Localize Link!"},
        {[](const std::u16string& s) { return std::u16string(ufu_MakePath(s) ? u"1" : u"0"); }, u"c:/x",
         u"ufu_MakePath", u"Not a local path"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(RaisedBy([&] { c.call(c.argument); }), Utf8(c.source + u"|" + c.text) + "|-2147221503")
            << Utf8(c.argument);
    }
}

TEST(UniFileUtils, SeparatorPositionsBeyond32767Overflow) {
    // One-based position 32767 still fits the 16-bit position; 32768 doesn't.
    const std::u16string fits = std::u16string(32766, u'a') + u"\\b.c";
    EXPECT_EQ(ufu_FileName(fits), u"b.c");
    const std::u16string beyond = std::u16string(32767, u'a') + u"\\b.c";
    EXPECT_EQ(RaisedNumber([&] { ufu_FileName(beyond); }), CtlError::kOverflow);
    EXPECT_EQ(RaisedNumber([] { ufu_FileExt(std::u16string(40000, u'x') + u".txt"); }), CtlError::kOverflow);
    // Without a separator there is no position to hold.
    EXPECT_EQ(ufu_FileExt(std::u16string(40000, u'x')), u"");
}

TEST(UniFileUtils, CommandLineArgumentsFollowTheProgramName) {
    const struct { std::u16string line, arguments; } cases[] = {
        {u"\"c:\\my app\\a.exe\" /x  y", u"/x  y"},
        {u"\"c:\\a.exe\"/x", u"/x"},
        {u"a.exe    -v \"q r\"", u"-v \"q r\""},
        {u"a.exe ", u""},
        {u"\"unclosed arg", u""},
        {std::u16string(u"a.exe one\0two", 13), u"one"},
        {u"\"\"", u""},
    };
    for (const auto& c : cases) EXPECT_EQ(ufu_CommandLineArguments(c.line), c.arguments) << Utf8(c.line);
    for (const std::u16string line : {u"a.exe", u""}) {
        EXPECT_EQ(RaisedNumber([&] { ufu_CommandLineArguments(line); }), CtlError::kInvalidProcedureCall) << Utf8(line);
    }
}

TEST(UniFileUtils, TextFilesAreWrittenWithTheirMarks) {
    TempDir folder;
    const std::u16string path = folder.File(u"t.txt");
    const std::u16string text = u"A\u00E9\u20AC";
    const std::u16string smiley = u"\U0001F600";
    const struct { std::u16string text; int32_t encoding; std::vector<uint8_t> bytes; } cases[] = {
        {text, fe_UTF16LE, {0xFF, 0xFE, 0x41, 0x00, 0xE9, 0x00, 0xAC, 0x20}},
        {text, fe_UTF8, {0xEF, 0xBB, 0xBF, 0x41, 0xC3, 0xA9, 0xE2, 0x82, 0xAC}},
        // Each surrogate on its own, three bytes apiece.
        {smiley, fe_UTF8, {0xEF, 0xBB, 0xBF, 0xED, 0xA0, 0xBD, 0xED, 0xB8, 0x80}},
        {u"", fe_UTF16LE, {0xFF, 0xFE}},
        {u"", fe_UTF8, {0xEF, 0xBB, 0xBF}},
        {u"", fe_ANSI, {}},
        {u"a\r\nb", fe_ANSI, {'a', '\r', '\n', 'b'}},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(ufu_StringToTextFile(path, c.text, c.encoding, true));
        EXPECT_EQ(TempDir::ReadBytes(path), c.bytes) << "encoding " << c.encoding;
        std::u16string back = u"stale";
        EXPECT_TRUE(ufu_TextFileToString(path, back, true));
        EXPECT_EQ(back, c.text) << "encoding " << c.encoding;
    }
    if (platform::AnsiCodePage() == 1252) {
        // A character with no likeness in the code page becomes its default character.
        ASSERT_TRUE(ufu_StringToTextFile(path, text + u"\u4E2D", fe_ANSI, true));
        EXPECT_EQ(TempDir::ReadBytes(path), (std::vector<uint8_t>{0x41, 0xE9, 0x80, '?'}));
    }
}

TEST(UniFileUtils, TextFilesAreReadByTheirFirstByte) {
    TempDir folder;
    const std::u16string path = folder.File(u"r.txt");
    // Beyond the read cache's 16,384 bytes a remainder of one byte fails, of two doesn't.
    std::vector<uint8_t> oneOver{0xEF, 0xBB, 0xBF};
    oneOver.resize(16385, 'a');
    std::vector<uint8_t> twoOver = oneOver;
    twoOver.push_back('a');
    const struct { std::vector<uint8_t> bytes; eFileEncoding encoding; bool ok; std::u16string text; } cases[] = {
        {Bytes("abc"), fe_ANSI, true, u"abc"},
        {Bytes(std::string("a\0b", 3)), fe_ANSI, true, std::u16string(u"a\0b", 3)},
        {{}, fe_ANSI, true, u""},
        // Whole files come through the file object's read cache, which can't hand out a lone
        // last byte: a one-byte file doesn't read, and nor does its first byte.
        {Bytes("x"), fe_ANSI, false, u""},
        {{0xFF}, fe_ANSI, false, u""},
        {{0xFF, 0xFE, 0x41, 0x00}, fe_UTF16LE, true, u"A"},
        {{0xFF, 0x41, 0x42, 0x00}, fe_UTF16LE, true, u"B"},  // the second mark byte is not looked at
        {{0xFF, 0xFE, 0x41, 0x00, 0x42}, fe_UTF16LE, true, u"A"},  // half a code unit is dropped
        {{0xFE, 0xFF, 0x41, 0x00}, fe_ANSI, true, std::u16string(u"\u00FE\u00FFA\u0000", 4)},
        {{0xEF, 0xBB, 0xBF, 0x61}, fe_UTF8, true, u"a"},
        {{0xEF, 0x00, 0x00, 0x61}, fe_UTF8, true, u"a"},
        {{0xEF, 0xBB, 0xBF, 0xC3, 0xA9, 0xDC, 0x80}, fe_UTF8, true, u"\u00E9\u00DC\u0080"},
        {{0xEF, 0xBB}, fe_UTF8, false, u""},
        {oneOver, fe_UTF8, false, u""},
        {twoOver, fe_UTF8, true, std::u16string(16383, u'a')},
    };
    for (const auto& c : cases) {
        TempDir::WriteBytes(path, c.bytes);
        EXPECT_EQ(ufu_GetFileEncoding(path), c.encoding) << c.bytes.size() << " bytes";
        std::u16string text = u"stale";
        EXPECT_EQ(ufu_TextFileToString(path, text, false), c.ok) << c.bytes.size() << " bytes";
        EXPECT_EQ(text, c.text) << c.bytes.size() << " bytes";
    }
}

TEST(UniFileUtils, FailedReadsAndWritesRaiseOnlyWhenAsked) {
    TempDir folder;
    const std::u16string missing = folder.File(u"missing.txt");
    const std::u16string inMissingFolder = folder.File(u"no\\such\\x.txt");
    std::u16string text = u"stale";
    EXPECT_EQ(ufu_GetFileEncoding(missing), fe_ANSI);
    EXPECT_FALSE(ufu_TextFileToString(missing, text, false));
    EXPECT_EQ(text, u"");
    EXPECT_EQ(RaisedBy([&] { ufu_TextFileToString(missing, text, true); }),
              "ufu_TextFileToString|Error reading file|-2147221503");
    EXPECT_FALSE(ufu_StringToTextFile(inMissingFolder, u"x", fe_UTF8, false));
    EXPECT_EQ(RaisedBy([&] { ufu_StringToTextFile(inMissingFolder, u"x", fe_ANSI, true); }),
              "ufu_StringToTextFile|Error writing file|-2147221503");
    // An unknown encoding writes nothing, but the old content is gone all the same.
    const std::u16string path = folder.File(u"old.txt");
    ASSERT_TRUE(ufu_StringToTextFile(path, u"old", fe_ANSI, true));
    EXPECT_FALSE(ufu_StringToTextFile(path, u"new", 7, false));
    EXPECT_TRUE(TempDir::ReadBytes(path).empty());
    EXPECT_THROW(ufu_StringToTextFile(path, u"new", -1, true), CtlError);
}

TEST(UniFileUtils, FilesAndAttributes) {
    TempDir folder;
    const std::u16string a = folder.File(u"a.txt");
    const std::u16string b = folder.File(u"b.txt");
    const std::u16string missing = folder.File(u"missing.txt");
    ASSERT_TRUE(ufu_StringToTextFile(a, u"12345", fe_ANSI, true));
    EXPECT_EQ(ufu_FileLen(a), 5);
    EXPECT_EQ(ufu_FileLen(missing), 0);

    EXPECT_EQ(ufu_GetFileAttr(missing), -1);
    // A missing file has every ordinary attribute, but not one with the top bit.
    EXPECT_TRUE(ufu_FileHasAttribute(missing, 1));
    EXPECT_TRUE(ufu_FileHasAttribute(missing, 16));
    EXPECT_FALSE(ufu_FileHasAttribute(missing, static_cast<int32_t>(0x80000000u)));
    EXPECT_FALSE(ufu_FileHasAttribute(a, 16));
    EXPECT_EQ(ufu_SetFileAttr(a, 1), -1);
    EXPECT_TRUE(ufu_FileHasAttribute(a, 1));
    EXPECT_EQ(ufu_SetFileAttr(missing, 1), 0);

    // Copy onto an existing file, with and without permission to replace it.
    ASSERT_TRUE(ufu_StringToTextFile(b, u"bb", fe_ANSI, true));
    EXPECT_FALSE(ufu_CopyFile(a, b, true));
    EXPECT_EQ(TempDir::ReadBytes(b), Bytes("bb"));
    EXPECT_TRUE(ufu_CopyFile(a, b, false));
    EXPECT_EQ(TempDir::ReadBytes(b), Bytes("12345"));

    // The read-only file goes too.
    EXPECT_TRUE(ufu_RmFile(a));
    EXPECT_FALSE(ufu_FileExist(a));
    EXPECT_FALSE(ufu_RmFile(a));

    // A move replaces its target by default.
    EXPECT_EQ(ufu_SetFileAttr(b, 128), -1);
    ASSERT_TRUE(ufu_StringToTextFile(a, u"moved", fe_ANSI, true));
    EXPECT_TRUE(ufu_MoveFile(a, b));
    EXPECT_FALSE(ufu_FileExist(a));
    EXPECT_EQ(TempDir::ReadBytes(b), Bytes("moved"));
    EXPECT_FALSE(ufu_MoveFile(missing, b));
}

TEST(UniFileUtils, ExistenceTests) {
    TempDir folder;
    const std::u16string sub = folder.File(u"sub");
    ASSERT_TRUE(ufu_MkDir(sub));
    ASSERT_TRUE(ufu_StringToTextFile(folder.File(u"one.txt"), u"1", fe_ANSI, true));
    ASSERT_TRUE(ufu_StringToTextFile(folder.File(u"two.log"), u"2", fe_ANSI, true));
    ASSERT_TRUE(ufu_StringToTextFile(folder.File(u"three.log"), u"3", fe_ANSI, true));
    const struct { std::u16string path; bool file, dir; } cases[] = {
        {folder.File(u"one.txt"), true, false},
        {folder.File(u"ONE.TXT"), true, false},
        {folder.File(u"*.txt"), true, false},     // one match counts as existing
        {folder.File(u"*.log"), false, false},    // two don't
        {folder.File(u"*.nothing"), false, false},
        {sub, false, true},                        // an empty folder still lists "."
        {sub + u"\\", false, true},
        {folder.Path(), false, true},
        {folder.File(u"nope"), false, false},
        {u"", false, false},
        {u"a/b", false, false},                    // the raise inside is swallowed
    };
    // The file object's own tests walk by themselves and must agree.
    for (const auto& c : cases) {
        EXPECT_EQ(ufu_FileExist(c.path), c.file) << Utf8(c.path);
        EXPECT_EQ(ufu_DirExist(c.path), c.dir) << Utf8(c.path);
        EXPECT_EQ(clsUniFile::st_FileExist(c.path), c.file) << Utf8(c.path);
        EXPECT_EQ(clsUniFile::st_DirExist(c.path), c.dir) << Utf8(c.path);
    }
    EXPECT_EQ(clsUniFile::st_FilePath(folder.File(u"one.txt")), folder.Path());
}

TEST(UniFileUtils, MakePathCreatesEveryMissingParent) {
    TempDir folder;
    const std::u16string deep = folder.File(u"a\\b\\c");
    EXPECT_TRUE(ufu_MakePath(deep));
    EXPECT_TRUE(ufu_DirExist(folder.File(u"a")));
    EXPECT_TRUE(ufu_DirExist(deep));
    EXPECT_TRUE(ufu_MakePath(deep));                  // already there
    EXPECT_TRUE(ufu_MakePath(folder.File(u"a\\d\\"))); // the empty last piece ends the walk
    EXPECT_TRUE(ufu_DirExist(folder.File(u"a\\d")));
    // A file in the way can't become a folder.
    ASSERT_TRUE(ufu_StringToTextFile(folder.File(u"f"), u"x", fe_ANSI, true));
    EXPECT_FALSE(ufu_MakePath(folder.File(u"f\\g")));
    // An empty piece stops the walk before the pieces behind it.
    EXPECT_FALSE(ufu_MakePath(folder.File(u"h\\\\i")));
    EXPECT_TRUE(ufu_DirExist(folder.File(u"h")));
    EXPECT_FALSE(ufu_DirExist(folder.File(u"h\\i")));
}

TEST(UniFileUtils, FolderTreesAreRemovedCopiedAndMoved) {
    TempDir folder;
    const std::u16string src = folder.File(u"src");
    ASSERT_TRUE(ufu_MakePath(src + u"\\sub\\deeper"));
    ASSERT_TRUE(ufu_StringToTextFile(src + u"\\f1.txt", u"one", fe_ANSI, true));
    ASSERT_TRUE(ufu_StringToTextFile(src + u"\\sub\\f2.txt", u"two", fe_ANSI, true));
    ASSERT_TRUE(ufu_StringToTextFile(src + u"\\sub\\deeper\\f3.log", u"three", fe_ANSI, true));
    ASSERT_EQ(ufu_SetFileAttr(src + u"\\sub\\f2.txt", 1), -1);

    // Copy to a folder that doesn't exist yet: it is made, and the tree lands inside it.
    const std::u16string copy = folder.File(u"copy");
    EXPECT_TRUE(ufu_CopyFolderContent(src, copy));
    EXPECT_EQ(TempDir::ReadBytes(copy + u"\\f1.txt"), Bytes("one"));
    EXPECT_EQ(TempDir::ReadBytes(copy + u"\\sub\\f2.txt"), Bytes("two"));
    EXPECT_EQ(TempDir::ReadBytes(copy + u"\\sub\\deeper\\f3.log"), Bytes("three"));
    EXPECT_TRUE(ufu_FileExist(src + u"\\f1.txt"));
    // The copy's target is the destination as given: a source with a final backslash leaves
    // none between the two.
    const std::u16string glued = folder.File(u"glued");
    EXPECT_TRUE(ufu_CopyFolderContent(src + u"\\", glued));
    EXPECT_EQ(TempDir::ReadBytes(glued + u"f1.txt"), Bytes("one"));
    EXPECT_TRUE(ufu_DirExist(glued + u"sub"));
    EXPECT_FALSE(ufu_CopyFolderContent(folder.File(u"none"), copy));

    // Files matching a pattern.
    EXPECT_TRUE(ufu_RmFiles(copy + u"\\sub\\deeper\\*.log"));
    EXPECT_FALSE(ufu_FileExist(copy + u"\\sub\\deeper\\f3.log"));
    EXPECT_TRUE(ufu_RmFiles(copy + u"\\*.nothing"));

    // Moves need both folders; files move, folders are made at the target and stay at the source.
    const std::u16string moved = folder.File(u"moved");
    EXPECT_FALSE(ufu_MoveFolderContent(src, moved));
    ASSERT_TRUE(ufu_MkDir(moved));
    EXPECT_TRUE(ufu_MoveFolderContent(src + u"\\", moved));
    EXPECT_EQ(TempDir::ReadBytes(moved + u"\\f1.txt"), Bytes("one"));
    EXPECT_EQ(TempDir::ReadBytes(moved + u"\\sub\\deeper\\f3.log"), Bytes("three"));
    EXPECT_FALSE(ufu_FileExist(src + u"\\sub\\f2.txt"));
    EXPECT_TRUE(ufu_DirExist(src + u"\\sub\\deeper"));

    // The recursive removal takes read-only files with it.
    EXPECT_TRUE(ufu_RmDirRic(moved));
    EXPECT_FALSE(ufu_DirExist(moved));
    EXPECT_FALSE(ufu_RmDirRic(u""));
    EXPECT_FALSE(ufu_RmDir(u""));
    EXPECT_FALSE(ufu_MkDir(u""));
}

TEST(UniFileUtils, CurrentFolderAndFileDates) {
    TempDir folder;
    const std::u16string before = ufu_GetCurDir();
    ASSERT_FALSE(before.empty());
    ASSERT_TRUE(ufu_SetCurDir(folder.Path()));
    EXPECT_EQ(ufu_NoBackSlash(ufu_GetCurDir()), ufu_NoBackSlash(folder.Path()));
    EXPECT_TRUE(ufu_SetCurDir(before));
    EXPECT_FALSE(ufu_SetCurDir(folder.File(u"missing")));
    EXPECT_EQ(ufu_GetCurDir(), before);

    const std::u16string temp = ufu_GetTempPath();
    ASSERT_FALSE(temp.empty());
    EXPECT_EQ(temp.back(), u'\\');

    // A known last-write time, 2021-03-04 05:06:07 UTC, read back in local time: every zone is
    // whole quarter hours and at most 14 hours away.
    const std::u16string path = folder.File(u"dated.txt");
    ASSERT_TRUE(ufu_StringToTextFile(path, u"x", fe_ANSI, true));
    using namespace std::chrono;
    const sys_seconds when = sys_days{year{2021} / 3 / 4} + hours{5} + minutes{6} + seconds{7};
    std::filesystem::last_write_time(TempDir::HostPath(path), file_clock::from_sys(when));
    int32_t day = -1, month = -1, yearOut = -1, hour = -1, minute = -1, second = -1, ms = -1, weekday = -1;
    ufu_GetFileDate(path, 2, day, month, yearOut, &hour, &minute, &second, &ms, &weekday);
    const int64_t offset = ((int64_t{day} - 4) * 24 + hour - 5) * 60 + minute - 6;
    EXPECT_EQ(yearOut * 100 + month, 202103);
    EXPECT_LE(std::abs(offset), 14 * 60);
    EXPECT_EQ(offset % 15, 0);
    EXPECT_EQ(second * 1000 + ms, 7000);
    EXPECT_EQ(weekday, day % 7);  // in March 2021 the weekday is the day mod 7 (the 4th a Thursday)

    int32_t keptDay = 7, keptMonth = 8, keptYear = 9;
    ufu_GetFileDate(folder.File(u"missing"), 2, keptDay, keptMonth, keptYear);
    ufu_GetFileDate(path, 5, keptDay, keptMonth, keptYear);  // no such date
    EXPECT_EQ(keptDay, 7);
    EXPECT_EQ(keptMonth, 8);
    EXPECT_EQ(keptYear, 9);
}

}  // namespace
