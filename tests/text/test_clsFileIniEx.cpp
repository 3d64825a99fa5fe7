#include "text/clsFileIniEx.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "RaisedError.h"
#include "IniTestSupport.h"
#include "common/CtlError.h"
#include "text/UniStringCore.h"

namespace {

using testsupport::Bytes;
using initest::ExpectMatchesGolden;
using testsupport::Utf8;
using testsupport::TempDir;
using initest::Utf16File;

using Rows = std::vector<std::u16string>;

clsFileIniEx Parsed(const std::u16string& text, const std::u16string& comment = u"", bool allowTabs = false,
                    const std::u16string& separator = u"=") {
    clsFileIniEx ini;
    ini.CommentChar(comment);
    ini.AllowTabs(allowTabs);
    ini.KeyValueSepChar(separator);
    EXPECT_TRUE(ini.LoadFromString(text)) << Utf8(text);
    return ini;
}

// What pvSave writes for the rows in memory, read back from the file.
std::vector<uint8_t> Saved(clsFileIniEx& ini, const TempDir& folder, bool saveEmpty = true,
                           const std::u16string& lineSep = u"\r\n") {
    const std::u16string path = folder.File(u"saved.ini");
    EXPECT_TRUE(ini.Save(path, lineSep, false, saveEmpty));
    return TempDir::ReadBytes(path);
}

TEST(clsFileIniEx, LookupsFollowSectionsCommentsAndTabs) {
    const struct { std::u16string text, comment; bool allowTabs; std::u16string section, key, expected; } cases[] = {
        {u"a=1", u"", false, u"", u"a", u"1"},  // no line end at all
        {u"[S]\r\n; note\r\nk = v\r\n", u";", false, u"s", u"K", u"v"},
        {u"[S]\r\n; note\r\nk = v\r\n", u";", true, u"s", u"K", u" v"},
        {u"[S]\r\n; k=commented\r\n", u";", false, u"S", u"; k", u"<none>"},
        {u"[S]\r\n; k=commented\r\n", u"", false, u"S", u"; k", u"commented"},  // no comments: a key
        {u"[s]\r\nk=1\r\nk=2", u"", false, u"s", u"k", u"2"},
        {u"x=top\r\n[x]\r\nx=inner", u"", false, u"", u"x", u"top"},
        {u"x=top\r\n[x]\r\nx=inner", u"", false, u"X", u"X", u"inner"},
        {u"[a]\r\nk=1\r\n[b]\r\nm=2\r\n[A]\r\nn=3", u"", false, u"a", u"n", u"3"},  // sections merge
        {u"[a=b]\r\n", u"", false, u"", u"[a", u"b]"},  // the separator wins over the brackets
        {u"[]\r\nk=1", u"", false, u"", u"k", u"1"},   // too short for a section
        {u"[ s ] tail\r\nk=1", u"", false, u"s", u"k", u"1"},
        {u"=v\r\nk=1", u"", false, u"", u"", u"<none>"},  // a separator in front makes no key
        {u"\tk\t=\tv\t", u"", false, u"", u"k", u"v"},
        {u"\tk\t=\tv\t", u"", true, u"", u"k", u"\tv\t"},
        {u"a=1\r\nb=2\nc=3\rd=4", u"", false, u"", u"b", u"2\nc=3\rd=4"},  // the first line end rules
        {u"a=1\nb=2\rc=3", u"", false, u"", u"b", u"2\rc=3"},
        {u"a=1\rb=2", u"", false, u"", u"b", u"2"},
        {u"[\u03A3]\r\n\u03BA=\u03C9", u"", false, u"\u03C3", u"\u039A", u"\u03C9"},  // case-blind Greek
        {u"#c=1\r\nk=2", u"#", false, u"", u"#c", u"<none>"},
    };
    for (const auto& c : cases) {
        const clsFileIniEx ini = Parsed(c.text, c.comment, c.allowTabs);
        EXPECT_EQ(ini.GetString(c.section, c.key, u"<none>"), c.expected)
            << Utf8(c.text) << " [" << Utf8(c.section) << "] " << Utf8(c.key);
    }
}

TEST(clsFileIniEx, LongerSeparatorsCutTheKeyByTheirExtraCharacters) {
    // The key is the text before the separator less the separator's length beyond one character;
    // the value starts right behind the separator.
    const struct { std::u16string separator, line, key, value; } cases[] = {
        {u"::", u"key::value", u"ke", u"value"},
        {u"->", u"ab->cd", u"a", u"cd"},
        {u" = ", u"name = value", u"na", u"value"},
        {u"->", u"a->b", u"", u"b"},
        {u"=>", u"k=>", u"", u""},
    };
    for (const auto& c : cases) {
        const clsFileIniEx ini = Parsed(u"[s]\r\n" + c.line, u"", true, c.separator);
        if (!c.key.empty()) {
            EXPECT_EQ(ini.GetString(u"s", c.key, u"<none>"), c.value) << Utf8(c.line);
        }
        Rows rows;
        ini.GetSectionRows(u"s", rows);
        if (c.key.empty()) {
            // A row with an empty key is kept but is no key row.
            EXPECT_TRUE(rows.empty()) << Utf8(c.line);
        } else {
            ASSERT_EQ(rows, Rows{c.line});
            EXPECT_EQ(ini.GetSectionRowKey(rows, 0), c.key) << Utf8(c.line);
            EXPECT_EQ(ini.GetSectionRowValue(rows, 0), c.value) << Utf8(c.line);
        }
    }
    // Rows added in memory are keyed by the whole key and written with the whole separator.
    TempDir folder;
    clsFileIniEx built;
    built.KeyValueSepChar(u"::");
    built.AddString(u"s", u"key", u"v");
    EXPECT_EQ(built.GetString(u"s", u"key"), u"v");
    EXPECT_EQ(Saved(built, folder), Bytes("[s]\r\nkey::v"));
}

TEST(clsFileIniEx, SavingKeepsCommentsOrderAndMergedSections) {
    TempDir folder;
    const std::u16string text =
        u"; top comment\r\ntop=1\r\n\r\n[First] trailing text\r\na=1\r\n; inside first\r\nb = two \r\n"
        u"[Empty]\r\n[second]\r\nc=3\r\n[FIRST]\r\nd=4\r\na=one again\r\n";
    clsFileIniEx ini = Parsed(text, u";");
    EXPECT_EQ(ini.GetString(u"first", u"B"), u"two");
    EXPECT_EQ(ini.GetString(u"FIRST", u"a"), u"one again");
    EXPECT_EQ(ini.GetString(u"", u"TOP"), u"1");
    Rows names;
    ini.GetSectionNames(names);
    EXPECT_EQ(names, (Rows{u"", u"First", u"second"}));
    ExpectMatchesGolden(Saved(ini, folder), "FileIniEx_roundtrip.ini");

    // Any line separator; the last one is dropped.
    clsFileIniEx small = Parsed(u"[Empty]\r\n[Full]\r\nk=v");
    EXPECT_EQ(Saved(small, folder), Bytes("[Full]\r\nk=v"));
    EXPECT_EQ(Saved(small, folder, true, u"\n"), Bytes("[Full]\nk=v"));
    // A text that ends with a line end keeps it, through the empty row behind it.
    clsFileIniEx ended = Parsed(u"[s]\r\nk=1\r\nk=2\r\nx=0\r\n");
    EXPECT_EQ(Saved(ended, folder), Bytes("[s]\r\nk=2\r\nx=0\r\n"));
    // Lines with no separator, comments off, go back as they came.
    clsFileIniEx raw = Parsed(u"[S]\r\n; note\r\nk = v\r\n");
    EXPECT_EQ(Saved(raw, folder), Bytes("[S]\r\n; note\r\nk = v\r\n"));
    // Empty values can be left out; comments stay.
    clsFileIniEx empties = Parsed(u"; c\r\n[s]\r\nk=\r\nj=1", u";");
    EXPECT_EQ(Saved(empties, folder, false), Bytes("; c\r\n[s]\r\nj=1"));
    EXPECT_EQ(Saved(empties, folder, true), Bytes("; c\r\n[s]\r\nk=\r\nj=1"));
}

TEST(clsFileIniEx, SaveWithUpdateLaysTheKeysInMemoryOverTheFile) {
    TempDir folder;
    const std::u16string path = folder.File(u"update.ini");
    TempDir::WriteBytes(path, Bytes("; header\r\n[a]\r\nk=1\r\nold=x\r\n[b]\r\nm=2"));
    clsFileIniEx ini;
    ini.CommentChar(u";");
    ASSERT_TRUE(ini.Load(path));
    ini.AddString(u"a", u"k", u"9");
    EXPECT_TRUE(ini.RemoveRowKeyVal(u"A", u" OLD "));
    EXPECT_FALSE(ini.RemoveRowKeyVal(u"a", u"old"));
    ini.AddString(u" c ", u"n", u" 3 ");
    EXPECT_EQ(ini.GetString(u"c", u"n"), u"3");
    // The key removed in memory is still in the file: update only adds and overwrites.
    EXPECT_TRUE(ini.Save());
    ExpectMatchesGolden(TempDir::ReadBytes(path), "FileIniEx_update.ini");
    // Without update the rows in memory replace the file.
    TempDir::WriteBytes(path, Bytes("; header\r\n[a]\r\nk=1\r\nold=x\r\n[b]\r\nm=2"));
    EXPECT_TRUE(ini.Save(u"", u"\r\n", false));
    ExpectMatchesGolden(TempDir::ReadBytes(path), "FileIniEx_replace.ini");
}

TEST(clsFileIniEx, TheFileTurnsUtf16AtTheFirstTextThatNeedsIt) {
    TempDir folder;
    const std::u16string path = folder.File(u"greek.ini");
    clsFileIniEx ini;
    ini.AddString(u"s", u"k", u"v");
    ASSERT_TRUE(ini.Save(path));
    const bool ansiIsPlain = CanUseAnsiForString(u"[s]\r\nk=v");
    if (ansiIsPlain) {
        EXPECT_EQ(TempDir::ReadBytes(path), Bytes("[s]\r\nk=v"));
    }
    ini.AddString(u"s", u"g", u"\u03A9\u03BC\u03AD\u03B3\u03B1");
    ASSERT_TRUE(ini.Save(path));
    EXPECT_EQ(TempDir::ReadBytes(path), Utf16File(u"[s]\r\nk=v\r\ng=\u03A9\u03BC\u03AD\u03B3\u03B1"));
    clsFileIniEx back;
    ASSERT_TRUE(back.Load(path));
    EXPECT_EQ(back.GetString(u"S", u"G"), u"\u03A9\u03BC\u03AD\u03B3\u03B1");
    EXPECT_EQ(back.IniFile(), path);

    // A UTF-8 file loads, and comes back in the narrow form when it can.
    const std::u16string utf8 = folder.File(u"utf8.ini");
    TempDir::WriteBytes(utf8, {0xEF, 0xBB, 0xBF, '[', 's', ']', '\r', '\n', 'k', '=', 0xC3, 0xA9});
    clsFileIniEx fromUtf8;
    ASSERT_TRUE(fromUtf8.Load(utf8));
    EXPECT_EQ(fromUtf8.GetString(u"s", u"k"), u"\u00E9");
    ASSERT_TRUE(fromUtf8.Save());
    if (CanUseAnsiForString(u"\u00E9")) {
        EXPECT_EQ(TempDir::ReadBytes(utf8), (std::vector<uint8_t>{'[', 's', ']', '\r', '\n', 'k', '=', 0xE9}));
    }
}

TEST(clsFileIniEx, SectionListsAndRowSplitting) {
    const clsFileIniEx ini = Parsed(u"x=1\r\n;c\r\n[a]\r\nk=1\r\n;only\r\nj = 2\r\n[B]\r\n;c\r\n[ c ]\r\nz=", u";");
    Rows rows;
    ini.GetSectionNames(rows);
    EXPECT_EQ(rows, (Rows{u"", u"a", u"B", u" c "}));  // a section of comments alone is still a section
    ini.GetSectionRows(u"", rows);
    EXPECT_EQ(rows, Rows{u"x=1"});
    ini.GetSectionRows(u"A", rows);
    EXPECT_EQ(rows, (Rows{u"k=1", u"j = 2"}));
    ini.GetSectionRows(u"missing", rows);
    EXPECT_EQ(rows, Rows{u""});
    ini.GetSectionRows(u"c", rows);
    EXPECT_EQ(rows, Rows{u"z="});

    const Rows split{u"k=v", u"=v", u"", u"noeq", u" k = v ", u"a=b=c"};
    const struct { bool allowTabs; int32_t idx; std::u16string key, value; } cases[] = {
        {false, 0, u"k", u"v"}, {false, 1, u"", u""},     {false, 2, u"", u""},      {false, 3, u"", u""},
        {false, 4, u"k", u"v"}, {true, 4, u" k ", u" v "}, {false, 5, u"a", u"b=c"},
    };
    for (const auto& c : cases) {
        clsFileIniEx splitter;
        splitter.AllowTabs(c.allowTabs);
        EXPECT_EQ(splitter.GetSectionRowKey(split, c.idx), c.key) << c.idx;
        EXPECT_EQ(splitter.GetSectionRowValue(split, c.idx), c.value) << c.idx;
    }
    for (const int32_t outside : {-1, 6}) {
        EXPECT_EQ(RaisedNumber([&] { ini.GetSectionRowKey(split, outside); }), CtlError::kSubscriptOutOfRange);
    }
}

// An empty key (or one of blanks) matches the first row without a key: a comment or blank row of
// the section, or at the top level the rows before any section and then the section rows
// themselves, with all they hold.
TEST(clsFileIniEx, AnEmptyKeyRemovesTheFirstRowWithoutAKey) {
    TempDir folder;
    clsFileIniEx ini = Parsed(u"; top\r\ntop=1\r\n[a]\r\nk=1\r\n; in a\r\n\r\n[b]\r\nm=2", u";");
    EXPECT_TRUE(ini.RemoveRowKeyVal(u"a", u""));
    EXPECT_EQ(Saved(ini, folder), Bytes("; top\r\ntop=1\r\n[a]\r\nk=1\r\n\r\n[b]\r\nm=2"));
    EXPECT_TRUE(ini.RemoveRowKeyVal(u"A", u"  "));
    EXPECT_FALSE(ini.RemoveRowKeyVal(u"a", u""));
    EXPECT_EQ(ini.GetString(u"a", u"k"), u"1");
    EXPECT_TRUE(ini.RemoveRowKeyVal(u"", u""));
    EXPECT_EQ(Saved(ini, folder), Bytes("top=1\r\n[a]\r\nk=1\r\n[b]\r\nm=2"));
    EXPECT_TRUE(ini.RemoveRowKeyVal(u"", u""));
    EXPECT_EQ(ini.GetString(u"a", u"k", u"gone"), u"gone");
    EXPECT_EQ(Saved(ini, folder), Bytes("top=1\r\n[b]\r\nm=2"));
    EXPECT_FALSE(ini.RemoveRowKeyVal(u"missing", u""));
}

TEST(clsFileIniEx, RemovingSectionsKeysAndBooleans) {
    TempDir folder;
    clsFileIniEx ini = Parsed(u"top=1\r\n[a]\r\nk=1\r\n[b]\r\nm=2\r\nt= 1 \r\nf=true");
    EXPECT_FALSE(ini.RemoveSection(u"zz"));
    EXPECT_FALSE(ini.RemoveSection(u"  "));
    EXPECT_TRUE(ini.RemoveSection(u" A "));
    EXPECT_EQ(ini.GetString(u"a", u"k", u"gone"), u"gone");
    EXPECT_TRUE(ini.RemoveRowKeyVal(u"", u"TOP"));
    EXPECT_FALSE(ini.RemoveRowKeyVal(u"", u"top"));
    EXPECT_FALSE(ini.RemoveRowKeyVal(u"b", u""));
    EXPECT_FALSE(ini.RemoveRowKeyVal(u"nope", u"m"));
    EXPECT_TRUE(ini.RemoveRowKeyVal(u"b", u"M"));
    EXPECT_EQ(Saved(ini, folder), Bytes("[b]\r\nt= 1 \r\nf=true"));

    const struct { std::u16string key; bool fallback, expected; } bools[] = {
        {u"t", false, true}, {u"f", true, false}, {u"missing", true, true}, {u"missing", false, false},
    };
    for (const auto& c : bools) EXPECT_EQ(ini.GetBool(u"b", c.key, c.fallback), c.expected) << Utf8(c.key);
    ini.AddBool(u"b", u"on", true);
    ini.AddBool(u"b", u"off", false);
    EXPECT_EQ(ini.GetString(u"b", u"on"), u"1");
    EXPECT_EQ(ini.GetString(u"b", u"off"), u"0");
    // AllowTabs keeps the blanks of what is added.
    clsFileIniEx tabs;
    tabs.AllowTabs(true);
    tabs.AddString(u"s", u" k", u" v ");
    EXPECT_EQ(tabs.GetString(u"s", u"k"), u" v ");
    EXPECT_EQ(Saved(tabs, folder), Bytes("[s]\r\n k= v "));
}

TEST(clsFileIniEx, ErrorsAndTheSizeLimit) {
    clsFileIniEx empty;
    Rows rows;
    const struct { const char* what; void (*call)(clsFileIniEx&, Rows&); } needLoad[] = {
        {"GetString", [](clsFileIniEx& i, Rows&) { i.GetString(u"a", u"b"); }},
        {"GetBool", [](clsFileIniEx& i, Rows&) { i.GetBool(u"a", u"b"); }},
        {"GetSectionRows", [](clsFileIniEx& i, Rows& r) { i.GetSectionRows(u"a", r); }},
        {"GetSectionNames", [](clsFileIniEx& i, Rows& r) { i.GetSectionNames(r); }},
    };
    for (const auto& c : needLoad) {
        EXPECT_THAT(RaisedBy([&] { c.call(empty, rows); }), testing::EndsWith("|Please load the file first!|-2147221503"))
            << c.what;
    }
    EXPECT_THAT(RaisedBy([&] { empty.Save(u"  "); }), testing::HasSubstr("|I need a file!|"));

    TempDir folder;
    EXPECT_FALSE(empty.Load(folder.File(u"missing.ini")));
    EXPECT_EQ(empty.Rows(), nullptr);
    EXPECT_FALSE(empty.Load(folder.Path()));  // a folder is no file

    // Exactly 5,242,880 bytes load; one more doesn't, and leaves nothing loaded.
    const std::u16string big = folder.File(u"big.ini");
    std::vector<uint8_t> bytes = Bytes("[s]\r\nk=");
    bytes.resize(5242880, 'v');
    TempDir::WriteBytes(big, bytes);
    clsFileIniEx ini;
    ASSERT_TRUE(ini.Load(big));
    EXPECT_EQ(ini.GetString(u"s", u"k").size(), 5242880u - 7u);
    bytes.push_back('v');
    TempDir::WriteBytes(big, bytes);
    EXPECT_FALSE(ini.Load(big));
    EXPECT_THROW(ini.GetString(u"s", u"k"), CtlError);
    // Saving over a file too long to load leaves it untouched instead of writing the rows alone.
    ini.AddString(u"s", u"k", u"small");
    EXPECT_FALSE(ini.Save(big));
    EXPECT_EQ(TempDir::ReadBytes(big).size(), 5242881u);
}

TEST(clsFileIniEx, OddTextNeitherCrashesNorLosesRows) {
    TempDir folder;
    // Character 0 is text like any other.
    const std::u16string withNul(u"[s]\0x\r\nk=\0v\r\n\0", 14);
    clsFileIniEx nul = Parsed(withNul);
    EXPECT_EQ(nul.GetString(u"s", u"k"), std::u16string(u"\0v", 2));
    const std::vector<uint8_t> saved = Saved(nul, folder);
    EXPECT_EQ(saved, Bytes(std::string("[s]\r\nk=\0v\r\n\0", 12)));

    // A line of a million characters, and a text of line ends alone.
    const std::u16string longValue(1000000, u'w');
    EXPECT_EQ(Parsed(u"[s]\r\nk=" + longValue).GetString(u"s", u"k"), longValue);
    clsFileIniEx ends = Parsed(u"\r\n\r\n\r\n");
    Rows names;
    ends.GetSectionNames(names);
    EXPECT_EQ(names, Rows{u""});
    EXPECT_EQ(Saved(ends, folder), Bytes("\r\n\r\n\r\n"));
    // An empty text gets a line end, and so two empty rows.
    clsFileIniEx nothing = Parsed(u"");
    EXPECT_EQ(Saved(nothing, folder), Bytes("\r\n"));
    // Never loaded: an empty file.
    clsFileIniEx fresh;
    EXPECT_TRUE(fresh.pvSave(folder.File(u"fresh.ini")));
    EXPECT_TRUE(TempDir::ReadBytes(folder.File(u"fresh.ini")).empty());
    // A section named like the hidden suffix of outside keys can't reach them.
    clsFileIniEx tricky = Parsed(u"k=1\r\n[k\t1234\t5-6*7-8\t4321]\r\nk=2");
    EXPECT_EQ(tricky.GetString(u"", u"k"), u"1");

    clsFileIniEx nowhere = Parsed(u"k=1");
    EXPECT_FALSE(nowhere.Save(folder.File(u"no\\such\\folder.ini"), u"\r\n", false));

    // A read-only file can't be saved over.
    const std::u16string locked = folder.File(u"locked.ini");
    TempDir::WriteBytes(locked, Bytes("[s]\r\nk=1"));
    if (!initest::MakeReadOnly(locked)) GTEST_SKIP() << "this host writes into read-only files";
    clsFileIniEx readOnly;
    ASSERT_TRUE(readOnly.Load(locked));
    readOnly.AddString(u"s", u"k", u"2");
    EXPECT_FALSE(readOnly.Save());
    EXPECT_EQ(TempDir::ReadBytes(locked), Bytes("[s]\r\nk=1"));
}

}  // namespace
