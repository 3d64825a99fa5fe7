#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "RaisedError.h"
#include "common/CtlError.h"
#include "platform/CodePage.h"
#include "platform/FileSystem.h"
#include "support/TempDir.h"
#include "text/clsSearchFiles.h"
#include "text/clsUniFile.h"

using testsupport::Bytes;
using testsupport::TempDir;
using testsupport::Utf8;

namespace {

std::vector<uint8_t> Sequence(size_t n) {
    std::vector<uint8_t> out(n);
    for (size_t i = 0; i < n; ++i) out[i] = static_cast<uint8_t>((i * 7 + i / 251) & 0xFF);
    return out;
}

// Reads size bytes in one block; empty when the block fails.
std::vector<uint8_t> Block(clsUniFile& f, size_t size) {
    std::vector<uint8_t> out(size);
    return f.ReadBytes(out) ? out : std::vector<uint8_t>{};
}

}  // namespace

TEST(clsUniFile, ReadCacheQuirks) {
    TempDir dir;
    const std::u16string one = dir.File(u"one.bin");
    TempDir::WriteBytes(one, {42});
    uint8_t b = 0;
    for (const bool cache : {true, false}) {
        // A one-byte file cannot be read through the cache; without it the byte comes.
        clsUniFile f;
        f.UseCache(cache);
        ASSERT_TRUE(f.OpenFileRead(one));
        EXPECT_EQ(f.ReadByte(b), !cache);
    }

    const std::u16string odd = dir.File(u"16385.bin");
    const std::vector<uint8_t> content = Sequence(16385);
    TempDir::WriteBytes(odd, content);
    {
        // Byte by byte, the last byte of a 16385-byte file is the one left alone.
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileRead(odd));
        std::vector<uint8_t> got;
        while (f.ReadByte(b)) got.push_back(b);
        EXPECT_EQ(got, std::vector<uint8_t>(content.begin(), content.end() - 1));
        // A block above 16384 bytes bypasses the cache and gets them all.
        clsUniFile g;
        ASSERT_TRUE(g.OpenFileRead(odd));
        EXPECT_EQ(Block(g, 16385), content);
    }
    {
        // After a first fill of 16384 bytes a block that needs one more fails, yet copies what the
        // cache held; the byte left behind needs the cache off, which keeps the position.
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileRead(odd));
        std::vector<uint8_t> got = Block(f, 10);
        std::vector<uint8_t> rest(16375);
        EXPECT_FALSE(f.ReadBytes(rest));
        EXPECT_EQ(f.GetFilePos(), 16384);
        f.UseCache(false);
        EXPECT_EQ(f.GetFilePos(), 16384);
        ASSERT_TRUE(f.ReadByte(rest.back()));
        got.insert(got.end(), rest.begin(), rest.end());
        EXPECT_EQ(got, content);
    }
    {
        // Beyond 16384 bytes a block goes straight to the file, after what the cache holds.
        const std::u16string big = dir.File(u"40000.bin");
        TempDir::WriteBytes(big, Sequence(40000));
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileRead(big));
        std::vector<uint8_t> got = Block(f, 3);
        const std::vector<uint8_t> middle = Block(f, 30000);
        EXPECT_EQ(f.RealFilePos(), 30003);
        const std::vector<uint8_t> tail = Block(f, 9997);
        got.insert(got.end(), middle.begin(), middle.end());
        got.insert(got.end(), tail.begin(), tail.end());
        EXPECT_EQ(got, Sequence(40000));
    }

    const std::u16string hundred = dir.File(u"100.bin");
    TempDir::WriteBytes(hundred, Sequence(100));
    {
        // Eof is one short: it turns true on the last byte, which can still be read.
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileRead(hundred));
        int reads = 0;
        for (; !f.Eof(); ++reads) ASSERT_TRUE(f.ReadByte(b));
        EXPECT_EQ(reads, 99);
        EXPECT_TRUE(f.ReadByte(b));
        EXPECT_EQ(b, Sequence(100)[99]);
        EXPECT_FALSE(f.ReadByte(b));
    }
    for (const bool cache : {true, false}) {
        // A relative move goes from the real pointer, which the cache has taken to the end.
        clsUniFile f;
        f.UseCache(cache);
        ASSERT_TRUE(f.OpenFileRead(hundred));
        ASSERT_TRUE(f.ReadByte(b));
        EXPECT_EQ(f.GetFilePos(), 1);
        EXPECT_EQ(f.RealFilePos(), cache ? 100 : 1);
        f.SetFilePos(0, eupp_FILE_CURRENT);
        EXPECT_EQ(f.GetFilePos(), cache ? 100 : 1);
    }
}

