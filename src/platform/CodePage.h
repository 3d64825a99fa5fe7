// The ANSI code page seam: which code page the system uses for narrow text, conversion between
// it and UTF-16, and the fixed table of code page 1252 that the text core needs on every system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// The system's ANSI code page (GetACP on Windows; 1252 elsewhere).
uint32_t AnsiCodePage() noexcept;

// UTF-16 to the ANSI code page; a character the page lacks becomes its default character.
std::vector<uint8_t> WideToAnsi(std::u16string_view text);

// The ANSI code page to UTF-16.
std::u16string AnsiToWide(std::span<const uint8_t> bytes);

// Code page 1252 of locale 1033, bytes 128 to 159; the rest of the page is Latin-1. The five
// bytes that the page leaves undefined (129, 141, 143, 144, 157) keep their own code point.
inline constexpr char16_t kCp1252From128[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

inline constexpr uint8_t kCp1252DefaultByte = 63;  // "?"

inline constexpr char16_t Cp1252ByteToUnit(uint8_t b) noexcept {
    return (b >= 128 && b < 160) ? kCp1252From128[b - 128] : static_cast<char16_t>(b);
}

// The byte for a code unit, or kCp1252DefaultByte when code page 1252 has no such character.
inline constexpr uint8_t Cp1252UnitToByte(char16_t c) noexcept {
    if (c < 128 || (c >= 160 && c < 256)) {
        return static_cast<uint8_t>(c);
    }
    for (size_t i = 0; i < 32; ++i) {
        if (kCp1252From128[i] == c) {
            return static_cast<uint8_t>(128 + i);
        }
    }
    return kCp1252DefaultByte;
}

}  // namespace platform
