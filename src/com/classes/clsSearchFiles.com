# Walks a folder, with or without its subfolders; results come back as a clsCollection.
class clsSearchFiles
cpp MessagePumpingSearch
header com/TextCollections.h
enum eSearchFilesWhat: "esfw_all" = 0, "esfw_only_files" = 1, "esfw_only_dirs" = 2
method SearchInPath(string sPath, eSearchFilesWhat iSearchWhat = 0, bool bRecurseSubDirs = 0, bool bAsync = 0, bool bReturnThisAndBaseDirs = 0, long lMaxResults = -1, bool bHierarchicalCollection = 0) -> clsCollection = tc::com::CollectionOf(@obj.SearchInPath(@sPath, @iSearchWhat, @bRecurseSubDirs, @bAsync, @bReturnThisAndBaseDirs, @lMaxResults, @bHierarchicalCollection))
method SearchPathPattern(string sPathPattern, eSearchFilesWhat iSearchWhat = 0, bool bRecurseSubDirs = 0, bool bAsync = 0, bool bReturnThisAndBaseDirs = 0, long lMaxResults = -1, bool bHierarchicalCollection = 0) -> clsCollection = tc::com::CollectionOf(@obj.SearchPathPattern(@sPathPattern, @iSearchWhat, @bRecurseSubDirs, @bAsync, @bReturnThisAndBaseDirs, @lMaxResults, @bHierarchicalCollection))
method SearchFilePatternPathNoPattern(string sPathPattern, eSearchFilesWhat iSearchWhat = 0, bool bRecurseSubDirs = 0, bool bAsync = 0, bool bReturnThisAndBaseDirs = 0, long lMaxResults = -1) -> clsCollection = tc::com::CollectionOf(@obj.SearchFilePatternPathNoPattern(@sPathPattern, @iSearchWhat, @bRecurseSubDirs, @bAsync, @bReturnThisAndBaseDirs, @lMaxResults))
method IsSearching() -> bool
method CurrentDir() -> string
method StopSearch()
method GetFileDate(string sPathFileName, eSearchFileFInfoDate iDateType, ref long iDay, ref long iMonth, ref long iYear, ref long iHour = 0, ref long iMinute = 0, ref long iSecond = 0, ref long iMilliSeconds = 0, ref long iDayOfWeek = 0) = @obj.GetFileDate(@sPathFileName, @iDateType, @iDay, @iMonth, @iYear, &@iHour, &@iMinute, &@iSecond, &@iMilliSeconds, &@iDayOfWeek)