TEST(clsUniFile, WriteCacheReachesTheDiskOnCloseFlushAndDestruction) {
    // Pieces that cross the cache's edge in every way: below, at, just above and far above it.
    const int32_t pieces[] = {1, 3, 16383, 1, 16384, 7, 16385, 40000, 2, 16380, 5};
    std::vector<uint8_t> expected;
    uint8_t next = 0;
    std::vector<std::vector<uint8_t>> blocks;
    for (const int32_t n : pieces) {
        std::vector<uint8_t> block(static_cast<size_t>(n));
        for (uint8_t& b : block) b = next++;
        expected.insert(expected.end(), block.begin(), block.end());
        blocks.push_back(std::move(block));
    }
    enum class Ending { CloseFile, Flush, Destructor };
    for (const Ending ending : {Ending::CloseFile, Ending::Flush, Ending::Destructor}) {
        TempDir dir;
        const std::u16string path = dir.File(u"out.bin");
        auto f = std::make_unique<clsUniFile>();
        // Read sharing lets the check below look at the disk while the file is open on Windows.
        ASSERT_TRUE(f->OpenFileGeneric(path, eua_GENERIC_WRITE, eucd_CREATE_ALWAYS,
                                       eusm_FILE_SHARE_READ | eusm_FILE_SHARE_WRITE));
        for (const auto& block : blocks) ASSERT_TRUE(f->WriteAny(block.data(), static_cast<int32_t>(block.size())));
        ASSERT_TRUE(f->WriteByte(0xAB));
        std::vector<uint8_t> want = expected;
        want.push_back(0xAB);
        EXPECT_EQ(f->LOF(), static_cast<int64_t>(want.size()));
        switch (ending) {
        case Ending::CloseFile: f->CloseFile(); break;
        case Ending::Flush: EXPECT_TRUE(f->Flush()); break;
        case Ending::Destructor: f.reset(); break;
        }
        EXPECT_EQ(TempDir::ReadBytes(path), want) << "ending " << static_cast<int>(ending);
    }
}

TEST(clsUniFile, SizeAndPositionCountPendingBytes) {
    TempDir dir;
    const std::u16string path = dir.File(u"ten.bin");
    clsUniFile f;
    // Read sharing lets the checks below look at the disk while the file is open on Windows.
    ASSERT_TRUE(f.OpenFileGeneric(path, eua_GENERIC_WRITE, eucd_CREATE_ALWAYS,
                                  eusm_FILE_SHARE_READ | eusm_FILE_SHARE_WRITE));
    const std::vector<uint8_t> ten = Sequence(10);
    ASSERT_TRUE(f.WriteBytes(ten));
    EXPECT_EQ(f.LOF(), 10);
    EXPECT_EQ(f.GetFilePos(), 10);
    EXPECT_EQ(f.RealFilePos(), 0);
    // Still in the cache: nothing has reached the disk.
    EXPECT_TRUE(TempDir::ReadBytes(path).empty());
    f.SetFilePos(4);
    EXPECT_EQ(TempDir::ReadBytes(path), ten);
    EXPECT_TRUE(f.SetEndOfFileHere());
    EXPECT_EQ(f.LOF(), 4);
    f.CloseFile();
    EXPECT_EQ(TempDir::ReadBytes(path), std::vector<uint8_t>(ten.begin(), ten.begin() + 4));

    // Closed: positions are -1, Eof is true, reads fail, and a cached write says true but is lost.
    EXPECT_EQ(f.GetFilePos(), -1);
    EXPECT_EQ(f.RealFilePos(), -1);
    EXPECT_TRUE(f.Eof());
    uint8_t b = 0;
    EXPECT_FALSE(f.ReadByte(b));
    EXPECT_TRUE(f.WriteByte(1));
    EXPECT_FALSE(f.Flush());
}

