// clsFileIniEx_Row: one row of an INI file held by clsFileIniEx (a key, a comment, a blank line or a section).
#pragma once

#include <memory>
#include <string>

#include "common/KeyedCollection.h"

class clsFileIniEx;
class clsFileIniEx_Row;

// Rows in file order, keyed by their lower-case trimmed key where they have one.
using clsFileIniEx_RowCollection = KeyedCollection<std::shared_ptr<clsFileIniEx_Row>>;

class clsFileIniEx_Row {
public:
    // The line as it goes to the file.
    std::u16string sRow;
    // A section row's own rows; absent for every other row.
    std::shared_ptr<clsFileIniEx_RowCollection> oRows;
    // Key and value as given, untrimmed; the key is empty for a section, comment or blank row.
    std::u16string sKey;
    std::u16string sValue;
    // The section that holds the row; a section row's own name.
    std::u16string sSection;

    // Copies the fields into oRow (a new row when it is absent) and returns it. oRows is shared,
    // not copied: both rows then name the same section content.
    std::shared_ptr<clsFileIniEx_Row> Clone(std::shared_ptr<clsFileIniEx_Row> oRow = nullptr) const;

private:
    // Rows are made only by the INI class and by Clone.
    clsFileIniEx_Row() = default;
    static std::shared_ptr<clsFileIniEx_Row> Create();
    friend class clsFileIniEx;
};
