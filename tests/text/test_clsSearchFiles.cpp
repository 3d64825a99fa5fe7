#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "common/CaseFold.h"
#include "common/CtlError.h"
#include "support/TempDir.h"
#include "text/UniFileUtils.h"
#include "text/clsSearchFiles.h"

using testsupport::Bytes;
using testsupport::TempDir;
using testsupport::Utf8;

namespace {

// root: a.txt, B.TXT, c.dat, noext, sub1\ (x.txt, deep\ (y.txt)), sub2\ (empty)
struct Tree {
    TempDir dir;
    Tree() {
        TempDir::WriteBytes(dir.File(u"a.txt"), Bytes("aaa"));
        TempDir::WriteBytes(dir.File(u"B.TXT"), Bytes("b"));
        TempDir::WriteBytes(dir.File(u"c.dat"), std::vector<uint8_t>(70000, 7));
        TempDir::WriteBytes(dir.File(u"noext"), {});
        TempDir::MakeFolder(dir.File(u"sub1\\deep"));
        TempDir::MakeFolder(dir.File(u"sub2"));
        TempDir::WriteBytes(dir.File(u"sub1\\x.txt"), Bytes("x"));
        TempDir::WriteBytes(dir.File(u"sub1\\deep\\y.txt"), Bytes("yy"));
    }
    std::u16string Root() const { return dir.Path(); }
};

// Paths below the root, sorted case-insensitively: find order is the platform's.
std::vector<std::string> Relative(const SearchFilesCollection& coll, const std::u16string& root) {
    std::vector<std::string> out;
    for (const auto& item : coll) {
        const std::u16string full = item->sPathFileName();
        out.push_back(Utf8(full.substr(std::min(full.size(), root.size() + 1))));
    }
    const auto lower = [](std::string s) {
        for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        return s;
    };
    std::sort(out.begin(), out.end(), [&](const std::string& a, const std::string& b) { return lower(a) < lower(b); });
    return out;
}

using Names = std::vector<std::string>;

}  // namespace

TEST(clsSearchFiles, OptionsSelectWhatTheWalkReturns) {
    Tree t;
    const std::u16string root = t.Root();
    clsSearchFiles s;
    struct Case { const char* name; SearchFilesCollection result; Names expected; };
    const Case cases[] = {
        {"flat, all", s.SearchInPath(root), {"a.txt", "B.TXT", "c.dat", "noext", "sub1", "sub2"}},
        {"flat, files", s.SearchInPath(root, esfw_only_files), {"a.txt", "B.TXT", "c.dat", "noext"}},
        {"flat, folders", s.SearchInPath(root, esfw_only_dirs), {"sub1", "sub2"}},
        {"flat, with base dirs", s.SearchInPath(root, esfw_all, false, false, true),
         {".", "..", "a.txt", "B.TXT", "c.dat", "noext", "sub1", "sub2"}},
        {"recursive, all", s.SearchInPath(root, esfw_all, true),
         {"a.txt", "B.TXT", "c.dat", "noext", "sub1", "sub1\\deep", "sub1\\deep\\y.txt", "sub1\\x.txt", "sub2"}},
        // Folders are walked into even though they are not in the result.
        {"recursive, files", s.SearchInPath(root, esfw_only_files, true),
         {"a.txt", "B.TXT", "c.dat", "noext", "sub1\\deep\\y.txt", "sub1\\x.txt"}},
        {"recursive, folders", s.SearchInPath(root, esfw_only_dirs, true), {"sub1", "sub1\\deep", "sub2"}},
        {"pattern is case-insensitive", s.SearchPathPattern(root + u"\\*.TxT"), {"a.txt", "B.TXT"}},
        // The pattern filters the folders too, so the walk never reaches sub1.
        {"pattern with recursion", s.SearchPathPattern(root + u"\\*.txt", esfw_all, true), {"a.txt", "B.TXT"}},
        {"file pattern over the tree", s.SearchFilePatternPathNoPattern(root + u"\\*.txt", esfw_only_files, true),
         {"a.txt", "B.TXT", "sub1\\deep\\y.txt", "sub1\\x.txt"}},
        {"file pattern, no recursion", s.SearchFilePatternPathNoPattern(root + u"\\*.txt"), {"a.txt", "B.TXT"}},
        {"missing folder", s.SearchInPath(root + u"\\nothing"), {}},
        {"missing folder, base dirs", s.SearchInPath(root + u"\\nothing", esfw_all, false, false, true, 1), {}},
        {"empty folder, base dirs, limit 1", s.SearchInPath(root + u"\\sub2", esfw_all, false, false, true, 1),
         {"sub2\\."}},
        {"a folder by its name", s.SearchPathPattern(root + u"\\SUB1"), {"sub1"}},
        {"trailing backslash finds nothing", s.SearchPathPattern(root + u"\\sub1\\"), {}},
    };
    for (const Case& c : cases) EXPECT_EQ(Relative(c.result, root), c.expected) << c.name;
    EXPECT_FALSE(s.IsSearching());
}

