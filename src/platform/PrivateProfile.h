// The private-profile seam: the GetPrivateProfileStringW family that clsFileIni stands on.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace platform {

// Every call takes the path as the caller formed it (long-path prefix included) and a buffer
// size in characters, and gives back what the platform would copy into such a buffer: the
// list forms hold entries that each end with character 0, as the buffer does, without the final
// extra 0. Sections and keys match without regard to case; the lines before the first header
// form the section with the empty name.
//
// A file that begins with the UTF-16LE mark is read and written as UTF-16LE; any other file is
// read and written in the ANSI code page, so text that the code page lacks is lost on writing.

// The value of the key, trimmed of blanks with one pair of enclosing quotes removed; the
// default (trailing blanks removed) when the section, the key or the file is missing. At most
// bufferChars - 1 characters come back.
std::u16string ProfileGetString(const std::u16string& path, const std::u16string& section, const std::u16string& key,
                                const std::u16string& defaultValue, size_t bufferChars);

// The key names of a section, each followed by character 0.
std::u16string ProfileGetKeys(const std::u16string& path, const std::u16string& section, size_t bufferChars);

// The lines of a section, each followed by character 0: "key=value" trimmed around the "=", and
// lines without one as they stand; comments and blank lines are left out.
std::u16string ProfileGetSection(const std::u16string& path, const std::u16string& section, size_t bufferChars);

// The section names of the file, in file order, each followed by character 0; a repeated header is
// listed again, though only the first section of a name is ever read.
std::u16string ProfileGetSectionNames(const std::u16string& path, size_t bufferChars);

// Sets key=value, adding the key at the end of its section and the section at the end of the file
// when missing (and the file itself). No key deletes the whole section; no value deletes the key.
// False when the file cannot be written.
bool ProfileWriteString(const std::u16string& path, const std::u16string& section,
                        const std::optional<std::u16string>& key, const std::optional<std::u16string>& value);

}  // namespace platform
