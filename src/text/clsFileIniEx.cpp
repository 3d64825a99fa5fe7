#include "text/clsFileIniEx.h"

#include <utility>

#include "common/CaseFold.h"
#include "common/CtlError.h"
#include "text/UniFileUtils.h"
#include "text/UniStringCore.h"
#include "text/cStringBuilder2.h"

namespace {

constexpr const char16_t* kErrorSource = u"TarnwickControls30.clsFileIniEx";
constexpr size_t kNotFound = std::u16string::npos;

bool isBlank(char16_t c) { return c == u' ' || c == u'\t'; }

// Blanks and tabs off both ends.
std::u16string pvTrimBlanks(const std::u16string& text) {
    size_t first = 0;
    size_t last = text.size();
    while (first < last && isBlank(text[first])) ++first;
    while (last > first && isBlank(text[last - 1])) --last;
    return text.substr(first, last - first);
}

std::u16string keyOf(const std::u16string& text) { return FoldCase(pvTrimBlanks(text)); }

bool startsWith(const std::u16string& text, const std::u16string& prefix) {
    return text.size() >= prefix.size() && text.compare(0, prefix.size(), prefix) == 0;
}

// The host's Split with no limit: an empty text gives no elements at all.
std::vector<std::u16string> splitAll(const std::u16string& text, const std::u16string& separator) {
    std::vector<std::u16string> parts;
    if (text.empty()) return parts;
    size_t start = 0;
    for (;;) {
        const size_t hit = text.find(separator, start);
        if (hit == kNotFound) {
            parts.push_back(text.substr(start));
            return parts;
        }
        parts.push_back(text.substr(start, hit - start));
        start = hit + separator.size();
    }
}

const std::u16string& elementAt(const std::vector<std::u16string>& rows, int32_t idx) {
    if (idx < 0 || static_cast<size_t>(idx) >= rows.size()) {
        throw CtlError(kErrorSource, u"Subscript out of range", CtlError::kSubscriptOutOfRange);
    }
    return rows[static_cast<size_t>(idx)];
}

}  // namespace

// ---- Loading and parsing ----

bool clsFileIniEx::Load(const std::u16string& sFile) {
    try {
        m_sIniFile = sFile;
        m_oRows.reset();
        if (ufu_FileLen(sFile) > kMaxFileBytes) return false;
        std::u16string text;
        if (!ufu_TextFileToString(sFile, text, false)) return false;
        pvParse(text);
        return m_oRows != nullptr;
    } catch (...) {
        m_oRows.reset();
        return false;
    }
}

bool clsFileIniEx::LoadFromString(const std::u16string& s) {
    try {
        m_sIniFile.clear();
        m_oRows.reset();
        pvParse(s);
        return m_oRows != nullptr;
    } catch (...) {
        m_oRows.reset();
        return false;
    }
}

void clsFileIniEx::pvParse(const std::u16string& text) {
    std::u16string lineSeparator;
    std::u16string withEnd;
    const std::u16string* source = &text;
    if (text.find(u"\r\n") != kNotFound) {
        lineSeparator = u"\r\n";
    } else if (text.find(u'\n') != kNotFound) {
        lineSeparator = u"\n";
    } else if (text.find(u'\r') != kNotFound) {
        lineSeparator = u"\r";
    } else {
        lineSeparator = u"\r\n";
        withEnd = text + lineSeparator;
        source = &withEnd;
    }

    m_oRows = std::make_shared<clsFileIniEx_RowCollection>();
    std::u16string section;
    const std::u16string& separator = m_sKeyValueSepChar;
    size_t start = 0;
    for (bool last = false; !last;) {
        size_t end = source->find(lineSeparator, start);
        if (end == kNotFound) {
            end = source->size();
            last = true;
        }
        const std::u16string line = source->substr(start, end - start);
        start = end + lineSeparator.size();

        const std::u16string trimmed = pvTrimBlanks(line);
        if (!m_sCommentChar.empty() && startsWith(trimmed, m_sCommentChar)) {
            pvAddRawRow(section, line);
            continue;
        }
        // The separator wins over the brackets, so "[a=b]" is a key row. The key is cut short by
        // the separator's extra characters: files written with longer separators rely on it.
        const size_t found = separator.empty() ? kNotFound : line.find(separator);
        if (found != kNotFound && found >= 1) {
            // One-based position found + 1; the key is that many characters less the separator's length.
            const size_t keyLength = found + 1 > separator.size() ? found + 1 - separator.size() : 0;
            const std::u16string key = line.substr(0, keyLength);
            const std::u16string value = line.substr(found + separator.size());
            pvAddKeyRow(section, key, value, line);
            continue;
        }
        if (!trimmed.empty() && trimmed[0] == u'[') {
            const size_t close = trimmed.find(u']');
            if (close != kNotFound && close + 1 >= 3) {
                section = trimmed.substr(1, close - 1);
                continue;
            }
        }
        pvAddRawRow(section, line);
    }
}

