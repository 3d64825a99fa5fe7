// clsSearchFiles, the library's directory walker, and clsSearchFilesEvents, the sink it yields to.
#pragma once

#include <cstdint>
#include <string>

#include "text/clsSearchFilesFInfo.h"

enum eSearchFilesWhat : int32_t {
    esfw_all = 0,
    esfw_only_files = 1,
    esfw_only_dirs = 2,
};

class clsSearchFiles;

// What an asynchronous walk calls once per folder, where the host would pump its messages. A
// handler may call StopSearch, or start another search (which the guard answers with nothing).
class clsSearchFilesEvents {
public:
    virtual ~clsSearchFilesEvents() = default;
    virtual void DoEvents(clsSearchFiles& search) = 0;
};

class clsSearchFiles {
public:
    clsSearchFiles() = default;
    // The sink is not owned; it must outlive every asynchronous search of this object.
    explicit clsSearchFiles(clsSearchFilesEvents* events) : m_events(events) {}

    SearchFilesCollection SearchInPath(const std::u16string& sPath, int32_t iSearchWhat = esfw_all,
                                       bool bRecurseSubDirs = false, bool bAsync = false,
                                       bool bReturnThisAndBaseDirs = false, int32_t lMaxResults = -1,
                                       bool bHierarchicalCollection = false);
    SearchFilesCollection SearchPathPattern(const std::u16string& sPathPattern, int32_t iSearchWhat = esfw_all,
                                            bool bRecurseSubDirs = false, bool bAsync = false,
                                            bool bReturnThisAndBaseDirs = false, int32_t lMaxResults = -1,
                                            bool bHierarchicalCollection = false);
    // A file pattern over a tree that does not filter the folders: subfolders are listed first,
    // then the pattern is applied in the folder and in each subfolder.
    SearchFilesCollection SearchFilePatternPathNoPattern(const std::u16string& sPathPattern,
                                                         int32_t iSearchWhat = esfw_all,
                                                         bool bRecurseSubDirs = false, bool bAsync = false,
                                                         bool bReturnThisAndBaseDirs = false,
                                                         int32_t lMaxResults = -1);
    bool IsSearching() const noexcept { return m_bSearching; }
    std::u16string CurrentDir() const { return m_sCurrentDir; }
    void StopSearch() noexcept { m_bStop = true; }
    void GetFileDate(const std::u16string& sPathFileName, int32_t iDateType, int32_t& iDay, int32_t& iMonth,
                     int32_t& iYear, int32_t* iHour = nullptr, int32_t* iMinute = nullptr,
                     int32_t* iSecond = nullptr, int32_t* iMilliSeconds = nullptr,
                     int32_t* iDayOfWeek = nullptr);

    void SetEventSink(clsSearchFilesEvents* events) noexcept { m_events = events; }

private:
    struct WalkOptions {
        int32_t what = esfw_all;
        bool recurse = false;
        bool async = false;
        bool baseDirs = false;
        int32_t limit = -1;
        bool tree = false;
    };

    SearchFilesCollection pvSearch(const std::u16string& pattern, const WalkOptions& options);
    void pvWalk(const std::u16string& pattern, const WalkOptions& options, SearchFilesCollection& coll);
    void pvBegin();
    void pvEnd() noexcept;

    bool m_bStop = false;
    bool m_bSearching = false;
    // Set when the walk ended because the limit was reached, not because the host asked.
    bool m_bLimitReached = false;
    std::u16string m_sCurrentDir;
    int32_t m_lCount = 0;
    clsSearchFilesEvents* m_events = nullptr;
};
