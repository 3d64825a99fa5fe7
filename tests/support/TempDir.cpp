#include "TempDir.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "common/Utf8Convert.h"

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
    return Utf8ToUtf16(p.string());
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
    std::replace(path.begin(), path.end(), u'/', u'\\');
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
    return std::filesystem::path(std::wstring(libraryPath.begin(), libraryPath.end()));
#else
    std::u16string p = libraryPath;
    std::replace(p.begin(), p.end(), u'\\', u'/');
    // Lone surrogates kept, as the library's own layer writes them.
    return std::filesystem::path(Utf16ToUtf8(p, LoneSurrogates::Keep));
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

std::string Utf8(const std::u16string& text) { return Utf16ToUtf8(text); }

}  // namespace testsupport