void clsFileIniEx::pvAddRawRow(const std::u16string& section, const std::u16string& line) {
    auto row = clsFileIniEx_Row::Create();
    row->sSection = section;
    row->sRow = line;
    if (pvTrimBlanks(section).empty()) {
        m_oRows->Add(std::move(row));
    } else {
        pvFindOrMakeSection(section)->oRows->Add(std::move(row));
    }
}

void clsFileIniEx::pvAddKeyRow(const std::u16string& section, const std::u16string& key, const std::u16string& value,
                               const std::u16string& line) {
    std::shared_ptr<clsFileIniEx_Row> row = pvFindRow(section, key);
    const bool isNew = row == nullptr;
    if (isNew) row = clsFileIniEx_Row::Create();
    row->sKey = key;
    row->sValue = value;
    row->sSection = section;
    row->sRow = line.empty() ? key + m_sKeyValueSepChar + value : line;
    if (!isNew) return;  // a repeated key overwrites the first one in its place
    if (pvTrimBlanks(section).empty()) {
        m_oRows->Add(std::move(row), keyOf(key) + kRowSeparator);
    } else {
        pvFindOrMakeSection(section)->oRows->Add(std::move(row), keyOf(key));
    }
}

std::shared_ptr<clsFileIniEx_Row> clsFileIniEx::pvFindOrMakeSection(const std::u16string& section) {
    std::shared_ptr<clsFileIniEx_Row> found = pvFindSection(section);
    if (found) return found;
    auto row = clsFileIniEx_Row::Create();
    row->sSection = section;
    row->sRow = u"[" + section + u"]";
    row->oRows = std::make_shared<clsFileIniEx_RowCollection>();
    m_oRows->Add(row, keyOf(section));
    return row;
}

std::shared_ptr<clsFileIniEx_Row> clsFileIniEx::pvFindSection(const std::u16string& section) const {
    if (!m_oRows) return nullptr;
    const std::u16string key = keyOf(section);
    if (key.empty()) return nullptr;
    const auto* found = m_oRows->Find(key);
    return found ? *found : nullptr;
}

std::shared_ptr<clsFileIniEx_Row> clsFileIniEx::pvFindRow(const std::u16string& section,
                                                          const std::u16string& key) const {
    if (!m_oRows) return nullptr;
    if (pvTrimBlanks(section).empty()) {
        const auto* found = m_oRows->Find(keyOf(key) + kRowSeparator);
        return found ? *found : nullptr;
    }
    const std::shared_ptr<clsFileIniEx_Row> sectionRow = pvFindSection(section);
    if (!sectionRow || !sectionRow->oRows) return nullptr;
    const std::u16string rowKey = keyOf(key);
    if (rowKey.empty()) return nullptr;
    const auto* found = sectionRow->oRows->Find(rowKey);
    return found ? *found : nullptr;
}

// ---- Reading ----

void clsFileIniEx::pvCheckLoaded() const {
    if (!m_oRows) throw CtlError(kErrorSource, u"Please load the file first!");
}

std::u16string clsFileIniEx::pvApplyTabsRule(const std::u16string& value) const {
    return m_bAllowTabs ? value : pvTrimBlanks(value);
}