TEST(clsSearchFiles, ResultOrderLimitsAndTrees) {
    Tree t;
    const std::u16string root = t.Root();
    clsSearchFiles s;

    // A parent comes first, with its subtree straight behind it.
    const SearchFilesCollection flat = s.SearchInPath(root, esfw_all, true);
    ASSERT_EQ(flat.size(), 9u);
    for (size_t i = 0; i < flat.size(); ++i) {
        if (flat[i]->sFileName != u"sub1") continue;
        const std::u16string below = flat[i]->sPathFileName() + u"\\";
        for (size_t k = 1; k <= 3; ++k) {
            ASSERT_LT(i + k, flat.size());
            EXPECT_EQ(flat[i + k]->sPathFileName().rfind(below, 0), 0u) << Utf8(flat[i + k]->sPathFileName());
        }
    }

    // Limits: at most that many, and the first ones of the unlimited walk.
    for (const int32_t limit : {1, 3, 5, 9, 20}) {
        const SearchFilesCollection limited = s.SearchInPath(root, esfw_all, true, false, false, limit);
        ASSERT_EQ(limited.size(), std::min<size_t>(static_cast<size_t>(limit), flat.size())) << limit;
        for (size_t i = 0; i < limited.size(); ++i) EXPECT_EQ(limited[i]->sPathFileName(), flat[i]->sPathFileName());
    }

    // A file pattern over the tree applies the limit to each walk by itself: one folder (the first
    // the find call gives), one match in the folder itself, and one in that subfolder.
    const SearchFilesCollection firstDir = s.SearchInPath(root, esfw_only_dirs, true, false, false, 1);
    ASSERT_EQ(firstDir.size(), 1u);
    const size_t inFirst =
        std::min<size_t>(1, s.SearchPathPattern(firstDir[0]->sPathFileName() + u"\\*.txt").size());
    const SearchFilesCollection perWalk =
        s.SearchFilePatternPathNoPattern(root + u"\\*.txt", esfw_only_files, true, false, false, 1);
    EXPECT_EQ(perWalk.size(), 1 + inFirst);

    // A tree holds the top level only; each folder's subtree hangs under it.
    const SearchFilesCollection tree = s.SearchInPath(root, esfw_all, true, false, false, -1, true);
    EXPECT_EQ(Relative(tree, root), (Names{"a.txt", "B.TXT", "c.dat", "noext", "sub1", "sub2"}));
    for (const auto& item : tree) {
        if (item->sFileName == u"sub1") {
            EXPECT_EQ(Relative(item->oCollSubFiles, root), (Names{"sub1\\deep", "sub1\\x.txt"}));
            for (const auto& child : item->oCollSubFiles) {
                if (child->sFileName == u"deep") {
                    EXPECT_EQ(Relative(child->oCollSubFiles, root), (Names{"sub1\\deep\\y.txt"}));
                } else {
                    EXPECT_TRUE(child->oCollSubFiles.empty());
                }
            }
        } else {
            EXPECT_TRUE(item->oCollSubFiles.empty()) << Utf8(item->sFileName);
        }
    }
    // With files only, a tree has nowhere to hang the folders' content: it goes to the top.
    const SearchFilesCollection filesTree = s.SearchInPath(root, esfw_only_files, true, false, false, -1, true);
    EXPECT_EQ(Relative(filesTree, root),
              (Names{"a.txt", "B.TXT", "c.dat", "noext", "sub1\\deep\\y.txt", "sub1\\x.txt"}));
}

