// clsFileIniEx: an INI file held in memory as rows, parsed and written by the library itself.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "text/clsFileIniEx_Row.h"

// Keeps comments, blank lines and row order; any separator and comment text; Save merges the
// rows in memory into the file as it is on disk, unless asked to overwrite it.
class clsFileIniEx {
public:
    // Joins the keys of rows outside every section and the results of GetSectionRows: text that
    // no row is expected to hold, so a key can't collide with a section of the same name.
    static constexpr const char16_t* kRowSeparator = u"\t1234\t5-6*7-8\t4321\t";
    // A file longer than this is not loaded.
    static constexpr int64_t kMaxFileBytes = 5242880;

    bool AllowTabs() const noexcept { return m_bAllowTabs; }
    void AllowTabs(bool value) noexcept { m_bAllowTabs = value; }
    const std::u16string& CommentChar() const noexcept { return m_sCommentChar; }
    void CommentChar(const std::u16string& value) { m_sCommentChar = value; }
    const std::u16string& KeyValueSepChar() const noexcept { return m_sKeyValueSepChar; }
    void KeyValueSepChar(const std::u16string& value) { m_sKeyValueSepChar = value; }

    // False for a missing file, one above kMaxFileBytes, or one that cannot be read.
    bool Load(const std::u16string& sFile);
    bool LoadFromString(const std::u16string& s);

    const std::u16string& IniFile() const noexcept { return m_sIniFile; }
    void IniFile(const std::u16string& value) { m_sIniFile = value; }

    // These four raise "Please load the file first!" while nothing is loaded.
    std::u16string GetString(const std::u16string& sAppName, const std::u16string& sKeyName,
                             const std::u16string& sDefault = std::u16string()) const;
    bool RemoveSection(const std::u16string& sSection);
    bool RemoveRowKeyVal(const std::u16string& sAppName, const std::u16string& sKeyName);
    // Works without a load, so a file can be built from nothing.
    void AddString(const std::u16string& sAppName, const std::u16string& sKeyName, const std::u16string& sKeyVal);
    void AddBool(const std::u16string& sAppName, const std::u16string& sKeyName, bool bKeyVal);
    bool GetBool(const std::u16string& sAppName, const std::u16string& sKeyName, bool bDefault = false) const;
    std::u16string GetSectionRowKey(const std::vector<std::u16string>& vRows, int32_t idx) const;
    std::u16string GetSectionRowValue(const std::vector<std::u16string>& vRows, int32_t idx) const;
    // The key rows of a section as written ("" for the rows before any section).
    void GetSectionRows(const std::u16string& sSecName, std::vector<std::u16string>& vRows) const;
    // Element 0 is always empty: it stands for the rows before the first section.
    void GetSectionNames(std::vector<std::u16string>& vRows) const;

    // Raises "I need a file!" when no file is named. With bUpdate the file on disk is loaded and
    // the keys in memory are laid over it, so its comments and order survive.
    bool Save(const std::u16string& sFile = std::u16string(), const std::u16string& sLineSep = u"\r\n",
              bool bUpdate = true, bool bSaveEmptyKeyVal = true);
    // Writes the rows in memory as they are.
    bool pvSave(const std::u16string& sFile = std::u16string(), const std::u16string& sLineSep = u"\r\n",
                bool bSaveEmptyKeyVal = true);

    // The rows as loaded: absent until something is loaded or added.
    const clsFileIniEx_RowCollection* Rows() const noexcept { return m_oRows.get(); }

private:
    void pvParse(const std::u16string& text);
    void pvAddRawRow(const std::u16string& section, const std::u16string& line);
    void pvAddKeyRow(const std::u16string& section, const std::u16string& key, const std::u16string& value,
                     const std::u16string& line);
    std::shared_ptr<clsFileIniEx_Row> pvFindSection(const std::u16string& section) const;
    std::shared_ptr<clsFileIniEx_Row> pvFindRow(const std::u16string& section, const std::u16string& key) const;
    std::shared_ptr<clsFileIniEx_Row> pvFindOrMakeSection(const std::u16string& section);
    void pvCheckLoaded() const;
    std::u16string pvApplyTabsRule(const std::u16string& value) const;

    std::u16string m_sIniFile;
    std::shared_ptr<clsFileIniEx_RowCollection> m_oRows;
    bool m_bAllowTabs = false;
    std::u16string m_sCommentChar;
    std::u16string m_sKeyValueSepChar = u"=";
};
