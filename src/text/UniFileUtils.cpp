#include "text/UniFileUtils.h"

#include <algorithm>
#include <climits>
#include <utility>

#include "common/CtlError.h"
#include "platform/CodePage.h"
#include "platform/FileSystem.h"
#include "platform/SystemInfo.h"
#include "text/UniStringCore.h"
#include "text/WindowsVersion.h"
#include "text/clsUniFile.h"
#include "text/modLongPath.h"

namespace {

constexpr size_t kNotFound = std::u16string::npos;
// The size of the buffers that the current-folder, temp-folder and command-line calls fill.
constexpr size_t kPathBuffer = 2048;
constexpr uint32_t kReparsePoint = 0x400;

[[noreturn]] void raise(const char16_t* source, const char16_t* text) { throw CtlError(source, text); }

// Positions in the path-part routines are 16-bit signed: a separator found beyond 32767
// overflows, as the host's Integer does.
size_t checkedPosition(size_t position, const char16_t* source) {
    if (position != kNotFound && position + 1 > 32767) throw CtlError(source, u"Overflow", CtlError::kOverflow);
    return position;
}

std::u16string replaceAll(std::u16string text, const std::u16string& what, const std::u16string& with) {
    size_t from = 0;
    while ((from = text.find(what, from)) != kNotFound) {
        text.replace(from, what.size(), with);
        from += with.size();
    }
    return text;
}

bool startsWith(const std::u16string& text, const std::u16string& prefix) {
    return text.size() >= prefix.size() && text.compare(0, prefix.size(), prefix) == 0;
}

std::u16string lowerAscii(const std::u16string& text) {
    std::u16string out(text);
    for (char16_t& c : out) {
        if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + 0x20);
    }
    return out;
}

std::u16string stripTrailing(std::u16string s, char16_t separator) {
    while (!s.empty() && s.back() == separator) s.pop_back();
    return s;
}

// The folder part of a pattern or path: all before the last backslash, trailing backslashes gone.
std::u16string folderOf(const std::u16string& path) {
    const size_t last = path.rfind(u'\\');
    if (last == kNotFound) return {};
    return stripTrailing(path.substr(0, last + 1), u'\\');
}

// One entry of a folder walk, as the file search reports it.
struct WalkItem {
    std::u16string folder;
    std::u16string name;
    uint32_t attributes = 0;

    bool isFolder() const { return (attributes & platform::kAttrDirectory) != 0; }
    std::u16string fullPath() const { return ufu_OneBackSlash(folder) + name; }
};

struct WalkOptions {
    bool onlyFiles = false;
    bool recurse = false;
    bool withDotEntries = false;
    size_t limit = 0;  // 0: no limit
};

bool isDotEntry(const std::u16string& name) { return name == u"." || name == u".."; }

// The platform's find walk: the folder's entries in the order the find calls give them, each
// folder followed straight by its subtree.
void walk(const std::u16string& pattern, const WalkOptions& options, std::vector<WalkItem>& items) {
    const std::u16string folder = folderOf(pattern);
    const size_t lastSlash = pattern.rfind(u'\\');
    const std::u16string namePattern = lastSlash == kNotFound ? pattern : pattern.substr(lastSlash + 1);
    platform::FindHandle find;
    platform::FindData data;
    if (!find.First(MakeLongPath(pattern), data)) return;
    do {
        std::u16string name = data.name;
        const size_t nul = name.find(u'\0');
        if (nul != kNotFound) name.resize(nul);
        const bool isFolder = (data.attributes & platform::kAttrDirectory) != 0;
        const bool dot = isDotEntry(name);
        const bool taken = !(options.onlyFiles && isFolder) && (options.withDotEntries || !dot);
        if (taken) {
            items.push_back(WalkItem{folder, name, data.attributes});
            if (options.limit != 0 && items.size() >= options.limit) return;
        }
        if (options.recurse && isFolder && !dot) {
            walk(ufu_OneBackSlash(folder) + ufu_OneBackSlash(name) + namePattern, options, items);
            if (options.limit != 0 && items.size() >= options.limit) return;
        }
    } while (find.Next(data));
}