TEST(clsUniFile, OpenStatesAndErrors) {
    TempDir dir;
    const std::u16string present = dir.File(u"present.txt");
    TempDir::WriteBytes(present, Bytes("abc"));
    clsUniFile f;
    ASSERT_TRUE(f.OpenFileRead(present));
    EXPECT_TRUE(f.IsFileOpen());
    EXPECT_NE(f.OpenedFileHandle(), 0);
    EXPECT_NE(f.OpenedFileHandle(), -1);
    EXPECT_EQ(f.OpenedFileName(), present);
    f.CloseFile();
    EXPECT_EQ(f.OpenedFileName(), u"");

    // A failed open leaves the object "open" with handle -1 and the previous name.
    EXPECT_FALSE(f.OpenFileRead(dir.File(u"missing.txt")));
    EXPECT_TRUE(f.IsFileOpen());
    EXPECT_EQ(f.OpenedFileHandle(), -1);
    EXPECT_EQ(f.OpenedFileName(), present);
    EXPECT_EQ(RaisedBy([&] { f.OpenFileRead(present); }), "clsUniFile.OpenFile|A file is already open!|-2147221503");
    f.CloseFile();
    EXPECT_FALSE(f.IsFileOpen());

    // Missing folders, a folder opened as a file, an empty path: all a plain false.
    const std::u16string bad[] = {dir.File(u"no\\such\\folder\\x.txt"), dir.Path(), u""};
    for (const std::u16string& path : bad) {
        clsUniFile g;
        EXPECT_FALSE(g.OpenFileWrite(path)) << Utf8(path);
        EXPECT_EQ(g.OpenedFileHandle(), -1);
    }

    // Append goes to the end of an existing file.
    {
        clsUniFile a;
        ASSERT_TRUE(a.OpenFileAppend(present));
        EXPECT_EQ(a.GetFilePos(), 3);
        ASSERT_TRUE(a.WriteBytes(Bytes("de")));
    }
    EXPECT_EQ(TempDir::ReadBytes(present), Bytes("abcde"));
}

TEST(clsUniFile, DispositionsAndTheirErrors) {
    struct Case {
        const char* name;
        bool exists;
        int32_t disposition;
        bool opens;
        uint32_t error;                 // LastError after a failed open
        std::vector<uint8_t> afterward;  // the file's bytes after the open and one written "w"
    };
    const std::vector<uint8_t> old = Bytes("old");
    const Case cases[] = {
        {"create new, missing", false, eucd_CREATE_NEW, true, 0, Bytes("w")},
        {"create new, present", true, eucd_CREATE_NEW, false, platform::kErrorFileExists, old},
        {"create always, present", true, eucd_CREATE_ALWAYS, true, 0, Bytes("w")},
        {"open existing, present", true, eucd_OPEN_EXISTING, true, 0, Bytes("wld")},
        {"open existing, missing", false, eucd_OPEN_EXISTING, false, platform::kErrorFileNotFound, {}},
        {"open always, missing", false, eucd_OPEN_ALWAYS, true, 0, Bytes("w")},
        {"open always, present", true, eucd_OPEN_ALWAYS, true, 0, Bytes("wld")},
        {"truncate existing, present", true, eucd_TRUNCATE_EXISTING, true, 0, Bytes("w")},
        {"truncate existing, missing", false, eucd_TRUNCATE_EXISTING, false, platform::kErrorFileNotFound, {}},
    };
    for (const Case& c : cases) {
        TempDir dir;
        const std::u16string path = dir.File(u"d.bin");
        if (c.exists) TempDir::WriteBytes(path, old);
        {
            clsUniFile f;
            const bool opened = f.OpenFileGeneric(path, eua_GENERIC_READ | eua_GENERIC_WRITE, c.disposition);
            ASSERT_EQ(opened, c.opens) << c.name;
            if (!opened) {
                EXPECT_EQ(platform::LastError(), c.error) << c.name;
            } else {
                EXPECT_TRUE(f.WriteBytes(Bytes("w")));
            }
        }
        EXPECT_EQ(TempDir::ReadBytes(path), c.afterward) << c.name;
        EXPECT_EQ(TempDir::Exists(path), c.exists || c.opens) << c.name;
    }
    {
        // The delete-on-close flag takes the file away with its last handle.
        TempDir dir;
        const std::u16string path = dir.File(u"gone.bin");
        {
            clsUniFile f;
            ASSERT_TRUE(f.OpenFileGeneric(path, eua_GENERIC_WRITE, eucd_CREATE_NEW, eusm_FILE_SHARE_DELETE,
                                          euat_FILE_FLAG_DELETE_ON_CLOSE));
            EXPECT_TRUE(f.WriteBytes(Bytes("temp")));
            EXPECT_TRUE(f.Flush());
            EXPECT_TRUE(TempDir::Exists(path));
        }
        EXPECT_FALSE(TempDir::Exists(path));
    }
}