TEST(clsSearchFiles, WildCardsFollowWindowsRules) {
    TempDir dir;
    for (const char16_t* name : {u"abc", u"abc.txt", u"abc.txt.bak", u"ABD.TXT", u"x.y.z", u"a", u"ab"}) {
        TempDir::WriteBytes(dir.File(name), {});
    }
    struct Case {
        const char16_t* pattern;
        Names expected;
        // Wine's find call lets '?' match exactly one character and drops a pattern's final dot.
        bool wineDiffers = false;
    };
    const Case cases[] = {
        {u"*.*", {"a", "ab", "abc", "abc.txt", "abc.txt.bak", "ABD.TXT", "x.y.z"}},
        {u"*", {"a", "ab", "abc", "abc.txt", "abc.txt.bak", "ABD.TXT", "x.y.z"}},
        {u"*.txt", {"abc.txt", "ABD.TXT"}},
        // '?' may match nothing at the end of a name.
        {u"ab?", {"ab", "abc"}, true},
        {u"*.", {"a", "ab", "abc"}, true},
        {u"ab?.txt", {"abc.txt", "ABD.TXT"}},
        {u"?", {"a"}},
        // Each ".*" may match nothing at the end of a name.
        {u"*.*.*", {"a", "ab", "abc", "abc.txt", "abc.txt.bak", "ABD.TXT", "x.y.z"}},
        {u"abc.*", {"abc", "abc.txt", "abc.txt.bak"}},
        {u"*z", {"x.y.z"}},
        {u"nomatch*", {}},
    };
    clsSearchFiles s;
    const bool wine = testsupport::RunningUnderWine();
    for (const Case& c : cases) {
        if (wine && c.wineDiffers) continue;
        EXPECT_EQ(Relative(s.SearchPathPattern(dir.File(c.pattern)), dir.Path()), c.expected) << Utf8(c.pattern);
    }
}

namespace {

// Runs a handler at each folder of an asynchronous walk.
class Handler : public clsSearchFilesEvents {
public:
    int calls = 0;
    int stopAt = 0;
    std::u16string reentryRoot;
    size_t reentryCount = 99;
    bool searchingInside = false;
    std::vector<std::u16string> dirs;

    void DoEvents(clsSearchFiles& search) override {
        ++calls;
        dirs.push_back(search.CurrentDir());
        searchingInside = search.IsSearching();
        if (!reentryRoot.empty() && calls == 1) reentryCount = search.SearchInPath(reentryRoot, esfw_all, true).size();
        if (stopAt != 0 && calls == stopAt) search.StopSearch();
    }
};

}  // namespace