std::u16string clsFileIniEx::GetString(const std::u16string& sAppName, const std::u16string& sKeyName,
                                       const std::u16string& sDefault) const {
    pvCheckLoaded();
    const std::shared_ptr<clsFileIniEx_Row> row = pvFindRow(sAppName, sKeyName);
    return row ? pvApplyTabsRule(row->sValue) : sDefault;
}

bool clsFileIniEx::GetBool(const std::u16string& sAppName, const std::u16string& sKeyName, bool bDefault) const {
    return pvTrimBlanks(GetString(sAppName, sKeyName, bDefault ? u"1" : u"0")) == u"1";
}

void clsFileIniEx::GetSectionRows(const std::u16string& sSecName, std::vector<std::u16string>& vRows) const {
    pvCheckLoaded();
    vRows.clear();
    const clsFileIniEx_RowCollection* scope = m_oRows.get();
    if (!sSecName.empty()) {
        const std::shared_ptr<clsFileIniEx_Row> section = pvFindSection(sSecName);
        if (!section || !section->oRows) {
            vRows.assign(1, std::u16string());
            return;
        }
        scope = section->oRows.get();
    }
    std::u16string joined;
    for (size_t i = 0; i < scope->Count(); ++i) {
        const clsFileIniEx_Row& row = *(*scope)[i];
        if (row.sKey.empty()) continue;
        joined += row.sRow;
        joined += kRowSeparator;
    }
    const std::u16string separator = kRowSeparator;
    if (!joined.empty()) joined.resize(joined.size() - separator.size());
    vRows = splitAll(joined, separator);
}

void clsFileIniEx::GetSectionNames(std::vector<std::u16string>& vRows) const {
    pvCheckLoaded();
    vRows.assign(1, std::u16string());
    for (size_t i = 0; i < m_oRows->Count(); ++i) {
        const clsFileIniEx_Row& row = *(*m_oRows)[i];
        if (!row.sSection.empty()) vRows.push_back(row.sSection);
    }
}

std::u16string clsFileIniEx::GetSectionRowKey(const std::vector<std::u16string>& vRows, int32_t idx) const {
    const std::u16string& row = elementAt(vRows, idx);
    const size_t found = m_sKeyValueSepChar.empty() ? kNotFound : row.find(m_sKeyValueSepChar);
    if (row.empty() || found == kNotFound || found + 1 <= m_sKeyValueSepChar.size()) return {};
    return pvApplyTabsRule(row.substr(0, found + 1 - m_sKeyValueSepChar.size()));
}

std::u16string clsFileIniEx::GetSectionRowValue(const std::vector<std::u16string>& vRows, int32_t idx) const {
    const std::u16string& row = elementAt(vRows, idx);
    const size_t found = m_sKeyValueSepChar.empty() ? kNotFound : row.find(m_sKeyValueSepChar);
    if (row.empty() || found == kNotFound || found + 1 <= m_sKeyValueSepChar.size()) return {};
    const size_t valueStart = found + m_sKeyValueSepChar.size();
    return pvApplyTabsRule(valueStart < row.size() ? row.substr(valueStart) : std::u16string());
}

// ---- Changing ----

void clsFileIniEx::AddString(const std::u16string& sAppName, const std::u16string& sKeyName,
                             const std::u16string& sKeyVal) {
    if (!m_oRows) m_oRows = std::make_shared<clsFileIniEx_RowCollection>();
    if (m_bAllowTabs) {
        pvAddKeyRow(sAppName, sKeyName, sKeyVal, std::u16string());
    } else {
        pvAddKeyRow(pvTrimBlanks(sAppName), pvTrimBlanks(sKeyName), pvTrimBlanks(sKeyVal), std::u16string());
    }
}

void clsFileIniEx::AddBool(const std::u16string& sAppName, const std::u16string& sKeyName, bool bKeyVal) {
    AddString(sAppName, sKeyName, bKeyVal ? u"1" : u"0");
}

bool clsFileIniEx::RemoveSection(const std::u16string& sSection) {
    const std::u16string name = keyOf(sSection);
    if (name.empty() || !m_oRows) return false;
    bool removed = false;
    size_t index = 0;
    while (index < m_oRows->Count()) {
        if (keyOf((*m_oRows)[index]->sSection) == name) {
            m_oRows->RemoveAt(index);
            removed = true;
        } else {
            ++index;
        }
    }
    return removed;
}