TEST(clsUniFile, ShareModes) {
    // Windows refuses a second handle whose access the first one's share mode doesn't allow, or
    // whose share mode doesn't allow the first one's access. The POSIX layer keeps the same rule
    // among this process's handles only, since the host has no mandatory locks.
    struct Case {
        const char* name;
        int32_t firstAccess;
        int32_t firstShare;
        int32_t secondAccess;
        int32_t secondShare;
        bool secondOpens;
    };
    const int32_t R = eua_GENERIC_READ;
    const int32_t W = eua_GENERIC_WRITE;
    const int32_t SR = eusm_FILE_SHARE_READ;
    const int32_t SW = eusm_FILE_SHARE_WRITE;
    const Case cases[] = {
        {"two shared readers", R, SR, R, SR, true},
        {"reader without sharing blocks a reader", R, 0, R, SR, false},
        {"reader blocks a writer", R, SR, W, SR, false},
        {"writer sharing writes blocks a reader", W, SW, R, SR | SW, false},
        {"writer sharing reads lets a reader in", W, SR, R, SR | SW, true},
        {"reader needs to share the writer's access", W, SR, R, SR, false},
        {"full sharing", R | W, SR | SW, R | W, SR | SW, true},
    };
    TempDir dir;
    const std::u16string path = dir.File(u"shared.bin");
    TempDir::WriteBytes(path, Bytes("xyz"));
    for (const Case& c : cases) {
        clsUniFile first;
        clsUniFile second;
        ASSERT_TRUE(first.OpenFileGeneric(path, c.firstAccess, eucd_OPEN_EXISTING, c.firstShare)) << c.name;
        const bool opened = second.OpenFileGeneric(path, c.secondAccess, eucd_OPEN_EXISTING, c.secondShare);
        EXPECT_EQ(opened, c.secondOpens) << c.name;
        if (!opened) {
            EXPECT_EQ(platform::LastError(), platform::kErrorSharingViolation) << c.name;
        }
    }
    {
        // OpenFileWrite does not truncate a file that another handle denies it.
        clsUniFile reader;
        ASSERT_TRUE(reader.OpenFileRead(path, false));
        clsUniFile writer;
        EXPECT_FALSE(writer.OpenFileWrite(path));
    }
    EXPECT_EQ(TempDir::ReadBytes(path), Bytes("xyz"));
}

TEST(clsUniFile, NumbersAreLittleEndianWithTheirQuirks) {
    TempDir dir;
    const std::u16string path = dir.File(u"numbers.bin");
    {
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileWrite(path));
        EXPECT_TRUE(f.WriteLong(0x01020304) && f.WriteInt(-2) && f.WriteBool(true) && f.WriteBool(false) &&
                    f.WriteDouble(1.5) && f.WriteByte(2));
        for (const double d : {2.5, 3.5, -1.5, 1e10, 2147483647.0}) EXPECT_TRUE(f.WriteDouble(d));
    }
    std::vector<uint8_t> want = {4, 3, 2, 1, 0xFE, 0xFF, 1, 0, 0, 0, 0, 0, 0, 0, 0xF8, 0x3F, 2};
    const std::vector<uint8_t> disk = TempDir::ReadBytes(path);
    ASSERT_EQ(disk.size(), want.size() + 5 * 8);
    EXPECT_TRUE(std::equal(want.begin(), want.end(), disk.begin()));

    clsUniFile f;
    ASSERT_TRUE(f.OpenFileRead(path));
    int32_t l = 0;
    int16_t i = 0;
    bool yes = false;
    bool no = true;
    int32_t d = 0;
    // Only a byte of 1 reads as true (the 2 after the double); a double reads into an integer,
    // rounded half to even.
    bool two = true;
    EXPECT_TRUE(f.ReadLong(l) && f.ReadInt(i) && f.ReadBool(yes) && f.ReadBool(no) && f.ReadDouble(d) &&
                f.ReadBool(two));
    EXPECT_EQ(l, 0x01020304);
    EXPECT_EQ(i, -2);
    EXPECT_TRUE(yes);
    EXPECT_FALSE(no);
    EXPECT_EQ(d, 2);
    EXPECT_FALSE(two);
    struct Case { bool ok; int32_t value; };
    const Case doubles[] = {{true, 2}, {true, 4}, {true, -2}, {false, 77}, {true, 2147483647}};
    for (const Case& c : doubles) {
        d = 77;
        EXPECT_EQ(f.ReadDouble(d), c.ok);
        EXPECT_EQ(d, c.value);
    }
    EXPECT_FALSE(f.ReadLong(l));
}

