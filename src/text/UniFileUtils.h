// Stateless file, folder and path routines of the file layer (the ufu_ module functions); the
// st_ members of clsUniFile forward to them one to one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The file encodings of the whole library; the byte order mark rules live with clsUniFile.
enum eFileEncoding : int32_t {
    fe_ANSI = 0,
    fe_UTF16LE = 1,
    fe_UTF8 = 2,
};

enum eUniFileMoveExFlags : int32_t {
    eumef_MOVEFILE_REPLACE_EXISTING = 1,
    eumef_MOVEFILE_COPY_ALLOWED = 2,
    eumef_MOVEFILE_DELAY_UNTIL_REBOOT = 4,
    eumef_MOVEFILE_WRITE_THROUGH = 8,
    eumef_MOVEFILE_CREATE_HARDLINK = 16,
    eumef_MOVEFILE_FAIL_IF_NOT_TRACKABLE = 32,
};

// Replace, copy across volumes, write through: what a plain "move this file" wants.
inline constexpr int32_t kDefaultMoveFlags =
    eumef_MOVEFILE_REPLACE_EXISTING | eumef_MOVEFILE_COPY_ALLOWED | eumef_MOVEFILE_WRITE_THROUGH;

// ---- Single platform calls, all through MakeLongPath; failures give false ----
bool ufu_MkDir(const std::u16string& sPath);
bool ufu_RmDir(const std::u16string& sPath);
// Removes a folder with everything below it; false when anything stayed behind.
bool ufu_RmDirRic(const std::u16string& sPath);
bool ufu_CopyFile(const std::u16string& sFrom, const std::u16string& sTo, bool bFailIfExists = false);
// Clears the attributes first, so read-only files go too.
bool ufu_RmFile(const std::u16string& sPath);
// Removes every file the pattern matches; true when all went (and when none matched).
bool ufu_RmFiles(const std::u16string& sPathPattern);
std::u16string ufu_GetCurDir();
bool ufu_SetCurDir(const std::u16string& sPath);
bool ufu_MoveFile(const std::u16string& sFrom, const std::u16string& sTo, int32_t iFlags = kDefaultMoveFlags);
// The platform's attributes unchanged: -1 for a missing file.
int32_t ufu_GetFileAttr(const std::u16string& sPath);
// -1 on success, 0 on failure.
int32_t ufu_SetFileAttr(const std::u16string& sPath, int32_t iAttrs);
// Signed test of (attributes AND iAttr) > 0: every ordinary attribute tests true on a missing file.
bool ufu_FileHasAttribute(const std::u16string& sPath, int32_t iAttr);
std::u16string ufu_GetTempPath();
// 0 when the file cannot be opened.
int64_t ufu_FileLen(const std::u16string& sFile);

// ---- Path parts ----
std::u16string ufu_FileName(const std::u16string& sPathFileName);
std::u16string ufu_FileExt(const std::u16string& sPathFileName);
std::u16string ufu_FileNameNoExt(const std::u16string& sPathFileName);
// Raises "Not a local path" for a path with a forward slash.
std::u16string ufu_OneBackSlash(const std::u16string& s);
std::u16string ufu_NoBackSlash(const std::u16string& s);
// Raise "Not a web path" for a path with a backslash.
std::u16string ufu_OneSlashWeb(const std::u16string& s);
std::u16string ufu_NoSlashWeb(const std::u16string& s);
bool ufu_IsLocalPath(const std::u16string& s);
bool ufu_IsWebPath(const std::u16string& s);
bool ufu_IsUncPath(const std::u16string& s);
bool ufu_IsFileUrl(const std::u16string& s);
bool ufu_IsLinkUrl(const std::u16string& s);
// Turns a file link into a local path; other links raise "Cannot Localize Link!" when asked to.
std::u16string ufu_LocalizePath(const std::u16string& s, bool bRaiseError);

// ---- Folders ----
// Creates a folder with all its parents; raises for a web path, otherwise false on any failure.
bool ufu_MakePath(const std::u16string& sAbsPath);
bool ufu_FileExist(const std::u16string& sFileName);
bool ufu_DirExist(const std::u16string& sPath);
bool ufu_MoveFolderContent(const std::u16string& sSourcePath, const std::u16string& sDestPath);
bool ufu_CopyFolderContent(const std::u16string& sSourcePath, const std::u16string& sDestPath);

// ---- Whole text files ----
// fe_ANSI also for a file that cannot be opened or read.
eFileEncoding ufu_GetFileEncoding(const std::u16string& sFile);
// Reads a whole text file in the encoding its mark says; raises "Error reading file" on failure
// when bRaiseError is true.
bool ufu_TextFileToString(const std::u16string& sNomeFile, std::u16string& sRetFile, bool bRaiseError = true);
// Replaces the file with the text in the given encoding, mark included; raises "Error writing
// file" on failure when bRaiseError is true.
bool ufu_StringToTextFile(const std::u16string& vsPathFile, const std::u16string& vsText,
                          int32_t iEncoding = fe_ANSI, bool bRaiseError = true);
std::vector<uint8_t> ufu_StringToUTF8Bytes(const std::u16string& s);

// ---- Process and dates ----
// The arguments of the process's command line, without the program name and leading blanks.
std::u16string ufu_UniCommandLine();
// The same cut on a given command line: the program name ends at its closing quote, or at the
// first blank (none raises the invalid-argument error 5); text from a character 0 on is ignored.
std::u16string ufu_CommandLineArguments(const std::u16string& sCommandLine);
// Fills the date parts of the file's time (0 creation, 1 last access, 2 last write), local time;
// leaves them as they were when the file is not found.
void ufu_GetFileDate(const std::u16string& sPathFileName, int32_t iDateType, int32_t& iDay, int32_t& iMonth,
                     int32_t& iYear, int32_t* iHour = nullptr, int32_t* iMinute = nullptr,
                     int32_t* iSecond = nullptr, int32_t* iMilliSeconds = nullptr, int32_t* iDayOfWeek = nullptr);
