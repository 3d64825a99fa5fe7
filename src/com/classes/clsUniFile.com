# One open file at a time, named by a UTF-16 path of any length, read and written through two
# 16 KB caches; and the stateless file and path utilities (st_...).
class clsUniFile
header text/clsUniFile.h
enum eFileEncoding: "fe_ANSI" = 0, "fe_UTF16LE" = 1, "fe_UTF8" = 2
enum eUniFileAccess: "eua_QUERY_ACCESS" = 0, "eua_GENERIC_READ" = -2147483648, "eua_GENERIC_WRITE" = 1073741824, "eua_GENERIC_EXECUTE" = 536870912, "eua_GENERIC_ALL" = 268435456
enum eUniFileShareMode: "eusm_NOT_SHARED" = 0, "eusm_FILE_SHARE_READ" = 1, "eusm_FILE_SHARE_WRITE" = 2, "eusm_FILE_SHARE_DELETE" = 4
enum eUniFileCreationDisposition: "eucd_CREATE_NEW" = 1, "eucd_CREATE_ALWAYS" = 2, "eucd_OPEN_EXISTING" = 3, "eucd_OPEN_ALWAYS" = 4, "eucd_TRUNCATE_EXISTING" = 5
enum eUniFilePointerPos: "eupp_FILE_BEGIN" = 0, "eupp_FILE_CURRENT" = 1, "eupp_FILE_END" = 2
enum eUniFileAttributes: "euat_FILE_ATTRIBUTE_READONLY" = 1, "euat_FILE_ATTRIBUTE_HIDDEN" = 2, "euat_FILE_ATTRIBUTE_SYSTEM" = 4, "euat_FILE_ATTRIBUTE_DIRECTORY" = 16, "euat_FILE_ATTRIBUTE_ARCHIVE" = 32, "euat_FILE_ATTRIBUTE_DEVICE" = 64, "euat_FILE_ATTRIBUTE_NORMAL" = 128, "euat_FILE_ATTRIBUTE_TEMPORARY" = 256, "euat_FILE_ATTRIBUTE_SPARSE_FILE" = 512, "euat_FILE_ATTRIBUTE_REPARSE_POINT" = 1024, "euat_FILE_ATTRIBUTE_COMPRESSED" = 2048, "euat_FILE_ATTRIBUTE_OFFLINE" = 4096, "euat_FILE_ATTRIBUTE_NOT_CONTENT_INDEXED" = 8192, "euat_FILE_ATTRIBUTE_ENCRYPTED" = 16384, "euat_FILE_FLAG_WRITE_THROUGH" = -2147483648, "euat_FILE_FLAG_NO_BUFFERING" = 536870912, "euat_FILE_FLAG_RANDOM_ACCESS" = 268435456, "euat_FILE_FLAG_SEQUENTIAL_SCAN" = 134217728, "euat_FILE_FLAG_DELETE_ON_CLOSE" = 67108864, "euat_FILE_FLAG_BACKUP_SEMANTICS" = -33554432, "euat_FILE_FLAG_POSIX_SEMANTICS" = 16777216, "euat_FILE_FLAG_OPEN_REPARSE_POINT" = 2097152, "euat_FILE_FLAG_OPEN_NO_RECALL" = 1048576
enum eUniFileMoveExFlags: "eumef_MOVEFILE_REPLACE_EXISTING" = 1, "eumef_MOVEFILE_COPY_ALLOWED" = 2, "eumef_MOVEFILE_DELAY_UNTIL_REBOOT" = 4, "eumef_MOVEFILE_WRITE_THROUGH" = 8, "eumef_MOVEFILE_CREATE_HARDLINK" = 16, "eumef_MOVEFILE_FAIL_IF_NOT_TRACKABLE" = 32
prop UseCache: bool
method OpenedFileHandle() -> handle
method OpenedFileName() -> string
method IsFileOpen() -> bool
method OpenFileGeneric(string sPath, eUniFileAccess iAccess, eUniFileCreationDisposition iCreationDisposition, eUniFileShareMode iShareMode = 0, eUniFileAttributes iAttributes = 128) -> bool
method OpenFileRead(string sPath, bool bShared = -1) -> bool
method OpenFileWrite(string sPath, bool bShared = -1) -> bool
method OpenFileAppend(string sPath) -> bool
method CloseFile()
method SetEndOfFileHere() -> bool
method Flush() -> bool
method LOF() -> currency
method SetFilePos(currency cPos, eUniFilePointerPos iFrom = 0)
method RealFilePos() -> currency
method GetFilePos() -> currency
method Eof() -> bool
method ReadByte(ref byte b) -> bool
method WriteByte(ref byte b) -> bool
# lPtrAny is an address in the caller's process.
method ReadAny(handle lPtrAny, long lToRead) -> bool
method WriteAny(handle lPtrAny, long lToWrite) -> bool
method ReadBytes(ref bytes bytes) -> bool
method WriteBytes(ref bytes bytes) -> bool
method ReadLong(ref long l) -> bool
method WriteLong(long l) -> bool
method ReadBool(ref bool b) -> bool
method WriteBool(bool b) -> bool
method ReadDouble(ref long dOut) -> bool
method WriteDouble(ref double d) -> bool
method ReadInt(ref short i) -> bool
method WriteInt(short i) -> bool
method WriteNumCharsAndString(string s, eFileEncoding iFileEnc) -> bool
method ReadNumCharsAndString(ref string sRet, eFileEncoding iFileEnc) -> bool
method ReadAnsiLine(ref string sRet) -> bool
method WriteAnsiLine(string s) -> bool
method ReadUTF8Line(ref string sRet) -> bool
method WriteUTF8Line(string s) -> bool
method ReadUnicodeLine(ref string sRet) -> bool
method WriteUnicodeLine(string s) -> bool
method ReadLine(ref string sRet, eFileEncoding iFileEnc) -> bool
method WriteLine(string s, eFileEncoding iFileEnc) -> bool
method WriteBOM(eFileEncoding iFileEnc) -> bool
method ReadBOM() -> eFileEncoding
method st_MkDir(string sPath) -> bool
method st_RmDir(string sPath) -> bool
method st_RmDirRic(string sPath) -> bool
method st_CopyFile(string sFrom, string sTo, bool bFailIfExists = 0) -> bool
method st_RmFile(string sPath) -> bool
method st_RmFiles(string sPathPattern) -> bool
method st_GetCurDir() -> string
method st_SetCurDir(string sPath) -> bool
method st_MoveFile(string sFrom, string sTo, eUniFileMoveExFlags iFlags = 11) -> bool
method st_GetFileAttr(string sPath) -> long
method st_SetFileAttr(string sPath, long iAttrs) -> long
method st_FileHasAttribute(string sPath, long iAttr) -> bool
method st_FilePath(string sPathFileName, bool bFinalBackSlash = 0) -> string
method st_FileName(string sPathFileName) -> string
method st_FileExt(string sPathFileName) -> string
method st_FileNameNoExt(string sPathFileName) -> string
method st_MakePath(string sAbsPath) -> bool
method st_FileExist(string sFileName) -> bool
method st_DirExist(string sPath) -> bool
method st_GetTempPath() -> string
method st_GetFileEncoding(string sFile) -> eFileEncoding
method st_TextFileToString(string sNomeFile, ref string sRetFile, bool bRaiseError = -1) -> bool
method st_StringToTextFile(string vsPathFile, string vsText, eFileEncoding iEncoding = 0, bool bRaiseError = -1) -> bool
method st_GetFileDate(string sPathFileName, eSearchFileFInfoDate iDateType, ref long iDay, ref long iMonth, ref long iYear, ref long iHour = 0, ref long iMinute = 0, ref long iSecond = 0, ref long iMilliSeconds = 0, ref long iDayOfWeek = 0) = @obj.st_GetFileDate(@sPathFileName, @iDateType, @iDay, @iMonth, @iYear, &@iHour, &@iMinute, &@iSecond, &@iMilliSeconds, &@iDayOfWeek)
method st_UniAppPath() -> string
method st_FileLen(string sFile) -> currency
method st_UniCommandLine() -> string
method st_MoveFolderContent(string sSourcePath, string sDestPath) -> bool
method st_CopyFolderContent(string sSourcePath, string sDestPath) -> bool
method st_OneBackSlash(string s) -> string
method st_NoBackSlash(string s) -> string
method st_OneSlashWeb(string s) -> string
method st_NoSlashWeb(string s) -> string
method st_IsLocalPath(string s) -> bool
method st_IsWebPath(string s) -> bool