std::vector<WalkItem> listFolder(const std::u16string& path, bool recurse) {
    std::vector<WalkItem> items;
    WalkOptions options;
    options.recurse = recurse;
    walk(ufu_OneBackSlash(path) + u"*.*", options, items);
    return items;
}

bool writeAll(platform::File& file, const void* data, size_t count) {
    const uint8_t* bytes = static_cast<const uint8_t*>(data);
    size_t done = 0;
    while (done < count) {
        const uint32_t chunk = static_cast<uint32_t>(std::min<size_t>(count - done, 0x40000000u));
        uint32_t transferred = 0;
        if (!file.Write(bytes + done, chunk, transferred) || transferred == 0) return false;
        done += transferred;
    }
    return true;
}

}  // namespace

// ---- Single platform calls ----

bool ufu_MkDir(const std::u16string& sPath) {
    if (sPath.empty()) return false;
    return platform::CreateFolder(MakeLongPath(sPath));
}

bool ufu_RmDir(const std::u16string& sPath) {
    if (sPath.empty()) return false;
    return platform::RemoveFolder(MakeLongPath(sPath));
}

bool ufu_CopyFile(const std::u16string& sFrom, const std::u16string& sTo, bool bFailIfExists) {
    return platform::CopyFileTo(MakeLongPath(sFrom), MakeLongPath(sTo), bFailIfExists);
}

bool ufu_RmFile(const std::u16string& sPath) {
    const std::u16string path = MakeLongPath(sPath);
    platform::ChangeAttributes(path, 0);
    return platform::DeleteFileAt(path);
}

std::u16string ufu_GetCurDir() {
    std::u16string folder = platform::CurrentFolder();
    if (folder.size() >= kPathBuffer) return {};  // the call reports the size it needs, not the text
    return folder;
}

bool ufu_SetCurDir(const std::u16string& sPath) { return platform::ChangeCurrentFolder(MakeLongPath(sPath)); }

bool ufu_MoveFile(const std::u16string& sFrom, const std::u16string& sTo, int32_t iFlags) {
    if (GetWindowsVersion() < ctl_ewt_WinNt4) {
        // The old systems have no MoveFileExW: clear the way by hand.
        ufu_RmFile(sTo);
        return platform::MoveFileTo(MakeLongPath(sFrom), MakeLongPath(sTo));
    }
    return platform::MoveFileWithFlags(MakeLongPath(sFrom), MakeLongPath(sTo), static_cast<uint32_t>(iFlags));
}

int32_t ufu_GetFileAttr(const std::u16string& sPath) {
    return static_cast<int32_t>(platform::QueryAttributes(MakeLongPath(sPath)));
}

int32_t ufu_SetFileAttr(const std::u16string& sPath, int32_t iAttrs) {
    return platform::ChangeAttributes(MakeLongPath(sPath), static_cast<uint32_t>(iAttrs)) ? -1 : 0;
}

bool ufu_FileHasAttribute(const std::u16string& sPath, int32_t iAttr) {
    return (ufu_GetFileAttr(sPath) & iAttr) > 0;
}

std::u16string ufu_GetTempPath() {
    std::u16string folder = platform::TempFolder();
    if (folder.size() >= kPathBuffer) return {};
    return folder;
}

int64_t ufu_FileLen(const std::u16string& sFile) {
    clsUniFile file;
    if (!file.OpenFileRead(sFile)) return 0;
    return std::max<int64_t>(file.LOF(), 0);
}

// ---- Path parts ----

bool ufu_IsLocalPath(const std::u16string& s) { return s.find(u'\\') != kNotFound; }
bool ufu_IsWebPath(const std::u16string& s) { return s.find(u'/') != kNotFound; }
bool ufu_IsUncPath(const std::u16string& s) { return startsWith(s, u"\\\\"); }