bool clsFileIniEx::RemoveRowKeyVal(const std::u16string& sAppName, const std::u16string& sKeyName) {
    const std::u16string key = keyOf(sKeyName);
    // An empty key matches the first row without one: a comment or blank row, or at the top level
    // a section row, which goes with everything it holds.
    if (!m_oRows) return false;
    clsFileIniEx_RowCollection* scope = m_oRows.get();
    if (!pvTrimBlanks(sAppName).empty()) {
        const std::shared_ptr<clsFileIniEx_Row> section = pvFindSection(sAppName);
        if (!section || !section->oRows) return false;
        scope = section->oRows.get();
    }
    for (size_t i = 0; i < scope->Count(); ++i) {
        if (keyOf((*scope)[i]->sKey) == key) {
            scope->RemoveAt(i);
            return true;
        }
    }
    return false;
}

// ---- Saving ----

bool clsFileIniEx::Save(const std::u16string& sFile, const std::u16string& sLineSep, bool bUpdate,
                        bool bSaveEmptyKeyVal) {
    clsFileIniEx onDisk;
    onDisk.m_bAllowTabs = m_bAllowTabs;
    onDisk.m_sCommentChar = m_sCommentChar;
    onDisk.m_sKeyValueSepChar = m_sKeyValueSepChar;

    if (!pvTrimBlanks(sFile).empty()) m_sIniFile = sFile;
    if (m_sIniFile.empty()) throw CtlError(kErrorSource, u"I need a file!");

    if (!bUpdate || !ufu_FileExist(m_sIniFile)) return pvSave(std::u16string(), sLineSep, bSaveEmptyKeyVal);

    // A file that can't be loaded (too long, unreadable) is left alone rather than overwritten
    // with the keys in memory alone.
    if (!onDisk.Load(m_sIniFile)) return false;
    if (m_oRows) {
        const auto overlay = [&onDisk](const clsFileIniEx_Row& row) {
            if (!row.sKey.empty()) onDisk.AddString(row.sSection, row.sKey, row.sValue);
        };
        for (size_t i = 0; i < m_oRows->Count(); ++i) {
            const clsFileIniEx_Row& row = *(*m_oRows)[i];
            overlay(row);
            if (row.oRows) {
                for (size_t k = 0; k < row.oRows->Count(); ++k) overlay(*(*row.oRows)[k]);
            }
        }
    }
    return onDisk.pvSave(m_sIniFile, sLineSep, bSaveEmptyKeyVal);
}

bool clsFileIniEx::pvSave(const std::u16string& sFile, const std::u16string& sLineSep, bool bSaveEmptyKeyVal) {
    if (!pvTrimBlanks(sFile).empty()) m_sIniFile = sFile;
    if (!m_oRows) return ufu_StringToTextFile(m_sIniFile, std::u16string(), fe_ANSI, false);

    cStringBuilder2 text;
    const auto write = [&](const clsFileIniEx_Row& row) {
        if (!bSaveEmptyKeyVal && !row.sKey.empty() && row.sValue.empty()) return;
        text.Append(row.sRow);
        text.Append(sLineSep);
    };
    for (size_t i = 0; i < m_oRows->Count(); ++i) {
        const clsFileIniEx_Row& row = *(*m_oRows)[i];
        write(row);
        if (row.oRows) {
            for (size_t k = 0; k < row.oRows->Count(); ++k) write(*(*row.oRows)[k]);
        }
    }
    std::u16string whole = text.ToString();
    if (!sLineSep.empty() && whole.size() >= sLineSep.size() &&
        whole.compare(whole.size() - sLineSep.size(), sLineSep.size(), sLineSep) == 0) {
        whole.resize(whole.size() - sLineSep.size());
    }
    const int32_t encoding = CanUseAnsiForString(whole) ? fe_ANSI : fe_UTF16LE;
    return ufu_StringToTextFile(m_sIniFile, whole, encoding, false);
}
