// clsSearchFilesFInfo, one entry a file search found, and SearchFilesCollection, the search's result.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class clsSearchFilesFInfo;

// Items are shared so that a tree's children and a caller's copy of a list can point at one entry.
using SearchFilesCollection = std::vector<std::shared_ptr<clsSearchFilesFInfo>>;

enum eSearchFilesFAttrs : int32_t {
    esfa_FILE_ATTRIBUTE_READONLY = 1,
    esfa_FILE_ATTRIBUTE_HIDDEN = 2,
    esfa_FILE_ATTRIBUTE_SYSTEM = 4,
    esfa_FILE_ATTRIBUTE_DIRECTORY = 16,
    esfa_FILE_ATTRIBUTE_ARCHIVE = 32,
    esfa_FILE_ATTRIBUTE_DEVICE = 64,
    esfa_FILE_ATTRIBUTE_NORMAL = 128,
    esfa_FILE_ATTRIBUTE_TEMPORARY = 256,
    esfa_FILE_ATTRIBUTE_SPARSE_FILE = 512,
    esfa_FILE_ATTRIBUTE_REPARSE_POINT = 1024,
    esfa_FILE_ATTRIBUTE_COMPRESSED = 2048,
    esfa_FILE_ATTRIBUTE_OFFLINE = 4096,
    esfa_FILE_ATTRIBUTE_NOT_CONTENT_INDEXED = 8192,
    esfa_FILE_ATTRIBUTE_ENCRYPTED = 16384,
};

enum eSearchFileFInfoDate : int32_t {
    esfid_creation = 0,
    esfid_lastaccess = 1,
    esfid_lastwrite = 2,
};

class clsSearchFilesFInfo {
public:
    std::u16string sFileName;
    int32_t lAttributes = 0;
    int64_t dFileSize = 0;
    int32_t dwLowDateTimeCreation = 0;
    int32_t dwHighDateTimeCreation = 0;
    int32_t dwLowDateTimeLastAccess = 0;
    int32_t dwHighDateTimeLastAccess = 0;
    int32_t dwLowDateTimeLastWrite = 0;
    int32_t dwHighDateTimeLastWrite = 0;
    SearchFilesCollection oCollSubFiles;

    // Copies every field into oToFill (a new entry when it is null), children deep-copied.
    std::shared_ptr<clsSearchFilesFInfo> Clone(std::shared_ptr<clsSearchFilesFInfo> oToFill = nullptr) const;
    std::u16string sPathFileName() const;
    bool IsDirectory() const noexcept;
    bool IsFile() const noexcept;
    bool IsReadOnly() const noexcept;
    bool IsHidden() const noexcept;
    bool IsSystem() const noexcept;
    bool IsCompressed() const noexcept;
    bool IsEncrypted() const noexcept;
    // The chosen time in local time; the outputs stay as they were for an unknown iDateType or a
    // time the system cannot convert.
    void GetFileDate(int32_t iDateType, int32_t& iDay, int32_t& iMonth, int32_t& iYear, int32_t* iHour = nullptr,
                     int32_t* iMinute = nullptr, int32_t* iSecond = nullptr, int32_t* iMilliSeconds = nullptr,
                     int32_t* iDayOfWeek = nullptr) const;
    // The same in UTC.
    void GetUTCFileDate(int32_t iDateType, int32_t& iDay, int32_t& iMonth, int32_t& iYear, int32_t* iHour = nullptr,
                        int32_t* iMinute = nullptr, int32_t* iSecond = nullptr, int32_t* iMilliSeconds = nullptr,
                        int32_t* iDayOfWeek = nullptr) const;
    // True when sFile names exactly one entry, whose fields then fill this one; with
    // bRecurseIfDirectory a folder's oCollSubFiles gets everything below it as one flat list.
    bool LoadFromFileOrDir(const std::u16string& sFile, bool bRecurseIfDirectory = false);

    void sFilePath(const std::u16string& sPath) { m_sFilePath = sPath; }
    std::u16string sFilePathNoSlash() const;
    std::u16string sFilePathSlash() const;

    // The 64-bit file time selected by iDateType; false for another value.
    bool FileTime(int32_t iDateType, uint64_t& value) const noexcept;

private:
    void pvFillDate(uint64_t fileTime, int32_t& iDay, int32_t& iMonth, int32_t& iYear, int32_t* iHour,
                    int32_t* iMinute, int32_t* iSecond, int32_t* iMilliSeconds, int32_t* iDayOfWeek) const;

    std::u16string m_sFilePath;
};
