// Module functions of the Unicode string core: UTF-8 transport, string tests, the hex envelope,
// AscW and ChrW, and the internal byte-level UTF-8 and checksum helpers behind them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

// UTF-8 carried in a string: one character per UTF-8 byte, bytes shown through code page 1252.
std::u16string StrToUTF8(const std::u16string& Text);
std::u16string UTF8toStr(const std::u16string& Text);

// True when at least one code unit is 256 or above; IsUTF16String is the same test.
bool IsUnicodeString(const std::u16string& s);
bool IsUTF16String(const std::u16string& s);

// True exactly when StrToUTF8(UTF8toStr(sText)) gives sText back unchanged.
bool IsUTF8String(const std::u16string& sText);

// The hex envelope: "0X", Base64 of the UTF-16LE byte image, two checksum digits.
bool IsHexString(const std::u16string& s);
std::u16string HextoStr(const std::u16string& Text);
std::u16string StrToHex(const std::u16string& Text);

// Whether the narrow API may carry the string: true on a system without Unicode, otherwise
// only on an ANSI code page of 1252 and for text without code units of 256 and above.
bool CanUseAnsiForString(const std::u16string& s);

// First code unit as 0 to 65535; an empty string raises the invalid procedure call error (5).
int32_t AscW(const std::u16string& c);
// One code unit; negatives have 65536 added first; what still doesn't fit raises error 5.
std::u16string ChrW(int32_t l);

// ---- Internal helpers of the core ----

// Each code unit on its own as one, two or three bytes; surrogates are not paired.
std::vector<uint8_t> StringToUTF8Bytes(const std::u16string& text);
// The same bytes appended to `out`, for writers that reuse one buffer.
void AppendUTF8Bytes(std::vector<uint8_t>& out, const std::u16string& text);

// Decodes by the lead byte alone; a sequence cut by the end of the input ends the result.
std::u16string UTF8BytesToString(std::span<const uint8_t> bytes);
std::u16string UTF8BytesToString(const uint8_t* data, size_t length);
std::u16string UTF8BytesToString(const std::vector<uint8_t>& bytes);

// XOR of every byte of the UTF-16LE image as two uppercase hexadecimal digits.
std::u16string GetStringChecksum(const std::u16string& s);

// Whether the system's ANSI code page is 1252.
bool IsCodePage1252();
