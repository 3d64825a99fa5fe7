#include "platform/FileSystem.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <string>
#include <vector>

#include "common/CaseFold.h"
#include "common/Utf8Convert.h"

namespace platform {
namespace {

thread_local uint32_t t_lastError = kErrorSuccess;

constexpr uint32_t kErrorGenFailure = 31;
constexpr uint32_t kErrorNegativeSeek = 131;
constexpr uint32_t kErrorFilenameTooLong = 206;
constexpr uint32_t kErrorDirectory = 267;
constexpr uint32_t kFlagDeleteOnClose = 0x04000000u;
constexpr uint32_t kAttrReparsePoint = 0x400u;
// 100 ns intervals between 1601-01-01 and 1970-01-01.
constexpr int64_t kUnixEpochAsFileTime = 116444736000000000LL;

void setError(uint32_t code) noexcept { t_lastError = code; }

uint32_t errorFromErrno(int err) noexcept {
    switch (err) {
    case ENOENT: return kErrorFileNotFound;
    case ENOTDIR: return kErrorPathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR: return kErrorAccessDenied;
    case EEXIST: return kErrorFileExists;
    case ENOTEMPTY: return kErrorDirNotEmpty;
    case EBADF: return kErrorInvalidHandle;
    case EINVAL: return kErrorInvalidParameter;
    case ENAMETOOLONG: return kErrorFilenameTooLong;
    default: return kErrorGenFailure;
    }
}

void setErrorFromErrno() noexcept { setError(errorFromErrno(errno)); }

bool failWith(uint32_t code) noexcept {
    setError(code);
    return false;
}

bool failFromErrno() noexcept { return failWith(errorFromErrno(errno)); }

// File names go to the system with lone surrogates kept, so that no name is refused (the system
// takes any byte sequence); a byte that starts no valid sequence comes back as U+FFFD, so a
// foreign name is shown, if not reproduced.
std::string narrow(const std::u16string& text) { return Utf16ToUtf8(text, LoneSurrogates::Keep); }
std::u16string widen(const std::string& bytes) { return Utf8ToUtf16(bytes); }

// The library's path to a host path: no \\?\ prefix, '\\' becomes '/'.
std::string hostPath(const std::u16string& path) {
    std::u16string p = path;
    if (p.size() >= 4 && p[0] == u'\\' && p[1] == u'\\' && p[2] == u'?' && p[3] == u'\\') p.erase(0, 4);
    std::replace(p.begin(), p.end(), u'\\', u'/');
    return narrow(p);
}

std::u16string toLibrary(const std::string& host) {
    std::u16string p = widen(host);
    std::replace(p.begin(), p.end(), u'/', u'\\');
    return p;
}

int64_t toFileTime(const struct timespec& ts) noexcept {
    return kUnixEpochAsFileTime + static_cast<int64_t>(ts.tv_sec) * 10000000 + ts.tv_nsec / 100;
}

// Windows attributes from mode bits: no write permission at all is read-only, a leading dot is
// hidden; a plain file carries the archive bit as it does on a fresh Windows volume.
uint32_t attributesOf(const struct stat& st, const std::string& name) noexcept {
    uint32_t attrs = S_ISDIR(st.st_mode) ? kAttrDirectory : kAttrArchive;
    if ((st.st_mode & 0222) == 0) attrs |= kAttrReadOnly;
    if (!name.empty() && name[0] == '.' && name != "." && name != "..") attrs |= kAttrHidden;
    return attrs;
}

std::string lastComponent(const std::string& path) {
    std::string p = path;
    while (p.size() > 1 && p.back() == '/') p.pop_back();
    const size_t slash = p.rfind('/');
    return slash == std::string::npos ? p : p.substr(slash + 1);
}

// Open handles of this process, for share-mode checks. The host has no mandatory locks, so share
// modes hold among the library's own handles only.
struct OpenRecord {
    dev_t device = 0;
    ino_t inode = 0;
    uint32_t access = 0;
    uint32_t share = 0;
    int descriptor = -1;
};
std::mutex g_openMutex;
std::vector<OpenRecord> g_openFiles;

bool wantsRead(uint32_t access) noexcept { return (access & (kGenericRead | kGenericAll)) != 0; }
bool wantsWrite(uint32_t access) noexcept { return (access & (kGenericWrite | kGenericAll)) != 0; }

bool conflicts(const OpenRecord& open, uint32_t access, uint32_t share) noexcept {
    if (wantsRead(access) && (open.share & kShareRead) == 0) return true;
    if (wantsWrite(access) && (open.share & kShareWrite) == 0) return true;
    if (wantsRead(open.access) && (share & kShareRead) == 0) return true;
    if (wantsWrite(open.access) && (share & kShareWrite) == 0) return true;
    return false;
}

bool openedWithoutDeleteShare(const struct stat& st) {
    const std::lock_guard<std::mutex> lock(g_openMutex);
    return std::any_of(g_openFiles.begin(), g_openFiles.end(), [&](const OpenRecord& r) {
        return r.device == st.st_dev && r.inode == st.st_ino && (r.share & kShareDelete) == 0;
    });
}

bool isReadOnlyMode(mode_t mode) noexcept { return (mode & 0222) == 0; }

bool pathExists(const std::string& path, struct stat& st) noexcept { return ::stat(path.c_str(), &st) == 0; }

bool copyContents(int from, int to) {
    std::vector<char> buffer(1 << 16);
    for (;;) {
        const ssize_t got = ::read(from, buffer.data(), buffer.size());
        if (got < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        if (got == 0) return true;
        ssize_t done = 0;
        while (done < got) {
            const ssize_t put = ::write(to, buffer.data() + done, static_cast<size_t>(got - done));
            if (put < 0) {
                if (errno == EINTR) continue;
                return false;
            }
            done += put;
        }
    }
}

bool copyFileHost(const std::string& from, const std::string& to, bool failIfExists) {
    struct stat source {};
    if (!pathExists(from, source)) return failFromErrno();
    if (S_ISDIR(source.st_mode)) return failWith(kErrorAccessDenied);
    struct stat target {};
    if (pathExists(to, target)) {
        if (failIfExists) return failWith(kErrorFileExists);
        if (S_ISDIR(target.st_mode) || isReadOnlyMode(target.st_mode)) return failWith(kErrorAccessDenied);
        if (target.st_dev == source.st_dev && target.st_ino == source.st_ino) return failWith(kErrorSharingViolation);
    }
    const int in = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
    if (in < 0) return failFromErrno();
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (failIfExists ? O_EXCL : O_TRUNC);
    const int out = ::open(to.c_str(), flags, source.st_mode & 07777);
    if (out < 0) {
        setErrorFromErrno();
        ::close(in);
        return false;
    }
    const bool ok = copyContents(in, out);
    if (!ok) setErrorFromErrno();
    ::fchmod(out, source.st_mode & 07777);
    ::close(in);
    const bool closed = ::close(out) == 0;
    return ok && closed;
}

// Windows wild cards on one name, case-insensitive, with the DOS forms the find call turns a
// pattern into: '?' becomes a mark that matches one character or, at a dot or the end of the
// name, nothing; a '.' before '?', '*' or the end becomes one that matches a dot or the end; a
// '*' before '.' becomes one that cannot pass the name's last dot. So "*.*" takes every name,
// "*." the names without an extension, and "abc.*" also "abc".
constexpr char16_t kDosQm = 0xF001;
constexpr char16_t kDosDot = 0xF002;
constexpr char16_t kDosStar = 0xF003;

std::u16string dosPattern(const std::u16string& pattern) {
    std::u16string out = pattern;
    for (size_t i = 0; i < pattern.size(); ++i) {
        const char16_t next = i + 1 < pattern.size() ? pattern[i + 1] : u'\0';
        if (pattern[i] == u'?') {
            out[i] = kDosQm;
        } else if (pattern[i] == u'.' && (next == u'?' || next == u'*' || next == u'\0')) {
            out[i] = kDosDot;
        } else if (pattern[i] == u'*' && next == u'.') {
            out[i] = kDosStar;
        }
    }
    return out;
}

bool matchFrom(const std::u16string& pattern, size_t p, const std::u16string& name, size_t n, size_t lastDot) {
    while (p < pattern.size()) {
        const char16_t pc = pattern[p];
        if (pc == u'*' || pc == kDosStar) {
            // A DOS star stops short of the last dot of the name.
            const size_t limit = (pc == kDosStar && lastDot != std::u16string::npos && lastDot >= n) ? lastDot
                                                                                                  : name.size();
            for (size_t k = n; k <= limit; ++k) {
                if (matchFrom(pattern, p + 1, name, k, lastDot)) return true;
            }
            return false;
        }
        if (pc == kDosQm) {
            if (n < name.size() && name[n] != u'.') ++n;
            ++p;
            continue;
        }
        if (pc == kDosDot) {
            if (n < name.size()) {
                if (name[n] != u'.') return false;
                ++n;
            }
            ++p;
            continue;
        }
        if (n == name.size() || FoldCaseUnit(pc) != FoldCaseUnit(name[n])) return false;
        ++p;
        ++n;
    }
    return n == name.size();
}

bool wildMatch(const std::u16string& pattern, const std::u16string& name) {
    if (pattern == u"*.*" || pattern == u"*") return true;
    return matchFrom(dosPattern(pattern), 0, name, 0, name.rfind(u'.'));
}

struct FindState {
    std::vector<FindData> entries;
    size_t next = 0;
};

bool entryData(const std::string& folder, const std::string& name, FindData& data) {
    const std::string full = folder + "/" + name;
    struct stat link {};
    if (::lstat(full.c_str(), &link) != 0) return false;
    struct stat st = link;
    // A symbolic link shows its target's kind and carries the reparse-point bit, as on Windows.
    const bool isLink = S_ISLNK(link.st_mode);
    if (isLink && ::stat(full.c_str(), &st) != 0) st = link;
    data.name = widen(name);
    data.attributes = attributesOf(st, name) | (isLink ? kAttrReparsePoint : 0u);
    data.size = S_ISDIR(st.st_mode) ? 0 : static_cast<int64_t>(st.st_size);
    data.creationTime = static_cast<uint64_t>(toFileTime(st.st_ctim));
    data.lastAccessTime = static_cast<uint64_t>(toFileTime(st.st_atim));
    data.lastWriteTime = static_cast<uint64_t>(toFileTime(st.st_mtim));
    return true;
}

// Days since 1970-01-01 to a civil date (proleptic Gregorian).
void civilFromDays(int64_t days, int64_t& year, unsigned& month, unsigned& day) noexcept {
    days += 719468;
    const int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    const unsigned doe = static_cast<unsigned>(days - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    day = doy - (153 * mp + 2) / 5 + 1;
    month = mp < 10 ? mp + 3 : mp - 9;
    year = static_cast<int64_t>(yoe) + era * 400 + (month <= 2 ? 1 : 0);
}

}  // namespace

uint32_t LastError() { return t_lastError; }

// ---- File ----

File::~File() { Close(); }

File::File(File&& other) noexcept
    : m_value(other.m_value), m_open(other.m_open), m_access(other.m_access),
      m_deleteOnClose(other.m_deleteOnClose), m_path(std::move(other.m_path)) {
    other.m_value = 0;
    other.m_open = false;
    other.m_deleteOnClose = false;
}

File& File::operator=(File&& other) noexcept {
    if (this != &other) {
        Close();
        m_value = other.m_value;
        m_open = other.m_open;
        m_access = other.m_access;
        m_deleteOnClose = other.m_deleteOnClose;
        m_path = std::move(other.m_path);
        other.m_value = 0;
        other.m_open = false;
        other.m_deleteOnClose = false;
    }
    return *this;
}

File File::Open(const std::u16string& path, uint32_t access, uint32_t shareMode, uint32_t disposition,
                uint32_t attributes) {
    File file;
    if (path.empty() || disposition < kCreateNew || disposition > kTruncateExisting) {
        setError(path.empty() ? kErrorPathNotFound : kErrorInvalidParameter);
        return file;
    }
    const std::string host = hostPath(path);
    const bool write = wantsWrite(access);
    const bool truncate = disposition == kCreateAlways || disposition == kTruncateExisting;
    if (disposition == kTruncateExisting && !write) {
        setError(kErrorInvalidParameter);
        return file;
    }

    struct stat before {};
    const bool existed = pathExists(host, before);
    if (existed && S_ISDIR(before.st_mode)) {
        setError(kErrorAccessDenied);
        return file;
    }
    // Root ignores permission bits; the read-only attribute still refuses writers, as on Windows.
    if (existed && isReadOnlyMode(before.st_mode) && (write || truncate)) {
        setError(kErrorAccessDenied);
        return file;
    }
    if (existed && disposition == kCreateNew) {
        setError(kErrorFileExists);
        return file;
    }
    if (!existed && (disposition == kOpenExisting || disposition == kTruncateExisting)) {
        setError(kErrorFileNotFound);
        struct stat parent {};
        const size_t slash = host.rfind('/');
        if (slash != std::string::npos && slash > 0 && !pathExists(host.substr(0, slash), parent)) {
            setError(kErrorPathNotFound);
        }
        return file;
    }

    int flags = O_CLOEXEC;
    if (wantsRead(access) && (write || truncate)) {
        flags |= O_RDWR;
    } else if (write || truncate) {
        flags |= O_WRONLY;
    } else {
        flags |= O_RDONLY;
    }
    if (disposition == kCreateNew) flags |= O_CREAT | O_EXCL;
    if (disposition == kCreateAlways || disposition == kOpenAlways) flags |= O_CREAT;
    const mode_t mode = (attributes & kAttrReadOnly) != 0 ? 0444 : 0666;
    const int fd = ::open(host.c_str(), flags, mode);
    if (fd < 0) {
        setErrorFromErrno();
        if (errno == ENOENT) setError(kErrorPathNotFound);
        return file;
    }
    struct stat st {};
    if (::fstat(fd, &st) != 0) {
        setErrorFromErrno();
        ::close(fd);
        return file;
    }
    {
        const std::lock_guard<std::mutex> lock(g_openMutex);
        for (const OpenRecord& r : g_openFiles) {
            if (r.device == st.st_dev && r.inode == st.st_ino && conflicts(r, access, shareMode)) {
                ::close(fd);
                if (!existed) ::unlink(host.c_str());
                setError(kErrorSharingViolation);
                return file;
            }
        }
        g_openFiles.push_back(OpenRecord{st.st_dev, st.st_ino, access, shareMode, fd});
    }
    if (truncate && existed && ::ftruncate(fd, 0) != 0) {
        setErrorFromErrno();
        file.m_value = fd;
        file.m_open = true;
        file.Close();
        return file;
    }
    file.m_value = fd;
    file.m_open = true;
    file.m_access = access;
    file.m_deleteOnClose = (attributes & kFlagDeleteOnClose) != 0;
    if (file.m_deleteOnClose) file.m_path = path;
    // Windows reports an existing file on these dispositions through the last error, on success.
    setError(existed && (disposition == kCreateAlways || disposition == kOpenAlways) ? kErrorAlreadyExists
                                                                                    : kErrorSuccess);
    return file;
}

bool File::IsOpen() const noexcept { return m_open; }

// Descriptor 0 is a valid descriptor but would read as "closed" to callers; shift by one.
intptr_t File::NativeValue() const noexcept { return m_open ? m_value + 1 : 0; }

bool File::Read(void* buffer, uint32_t count, uint32_t& transferred) {
    transferred = 0;
    if (!m_open) return failWith(kErrorInvalidHandle);
    if (!wantsRead(m_access)) return failWith(kErrorAccessDenied);
    char* target = static_cast<char*>(buffer);
    while (transferred < count) {
        const ssize_t got = ::read(static_cast<int>(m_value), target + transferred, count - transferred);
        if (got < 0) {
            if (errno == EINTR) continue;
            return failFromErrno();
        }
        if (got == 0) break;
        transferred += static_cast<uint32_t>(got);
    }
    return true;
}

bool File::Write(const void* buffer, uint32_t count, uint32_t& transferred) {
    transferred = 0;
    if (!m_open) return failWith(kErrorInvalidHandle);
    if (!wantsWrite(m_access)) return failWith(kErrorAccessDenied);
    const char* source = static_cast<const char*>(buffer);
    while (transferred < count) {
        const ssize_t put = ::write(static_cast<int>(m_value), source + transferred, count - transferred);
        if (put < 0) {
            if (errno == EINTR) continue;
            return failFromErrno();
        }
        transferred += static_cast<uint32_t>(put);
    }
    return true;
}

bool File::Seek(int64_t distance, uint32_t from, int64_t& newPosition) {
    newPosition = -1;
    if (!m_open) return failWith(kErrorInvalidHandle);
    int whence = SEEK_SET;
    if (from == kFileCurrent) {
        whence = SEEK_CUR;
    } else if (from == kFileEnd) {
        whence = SEEK_END;
    } else if (from != kFileBegin) {
        setError(kErrorInvalidParameter);
        return false;
    }
    const off_t result = ::lseek(static_cast<int>(m_value), static_cast<off_t>(distance), whence);
    if (result < 0) return failWith(errno == EINVAL ? kErrorNegativeSeek : errorFromErrno(errno));
    newPosition = static_cast<int64_t>(result);
    return true;
}

int64_t File::Size() const {
    struct stat st {};
    if (!m_open || ::fstat(static_cast<int>(m_value), &st) != 0) {
        setError(kErrorInvalidHandle);
        return -1;
    }
    return static_cast<int64_t>(st.st_size);
}

bool File::Flush() {
    if (!m_open) return failWith(kErrorInvalidHandle);
    if (::fdatasync(static_cast<int>(m_value)) != 0) return failFromErrno();
    return true;
}

bool File::SetEndHere() {
    if (!m_open) return failWith(kErrorInvalidHandle);
    if (!wantsWrite(m_access)) return failWith(kErrorAccessDenied);
    const off_t here = ::lseek(static_cast<int>(m_value), 0, SEEK_CUR);
    if (here < 0 || ::ftruncate(static_cast<int>(m_value), here) != 0) return failFromErrno();
    return true;
}

bool File::Close() {
    if (!m_open) return true;
    const int fd = static_cast<int>(m_value);
    {
        const std::lock_guard<std::mutex> lock(g_openMutex);
        g_openFiles.erase(std::remove_if(g_openFiles.begin(), g_openFiles.end(),
                                         [fd](const OpenRecord& r) { return r.descriptor == fd; }),
                          g_openFiles.end());
    }
    if (m_deleteOnClose) ::unlink(hostPath(m_path).c_str());
    m_open = false;
    m_value = 0;
    m_deleteOnClose = false;
    m_path.clear();
    if (::close(fd) != 0) return failFromErrno();
    return true;
}

// ---- Find ----

bool FindHandle::First(const std::u16string& pattern, FindData& data) {
    Close();
    std::u16string p = pattern;
    if (p.size() >= 4 && p[0] == u'\\' && p[1] == u'\\' && p[2] == u'?' && p[3] == u'\\') p.erase(0, 4);
    std::replace(p.begin(), p.end(), u'\\', u'/');
    const size_t slash = p.rfind(u'/');
    std::u16string folder = slash == std::u16string::npos ? u"." : p.substr(0, slash);
    if (slash == 0) folder = u"/";
    const std::u16string namePattern = slash == std::u16string::npos ? p : p.substr(slash + 1);
    if (namePattern.empty()) return failWith(kErrorFileNotFound);
    const std::string hostFolder = narrow(folder);
    DIR* dir = ::opendir(hostFolder.c_str());
    if (dir == nullptr) {
        return failWith(errno == ENOENT || errno == ENOTDIR ? kErrorPathNotFound : errorFromErrno(errno));
    }
    auto* state = new FindState();
    const bool atRoot = hostFolder == "/";
    while (const dirent* entry = ::readdir(dir)) {
        const std::string name = entry->d_name;
        // The root of a volume lists no "." and "..", as on Windows.
        if (atRoot && (name == "." || name == "..")) continue;
        const std::u16string wide = widen(name);
        if (!wildMatch(namePattern, wide)) continue;
        FindData found;
        if (entryData(hostFolder, name, found)) state->entries.push_back(std::move(found));
    }
    ::closedir(dir);
    // Directory order is arbitrary here; sort as an NTFS folder lists, dots first, so walks repeat.
    std::sort(state->entries.begin(), state->entries.end(), [](const FindData& a, const FindData& b) {
        const bool aDots = a.name == u"." || a.name == u"..";
        const bool bDots = b.name == u"." || b.name == u"..";
        if (aDots != bDots) return aDots;
        const std::u16string fa = FoldCase(a.name);
        const std::u16string fb = FoldCase(b.name);
        return fa != fb ? fa < fb : a.name < b.name;
    });
    if (state->entries.empty()) {
        delete state;
        setError(kErrorFileNotFound);
        return false;
    }
    m_state = state;
    data = state->entries[0];
    state->next = 1;
    return true;
}

bool FindHandle::Next(FindData& data) {
    auto* state = static_cast<FindState*>(m_state);
    if (state == nullptr) return failWith(kErrorInvalidHandle);
    if (state->next >= state->entries.size()) return failWith(kErrorNoMoreFiles);
    data = state->entries[state->next++];
    return true;
}

bool FindHandle::IsOpen() const noexcept { return m_state != nullptr; }

void FindHandle::Close() noexcept {
    delete static_cast<FindState*>(m_state);
    m_state = nullptr;
}

// ---- Folders and names ----

bool CreateFolder(const std::u16string& path) {
    if (::mkdir(hostPath(path).c_str(), 0777) != 0) return failWith(errno == EEXIST ? kErrorAlreadyExists
                                 : (errno == ENOENT ? kErrorPathNotFound : errorFromErrno(errno)));
    return true;
}

bool RemoveFolder(const std::u16string& path) {
    const std::string host = hostPath(path);
    // A link to a folder goes as a link, the folder it points to untouched: what removing a
    // folder link (a junction or a directory symbolic link) does on Windows.
    struct stat link {};
    struct stat target {};
    if (::lstat(host.c_str(), &link) == 0 && S_ISLNK(link.st_mode) && ::stat(host.c_str(), &target) == 0 &&
        S_ISDIR(target.st_mode)) {
        if (::unlink(host.c_str()) != 0) return failFromErrno();
        return true;
    }
    if (::rmdir(host.c_str()) != 0) {
        return failWith(errno == ENOTDIR ? kErrorDirectory : errorFromErrno(errno));
    }
    return true;
}

bool CopyFileTo(const std::u16string& from, const std::u16string& to, bool failIfExists) {
    return copyFileHost(hostPath(from), hostPath(to), failIfExists);
}

bool MoveFileTo(const std::u16string& from, const std::u16string& to) {
    return MoveFileWithFlags(from, to, kMoveCopyAllowed);
}

bool MoveFileWithFlags(const std::u16string& from, const std::u16string& to, uint32_t flags) {
    const std::string source = hostPath(from);
    const std::string target = hostPath(to);
    struct stat st {};
    if (::lstat(source.c_str(), &st) != 0) return failFromErrno();
    struct stat existing {};
    if (::lstat(target.c_str(), &existing) == 0) {
        const bool same = existing.st_dev == st.st_dev && existing.st_ino == st.st_ino;
        if (!same && (flags & kMoveReplaceExisting) == 0) return failWith(kErrorAlreadyExists);
        if (!same && (S_ISDIR(existing.st_mode) || isReadOnlyMode(existing.st_mode))) {
            return failWith(kErrorAccessDenied);
        }
    }
    if (::rename(source.c_str(), target.c_str()) == 0) return true;
    if (errno != EXDEV || (flags & kMoveCopyAllowed) == 0 || S_ISDIR(st.st_mode)) return failFromErrno();
    // Another volume: copy, then delete, as MoveFileEx does with MOVEFILE_COPY_ALLOWED.
    if (!copyFileHost(source, target, false)) return false;
    if (::unlink(source.c_str()) != 0) return failFromErrno();
    return true;
}

bool DeleteFileAt(const std::u16string& path) {
    const std::string host = hostPath(path);
    struct stat st {};
    if (::lstat(host.c_str(), &st) != 0) return failFromErrno();
    if (S_ISDIR(st.st_mode) || (!S_ISLNK(st.st_mode) && isReadOnlyMode(st.st_mode))) {
        return failWith(kErrorAccessDenied);
    }
    if (openedWithoutDeleteShare(st)) return failWith(kErrorSharingViolation);
    if (::unlink(host.c_str()) != 0) return failFromErrno();
    return true;
}

uint32_t QueryAttributes(const std::u16string& path) {
    const std::string host = hostPath(path);
    struct stat st {};
    if (::stat(host.c_str(), &st) != 0 && ::lstat(host.c_str(), &st) != 0) {
        setErrorFromErrno();
        return kInvalidAttributes;
    }
    return attributesOf(st, lastComponent(host));
}

bool ChangeAttributes(const std::u16string& path, uint32_t attributes) {
    const std::string host = hostPath(path);
    struct stat st {};
    if (::stat(host.c_str(), &st) != 0) return failFromErrno();
    // Only read-only has a place in the mode bits; hidden lives in the name, the rest nowhere.
    mode_t mode = st.st_mode & 07777;
    if ((attributes & kAttrReadOnly) != 0) {
        mode &= static_cast<mode_t>(~0222);
    } else if (isReadOnlyMode(mode)) {
        mode |= 0200;
    }
    if (mode != (st.st_mode & 07777) && ::chmod(host.c_str(), mode) != 0) return failFromErrno();
    return true;
}

std::u16string CurrentFolder() {
    std::string buffer(4096, '\0');
    if (::getcwd(buffer.data(), buffer.size()) == nullptr) {
        setErrorFromErrno();
        return {};
    }
    buffer.resize(std::char_traits<char>::length(buffer.c_str()));
    return toLibrary(buffer);
}

bool ChangeCurrentFolder(const std::u16string& path) {
    if (path.empty() || ::chdir(hostPath(path).c_str()) != 0) {
        return failWith(path.empty() ? kErrorPathNotFound : errorFromErrno(errno));
    }
    return true;
}

std::u16string TempFolder() {
    const char* env = std::getenv("TMPDIR");
    std::string folder = env != nullptr && env[0] != '\0' ? env : "/tmp";
    if (folder.back() != '/') folder += '/';
    return toLibrary(folder);
}

bool ToSystemTime(uint64_t fileTime, SystemTime& result) {
    // FileTimeToSystemTime refuses values with the top bit set.
    if (fileTime >= 0x8000000000000000ull) return failWith(kErrorInvalidParameter);
    const int64_t totalMs = static_cast<int64_t>(fileTime / 10000);
    const int64_t days = totalMs / 86400000;
    const int64_t msOfDay = totalMs % 86400000;
    // Day 0 is 1601-01-01, a Monday; 1970-01-01 is day 134774.
    int64_t year = 0;
    unsigned month = 0;
    unsigned day = 0;
    civilFromDays(days - 134774, year, month, day);
    if (year > 30827) return failWith(kErrorInvalidParameter);
    result.year = static_cast<uint16_t>(year);
    result.month = static_cast<uint16_t>(month);
    result.day = static_cast<uint16_t>(day);
    result.dayOfWeek = static_cast<uint16_t>((days + 1) % 7);
    result.hour = static_cast<uint16_t>(msOfDay / 3600000);
    result.minute = static_cast<uint16_t>(msOfDay / 60000 % 60);
    result.second = static_cast<uint16_t>(msOfDay / 1000 % 60);
    result.milliseconds = static_cast<uint16_t>(msOfDay % 1000);
    return true;
}

bool ToLocalFileTime(uint64_t fileTime, uint64_t& localFileTime) {
    // Windows applies the bias in force now, not the one at that date; so does this.
    const time_t now = ::time(nullptr);
    struct tm local {};
    if (::localtime_r(&now, &local) == nullptr) return failWith(kErrorGenFailure);
    const int64_t bias = static_cast<int64_t>(local.tm_gmtoff) * 10000000;
    const int64_t shifted = static_cast<int64_t>(fileTime) + bias;
    if (shifted < 0) return failWith(kErrorInvalidParameter);
    localFileTime = static_cast<uint64_t>(shifted);
    return true;
}

std::u16string LibraryPath(const std::u16string& hostPathText) {
    std::u16string p = hostPathText;
    std::replace(p.begin(), p.end(), u'/', u'\\');
    return p;
}

}  // namespace platform