TEST(clsUniFile, LengthPrefixedStrings) {
    TempDir dir;
    const std::u16string path = dir.File(u"strings.bin");
    const bool cp1252 = platform::AnsiCodePage() == 1252;
    struct Case {
        std::u16string text;
        int32_t enc;
        std::vector<uint8_t> bytes;  // empty: not checked byte for byte
    };
    std::vector<Case> cases = {
        {u"Ab", fe_UTF16LE, {4, 0, 0, 0, 0x41, 0, 0x62, 0}},
        {u"\u4E2D", fe_UTF16LE, {2, 0, 0, 0, 0x2D, 0x4E}},
        {u"\u00E9\u20AC", fe_UTF8, {}},
        {u"\u4E2D\u6587 \U0001F600", fe_UTF16LE, {}},
        {u"plain", fe_ANSI, {5, 0, 0, 0, 'p', 'l', 'a', 'i', 'n'}},
    };
    if (cp1252) {
        // With code page 1252 as the system's, the UTF-8 record is plain UTF-8 and é is one byte.
        cases[2].bytes = {5, 0, 0, 0, 0xC3, 0xA9, 0xE2, 0x82, 0xAC};
        cases.push_back({u"\u00E9", fe_ANSI, {1, 0, 0, 0, 0xE9}});
    }
    for (const Case& c : cases) {
        {
            clsUniFile f;
            ASSERT_TRUE(f.OpenFileWrite(path));
            EXPECT_TRUE(f.WriteNumCharsAndString(c.text, c.enc)) << Utf8(c.text);
        }
        if (!c.bytes.empty()) {
            EXPECT_EQ(TempDir::ReadBytes(path), c.bytes) << Utf8(c.text);
        }
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileRead(path));
        std::u16string s = u"old";
        EXPECT_TRUE(f.ReadNumCharsAndString(s, c.enc));
        EXPECT_EQ(s, c.text);
        EXPECT_EQ(f.GetFilePos(), f.LOF()) << Utf8(c.text);
    }
    {
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileWrite(path));
        // An empty string writes its count and says false; an unknown encoding writes nothing.
        EXPECT_FALSE(f.WriteNumCharsAndString(u"", fe_UTF8));
        EXPECT_FALSE(f.WriteNumCharsAndString(u"lost", 7));
        // A count far beyond the file's end.
        EXPECT_TRUE(f.WriteLong(0x7FFFFFFF));
    }
    EXPECT_EQ(TempDir::ReadBytes(path), (std::vector<uint8_t>{0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0x7F}));
    clsUniFile f;
    ASSERT_TRUE(f.OpenFileRead(path));
    for (const int32_t enc : {fe_UTF8, fe_UTF16LE}) {
        std::u16string s = u"old";
        EXPECT_FALSE(f.ReadNumCharsAndString(s, enc));
        EXPECT_EQ(s, u"");
    }
}

