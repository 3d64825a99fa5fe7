# One entry a search found: a file or a folder, with its children in a tree result.
class clsSearchFilesFInfo noncreatable
header text/clsSearchFilesFInfo.h
header com/TextCollections.h
enum eSearchFilesFAttrs: "esfa_FILE_ATTRIBUTE_READONLY" = 1, "esfa_FILE_ATTRIBUTE_HIDDEN" = 2, "esfa_FILE_ATTRIBUTE_SYSTEM" = 4, "esfa_FILE_ATTRIBUTE_DIRECTORY" = 16, "esfa_FILE_ATTRIBUTE_ARCHIVE" = 32, "esfa_FILE_ATTRIBUTE_DEVICE" = 64, "esfa_FILE_ATTRIBUTE_NORMAL" = 128, "esfa_FILE_ATTRIBUTE_TEMPORARY" = 256, "esfa_FILE_ATTRIBUTE_SPARSE_FILE" = 512, "esfa_FILE_ATTRIBUTE_REPARSE_POINT" = 1024, "esfa_FILE_ATTRIBUTE_COMPRESSED" = 2048, "esfa_FILE_ATTRIBUTE_OFFLINE" = 4096, "esfa_FILE_ATTRIBUTE_NOT_CONTENT_INDEXED" = 8192, "esfa_FILE_ATTRIBUTE_ENCRYPTED" = 16384
enum eSearchFileFInfoDate: "esfid_creation" = 0, "esfid_lastaccess" = 1, "esfid_lastwrite" = 2
prop sFileName: string = @obj.sFileName | @obj.sFileName = @newVal
prop lAttributes: long = @obj.lAttributes | @obj.lAttributes = @newVal
prop dFileSize: currency = @obj.dFileSize | @obj.dFileSize = @newVal
prop dwLowDateTimeCreation: long = @obj.dwLowDateTimeCreation | @obj.dwLowDateTimeCreation = @newVal
prop dwHighDateTimeCreation: long = @obj.dwHighDateTimeCreation | @obj.dwHighDateTimeCreation = @newVal
prop dwLowDateTimeLastAccess: long = @obj.dwLowDateTimeLastAccess | @obj.dwLowDateTimeLastAccess = @newVal
prop dwHighDateTimeLastAccess: long = @obj.dwHighDateTimeLastAccess | @obj.dwHighDateTimeLastAccess = @newVal
prop dwLowDateTimeLastWrite: long = @obj.dwLowDateTimeLastWrite | @obj.dwLowDateTimeLastWrite = @newVal
prop dwHighDateTimeLastWrite: long = @obj.dwHighDateTimeLastWrite | @obj.dwHighDateTimeLastWrite = @newVal
propobj oCollSubFiles: clsCollection = tc::com::CollectionOf(@obj.oCollSubFiles) | @obj.oCollSubFiles = tc::com::SearchEntriesOf(@newVal)
let sFilePath: string
get sFilePathNoSlash: string
get sFilePathSlash: string
method Clone(clsSearchFilesFInfo oToFill = 0) -> clsSearchFilesFInfo
method sPathFileName() -> string
method IsDirectory() -> bool
method IsFile() -> bool
method IsReadOnly() -> bool
method IsHidden() -> bool
method IsSystem() -> bool
method IsCompressed() -> bool
method IsEncrypted() -> bool
method GetFileDate(eSearchFileFInfoDate iDateType, ref long iDay, ref long iMonth, ref long iYear, ref long iHour = 0, ref long iMinute = 0, ref long iSecond = 0, ref long iMilliSeconds = 0, ref long iDayOfWeek = 0) = @obj.GetFileDate(@iDateType, @iDay, @iMonth, @iYear, &@iHour, &@iMinute, &@iSecond, &@iMilliSeconds, &@iDayOfWeek)
method GetUTCFileDate(eSearchFileFInfoDate iDateType, ref long iDay, ref long iMonth, ref long iYear, ref long iHour = 0, ref long iMinute = 0, ref long iSecond = 0, ref long iMilliSeconds = 0, ref long iDayOfWeek = 0) = @obj.GetUTCFileDate(@iDateType, @iDay, @iMonth, @iYear, &@iHour, &@iMinute, &@iSecond, &@iMilliSeconds, &@iDayOfWeek)
method LoadFromFileOrDir(string sFile, bool bRecurseIfDirectory = 0) -> bool