bool ufu_IsFileUrl(const std::u16string& s) {
    const std::u16string lower = lowerAscii(s);
    return startsWith(lower, u"file:///") || startsWith(lower, u"file://");
}

bool ufu_IsLinkUrl(const std::u16string& s) {
    static const char16_t* const kPrefixes[] = {u"http://",     u"https://",   u"ftp://",      u"gopher://",
                                                u"mailto:",     u"news:",      u"telnet:",     u"javascript:",
                                                u"project://",  u"file:///",   u"file://"};
    const std::u16string lower = lowerAscii(s);
    return std::any_of(std::begin(kPrefixes), std::end(kPrefixes),
                       [&lower](const char16_t* prefix) { return startsWith(lower, prefix); });
}

std::u16string ufu_NoBackSlash(const std::u16string& s) {
    if (ufu_IsWebPath(s)) raise(u"ufu_NoBackSlash", u"Not a local path");
    return stripTrailing(s, u'\\');
}

std::u16string ufu_OneBackSlash(const std::u16string& s) {
    if (ufu_IsWebPath(s)) raise(u"ufu_OneBackSlash", u"Not a local path");
    std::u16string out = ufu_NoBackSlash(s);
    if (!out.empty()) out += u'\\';
    return out;
}

std::u16string ufu_NoSlashWeb(const std::u16string& s) {
    if (ufu_IsLocalPath(s)) raise(u"ufu_NoSlashWeb", u"Not a web path");
    return stripTrailing(s, u'/');
}

std::u16string ufu_OneSlashWeb(const std::u16string& s) {
    if (ufu_IsLocalPath(s)) raise(u"ufu_OneSlashWeb", u"Not a web path");
    std::u16string out = ufu_NoSlashWeb(s);
    if (!out.empty()) out += u'/';
    return out;
}

std::u16string ufu_LocalizePath(const std::u16string& s, bool bRaiseError) {
    std::u16string path = s;
    if (ufu_IsFileUrl(path)) {
        size_t cut = path.find(u":///");
        if (cut != kNotFound) {
            path.erase(0, cut + 4);
        } else if ((cut = path.find(u"://")) != kNotFound) {
            path.erase(0, cut + 3);
        }
    } else if (ufu_IsLinkUrl(path) && bRaiseError) {
        raise(u"ufu_LocalizePath", u"Cannot Localize Link!");
    }
    std::replace(path.begin(), path.end(), u'/', u'\\');
    // Query and fragment stay in the path: a local file name may hold '?' or '#' only in a link.
    std::replace(path.begin(), path.end(), u'|', u':');
    path = replaceAll(std::move(path), u"%20", u" ");
    return replaceAll(std::move(path), u"&amp;", u"&");
}

std::u16string ufu_FileName(const std::u16string& sPathFileName) {
    const std::u16string path = ufu_LocalizePath(sPathFileName, false);
    const size_t slash = checkedPosition(path.rfind(u'\\'), u"ufu_FileName");
    return slash == kNotFound ? path : path.substr(slash + 1);
}

std::u16string ufu_FileExt(const std::u16string& sPathFileName) {
    const std::u16string path = ufu_LocalizePath(sPathFileName, false);
    const size_t point = checkedPosition(path.rfind(u'.'), u"ufu_FileExt");
    if (point == kNotFound) return {};
    if (checkedPosition(path.find(u'\\', point), u"ufu_FileExt") != kNotFound) return {};
    return path.substr(point + 1);
}

std::u16string ufu_FileNameNoExt(const std::u16string& sPathFileName) {
    const std::u16string name = ufu_FileName(sPathFileName);
    const size_t point = checkedPosition(name.rfind(u'.'), u"ufu_FileNameNoExt");
    return point == kNotFound ? name : name.substr(0, point);
}

// ---- Folders ----

bool ufu_FileExist(const std::u16string& sFileName) {
    if (sFileName.empty()) return false;
    try {
        std::vector<WalkItem> items;
        WalkOptions options;
        options.onlyFiles = true;
        walk(sFileName, options, items);
        return items.size() == 1;
    } catch (...) {
        return false;
    }
}