// A count beyond the data left reads what the byte read would: the bytes at hand are used up, and
// the result is false. Positions worked out from the read steps: with the cache off one read runs
// to the end; with it on, a count above 16384 takes the cached bytes and one read to the end,
// while a smaller one takes the cached bytes, refills the cache and stops there.
TEST(clsUniFile, LengthPrefixedStringLongerThanTheRest) {
    TempDir dir;
    const std::u16string path = dir.File(u"short.bin");
    const struct {
        bool cache;
        size_t padding;
        int32_t count;
        size_t data;
        int64_t position;
    } cases[] = {
        {false, 0, 100, 10, 14},
        {true, 0, 100, 10, 14},
        {true, 0, 20000, 10, 14},
        {false, 16376, 200, 104, 16484},
        {true, 16376, 200, 104, 16384},  // 4 cached bytes used, the last 100 refilled, unread
        {true, 16376, 20000, 104, 16484},
    };
    for (const auto& c : cases) {
        std::vector<uint8_t> bytes = Sequence(c.padding);
        for (int k = 0; k < 4; ++k) bytes.push_back(static_cast<uint8_t>(static_cast<uint32_t>(c.count) >> (8 * k)));
        const std::vector<uint8_t> tail = Sequence(c.data + 1);
        bytes.insert(bytes.end(), tail.begin() + 1, tail.end());
        TempDir::WriteBytes(path, bytes);
        clsUniFile f;
        f.UseCache(c.cache);
        ASSERT_TRUE(f.OpenFileRead(path));
        if (c.padding > 0) {
            ASSERT_EQ(Block(f, c.padding).size(), c.padding);
        }
        std::u16string s = u"old";
        EXPECT_FALSE(f.ReadNumCharsAndString(s, fe_UTF16LE)) << c.cache << " " << c.padding << " " << c.count;
        EXPECT_EQ(s, u"");
        EXPECT_EQ(f.GetFilePos(), c.position) << c.cache << " " << c.padding << " " << c.count;
        if (c.position < static_cast<int64_t>(bytes.size())) {
            uint8_t next = 0;
            ASSERT_TRUE(f.ReadByte(next));
            EXPECT_EQ(next, bytes[static_cast<size_t>(c.position)]);
        }
    }
}

TEST(clsUniFile, LineEndsInEveryEncoding) {
    TempDir dir;
    struct Case {
        const char* name;
        std::string content;  // as single-byte text; widened for UTF-16
        std::vector<std::pair<bool, std::u16string>> reads;
    };
    const Case cases[] = {
        {"crlf then no end", "a\r\nb", {{true, u"a"}, {false, u"b"}, {false, u""}}},
        {"lf only", "a\nb\n", {{true, u"a"}, {true, u"b"}, {false, u""}}},
        {"lone cr is no end", "a\rb\n", {{true, u"a\rb"}, {false, u""}}},
        {"cr cr lf keeps one cr", "a\r\r\n", {{true, u"a\r"}, {false, u""}}},
        {"empty lines", "\r\n\nx\n", {{true, u""}, {true, u""}, {true, u"x"}, {false, u""}}},
    };
    for (const Case& c : cases) {
        for (const bool cache : {true, false}) {
            const std::u16string ansiPath = dir.File(u"lines.ansi");
            const std::u16string widePath = dir.File(u"lines.u16");
            TempDir::WriteBytes(ansiPath, Bytes(c.content));
            std::vector<uint8_t> wide;
            for (const char ch : c.content) {
                wide.push_back(static_cast<uint8_t>(ch));
                wide.push_back(0);
            }
            TempDir::WriteBytes(widePath, wide);
            clsUniFile a;
            clsUniFile u;
            a.UseCache(cache);
            u.UseCache(cache);
            ASSERT_TRUE(a.OpenFileRead(ansiPath));
            ASSERT_TRUE(u.OpenFileRead(widePath));
            for (const auto& [ok, text] : c.reads) {
                std::u16string s = u"junk";
                EXPECT_EQ(a.ReadAnsiLine(s), ok) << c.name;
                EXPECT_EQ(s, text) << c.name << " ansi, cache " << cache;
                s = u"junk";
                EXPECT_EQ(u.ReadUnicodeLine(s), ok) << c.name;
                EXPECT_EQ(s, text) << c.name << " unicode, cache " << cache;
            }
        }
    }
    // An odd byte at the end of UTF-16 data is no code unit: it is dropped with the result false.
    for (const bool cache : {true, false}) {
        const std::u16string odd = dir.File(u"odd.u16");
        TempDir::WriteBytes(odd, {'a', 0, 'b'});
        clsUniFile f;
        f.UseCache(cache);
        ASSERT_TRUE(f.OpenFileRead(odd));
        std::u16string s;
        EXPECT_FALSE(f.ReadUnicodeLine(s));
        EXPECT_EQ(s, u"a");
    }
    // The UTF-8 reader keeps sRet for an empty line and for nothing left to read.
    const std::u16string path = dir.File(u"lines.utf8");
    TempDir::WriteBytes(path, Bytes("\r\nx\n\nlast"));
    clsUniFile f;
    ASSERT_TRUE(f.OpenFileRead(path));
    std::u16string s = u"x0";
    EXPECT_TRUE(f.ReadUTF8Line(s));
    EXPECT_EQ(s, u"x0");
    EXPECT_TRUE(f.ReadUTF8Line(s));
    EXPECT_EQ(s, u"x");
    s = u"kept";
    EXPECT_TRUE(f.ReadUTF8Line(s));
    EXPECT_EQ(s, u"kept");
    EXPECT_FALSE(f.ReadUTF8Line(s));
    EXPECT_EQ(s, u"last");
    s = u"kept";
    EXPECT_FALSE(f.ReadUTF8Line(s));
    EXPECT_EQ(s, u"kept");
}

