#include "text/clsSearchFiles.h"

#include <memory>

#include "common/CtlError.h"
#include "platform/FileSystem.h"
#include "text/modLongPath.h"

namespace {

// ufu_OneBackSlash's rule for names the find call gave; they hold no forward slash.
std::u16string oneBackSlash(const std::u16string& s) {
    std::u16string out = s;
    while (!out.empty() && out.back() == u'\\') out.pop_back();
    if (!out.empty()) out += u'\\';
    return out;
}

// The folder part of a pattern (everything before its last backslash) and its file-name part.
std::u16string folderOf(const std::u16string& pattern) {
    const size_t slash = pattern.rfind(u'\\');
    return slash == std::u16string::npos ? std::u16string() : pattern.substr(0, slash);
}

std::u16string nameOf(const std::u16string& pattern) {
    const size_t slash = pattern.rfind(u'\\');
    return slash == std::u16string::npos ? pattern : pattern.substr(slash + 1);
}

bool isDots(const std::u16string& name) noexcept { return name == u"." || name == u".."; }

std::shared_ptr<clsSearchFilesFInfo> entryFrom(const platform::FindData& data, const std::u16string& folder) {
    auto item = std::make_shared<clsSearchFilesFInfo>();
    item->sFilePath(folder);
    item->sFileName = data.name;
    item->lAttributes = static_cast<int32_t>(data.attributes);
    item->dFileSize = data.size;
    item->dwLowDateTimeCreation = static_cast<int32_t>(data.creationTime & 0xFFFFFFFFu);
    item->dwHighDateTimeCreation = static_cast<int32_t>(data.creationTime >> 32);
    item->dwLowDateTimeLastAccess = static_cast<int32_t>(data.lastAccessTime & 0xFFFFFFFFu);
    item->dwHighDateTimeLastAccess = static_cast<int32_t>(data.lastAccessTime >> 32);
    item->dwLowDateTimeLastWrite = static_cast<int32_t>(data.lastWriteTime & 0xFFFFFFFFu);
    item->dwHighDateTimeLastWrite = static_cast<int32_t>(data.lastWriteTime >> 32);
    return item;
}

}  // namespace

void clsSearchFiles::pvBegin() {
    m_bStop = false;
    m_bLimitReached = false;
    m_lCount = 0;
    m_sCurrentDir.clear();
    m_bSearching = true;
}

void clsSearchFiles::pvEnd() noexcept {
    m_bSearching = false;
    m_bStop = false;
    m_lCount = 0;
}

SearchFilesCollection clsSearchFiles::pvSearch(const std::u16string& pattern, const WalkOptions& options) {
    SearchFilesCollection coll;
    if (m_bSearching) return coll;
    pvBegin();
    try {
        pvWalk(pattern, options, coll);
    } catch (...) {
        pvEnd();
        throw;
    }
    pvEnd();
    return coll;
}

SearchFilesCollection clsSearchFiles::SearchInPath(const std::u16string& sPath, int32_t iSearchWhat,
                                                   bool bRecurseSubDirs, bool bAsync, bool bReturnThisAndBaseDirs,
                                                   int32_t lMaxResults, bool bHierarchicalCollection) {
    if (m_bSearching) return {};
    if (sPath.find(u'/') != std::u16string::npos) throw CtlError(u"ufu_OneBackSlash", u"Not a local path");
    return pvSearch(oneBackSlash(sPath) + u"*.*",
                    WalkOptions{iSearchWhat, bRecurseSubDirs, bAsync, bReturnThisAndBaseDirs, lMaxResults,
                                bHierarchicalCollection});
}

SearchFilesCollection clsSearchFiles::SearchPathPattern(const std::u16string& sPathPattern, int32_t iSearchWhat,
                                                        bool bRecurseSubDirs, bool bAsync,
                                                        bool bReturnThisAndBaseDirs, int32_t lMaxResults,
                                                        bool bHierarchicalCollection) {
    return pvSearch(sPathPattern, WalkOptions{iSearchWhat, bRecurseSubDirs, bAsync, bReturnThisAndBaseDirs,
                                              lMaxResults, bHierarchicalCollection});
}

