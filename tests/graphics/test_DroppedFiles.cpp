// GetUnicodeDroppedFiles over a data object: wide and narrow lists, missing format, failures, damaged blocks.
#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>
#include <string>
#include <vector>

#include "graphics/modCommonDraw.h"
#include "support/TestDataObject.h"

namespace {

using testsupport::TestDataObject;
using testsupport::WideFileList;

TEST(DroppedFiles, ReadsTheWideListAndFallsBackOnFailure) {
    const std::vector<CtlString> fallback = {u"C:\\narrowed?.txt"};
    const std::vector<CtlString> names = {u"C:\\\u0416\u03A9\\a.txt", u"Z:\\tmp\\\u05D0 b.dat", u"c"};
    TestDataObject drop;
    drop.fileList = WideFileList(names);
    EXPECT_EQ(GetUnicodeDroppedFiles(&drop, fallback), names);

    // A damaged block: no final terminator. What is there is read, nothing past the end.
    drop.fileList = WideFileList({u"first", u"second"}, false);
    const std::vector<CtlString> damaged = GetUnicodeDroppedFiles(&drop, fallback);
    ASSERT_GE(damaged.size(), 1u);
    EXPECT_EQ(damaged[0], u"first");

    // A narrow list is widened through the ANSI code page.
    DROPFILES header{};
    header.pFiles = sizeof(DROPFILES);
    header.fWide = FALSE;
    std::vector<unsigned char> narrow(sizeof(header));
    std::memcpy(narrow.data(), &header, sizeof(header));
    for (const char* s : {"C:\\one.txt", "two", ""}) narrow.insert(narrow.end(), s, s + std::strlen(s) + 1);
    drop.fileList = narrow;
    EXPECT_EQ(GetUnicodeDroppedFiles(&drop, fallback), (std::vector<CtlString>{u"C:\\one.txt", u"two"}));

    // A header pointing outside the block gives the fallback.
    drop.fileList = WideFileList(names);
    reinterpret_cast<DROPFILES*>(drop.fileList.data())->pFiles = 100000;
    EXPECT_EQ(GetUnicodeDroppedFiles(&drop, fallback), fallback);

    drop.failGet = true;
    EXPECT_EQ(GetUnicodeDroppedFiles(&drop, fallback), fallback);
    drop.fileList.clear();
    EXPECT_TRUE(GetUnicodeDroppedFiles(&drop, fallback).empty()) << "no CF_HDROP: empty";
    EXPECT_TRUE(GetUnicodeDroppedFiles(nullptr, fallback).empty());
}

}  // namespace
