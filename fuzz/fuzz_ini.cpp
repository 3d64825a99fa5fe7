// Parses arbitrary text as an INI file and checks that every key row the lists report can be
// looked up again by the key that its row gives.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "text/clsFileIniEx.h"

namespace {

const char16_t* const kComments[] = {u"", u";", u"#", u"//"};
const char16_t* const kSeparators[] = {u"=", u":", u"::", u" = ", u"->"};

bool isBlank(char16_t c) { return c == u' ' || c == u'\t'; }

bool trimsToEmpty(const std::u16string& text) {
    for (const char16_t c : text) {
        if (!isBlank(c)) return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const uint8_t config = data[0];
    std::u16string text;
    if (config & 0x80) {
        // Whole UTF-16 code units, surrogates and character 0 included.
        for (size_t i = 1; i + 1 < size; i += 2) text += static_cast<char16_t>(data[i] | (data[i + 1] << 8));
    } else {
        // One character per byte, so line ends and separators come up often.
        for (size_t i = 1; i < size; ++i) text += static_cast<char16_t>(data[i]);
    }

    clsFileIniEx ini;
    ini.CommentChar(kComments[config & 3]);
    ini.KeyValueSepChar(kSeparators[((config >> 2) & 7) % 5]);
    ini.AllowTabs((config & 0x20) != 0);
    if (!ini.LoadFromString(text)) std::abort();

    // Rows that hold the list separator itself would be split apart by the list.
    const bool listsAreExact = text.find(clsFileIniEx::kRowSeparator) == std::u16string::npos;
    std::vector<std::u16string> names;
    ini.GetSectionNames(names);
    if (names.empty() || !names[0].empty()) std::abort();
    for (const std::u16string& name : names) {
        std::vector<std::u16string> rows;
        ini.GetSectionRows(name, rows);
        for (size_t i = 0; i < rows.size() && listsAreExact; ++i) {
            const std::u16string key = ini.GetSectionRowKey(rows, static_cast<int32_t>(i));
            const std::u16string value = ini.GetSectionRowValue(rows, static_cast<int32_t>(i));
            // A key that trims to nothing has no collection key inside a section.
            if (trimsToEmpty(key)) continue;
            if (ini.GetString(name, key, u"\x1F<missing>") != value) std::abort();
        }
    }
    ini.GetBool(u"", u"");
    ini.RemoveSection(names.size() > 1 ? names[1] : u"x");
    ini.RemoveRowKeyVal(u"", u"a");
    return 0;
}