bool ufu_DirExist(const std::u16string& sPath) {
    if (sPath.empty()) return false;
    try {
        std::vector<WalkItem> items;
        WalkOptions options;
        options.withDotEntries = true;
        options.limit = 1;
        walk(ufu_OneBackSlash(sPath) + u"*.*", options, items);
        return !items.empty();
    } catch (...) {
        return false;
    }
}

bool ufu_MakePath(const std::u16string& sAbsPath) {
    if (ufu_IsWebPath(sAbsPath)) raise(u"ufu_MakePath", u"Not a local path");
    try {
        std::u16string root;
        std::u16string rest = sAbsPath;
        if (ufu_IsUncPath(sAbsPath)) {
            const size_t slash = sAbsPath.find(u'\\', 2);
            const size_t rootLength = slash == kNotFound ? 2 : slash + 1;
            root = sAbsPath.substr(0, rootLength);
            rest = sAbsPath.substr(rootLength);
        }
#if !defined(_WIN32)
        else if (!sAbsPath.empty() && sAbsPath[0] == u'\\') {
            // Here an absolute path starts at the one root folder; there is no drive piece.
            root = u"\\";
            rest = sAbsPath.substr(1);
        }
#endif
        std::u16string path;
        bool first = true;
        size_t start = 0;
        while (start <= rest.size()) {
            size_t end = rest.find(u'\\', start);
            if (end == kNotFound) end = rest.size();
            const std::u16string piece = rest.substr(start, end - start);
            if (piece.empty()) break;
            path = (first ? root : std::u16string()) + ufu_OneBackSlash(path) + piece;
            first = false;
            if (!ufu_DirExist(path)) ufu_MkDir(path);
            start = end + 1;
        }
        return ufu_DirExist(sAbsPath);
    } catch (...) {
        return false;
    }
}

namespace {

bool removeTree(const std::u16string& path, bool removeRoot) {
    if (path.empty()) return false;
    bool result = true;
    std::vector<WalkItem> items = listFolder(path, false);
    size_t index = 0;
    while (index < items.size()) {
        if (items[index].isFolder()) {
            // A linked folder (junction, mount point) is removed as a link below, never emptied:
            // its content belongs to another place.
            if ((items[index].attributes & kReparsePoint) == 0) {
                result = removeTree(items[index].fullPath(), false) && result;
            }
            ++index;
        } else if (ufu_RmFile(items[index].fullPath())) {
            items.erase(items.begin() + static_cast<std::ptrdiff_t>(index));
        } else {
            result = false;
            ++index;
        }
    }
    // What is left: the folders, now empty, and any file that would not go.
    for (const WalkItem& item : items) result = ufu_RmDir(item.fullPath()) && result;
    if (removeRoot) result = ufu_RmDir(path) && result;
    return result;
}

}  // namespace

bool ufu_RmDirRic(const std::u16string& sPath) { return removeTree(sPath, true); }

bool ufu_RmFiles(const std::u16string& sPathPattern) {
    std::vector<WalkItem> items;
    walk(sPathPattern, WalkOptions{}, items);
    bool result = true;
    for (const WalkItem& item : items) result = ufu_RmFile(item.fullPath()) && result;
    return result;
}

bool ufu_MoveFolderContent(const std::u16string& sSourcePath, const std::u16string& sDestPath) {
    if (!ufu_DirExist(sSourcePath) || !ufu_DirExist(sDestPath)) return false;
    bool result = true;
    const std::u16string destination = ufu_OneBackSlash(sDestPath);
    for (const WalkItem& item : listFolder(sSourcePath, true)) {
        const std::u16string source = item.fullPath();
        const std::u16string target = destination + source.substr(std::min(sSourcePath.size(), source.size()));
        if (item.isFolder()) {
            ufu_MkDir(target);
        } else {
            result = ufu_MoveFile(source, target, kDefaultMoveFlags) && result;
        }
    }
    return result;
}

