#include "platform/FileSystem.h"

#include "platform/win32/WinApi.h"

namespace platform {
namespace {

HANDLE asHandle(intptr_t value) noexcept { return reinterpret_cast<HANDLE>(value); }

uint64_t joinFileTime(const FILETIME& ft) noexcept {
    return (static_cast<uint64_t>(ft.dwHighDateTime) << 32) | ft.dwLowDateTime;
}

FILETIME splitFileTime(uint64_t value) noexcept {
    FILETIME ft{};
    ft.dwLowDateTime = static_cast<DWORD>(value & 0xFFFFFFFFu);
    ft.dwHighDateTime = static_cast<DWORD>(value >> 32);
    return ft;
}

void fillFindData(const WIN32_FIND_DATAW& raw, FindData& data) {
    // The name is cut at its first character 0, whatever the buffer holds behind it.
    data.name = FromWide(raw.cFileName);
    data.attributes = raw.dwFileAttributes;
    data.size = static_cast<int64_t>((static_cast<uint64_t>(raw.nFileSizeHigh) << 32) | raw.nFileSizeLow);
    data.creationTime = joinFileTime(raw.ftCreationTime);
    data.lastAccessTime = joinFileTime(raw.ftLastAccessTime);
    data.lastWriteTime = joinFileTime(raw.ftLastWriteTime);
}

}  // namespace

uint32_t LastError() { return ::GetLastError(); }

// ---- File ----

File::~File() { Close(); }

File::File(File&& other) noexcept : m_value(other.m_value), m_open(other.m_open) {
    other.m_value = 0;
    other.m_open = false;
}

File& File::operator=(File&& other) noexcept {
    if (this != &other) {
        Close();
        m_value = other.m_value;
        m_open = other.m_open;
        other.m_value = 0;
        other.m_open = false;
    }
    return *this;
}

File File::Open(const std::u16string& path, uint32_t access, uint32_t shareMode, uint32_t disposition,
                uint32_t attributes) {
    File file;
    const HANDLE handle =
        ::CreateFileW(AsWide(path), access, shareMode, nullptr, disposition, attributes, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return file;
    file.m_value = reinterpret_cast<intptr_t>(handle);
    file.m_open = true;
    return file;
}

bool File::IsOpen() const noexcept { return m_open; }

intptr_t File::NativeValue() const noexcept { return m_open ? m_value : 0; }

bool File::Read(void* buffer, uint32_t count, uint32_t& transferred) {
    DWORD got = 0;
    const BOOL ok = ::ReadFile(asHandle(m_value), buffer, count, &got, nullptr);
    transferred = got;
    return ok != FALSE;
}

bool File::Write(const void* buffer, uint32_t count, uint32_t& transferred) {
    DWORD put = 0;
    const BOOL ok = ::WriteFile(asHandle(m_value), buffer, count, &put, nullptr);
    transferred = put;
    return ok != FALSE;
}

bool File::Seek(int64_t distance, uint32_t from, int64_t& newPosition) {
    LARGE_INTEGER move{};
    move.QuadPart = distance;
    LARGE_INTEGER result{};
    const BOOL ok = ::SetFilePointerEx(asHandle(m_value), move, &result, from);
    newPosition = ok ? result.QuadPart : -1;
    return ok != FALSE;
}

int64_t File::Size() const {
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(asHandle(m_value), &size)) return -1;
    return size.QuadPart;
}

bool File::Flush() { return ::FlushFileBuffers(asHandle(m_value)) != FALSE; }

bool File::SetEndHere() { return ::SetEndOfFile(asHandle(m_value)) != FALSE; }

bool File::Close() {
    if (!m_open) return true;
    const HANDLE handle = asHandle(m_value);
    m_open = false;
    m_value = 0;
    return ::CloseHandle(handle) != FALSE;
}

// ---- Find ----

bool FindHandle::First(const std::u16string& pattern, FindData& data) {
    Close();
    WIN32_FIND_DATAW raw{};
    const HANDLE handle = ::FindFirstFileW(AsWide(pattern), &raw);
    if (handle == INVALID_HANDLE_VALUE) return false;
    m_state = handle;
    fillFindData(raw, data);
    return true;
}

bool FindHandle::Next(FindData& data) {
    if (m_state == nullptr) {
        ::SetLastError(ERROR_INVALID_HANDLE);
        return false;
    }
    WIN32_FIND_DATAW raw{};
    if (!::FindNextFileW(static_cast<HANDLE>(m_state), &raw)) return false;
    fillFindData(raw, data);
    return true;
}

bool FindHandle::IsOpen() const noexcept { return m_state != nullptr; }

void FindHandle::Close() noexcept {
    if (m_state != nullptr) ::FindClose(static_cast<HANDLE>(m_state));
    m_state = nullptr;
}

// ---- Folders and names ----

bool CreateFolder(const std::u16string& path) { return ::CreateDirectoryW(AsWide(path), nullptr) != FALSE; }

bool RemoveFolder(const std::u16string& path) { return ::RemoveDirectoryW(AsWide(path)) != FALSE; }

bool CopyFileTo(const std::u16string& from, const std::u16string& to, bool failIfExists) {
    return ::CopyFileW(AsWide(from), AsWide(to), failIfExists ? TRUE : FALSE) != FALSE;
}

bool MoveFileTo(const std::u16string& from, const std::u16string& to) {
    return ::MoveFileW(AsWide(from), AsWide(to)) != FALSE;
}

bool MoveFileWithFlags(const std::u16string& from, const std::u16string& to, uint32_t flags) {
    return ::MoveFileExW(AsWide(from), AsWide(to), flags) != FALSE;
}

bool DeleteFileAt(const std::u16string& path) { return ::DeleteFileW(AsWide(path)) != FALSE; }

uint32_t QueryAttributes(const std::u16string& path) { return ::GetFileAttributesW(AsWide(path)); }

bool ChangeAttributes(const std::u16string& path, uint32_t attributes) {
    return ::SetFileAttributesW(AsWide(path), attributes) != FALSE;
}

std::u16string CurrentFolder() {
    wchar_t buffer[2048] = {};
    const DWORD length = ::GetCurrentDirectoryW(2048, buffer);
    if (length == 0 || length >= 2048) return {};
    return FromWide(buffer, length);
}

bool ChangeCurrentFolder(const std::u16string& path) { return ::SetCurrentDirectoryW(AsWide(path)) != FALSE; }

std::u16string TempFolder() {
    wchar_t buffer[2048] = {};
    const DWORD length = ::GetTempPathW(2048, buffer);
    if (length == 0 || length >= 2048) return {};
    return FromWide(buffer, length);
}

bool ToSystemTime(uint64_t fileTime, SystemTime& result) {
    const FILETIME ft = splitFileTime(fileTime);
    SYSTEMTIME st{};
    if (!::FileTimeToSystemTime(&ft, &st)) return false;
    result.year = st.wYear;
    result.month = st.wMonth;
    result.dayOfWeek = st.wDayOfWeek;
    result.day = st.wDay;
    result.hour = st.wHour;
    result.minute = st.wMinute;
    result.second = st.wSecond;
    result.milliseconds = st.wMilliseconds;
    return true;
}

bool ToLocalFileTime(uint64_t fileTime, uint64_t& localFileTime) {
    const FILETIME ft = splitFileTime(fileTime);
    FILETIME local{};
    if (!::FileTimeToLocalFileTime(&ft, &local)) return false;
    localFileTime = joinFileTime(local);
    return true;
}

std::u16string LibraryPath(const std::u16string& hostPath) { return hostPath; }

}  // namespace platform
