// MakeLongPath, ufu_FilePath, UniAppPath and ufu_UTF8BytesToString: the routines under every file call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// The path to hand to a wide file call: "\\?\" in front from class 7 (NT 4) on, unless the path
// already begins with "\\" (a UNC path, or one that has the prefix). Relative paths get it too.
std::u16string MakeLongPath(const std::u16string& sPath);

// Everything up to the last backslash (nothing when there is none), with exactly one final
// backslash when bFinalBackSlash is true, else none. Raises "Not a local path" for a path with a
// forward slash.
std::u16string ufu_FilePath(const std::u16string& sPathFileName, bool bFinalBackSlash = false);

// Folder of the running program, without a trailing backslash; never empty.
std::u16string UniAppPath();

// The decoder that file reading uses: lead bytes 194 to 219 take two bytes, 224 and up three
// (so 240 and up count as three-byte leads), anything else is one code unit of its own value. A
// sequence cut off by the end of the data ends the text.
std::u16string ufu_UTF8BytesToString(const uint8_t* data, size_t length);
std::u16string ufu_UTF8BytesToString(const std::vector<uint8_t>& bytes);