TEST(clsSearchFiles, AsyncWalkYieldsAndCanBeStopped) {
    Tree t;
    const std::u16string root = t.Root();
    clsSearchFiles plain;
    const SearchFilesCollection full = plain.SearchInPath(root, esfw_all, true);

    {
        // One yield per folder; a search from inside the handler gets nothing.
        Handler h;
        h.reentryRoot = root;
        clsSearchFiles s(&h);
        const SearchFilesCollection got = s.SearchInPath(root, esfw_all, true, true);
        EXPECT_EQ(h.calls, 4);
        EXPECT_EQ(h.reentryCount, 0u);
        EXPECT_TRUE(h.searchingInside);
        ASSERT_FALSE(h.dirs.empty());
        EXPECT_EQ(h.dirs[0], root);
        std::vector<std::u16string> dirs = h.dirs;
        std::sort(dirs.begin(), dirs.end());
        EXPECT_EQ(dirs, (std::vector<std::u16string>{root, root + u"\\sub1", root + u"\\sub1\\deep",
                                                      root + u"\\sub2"}));
        EXPECT_EQ(got.size(), full.size());
        EXPECT_FALSE(s.IsSearching());
        // Without bAsync the handler is never called.
        h.calls = 0;
        EXPECT_EQ(s.SearchInPath(root, esfw_all, true, false).size(), full.size());
        EXPECT_EQ(h.calls, 0);
    }
    {
        // Stopped at the second folder: what came is the start of the full walk, and no more
        // folders are entered.
        Handler h;
        h.stopAt = 2;
        clsSearchFiles s(&h);
        const SearchFilesCollection got = s.SearchInPath(root, esfw_all, true, true);
        EXPECT_EQ(h.calls, 2);
        EXPECT_LT(got.size(), full.size());
        for (size_t i = 0; i < got.size(); ++i) EXPECT_EQ(got[i]->sPathFileName(), full[i]->sPathFileName());
        // The next search starts afresh.
        h.stopAt = 0;
        EXPECT_EQ(s.SearchInPath(root, esfw_all, true, true).size(), full.size());
    }
    {
        // Stopped before anything was found.
        Handler h;
        h.stopAt = 1;
        clsSearchFiles s(&h);
        EXPECT_TRUE(s.SearchInPath(root, esfw_all, true, true).empty());
    }
}

TEST(clsSearchFiles, EntryRecordsAndTheirMembers) {
    Tree t;
    const std::u16string root = t.Root();
    // A known last-write time: 2021-03-04 05:06:07 UTC, a Thursday.
    using namespace std::chrono;
    const sys_seconds when = sys_days{year{2021} / 3 / 4} + hours{5} + minutes{6} + seconds{7};
    std::filesystem::last_write_time(TempDir::HostPath(t.dir.File(u"c.dat")),
                                     std::chrono::file_clock::from_sys(when));

    clsSearchFilesFInfo info;
    ASSERT_TRUE(info.LoadFromFileOrDir(t.dir.File(u"c.dat")));
    EXPECT_EQ(info.sFileName, u"c.dat");
    EXPECT_EQ(info.sFilePathNoSlash(), root);
    EXPECT_EQ(info.sFilePathSlash(), root + u"\\");
    EXPECT_EQ(info.sPathFileName(), t.dir.File(u"c.dat"));
    EXPECT_EQ(info.dFileSize, 70000);
    EXPECT_TRUE(info.IsFile());
    EXPECT_FALSE(info.IsDirectory());
    EXPECT_FALSE(info.IsReadOnly());
    int32_t day = 0, month = 0, yearOut = 0, hour = 0, minute = 0, second = 0, ms = -1, dow = 0;
    info.GetUTCFileDate(esfid_lastwrite, day, month, yearOut, &hour, &minute, &second, &ms, &dow);
    EXPECT_EQ((std::vector<int32_t>{yearOut, month, day, hour, minute, second, ms, dow}),
              (std::vector<int32_t>{2021, 3, 4, 5, 6, 7, 0, 4}));
    // An unknown date type leaves the outputs alone.
    day = -5;
    info.GetUTCFileDate(9, day, month, yearOut);
    EXPECT_EQ(day, -5);
    // Local time differs from UTC by whole quarter hours on every zone, and by at most 14 hours.
    int32_t lDay = 0, lMonth = 0, lYear = 0, lHour = 0, lMinute = 0;
    clsSearchFiles s;
    s.GetFileDate(t.dir.File(u"c.dat"), esfid_lastwrite, lDay, lMonth, lYear, &lHour, &lMinute);
    const int64_t utcMinutes = (4 * 24 + 5) * 60 + 6;
    const int64_t localMinutes = (static_cast<int64_t>(lDay) * 24 + lHour) * 60 + lMinute;
    EXPECT_EQ(lYear, 2021);
    EXPECT_EQ(lMonth, 3);
    EXPECT_LE(std::abs(localMinutes - utcMinutes), 14 * 60);
    EXPECT_EQ((localMinutes - utcMinutes) % 15, 0);

    // Two matches, or none, are no entry.
    clsSearchFilesFInfo other;
    EXPECT_FALSE(other.LoadFromFileOrDir(t.dir.File(u"*.txt")));
    EXPECT_FALSE(other.LoadFromFileOrDir(t.dir.File(u"missing")));
    EXPECT_TRUE(other.LoadFromFileOrDir(t.dir.File(u"?.dat")));
    EXPECT_EQ(other.sFileName, u"c.dat");

    // A folder, with everything below it as one flat list (the recursive search's own result,
    // not a tree); then a deep copy that does not share the items.
    clsSearchFilesFInfo folder;
    ASSERT_TRUE(folder.LoadFromFileOrDir(t.dir.File(u"sub1"), true));
    EXPECT_TRUE(folder.IsDirectory());
    EXPECT_FALSE(folder.IsFile());
    EXPECT_EQ(Relative(folder.oCollSubFiles, root), (Names{"sub1\\deep", "sub1\\deep\\y.txt", "sub1\\x.txt"}));
    for (const auto& item : folder.oCollSubFiles) EXPECT_TRUE(item->oCollSubFiles.empty()) << Utf8(item->sFileName);
    const auto copy = folder.Clone();
    ASSERT_EQ(copy->oCollSubFiles.size(), 3u);
    EXPECT_NE(copy->oCollSubFiles[0].get(), folder.oCollSubFiles[0].get());
    copy->oCollSubFiles[0]->sFileName = u"changed";
    EXPECT_NE(folder.oCollSubFiles[0]->sFileName, u"changed");
    EXPECT_EQ(copy->sPathFileName(), folder.sPathFileName());

    // Path arithmetic refuses a web path.
    clsSearchFilesFInfo web;
    web.sFilePath(u"http://host/dir");
    EXPECT_THROW(web.sFilePathSlash(), CtlError);
    EXPECT_THROW(s.SearchInPath(u"c:/web"), CtlError);
    EXPECT_FALSE(s.IsSearching());
}