bool ufu_CopyFolderContent(const std::u16string& sSourcePath, const std::u16string& sDestPath) {
    if (!ufu_DirExist(sSourcePath)) return false;
    if (!ufu_DirExist(sDestPath) && !ufu_MakePath(sDestPath)) return false;
    bool result = true;
    // Unlike a move, the target is the destination exactly as given: callers rely on both forms.
    for (const WalkItem& item : listFolder(sSourcePath, true)) {
        const std::u16string source = item.fullPath();
        const std::u16string target = sDestPath + source.substr(std::min(sSourcePath.size(), source.size()));
        if (item.isFolder()) {
            ufu_MkDir(target);
        } else {
            result = ufu_CopyFile(source, target, false) && result;
        }
    }
    return result;
}

// ---- Whole text files ----

eFileEncoding ufu_GetFileEncoding(const std::u16string& sFile) {
    clsUniFile file;
    uint8_t first = 0;
    if (!file.OpenFileRead(sFile) || !file.ReadByte(first)) return fe_ANSI;
    if (first == 255) return fe_UTF16LE;
    if (first == 239) return fe_UTF8;
    return fe_ANSI;
}

namespace {

// Reads `count` bytes at the file's position into a new array; a count of 0 reads nothing and fails.
bool readBlock(clsUniFile& file, int64_t count, std::vector<uint8_t>& bytes) {
    if (count <= 0 || count > INT32_MAX) return false;
    bytes.assign(static_cast<size_t>(count), 0);
    return file.ReadBytes(bytes);
}

}  // namespace

bool ufu_TextFileToString(const std::u16string& sNomeFile, std::u16string& sRetFile, bool bRaiseError) {
    sRetFile.clear();
    const eFileEncoding encoding = ufu_GetFileEncoding(sNomeFile);
    // Through the file object and its read cache, so whole-file reads share its rules.
    clsUniFile file;
    bool ok = file.OpenFileRead(sNomeFile);
    if (ok) {
        const int64_t size = file.LOF();
        std::vector<uint8_t> bytes;
        if (encoding == fe_ANSI) {
            if (size > 0) {
                ok = readBlock(file, size, bytes);
                if (ok) sRetFile = platform::AnsiToWide(bytes);
            }
        } else if (encoding == fe_UTF16LE) {
            ok = readBlock(file, 2, bytes);
            if (ok && size - 2 > 0) {
                ok = readBlock(file, size - 2, bytes);
                if (ok) {
                    // The byte image of the text; an odd last byte is no whole code unit and is dropped.
                    sRetFile.resize(bytes.size() / 2);
                    for (size_t i = 0; i < sRetFile.size(); ++i) {
                        sRetFile[i] = static_cast<char16_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
                    }
                }
            }
        } else {
            ok = readBlock(file, 3, bytes);
            if (ok && size - 3 > 0) {
                ok = readBlock(file, size - 3, bytes);
                if (ok) sRetFile = ufu_UTF8BytesToString(bytes);
            }
        }
        file.CloseFile();
    }
    if (!ok) sRetFile.clear();
    if (!ok && bRaiseError) raise(u"ufu_TextFileToString", u"Error reading file");
    return ok;
}

std::vector<uint8_t> ufu_StringToUTF8Bytes(const std::u16string& s) { return StringToUTF8Bytes(s); }

