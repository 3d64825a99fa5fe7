// Helpers of the file-utility and INI tests: read-only probing, UTF-16 file images, golden-file checks.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/FileSystem.h"
#include "support/TempDir.h"
#include "text/UniFileUtils.h"

namespace initest {

// Sets the read-only attribute and tells whether the host then refuses writes. Wine run as root
// ignores the attribute when it opens a file for writing; Windows and the POSIX layer refuse.
inline bool MakeReadOnly(const std::u16string& path) {
    if (ufu_SetFileAttr(path, 1) != -1) return false;
    platform::File probe = platform::File::Open(path, platform::kGenericWrite, platform::kShareRead | platform::kShareWrite,
                                                platform::kOpenExisting, platform::kAttrNormal);
    return !probe.IsOpen();
}

// UTF-16LE with its mark, for expected file images.
inline std::vector<uint8_t> Utf16File(const std::u16string& text) {
    std::vector<uint8_t> bytes{0xFF, 0xFE};
    for (const char16_t c : text) {
        bytes.push_back(static_cast<uint8_t>(c & 0xFF));
        bytes.push_back(static_cast<uint8_t>(c >> 8));
    }
    return bytes;
}

// The golden files live beside this header, in golden/; the host path of this source is the
// compiler's, which Wine reaches through its Z: drive.
inline std::string GoldenPath(const std::string& name) {
    std::string folder = __FILE__;
    folder = folder.substr(0, folder.find_last_of("/\\") + 1) + "golden/";
#if defined(_WIN32)
    if (!folder.empty() && folder[0] == '/') folder = "Z:" + folder;
#endif
    return folder + name;
}

// Compares bytes with a golden file; on a mismatch the new output goes beside it, as
// NAME.actual, for review.
inline void ExpectMatchesGolden(const std::vector<uint8_t>& actual, const std::string& name) {
    const std::string path = GoldenPath(name);
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in.good()) << "missing golden file " << path;
    const std::vector<uint8_t> expected((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (expected != actual) {
        std::ofstream out(path + ".actual", std::ios::binary);
        out.write(reinterpret_cast<const char*>(actual.data()), static_cast<std::streamsize>(actual.size()));
        ADD_FAILURE() << "output differs from " << path << "; the new output is in " << path << ".actual";
    }
}

}  // namespace initest
