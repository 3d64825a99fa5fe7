// Helpers of the file-utility and INI tests: a scratch folder, raw file bytes, golden-file checks.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/FileSystem.h"
#include "text/UniFileUtils.h"

namespace initest {

inline std::string Narrow(const std::u16string& text) {
    std::string out;
    for (const char16_t c : text) out += c < 128 ? static_cast<char>(c) : '?';
    return out;
}

// A fresh folder under the temporary folder, removed with everything in it at the end.
class ScratchFolder {
public:
    ScratchFolder() {
        static std::atomic<int> counter{0};
        const std::string unique = std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "_" +
                                   std::to_string(counter++) + "_" + std::to_string(reinterpret_cast<uintptr_t>(this));
        m_path = ufu_GetTempPath() + u"tc_ini_";
        for (const char c : unique) m_path += static_cast<char16_t>(c);
        ufu_RmDirRic(m_path);
        if (!ufu_MkDir(m_path)) ADD_FAILURE() << "cannot create " << Narrow(m_path);
    }
    ~ScratchFolder() { ufu_RmDirRic(m_path); }
    // Owns a folder on disk: a copy would remove it twice.
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::u16string& Path() const { return m_path; }
    std::u16string File(const std::u16string& name) const { return m_path + u"\\" + name; }

private:
    std::u16string m_path;
};

inline std::vector<uint8_t> ReadBytes(const std::u16string& path) {
    platform::File file = platform::File::Open(path, platform::kGenericRead, platform::kShareRead,
                                               platform::kOpenExisting, platform::kAttrNormal);
    std::vector<uint8_t> bytes;
    if (!file.IsOpen()) return bytes;
    bytes.resize(static_cast<size_t>(std::max<int64_t>(file.Size(), 0)));
    uint32_t transferred = 0;
    if (!bytes.empty() && (!file.Read(bytes.data(), static_cast<uint32_t>(bytes.size()), transferred) ||
                           transferred != bytes.size())) {
        ADD_FAILURE() << "short read of " << Narrow(path);
    }
    return bytes;
}

inline void WriteBytes(const std::u16string& path, const std::vector<uint8_t>& bytes) {
    platform::File file = platform::File::Open(path, platform::kGenericWrite, 0, platform::kCreateAlways,
                                               platform::kAttrNormal);
    ASSERT_TRUE(file.IsOpen()) << Narrow(path);
    uint32_t transferred = 0;
    if (!bytes.empty()) {
        ASSERT_TRUE(file.Write(bytes.data(), static_cast<uint32_t>(bytes.size()), transferred));
        ASSERT_EQ(transferred, bytes.size());
    }
}

// Sets the read-only attribute and tells whether the host then refuses writes. Wine run as root
// ignores the attribute when it opens a file for writing; Windows and the POSIX layer refuse.
inline bool MakeReadOnly(const std::u16string& path) {
    if (ufu_SetFileAttr(path, 1) != -1) return false;
    platform::File probe = platform::File::Open(path, platform::kGenericWrite, platform::kShareRead | platform::kShareWrite,
                                                platform::kOpenExisting, platform::kAttrNormal);
    return !probe.IsOpen();
}

inline std::vector<uint8_t> Bytes(const std::string& text) { return std::vector<uint8_t>(text.begin(), text.end()); }

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
