// clsFileIni: an INI file read and written key by key through the platform's private-profile calls.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Each operation is one profile call on the file. The platform narrows text to the ANSI code page
// unless the file begins with the UTF-16LE mark, so the first write of text that needs more turns
// the file into UTF-16LE.
class clsFileIni {
public:
    clsFileIni();

    const std::u16string& IniFile() const noexcept { return m_sIniFile; }
    void IniFile(const std::u16string& value) { m_sIniFile = value; }

    // Every member below raises "I need a file!" while IniFile is empty. A key that is present
    // with an empty value reads as empty, not as the default.
    std::u16string ReadString(const std::u16string& sAppName, const std::u16string& sKeyName,
                              const std::u16string& sDefault = std::u16string()) const;
    void WriteString(const std::u16string& sAppName, const std::u16string& sKeyName, const std::u16string& sKeyVal);
    // Stored as "1" and "0"; only exactly "1" reads as true.
    void WriteBool(const std::u16string& sAppName, const std::u16string& sKeyName, bool bKeyVal);
    bool ReadBool(const std::u16string& sAppName, const std::u16string& sKeyName, bool bDefault = false) const;
    std::u16string GetSectionRowKey(const std::vector<std::u16string>& vRows, int16_t idx) const;
    std::u16string GetSectionRowValue(const std::vector<std::u16string>& vRows, int16_t idx) const;
    // The "key=value" lines of a section; the list ends with an empty element.
    void GetSectionRows(const std::u16string& sSecName, std::vector<std::u16string>& vRows) const;
    void GetSectionNames(std::vector<std::u16string>& vRows) const;

private:
    void pvCheckFile() const;

    std::u16string m_sIniFile;
    bool m_bUnicodeSystem = false;
    int32_t m_lStringBuffer = 0;
    int32_t m_lSectionBuffer = 0;
};