bool ufu_StringToTextFile(const std::u16string& vsPathFile, const std::u16string& vsText, int32_t iEncoding,
                          bool bRaiseError) {
    platform::File file = platform::File::Open(MakeLongPath(vsPathFile), platform::kGenericWrite,
                                               platform::kShareWrite, platform::kCreateAlways, platform::kAttrNormal);
    bool ok = file.IsOpen();
    if (ok) {
        switch (iEncoding) {
            case fe_ANSI: {
                if (!vsText.empty()) {
                    const std::vector<uint8_t> bytes = platform::WideToAnsi(vsText);
                    ok = writeAll(file, bytes.data(), bytes.size());
                }
                break;
            }
            case fe_UTF16LE: {
                std::vector<uint8_t> bytes{255, 254};
                bytes.reserve(2 + vsText.size() * 2);
                for (const char16_t c : vsText) {
                    bytes.push_back(static_cast<uint8_t>(c & 0xFF));
                    bytes.push_back(static_cast<uint8_t>(c >> 8));
                }
                ok = writeAll(file, bytes.data(), bytes.size());
                break;
            }
            case fe_UTF8: {
                static const uint8_t kMark[] = {239, 187, 191};
                ok = writeAll(file, kMark, sizeof kMark);
                if (ok && !vsText.empty()) {
                    const std::vector<uint8_t> bytes = ufu_StringToUTF8Bytes(vsText);
                    ok = writeAll(file, bytes.data(), bytes.size());
                }
                break;
            }
            default:
                ok = false;
                break;
        }
        ok = file.Close() && ok;
    }
    if (!ok && bRaiseError) raise(u"ufu_StringToTextFile", u"Error writing file");
    return ok;
}

// ---- Process and dates ----

std::u16string ufu_UniCommandLine() {
    std::u16string line = platform::CommandLine();
    // Copied through a buffer of kPathBuffer characters.
    if (line.size() > kPathBuffer) line.resize(kPathBuffer);
    return ufu_CommandLineArguments(line);
}

std::u16string ufu_CommandLineArguments(const std::u16string& sCommandLine) {
    std::u16string line = sCommandLine;
    const size_t nul = line.find(u'\0');
    if (nul != kNotFound) line.resize(nul);
    size_t argumentsStart = 0;
    if (!line.empty() && line[0] == u'"') {
        const size_t closing = line.find(u'"', 1);
        // An unclosed quote leaves no arguments behind the program name.
        argumentsStart = closing == kNotFound ? line.size() : closing + 1;
    } else {
        const size_t blank = line.find(u' ');
        if (blank == kNotFound) {
            throw CtlError(u"ufu_UniCommandLine", u"Invalid procedure call or argument",
                           CtlError::kInvalidProcedureCall);
        }
        argumentsStart = blank;
    }
    const size_t firstNonBlank = line.find_first_not_of(u' ', argumentsStart);
    return firstNonBlank == kNotFound ? std::u16string() : line.substr(firstNonBlank);
}

void ufu_GetFileDate(const std::u16string& sPathFileName, int32_t iDateType, int32_t& iDay, int32_t& iMonth,
                     int32_t& iYear, int32_t* iHour, int32_t* iMinute, int32_t* iSecond, int32_t* iMilliSeconds,
                     int32_t* iDayOfWeek) {
    if (sPathFileName.empty()) return;
    platform::FindHandle find;
    platform::FindData data;
    if (!find.First(MakeLongPath(sPathFileName), data)) return;
    // Only a path that names exactly one entry, "." and ".." aside, has a date.
    int found = 0;
    platform::FindData item;
    do {
        if (isDotEntry(data.name)) continue;
        if (++found > 1) return;
        item = data;
    } while (find.Next(data));
    if (found != 1) return;
    uint64_t fileTime = 0;
    switch (iDateType) {
        case 0: fileTime = item.creationTime; break;
        case 1: fileTime = item.lastAccessTime; break;
        case 2: fileTime = item.lastWriteTime; break;
        default: return;
    }
    uint64_t local = 0;
    platform::SystemTime time;
    if (!platform::ToLocalFileTime(fileTime, local) || !platform::ToSystemTime(local, time)) return;
    iYear = time.year;
    iMonth = time.month;
    iDay = time.day;
    if (iDayOfWeek) *iDayOfWeek = time.dayOfWeek;
    if (iHour) *iHour = time.hour;
    if (iMinute) *iMinute = time.minute;
    if (iSecond) *iSecond = time.second;
    if (iMilliSeconds) *iMilliSeconds = time.milliseconds;
}
