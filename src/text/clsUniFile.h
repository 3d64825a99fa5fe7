// clsUniFile, the cached Unicode file object, with its enumerations and its st_ members.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/FileSystem.h"
#include "text/UniFileUtils.h"
#include "text/modLongPath.h"

enum eUniFileAccess : int32_t {
    eua_QUERY_ACCESS = 0,
    eua_GENERIC_READ = static_cast<int32_t>(0x80000000u),
    eua_GENERIC_WRITE = 1073741824,
    eua_GENERIC_EXECUTE = 536870912,
    eua_GENERIC_ALL = 268435456,
};

enum eUniFileShareMode : int32_t {
    eusm_NOT_SHARED = 0,
    eusm_FILE_SHARE_READ = 1,
    eusm_FILE_SHARE_WRITE = 2,
    eusm_FILE_SHARE_DELETE = 4,
};

enum eUniFileCreationDisposition : int32_t {
    eucd_CREATE_NEW = 1,
    eucd_CREATE_ALWAYS = 2,
    eucd_OPEN_EXISTING = 3,
    eucd_OPEN_ALWAYS = 4,
    eucd_TRUNCATE_EXISTING = 5,
};

enum eUniFilePointerPos : int32_t {
    eupp_FILE_BEGIN = 0,
    eupp_FILE_CURRENT = 1,
    eupp_FILE_END = 2,
};

enum eUniFileAttributes : int32_t {
    euat_FILE_ATTRIBUTE_READONLY = 1,
    euat_FILE_ATTRIBUTE_HIDDEN = 2,
    euat_FILE_ATTRIBUTE_SYSTEM = 4,
    euat_FILE_ATTRIBUTE_DIRECTORY = 16,
    euat_FILE_ATTRIBUTE_ARCHIVE = 32,
    euat_FILE_ATTRIBUTE_DEVICE = 64,
    euat_FILE_ATTRIBUTE_NORMAL = 128,
    euat_FILE_ATTRIBUTE_TEMPORARY = 256,
    euat_FILE_ATTRIBUTE_SPARSE_FILE = 512,
    euat_FILE_ATTRIBUTE_REPARSE_POINT = 1024,
    euat_FILE_ATTRIBUTE_COMPRESSED = 2048,
    euat_FILE_ATTRIBUTE_OFFLINE = 4096,
    euat_FILE_ATTRIBUTE_NOT_CONTENT_INDEXED = 8192,
    euat_FILE_ATTRIBUTE_ENCRYPTED = 16384,
    euat_FILE_FLAG_WRITE_THROUGH = static_cast<int32_t>(0x80000000u),
    euat_FILE_FLAG_NO_BUFFERING = 536870912,
    euat_FILE_FLAG_RANDOM_ACCESS = 268435456,
    euat_FILE_FLAG_SEQUENTIAL_SCAN = 134217728,
    euat_FILE_FLAG_DELETE_ON_CLOSE = 67108864,
    // Not the platform's single bit: the published value, kept as callers know it.
    euat_FILE_FLAG_BACKUP_SEMANTICS = -33554432,
    euat_FILE_FLAG_POSIX_SEMANTICS = 16777216,
    euat_FILE_FLAG_OPEN_REPARSE_POINT = 2097152,
    euat_FILE_FLAG_OPEN_NO_RECALL = 1048576,
};

class clsUniFile {
public:
    static constexpr int32_t kCacheSize = 16384;

    clsUniFile() = default;
    // Flushes what the write cache holds and closes the file.
    ~clsUniFile();
    // Owns an open file and its pending bytes: a copy would write them twice.
    clsUniFile(const clsUniFile&) = delete;
    clsUniFile& operator=(const clsUniFile&) = delete;

    bool UseCache() const noexcept { return m_bUseCache; }
    void UseCache(bool bUseCache);
    // 0 when closed, -1 after a failed open, else the platform handle.
    intptr_t OpenedFileHandle() const noexcept { return m_hFile; }
    std::u16string OpenedFileName() const;
    // Also true after a failed open, until CloseFile.
    bool IsFileOpen() const noexcept { return m_hFile != 0; }

