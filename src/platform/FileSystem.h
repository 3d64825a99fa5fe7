// The file-system seam: files (File), find walks (FindHandle, FindData), folders, attributes, file times.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

// Access, share, disposition, attribute and seek values carry the Windows numbers on every host,
// so callers pass the library's public enumerations straight through.
inline constexpr uint32_t kGenericRead = 0x80000000u;
inline constexpr uint32_t kGenericWrite = 0x40000000u;
inline constexpr uint32_t kGenericExecute = 0x20000000u;
inline constexpr uint32_t kGenericAll = 0x10000000u;

inline constexpr uint32_t kShareRead = 1;
inline constexpr uint32_t kShareWrite = 2;
inline constexpr uint32_t kShareDelete = 4;

inline constexpr uint32_t kCreateNew = 1;
inline constexpr uint32_t kCreateAlways = 2;
inline constexpr uint32_t kOpenExisting = 3;
inline constexpr uint32_t kOpenAlways = 4;
inline constexpr uint32_t kTruncateExisting = 5;

inline constexpr uint32_t kAttrReadOnly = 0x1;
inline constexpr uint32_t kAttrHidden = 0x2;
inline constexpr uint32_t kAttrSystem = 0x4;
inline constexpr uint32_t kAttrDirectory = 0x10;
inline constexpr uint32_t kAttrArchive = 0x20;
inline constexpr uint32_t kAttrNormal = 0x80;
// What GetFileAttributes reports for a path that cannot be queried.
inline constexpr uint32_t kInvalidAttributes = 0xFFFFFFFFu;

inline constexpr uint32_t kFileBegin = 0;
inline constexpr uint32_t kFileCurrent = 1;
inline constexpr uint32_t kFileEnd = 2;

inline constexpr uint32_t kMoveReplaceExisting = 1;
inline constexpr uint32_t kMoveCopyAllowed = 2;
inline constexpr uint32_t kMoveWriteThrough = 8;

// Windows error codes; the POSIX layer maps errno onto these.
inline constexpr uint32_t kErrorSuccess = 0;
inline constexpr uint32_t kErrorFileNotFound = 2;
inline constexpr uint32_t kErrorPathNotFound = 3;
inline constexpr uint32_t kErrorAccessDenied = 5;
inline constexpr uint32_t kErrorInvalidHandle = 6;
inline constexpr uint32_t kErrorNoMoreFiles = 18;
inline constexpr uint32_t kErrorSharingViolation = 32;
inline constexpr uint32_t kErrorFileExists = 80;
inline constexpr uint32_t kErrorInvalidParameter = 87;
inline constexpr uint32_t kErrorDirNotEmpty = 145;
inline constexpr uint32_t kErrorAlreadyExists = 183;

// The error code of the last failed call on this thread (GetLastError).
uint32_t LastError();

// An open file. Move-only: two owners of one handle would close it twice.
class File {
public:
    File() noexcept = default;
    ~File();
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;

    // CreateFileW with the given path, access, share mode, disposition and attributes/flags.
    // Returns a closed File on failure; LastError() tells why.
    static File Open(const std::u16string& path, uint32_t access, uint32_t shareMode,
                     uint32_t disposition, uint32_t attributes);

    bool IsOpen() const noexcept;
    // The platform handle as a number; 0 when closed, never 0 or -1 when open.
    intptr_t NativeValue() const noexcept;

    // Read up to count bytes; transferred is what arrived (0 at the end of the file).
    bool Read(void* buffer, uint32_t count, uint32_t& transferred);
    bool Write(const void* buffer, uint32_t count, uint32_t& transferred);
    // Move the pointer; newPosition receives the absolute position. A move before 0 fails.
    bool Seek(int64_t distance, uint32_t from, int64_t& newPosition);
    // Size in bytes, or -1 when it cannot be had.
    int64_t Size() const;
    bool Flush();
    // The end of the file becomes the current position.
    bool SetEndHere();
    // Closing a closed File is a no-op that reports true.
    bool Close();

private:
    intptr_t m_value = 0;
    bool m_open = false;
#if !defined(_WIN32)
    uint32_t m_access = 0;
    bool m_deleteOnClose = false;
    std::u16string m_path;
#endif
};

// One entry of a find walk. Times are 64-bit FILETIME values: 100 ns units since 1601-01-01 UTC.
struct FindData {
    std::u16string name;
    uint32_t attributes = 0;
    int64_t size = 0;
    uint64_t creationTime = 0;
    uint64_t lastAccessTime = 0;
    uint64_t lastWriteTime = 0;
};

// A find walk over one folder. Move-only: the walk state belongs to one owner.
class FindHandle {
public:
    FindHandle() noexcept = default;
    ~FindHandle() { Close(); }
    FindHandle(const FindHandle&) = delete;
    FindHandle& operator=(const FindHandle&) = delete;
    FindHandle(FindHandle&& other) noexcept : m_state(other.m_state) { other.m_state = nullptr; }
    FindHandle& operator=(FindHandle&& other) noexcept {
        if (this != &other) {
            Close();
            m_state = other.m_state;
            other.m_state = nullptr;
        }
        return *this;
    }

    // FindFirstFileW: pattern is a folder, a separator and a name that may hold * and ?, matched
    // as Windows does (case-insensitive; "*.*" also takes names without a dot). False when
    // nothing matches or the folder is missing.
    bool First(const std::u16string& pattern, FindData& data);
    // FindNextFileW: false when the walk is over.
    bool Next(FindData& data);
    bool IsOpen() const noexcept;
    void Close() noexcept;

private:
    void* m_state = nullptr;
};

// Names differ from the Win32 ones on purpose: those are macros once windows.h is in.
bool CreateFolder(const std::u16string& path);
bool RemoveFolder(const std::u16string& path);
bool CopyFileTo(const std::u16string& from, const std::u16string& to, bool failIfExists);
// MoveFileW: fails when the target exists.
bool MoveFileTo(const std::u16string& from, const std::u16string& to);
// MoveFileExW with kMove* flags.
bool MoveFileWithFlags(const std::u16string& from, const std::u16string& to, uint32_t flags);
bool DeleteFileAt(const std::u16string& path);
// GetFileAttributesW; kInvalidAttributes for a missing path.
uint32_t QueryAttributes(const std::u16string& path);
bool ChangeAttributes(const std::u16string& path, uint32_t attributes);

// Empty when it cannot be had.
std::u16string CurrentFolder();
bool ChangeCurrentFolder(const std::u16string& path);
// The temporary folder with its trailing separator, as GetTempPathW gives it.
std::u16string TempFolder();

// The fields of SYSTEMTIME, in its order.
struct SystemTime {
    uint16_t year = 0;
    uint16_t month = 0;
    uint16_t dayOfWeek = 0;
    uint16_t day = 0;
    uint16_t hour = 0;
    uint16_t minute = 0;
    uint16_t second = 0;
    uint16_t milliseconds = 0;
};

bool ToSystemTime(uint64_t fileTime, SystemTime& result);
bool ToLocalFileTime(uint64_t fileTime, uint64_t& localFileTime);

// Paths that the layer hands out use '\\' on every host, so the library's path arithmetic holds
// there too; the POSIX layer maps '\\' to '/' (and drops a leading \\?\ prefix) in every path it takes.
// LibraryPath turns a path from elsewhere on the host (a module path, say) into that form.
std::u16string LibraryPath(const std::u16string& hostPath);

}  // namespace platform