TEST(clsUniFile, MixedScriptLinesRoundTripInEachEncoding) {
    std::u16string longLine;
    for (int k = 0; k < 700; ++k) longLine += u"\u00E9\u4E2D\u0416x\U0001F600";
    const std::vector<std::u16string> unicodeLines = {
        u"Hello", u"Gr\u00FC\u00DFe", u"\u0395\u03BB\u03BB\u03B7\u03BD\u03B9\u03BA\u03AC",
        u"\u0420\u0443\u0441\u0441\u043A\u0438\u0439", u"\u4E2D\u6587 \u0939\u093F\u0928\u094D\u0926\u0940",
        u"\U0001F600 emoji", u"tab\there", longLine, u"\xD800 lone surrogate", u"last",
    };
    TempDir dir;
    for (const int32_t enc : {fe_UTF16LE, fe_UTF8, fe_ANSI}) {
        std::vector<std::u16string> lines = unicodeLines;
        if (enc == fe_ANSI) {
            // Only text of the system's code page survives the ANSI form.
            lines = {u"Hello", u"", u"tab\there", std::u16string(3000, u'z')};
            if (platform::AnsiCodePage() == 1252) lines.push_back(u"Gr\u00FC\u00DFe \u20AC");
        }
        for (const bool cache : {true, false}) {
            const std::u16string path = dir.File(u"round." + std::u16string(1, static_cast<char16_t>(u'0' + enc)));
            {
                clsUniFile f;
                f.UseCache(cache);
                ASSERT_TRUE(f.OpenFileWrite(path));
                ASSERT_TRUE(f.WriteBOM(enc));
                for (const auto& line : lines) ASSERT_TRUE(f.WriteLine(line, enc));
            }
            clsUniFile f;
            f.UseCache(cache);
            ASSERT_TRUE(f.OpenFileRead(path));
            EXPECT_EQ(f.ReadBOM(), enc);
            for (const auto& line : lines) {
                std::u16string s;
                EXPECT_TRUE(f.ReadLine(s, enc));
                EXPECT_EQ(s, line) << "encoding " << enc << " cache " << cache;
            }
            std::u16string s;
            EXPECT_FALSE(f.ReadLine(s, enc));
        }
    }

    // What the UTF-8 lines put on disk, worked out by hand: each UTF-16 unit alone, so a
    // supplementary character is two three-byte forms.
    const std::u16string path = dir.File(u"bytes.utf8");
    {
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileWrite(path));
        ASSERT_TRUE(f.WriteUTF8Line(u"Gr\u00FC\u00DFe"));
        ASSERT_TRUE(f.WriteUTF8Line(u"\U0001F600"));
        ASSERT_TRUE(f.WriteUnicodeLine(u"\u4E2D"));
    }
    const std::vector<uint8_t> want = {'G',  'r',  0xC3, 0xBC, 0xC3, 0x9F, 'e', 13,   10, 0xED,
                                       0xA0, 0xBD, 0xED, 0xB8, 0x80, 13,   10,  0x2D, 0x4E, 13, 0, 10, 0};
    EXPECT_EQ(TempDir::ReadBytes(path), want);
}