TEST(clsSearchFiles, LinkedFoldersAreListedButNotEntered) {
    Tree t;
    std::error_code ec;
    // A link from deep inside the tree back to its root.
    std::filesystem::create_directory_symlink(TempDir::HostPath(t.Root()),
                                              TempDir::HostPath(t.dir.File(u"sub1\\deep\\loop")), ec);
    if (ec) GTEST_SKIP() << "this system does not let the test create a folder link: " << ec.message();
    clsSearchFiles s;
    const SearchFilesCollection found = s.SearchInPath(t.Root(), esfw_all, true);
    EXPECT_EQ(Relative(found, t.Root()), (Names{"a.txt", "B.TXT", "c.dat", "noext", "sub1", "sub1\\deep",
                                                "sub1\\deep\\loop", "sub1\\deep\\y.txt", "sub1\\x.txt", "sub2"}));
    for (const auto& item : found) {
        if (item->sFileName == u"loop") {
            EXPECT_TRUE(item->IsDirectory());
            EXPECT_NE(item->lAttributes & esfa_FILE_ATTRIBUTE_REPARSE_POINT, 0);
        }
    }
}

// Removing a tree removes a folder link inside it as a link: the link goes, the folder it points
// to keeps its content.
TEST(clsSearchFiles, RemovingATreeRemovesFolderLinksNotTheirTargets) {
    Tree t;
    TempDir elsewhere;
    TempDir::MakeFolder(elsewhere.File(u"kept"));
    TempDir::WriteBytes(elsewhere.File(u"kept\\z.txt"), Bytes("z"));
    std::error_code ec;
    std::filesystem::create_directory_symlink(TempDir::HostPath(elsewhere.File(u"kept")),
                                              TempDir::HostPath(t.dir.File(u"sub1\\deep\\link")), ec);
    if (ec) GTEST_SKIP() << "this system does not let the test create a folder link: " << ec.message();
    EXPECT_TRUE(ufu_RmDirRic(t.dir.File(u"sub1")));
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(TempDir::HostPath(t.dir.File(u"sub1")))));
    EXPECT_EQ(TempDir::ReadBytes(elsewhere.File(u"kept\\z.txt")), Bytes("z"));
}