    // Raises "A file is already open!" while a handle (or a failed open) is held.
    bool OpenFileGeneric(const std::u16string& sPath, int32_t iAccess, int32_t iCreationDisposition,
                         int32_t iShareMode = eusm_NOT_SHARED, int32_t iAttributes = euat_FILE_ATTRIBUTE_NORMAL);
    bool OpenFileRead(const std::u16string& sPath, bool bShared = true);
    bool OpenFileWrite(const std::u16string& sPath, bool bShared = true);
    bool OpenFileAppend(const std::u16string& sPath);
    void CloseFile();
    bool SetEndOfFileHere();
    bool Flush();
    int64_t LOF();
    void SetFilePos(int64_t cPos, int32_t iFrom = eupp_FILE_BEGIN);
    int64_t RealFilePos();
    int64_t GetFilePos();
    // True from the last byte on (one short of the end), and for a closed file.
    bool Eof();

    bool ReadByte(uint8_t& b);
    bool WriteByte(uint8_t b);
    bool ReadAny(void* lPtrAny, int32_t lToRead);
    bool WriteAny(const void* lPtrAny, int32_t lToWrite);
    // The count is the array's size; an empty array gives false.
    bool ReadBytes(std::vector<uint8_t>& bytes);
    bool WriteBytes(const std::vector<uint8_t>& bytes);
    bool ReadLong(int32_t& l);
    bool WriteLong(int32_t l);
    bool ReadBool(bool& b);
    bool WriteBool(bool b);
    // Reads an 8-byte double and stores it rounded (half to even) into an integer: the output is
    // deliberately not a float. A value outside the integer's range gives false and no store.
    bool ReadDouble(int32_t& dOut);
    bool WriteDouble(const double& d);
    bool ReadInt(int16_t& i);
    bool WriteInt(int16_t i);
    // A 32-bit byte count, then the bytes; an empty string writes the count 0 and gives false.
    bool WriteNumCharsAndString(const std::u16string& s, int32_t iFileEnc);
    bool ReadNumCharsAndString(std::u16string& sRet, int32_t iFileEnc);

    bool ReadAnsiLine(std::u16string& sRet);
    bool WriteAnsiLine(const std::u16string& s);
    // Leaves sRet as it was for an empty line, and at the end of the data with nothing read.
    bool ReadUTF8Line(std::u16string& sRet);
    bool WriteUTF8Line(const std::u16string& s);
    bool ReadUnicodeLine(std::u16string& sRet);
    bool WriteUnicodeLine(const std::u16string& s);
    bool ReadLine(std::u16string& sRet, int32_t iFileEnc);
    bool WriteLine(const std::u16string& s, int32_t iFileEnc);
    bool WriteBOM(int32_t iFileEnc);
    // Recognises a mark by its first byte alone; the position stays behind the mark, or goes back
    // to the start when there is none.
    eFileEncoding ReadBOM();

