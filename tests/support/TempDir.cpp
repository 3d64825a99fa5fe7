#include "TempDir.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#if defined(_WIN32)
#include "platform/win32/WinApi.h"
#endif

namespace testsupport {
namespace {

std::u16string toU16(const std::filesystem::path& p) {
#if defined(_WIN32)
    const std::wstring w = p.wstring();
    return std::u16string(w.begin(), w.end());
#else
    const std::string s = p.string();
    std::u16string out;
    // Temporary folders are ASCII here; the tests add their own names on top.
    for (const char c : s) out += static_cast<char16_t>(static_cast<unsigned char>(c));
    return out;
#endif
}

void makeWritable(const std::filesystem::path& root) {
    std::error_code ec;
    std::filesystem::permissions(root, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, ec);
    if (!std::filesystem::is_directory(root, ec)) return;
    for (auto it = std::filesystem::recursive_directory_iterator(root, ec);
         !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec)) {
        std::error_code inner;
        std::filesystem::permissions(it->path(), std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, inner);
    }
}

}  // namespace

TempDir::TempDir() {
    static std::atomic<unsigned> counter{0};
    const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
    const std::string unique = "tc_files_" + std::to_string(ticks % 1000000007) + "_" + std::to_string(counter++);
    const std::filesystem::path host = std::filesystem::temp_directory_path() / unique;
    std::filesystem::create_directories(host);
    std::u16string path = toU16(host);
    for (char16_t& c : path) {
        if (c == u'/') c = u'\\';
    }
    while (path.size() > 1 && path.back() == u'\\') path.pop_back();
    m_path = path;
}

TempDir::~TempDir() {
    const std::filesystem::path host = HostPath(m_path);
    makeWritable(host);
    std::error_code ec;
    std::filesystem::remove_all(host, ec);
}

std::u16string TempDir::File(const std::u16string& name) const { return m_path + u"\\" + name; }

std::filesystem::path TempDir::HostPath(const std::u16string& libraryPath) {
#if defined(_WIN32)
    std::u16string p = libraryPath;
    return std::filesystem::path(std::wstring(p.begin(), p.end()));
#else
    std::string out;
    for (size_t i = 0; i < libraryPath.size(); ++i) {
        uint32_t cp = libraryPath[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < libraryPath.size()) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (libraryPath[i + 1] - 0xDC00u);
            ++i;
        }
        if (cp == u'\\') cp = u'/';
        if (cp < 0x80) {
            out += static_cast<char>(cp);
        } else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | (cp >> 6));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += static_cast<char>(0xE0 | (cp >> 12));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (cp >> 18));
            out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
    return std::filesystem::path(out);
#endif
}

void TempDir::WriteBytes(const std::u16string& libraryPath, const std::vector<uint8_t>& bytes) {
    std::ofstream out(HostPath(libraryPath), std::ios::binary | std::ios::trunc);
    if (!out) throw std::runtime_error("cannot create " + Utf8(libraryPath));
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::vector<uint8_t> TempDir::ReadBytes(const std::u16string& libraryPath) {
    std::ifstream in(HostPath(libraryPath), std::ios::binary);
    if (!in) return {};
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool TempDir::Exists(const std::u16string& libraryPath) {
    std::error_code ec;
    return std::filesystem::exists(HostPath(libraryPath), ec);
}

void TempDir::MakeFolder(const std::u16string& libraryPath) {
    std::filesystem::create_directories(HostPath(libraryPath));
}

bool RunningUnderWine() {
#if defined(_WIN32)
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && ::GetProcAddress(ntdll, "wine_get_version") != nullptr;
#else
    return false;
#endif
}

std::vector<uint8_t> Bytes(const std::string& text) {
    return std::vector<uint8_t>(text.begin(), text.end());
}

std::string Utf8(const std::u16string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        uint32_t cp = text[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
            ++i;
        }
        if (cp < 0x80) {
            out += static_cast<char>(cp);
        } else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | (cp >> 6));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += static_cast<char>(0xE0 | (cp >> 12));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (cp >> 18));
            out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
    return out;
}

}  // namespace testsupport