SearchFilesCollection clsSearchFiles::SearchFilePatternPathNoPattern(const std::u16string& sPathPattern,
                                                                     int32_t iSearchWhat, bool bRecurseSubDirs,
                                                                     bool bAsync, bool bReturnThisAndBaseDirs,
                                                                     int32_t lMaxResults) {
    const WalkOptions inFolder{iSearchWhat, false, bAsync, bReturnThisAndBaseDirs, lMaxResults, false};
    if (!bRecurseSubDirs) return pvSearch(sPathPattern, inFolder);
    if (m_bSearching) return {};

    SearchFilesCollection result;
    pvBegin();
    try {
        const std::u16string folder = ufu_FilePath(sPathPattern, true);
        const std::u16string filePattern = nameOf(sPathPattern);
        SearchFilesCollection folders;
        pvWalk(folder + u"*.*", WalkOptions{esfw_only_dirs, true, bAsync, false, lMaxResults, false}, folders);
        // Each walk has its own limit: a stop that only the limit caused does not end the next one.
        const auto nextWalk = [this]() {
            m_lCount = 0;
            if (m_bLimitReached) {
                m_bStop = false;
                m_bLimitReached = false;
            }
        };
        nextWalk();
        pvWalk(folder + filePattern, inFolder, result);
        for (const auto& dir : folders) {
            if (m_bStop && !m_bLimitReached) break;
            nextWalk();
            SearchFilesCollection part;
            pvWalk(oneBackSlash(dir->sPathFileName()) + filePattern, inFolder, part);
            result.insert(result.end(), part.begin(), part.end());
        }
    } catch (...) {
        pvEnd();
        throw;
    }
    pvEnd();
    return result;
}

void clsSearchFiles::pvWalk(const std::u16string& pattern, const WalkOptions& options, SearchFilesCollection& coll) {
    const std::u16string folder = folderOf(pattern);
    m_sCurrentDir = folder;
    if (options.async && m_events != nullptr) m_events->DoEvents(*this);
    if (m_bStop) return;

    platform::FindHandle find;
    platform::FindData data;
    if (!find.First(MakeLongPath(pattern), data)) return;
    const std::u16string childPattern = nameOf(pattern);
    do {
        const std::u16string& name = data.name;
        const bool isFolder = (data.attributes & esfa_FILE_ATTRIBUTE_DIRECTORY) != 0;
        bool taken = true;
        if (options.what == esfw_only_files && isFolder) taken = false;
        if (options.what == esfw_only_dirs && !isFolder) taken = false;
        if (!options.baseDirs && isDots(name)) taken = false;

        std::shared_ptr<clsSearchFilesFInfo> item;
        if (taken) {
            item = entryFrom(data, folder);
            coll.push_back(item);
            ++m_lCount;
            if (options.limit > 0 && m_lCount >= options.limit) {
                m_bStop = true;
                m_bLimitReached = true;
                break;
            }
        }
        // A linked folder (reparse point) is listed but not entered: a link back up the tree
        // would make the walk endless.
        const bool linked = (data.attributes & esfa_FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        if (options.recurse && isFolder && !linked && !isDots(name)) {
            const std::u16string below = oneBackSlash(folder) + oneBackSlash(name) + childPattern;
            if (options.tree && item) {
                pvWalk(below, options, item->oCollSubFiles);
            } else {
                pvWalk(below, options, coll);
            }
            // A stop asked for during the subfolder's walk ends this folder's walk too.
            if (m_bStop) break;
        }
        // Back from a subfolder, this folder is the one under the walk again.
        m_sCurrentDir = folder;
    } while (find.Next(data));
    find.Close();

    if (options.limit > 0 && !options.tree) {
        while (coll.size() > static_cast<size_t>(options.limit)) coll.pop_back();
    }
}

void clsSearchFiles::GetFileDate(const std::u16string& sPathFileName, int32_t iDateType, int32_t& iDay,
                                 int32_t& iMonth, int32_t& iYear, int32_t* iHour, int32_t* iMinute,
                                 int32_t* iSecond, int32_t* iMilliSeconds, int32_t* iDayOfWeek) {
    const SearchFilesCollection found = SearchPathPattern(sPathFileName);
    if (found.empty()) return;
    found[0]->GetFileDate(iDateType, iDay, iMonth, iYear, iHour, iMinute, iSecond, iMilliSeconds, iDayOfWeek);
}