    // ---- Stateless members: the file utilities, one to one ----
    static bool st_MkDir(const std::u16string& sPath) { return ufu_MkDir(sPath); }
    static bool st_RmDir(const std::u16string& sPath) { return ufu_RmDir(sPath); }
    static bool st_RmDirRic(const std::u16string& sPath) { return ufu_RmDirRic(sPath); }
    static bool st_CopyFile(const std::u16string& sFrom, const std::u16string& sTo, bool bFailIfExists = false) {
        return ufu_CopyFile(sFrom, sTo, bFailIfExists);
    }
    static bool st_RmFile(const std::u16string& sPath) { return ufu_RmFile(sPath); }
    static bool st_RmFiles(const std::u16string& sPathPattern) { return ufu_RmFiles(sPathPattern); }
    static std::u16string st_GetCurDir() { return ufu_GetCurDir(); }
    static bool st_SetCurDir(const std::u16string& sPath) { return ufu_SetCurDir(sPath); }
    static bool st_MoveFile(const std::u16string& sFrom, const std::u16string& sTo,
                            int32_t iFlags = kDefaultMoveFlags) {
        return ufu_MoveFile(sFrom, sTo, iFlags);
    }
    static int32_t st_GetFileAttr(const std::u16string& sPath) { return ufu_GetFileAttr(sPath); }
    static int32_t st_SetFileAttr(const std::u16string& sPath, int32_t iAttrs) {
        return ufu_SetFileAttr(sPath, iAttrs);
    }
    static bool st_FileHasAttribute(const std::u16string& sPath, int32_t iAttr) {
        return ufu_FileHasAttribute(sPath, iAttr);
    }
    static std::u16string st_FilePath(const std::u16string& sPathFileName, bool bFinalBackSlash = false) {
        return ufu_FilePath(sPathFileName, bFinalBackSlash);
    }
    static std::u16string st_FileName(const std::u16string& sPathFileName) { return ufu_FileName(sPathFileName); }
    static std::u16string st_FileExt(const std::u16string& sPathFileName) { return ufu_FileExt(sPathFileName); }
    static std::u16string st_FileNameNoExt(const std::u16string& sPathFileName) {
        return ufu_FileNameNoExt(sPathFileName);
    }
    static bool st_MakePath(const std::u16string& sAbsPath) { return ufu_MakePath(sAbsPath); }
    static bool st_FileExist(const std::u16string& sFileName) { return ufu_FileExist(sFileName); }
    static bool st_DirExist(const std::u16string& sPath) { return ufu_DirExist(sPath); }
    static std::u16string st_GetTempPath() { return ufu_GetTempPath(); }
    static eFileEncoding st_GetFileEncoding(const std::u16string& sFile) { return ufu_GetFileEncoding(sFile); }
    static bool st_TextFileToString(const std::u16string& sNomeFile, std::u16string& sRetFile,
                                    bool bRaiseError = true) {
        return ufu_TextFileToString(sNomeFile, sRetFile, bRaiseError);
    }
    static bool st_StringToTextFile(const std::u16string& vsPathFile, const std::u16string& vsText,
                                    int32_t iEncoding = fe_ANSI, bool bRaiseError = true) {
        return ufu_StringToTextFile(vsPathFile, vsText, iEncoding, bRaiseError);
    }
    static void st_GetFileDate(const std::u16string& sPathFileName, int32_t iDateType, int32_t& iDay,
                               int32_t& iMonth, int32_t& iYear, int32_t* iHour = nullptr, int32_t* iMinute = nullptr,
                               int32_t* iSecond = nullptr, int32_t* iMilliSeconds = nullptr,
                               int32_t* iDayOfWeek = nullptr) {
        ufu_GetFileDate(sPathFileName, iDateType, iDay, iMonth, iYear, iHour, iMinute, iSecond, iMilliSeconds,
                        iDayOfWeek);
    }
    static std::u16string st_UniAppPath() { return UniAppPath(); }
    static int64_t st_FileLen(const std::u16string& sFile) { return ufu_FileLen(sFile); }
    static std::u16string st_UniCommandLine() { return ufu_UniCommandLine(); }
    static bool st_MoveFolderContent(const std::u16string& sSourcePath, const std::u16string& sDestPath) {
        return ufu_MoveFolderContent(sSourcePath, sDestPath);
    }
    static bool st_CopyFolderContent(const std::u16string& sSourcePath, const std::u16string& sDestPath) {
        return ufu_CopyFolderContent(sSourcePath, sDestPath);
    }
    static std::u16string st_OneBackSlash(const std::u16string& s) { return ufu_OneBackSlash(s); }
    static std::u16string st_NoBackSlash(const std::u16string& s) { return ufu_NoBackSlash(s); }
    static std::u16string st_OneSlashWeb(const std::u16string& s) { return ufu_OneSlashWeb(s); }
    static std::u16string st_NoSlashWeb(const std::u16string& s) { return ufu_NoSlashWeb(s); }
    static bool st_IsLocalPath(const std::u16string& s) { return ufu_IsLocalPath(s); }
    static bool st_IsWebPath(const std::u16string& s) { return ufu_IsWebPath(s); }

private:
    void pvResetReadCache() noexcept {
        m_lReadPos = 0;
        m_lReadEnd = -1;
    }
    void pvResetWriteCache() noexcept { m_lWritePos = -1; }
    bool pvFlushWriteCache();
    bool pvFillReadCache();
    bool pvRawRead(void* target, int32_t count);
    // What ReadAny(count) does to the file when count is beyond the data left, without a buffer
    // of that size: the cached bytes are used up, then the file is read to its end (a count above
    // the cache size, or the cache off) or the cache refilled.
    void pvReadPastEnd(int32_t count);
    bool pvRawWrite(const void* source, int32_t count);
    // The next byte through the cache rules, without a call per byte while the cache holds bytes.
    bool pvNextByte(uint8_t& b);

    platform::File m_file;
    intptr_t m_hFile = 0;
    std::u16string m_sFileName;
    bool m_bUseCache = true;
    int32_t m_lReadPos = 0;
    int32_t m_lReadEnd = -1;
    int32_t m_lWritePos = -1;
    std::array<uint8_t, kCacheSize> m_aReadCache{};
    std::array<uint8_t, kCacheSize> m_aWriteCache{};
    // Reused by the line calls so that a line costs no allocation once lines stop growing.
    std::vector<uint8_t> m_scratch;
};
