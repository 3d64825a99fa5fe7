#include "text/clsSearchFilesFInfo.h"

#include "common/CtlError.h"
#include "platform/FileSystem.h"
#include "text/clsSearchFiles.h"

namespace {

// The rules of ufu_NoBackSlash and ufu_OneBackSlash, kept here so the walker does not depend on
// the file utilities built on top of it.
std::u16string noBackSlash(const std::u16string& s) {
    if (s.find(u'/') != std::u16string::npos) throw CtlError(u"ufu_NoBackSlash", u"Not a local path");
    std::u16string out = s;
    while (!out.empty() && out.back() == u'\\') out.pop_back();
    return out;
}

std::u16string oneBackSlash(const std::u16string& s) {
    if (s.find(u'/') != std::u16string::npos) throw CtlError(u"ufu_OneBackSlash", u"Not a local path");
    std::u16string out = noBackSlash(s);
    if (!out.empty()) out += u'\\';
    return out;
}

uint64_t joinHalves(int32_t low, int32_t high) noexcept {
    return (static_cast<uint64_t>(static_cast<uint32_t>(high)) << 32) | static_cast<uint32_t>(low);
}

}  // namespace

std::shared_ptr<clsSearchFilesFInfo> clsSearchFilesFInfo::Clone(std::shared_ptr<clsSearchFilesFInfo> oToFill) const {
    if (!oToFill) oToFill = std::make_shared<clsSearchFilesFInfo>();
    if (oToFill.get() == this) return oToFill;
    SearchFilesCollection children;
    children.reserve(oCollSubFiles.size());
    for (const auto& child : oCollSubFiles) {
        if (child) children.push_back(child->Clone());
    }
    *oToFill = *this;
    oToFill->oCollSubFiles = std::move(children);
    return oToFill;
}

std::u16string clsSearchFilesFInfo::sPathFileName() const { return sFilePathSlash() + sFileName; }

bool clsSearchFilesFInfo::IsDirectory() const noexcept { return (lAttributes & esfa_FILE_ATTRIBUTE_DIRECTORY) != 0; }
bool clsSearchFilesFInfo::IsFile() const noexcept { return !IsDirectory(); }
bool clsSearchFilesFInfo::IsReadOnly() const noexcept { return (lAttributes & esfa_FILE_ATTRIBUTE_READONLY) != 0; }
bool clsSearchFilesFInfo::IsHidden() const noexcept { return (lAttributes & esfa_FILE_ATTRIBUTE_HIDDEN) != 0; }
bool clsSearchFilesFInfo::IsSystem() const noexcept { return (lAttributes & esfa_FILE_ATTRIBUTE_SYSTEM) != 0; }
bool clsSearchFilesFInfo::IsCompressed() const noexcept {
    return (lAttributes & esfa_FILE_ATTRIBUTE_COMPRESSED) != 0;
}
bool clsSearchFilesFInfo::IsEncrypted() const noexcept { return (lAttributes & esfa_FILE_ATTRIBUTE_ENCRYPTED) != 0; }

bool clsSearchFilesFInfo::FileTime(int32_t iDateType, uint64_t& value) const noexcept {
    switch (iDateType) {
    case esfid_creation: value = joinHalves(dwLowDateTimeCreation, dwHighDateTimeCreation); return true;
    case esfid_lastaccess: value = joinHalves(dwLowDateTimeLastAccess, dwHighDateTimeLastAccess); return true;
    case esfid_lastwrite: value = joinHalves(dwLowDateTimeLastWrite, dwHighDateTimeLastWrite); return true;
    default: return false;
    }
}

void clsSearchFilesFInfo::pvFillDate(uint64_t fileTime, int32_t& iDay, int32_t& iMonth, int32_t& iYear,
                                     int32_t* iHour, int32_t* iMinute, int32_t* iSecond, int32_t* iMilliSeconds,
                                     int32_t* iDayOfWeek) const {
    platform::SystemTime st;
    if (!platform::ToSystemTime(fileTime, st)) return;
    iYear = st.year;
    iMonth = st.month;
    iDay = st.day;
    if (iDayOfWeek) *iDayOfWeek = st.dayOfWeek;
    if (iHour) *iHour = st.hour;
    if (iMinute) *iMinute = st.minute;
    if (iSecond) *iSecond = st.second;
    if (iMilliSeconds) *iMilliSeconds = st.milliseconds;
}

void clsSearchFilesFInfo::GetFileDate(int32_t iDateType, int32_t& iDay, int32_t& iMonth, int32_t& iYear,
                                      int32_t* iHour, int32_t* iMinute, int32_t* iSecond, int32_t* iMilliSeconds,
                                      int32_t* iDayOfWeek) const {
    uint64_t utc = 0;
    uint64_t local = 0;
    if (!FileTime(iDateType, utc) || !platform::ToLocalFileTime(utc, local)) return;
    pvFillDate(local, iDay, iMonth, iYear, iHour, iMinute, iSecond, iMilliSeconds, iDayOfWeek);
}

void clsSearchFilesFInfo::GetUTCFileDate(int32_t iDateType, int32_t& iDay, int32_t& iMonth, int32_t& iYear,
                                         int32_t* iHour, int32_t* iMinute, int32_t* iSecond,
                                         int32_t* iMilliSeconds, int32_t* iDayOfWeek) const {
    uint64_t utc = 0;
    if (!FileTime(iDateType, utc)) return;
    pvFillDate(utc, iDay, iMonth, iYear, iHour, iMinute, iSecond, iMilliSeconds, iDayOfWeek);
}

bool clsSearchFilesFInfo::LoadFromFileOrDir(const std::u16string& sFile, bool bRecurseIfDirectory) {
    clsSearchFiles search;
    const SearchFilesCollection found = search.SearchPathPattern(sFile, esfw_all, false, false, false, -1, false);
    if (found.size() != 1) return false;
    // Keep the found entry's own copy of the fields, then this object becomes that copy.
    const std::shared_ptr<clsSearchFilesFInfo> item = found[0];
    *this = *item->Clone();
    if (bRecurseIfDirectory && IsDirectory()) {
        clsSearchFiles below;
        // The recursive search's flat list: everything below the folder, each entry on its own.
        oCollSubFiles = below.SearchPathPattern(oneBackSlash(sPathFileName()) + u"*.*", esfw_all, true, false, false,
                                                -1, false);
    }
    return true;
}

std::u16string clsSearchFilesFInfo::sFilePathNoSlash() const { return noBackSlash(m_sFilePath); }

std::u16string clsSearchFilesFInfo::sFilePathSlash() const { return oneBackSlash(m_sFilePath); }
