// TempDir: a scratch folder and raw byte access for file tests, independent of the library's file code.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace testsupport {

class TempDir {
public:
    TempDir();
    // Removes the folder and everything in it, read-only entries included.
    ~TempDir();
    // Owns a folder on disk: a copy would remove it twice.
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    // The folder in the library's form: backslashes on every host, no trailing one.
    const std::u16string& Path() const noexcept { return m_path; }
    // Path() + "\" + name.
    std::u16string File(const std::u16string& name) const;

    // Raw access by the library's form of a path, through std::filesystem and fstream.
    static std::filesystem::path HostPath(const std::u16string& libraryPath);
    static void WriteBytes(const std::u16string& libraryPath, const std::vector<uint8_t>& bytes);
    static std::vector<uint8_t> ReadBytes(const std::u16string& libraryPath);
    static bool Exists(const std::u16string& libraryPath);
    static void MakeFolder(const std::u16string& libraryPath);

private:
    std::u16string m_path;
};

// Bytes from a string of byte values written as text: Bytes("a\r\n") is 97, 13, 10.
std::vector<uint8_t> Bytes(const std::string& text);

// True when the test runs under Wine rather than on Windows (or natively).
bool RunningUnderWine();

// For failure messages: UTF-16 as UTF-8.
std::string Utf8(const std::u16string& text);

}  // namespace testsupport