TEST(clsUniFile, ByteOrderMarks) {
    TempDir dir;
    struct Case { const char* name; std::vector<uint8_t> content; eFileEncoding enc; int64_t position; };
    const Case cases[] = {
        {"UTF-16 mark", {255, 254, 'a', 0}, fe_UTF16LE, 2},
        {"255 and anything", {255, 0, 'a', 0}, fe_UTF16LE, 2},
        {"UTF-8 mark", {239, 187, 191, 'a'}, fe_UTF8, 3},
        {"239 and anything", {239, 0, 0, 'a'}, fe_UTF8, 3},
        {"big-endian mark is not known", {254, 255, 0, 'a'}, fe_ANSI, 0},
        {"plain text", {'a', 'b', 'c'}, fe_ANSI, 0},
        {"empty file", {}, fe_ANSI, 0},
        // One byte can't come through the cache: the read fails and the position stays.
        {"lone 255", {255}, fe_ANSI, 0},
    };
    for (const Case& c : cases) {
        const std::u16string path = dir.File(u"mark.bin");
        TempDir::WriteBytes(path, c.content);
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileRead(path));
        EXPECT_EQ(f.ReadBOM(), c.enc) << c.name;
        EXPECT_EQ(f.GetFilePos(), c.position) << c.name;
    }
    struct Mark { int32_t enc; std::vector<uint8_t> bytes; };
    const Mark marks[] = {{fe_ANSI, {}}, {fe_UTF16LE, {255, 254}}, {fe_UTF8, {239, 187, 191}}};
    for (const Mark& m : marks) {
        const std::u16string path = dir.File(u"written.bin");
        {
            clsUniFile f;
            ASSERT_TRUE(f.OpenFileWrite(path));
            EXPECT_TRUE(f.WriteBOM(m.enc));
        }
        EXPECT_EQ(TempDir::ReadBytes(path), m.bytes);
    }
}

TEST(clsUniFile, NamesOutsideEveryAnsiCodePageAndPathsBeyond260) {
    TempDir dir;
    // Han, Devanagari, Georgian and a character beyond the basic plane: no code page has them all.
    const std::u16string name = u"\u4E2D\u6587_\u0915\u093F_\u10D0_\U0001F600.txt";
    const std::u16string path = dir.File(name);
    {
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileWrite(path));
        EXPECT_EQ(f.OpenedFileName(), path);
        ASSERT_TRUE(f.WriteUTF8Line(name));
    }
    ASSERT_TRUE(TempDir::Exists(path));
    clsSearchFiles search;
    const SearchFilesCollection found = search.SearchInPath(dir.Path());
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]->sFileName, name);
    {
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileRead(found[0]->sPathFileName()));
        std::u16string line;
        EXPECT_TRUE(f.ReadUTF8Line(line));
        EXPECT_EQ(line, name);
    }

    // A folder chain well past 260 characters, made and used through the long-path rule.
    std::u16string deep = dir.Path();
    std::vector<std::u16string> folders;
    while (deep.size() < 300) {
        deep += u"\\" + std::u16string(40, u'd') + static_cast<char16_t>(u'a' + folders.size());
        folders.push_back(deep);
        ASSERT_TRUE(platform::CreateFolder(MakeLongPath(deep))) << platform::LastError();
    }
    const std::u16string longFile = deep + u"\\long name \u4E2D.txt";
    ASSERT_GT(longFile.size(), 300u);
    {
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileWrite(longFile));
        ASSERT_TRUE(f.WriteUnicodeLine(u"deep"));
    }
    {
        clsUniFile f;
        ASSERT_TRUE(f.OpenFileRead(longFile));
        std::u16string line;
        EXPECT_TRUE(f.ReadUnicodeLine(line));
        EXPECT_EQ(line, u"deep");
        EXPECT_EQ(f.LOF(), 12);
    }
    const SearchFilesCollection inDeep = search.SearchInPath(deep);
    ASSERT_EQ(inDeep.size(), 1u);
    EXPECT_EQ(inDeep[0]->sPathFileName(), longFile);
    EXPECT_EQ(inDeep[0]->dFileSize, 12);
    // Cleared here: the scratch folder's own removal doesn't take the long form.
    EXPECT_TRUE(platform::DeleteFileAt(MakeLongPath(longFile)));
    for (auto it = folders.rbegin(); it != folders.rend(); ++it) EXPECT_TRUE(platform::RemoveFolder(MakeLongPath(*it)));
}
