#include "text/clsFileIni.h"

#include "common/CtlError.h"
#include "platform/PrivateProfile.h"
#include "text/UniFileUtils.h"
#include "text/UniStringCore.h"
#include "text/WindowsVersion.h"
#include "text/modLongPath.h"

namespace {

constexpr const char16_t* kErrorSource = u"TarnwickControls30.clsFileIni";

// The profile lists: entries each ending in character 0, split with no limit, so a list that
// isn't empty ends with an empty element and an empty one gives no elements.
std::vector<std::u16string> splitAtZero(const std::u16string& list) {
    std::vector<std::u16string> parts;
    if (list.empty()) return parts;
    size_t start = 0;
    for (;;) {
        const size_t hit = list.find(u'\0', start);
        if (hit == std::u16string::npos) {
            parts.push_back(list.substr(start));
            return parts;
        }
        parts.push_back(list.substr(start, hit - start));
        start = hit + 1;
    }
}

// A row splits at its first "=" when that isn't the first character; positions are 16-bit.
bool splitRow(const std::vector<std::u16string>& rows, int16_t idx, std::u16string& key, std::u16string& value) {
    if (idx < 0 || static_cast<size_t>(idx) >= rows.size()) {
        throw CtlError(kErrorSource, u"Subscript out of range", CtlError::kSubscriptOutOfRange);
    }
    const std::u16string& row = rows[static_cast<size_t>(idx)];
    const size_t equals = row.find(u'=');
    if (row.empty() || equals == std::u16string::npos || equals < 1) return false;
    if (equals + 1 > 32767) throw CtlError(kErrorSource, u"Overflow", CtlError::kOverflow);
    key = row.substr(0, equals);
    value = row.substr(equals + 1);
    return true;
}

}  // namespace

clsFileIni::clsFileIni()
    : m_bUnicodeSystem(IsUnicodeSystem()),
      m_lStringBuffer(m_bUnicodeSystem ? 10240 : 1024),
      m_lSectionBuffer(m_bUnicodeSystem ? 640000 : 32000) {}

void clsFileIni::pvCheckFile() const {
    if (m_sIniFile.empty()) throw CtlError(kErrorSource, u"I need a file!");
}

std::u16string clsFileIni::ReadString(const std::u16string& sAppName, const std::u16string& sKeyName,
                                      const std::u16string& sDefault) const {
    pvCheckFile();
    return platform::ProfileGetString(MakeLongPath(m_sIniFile), sAppName, sKeyName, sDefault,
                                      static_cast<size_t>(m_lStringBuffer));
}

void clsFileIni::WriteString(const std::u16string& sAppName, const std::u16string& sKeyName,
                             const std::u16string& sKeyVal) {
    pvCheckFile();
    // The key name is left out of the test: only section and value decide the file's encoding.
    if (!CanUseAnsiForString(sAppName + sKeyVal) && m_bUnicodeSystem) {
        if (ufu_FileExist(m_sIniFile)) {
            if (ufu_GetFileEncoding(m_sIniFile) == fe_ANSI) {
                std::u16string content;
                ufu_TextFileToString(m_sIniFile, content, true);
                ufu_StringToTextFile(m_sIniFile, content, fe_UTF16LE, true);
            }
        } else {
            ufu_StringToTextFile(m_sIniFile, u"\r\n", fe_UTF16LE, true);
        }
    }
    platform::ProfileWriteString(MakeLongPath(m_sIniFile), sAppName, sKeyName, sKeyVal);
}

void clsFileIni::WriteBool(const std::u16string& sAppName, const std::u16string& sKeyName, bool bKeyVal) {
    WriteString(sAppName, sKeyName, bKeyVal ? u"1" : u"0");
}

bool clsFileIni::ReadBool(const std::u16string& sAppName, const std::u16string& sKeyName, bool bDefault) const {
    return ReadString(sAppName, sKeyName, bDefault ? u"1" : u"0") == u"1";
}

std::u16string clsFileIni::GetSectionRowKey(const std::vector<std::u16string>& vRows, int16_t idx) const {
    pvCheckFile();
    std::u16string key;
    std::u16string value;
    return splitRow(vRows, idx, key, value) ? key : std::u16string();
}

std::u16string clsFileIni::GetSectionRowValue(const std::vector<std::u16string>& vRows, int16_t idx) const {
    pvCheckFile();
    std::u16string key;
    std::u16string value;
    return splitRow(vRows, idx, key, value) ? value : std::u16string();
}

void clsFileIni::GetSectionRows(const std::u16string& sSecName, std::vector<std::u16string>& vRows) const {
    pvCheckFile();
    vRows.clear();
    if (sSecName.empty()) return;
    vRows = splitAtZero(platform::ProfileGetSection(MakeLongPath(m_sIniFile), sSecName,
                                                    static_cast<size_t>(m_lSectionBuffer)));
}

void clsFileIni::GetSectionNames(std::vector<std::u16string>& vRows) const {
    pvCheckFile();
    vRows = splitAtZero(platform::ProfileGetSectionNames(MakeLongPath(m_sIniFile),
                                                         static_cast<size_t>(m_lSectionBuffer)));
}
