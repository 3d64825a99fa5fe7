// The loops under every UTF-8 conversion of the text core: code units encoded one by one, bytes
// decoded by their lead byte, and the code page 1252 images of the transport form. Sixteen ASCII
// elements move per step; other elements go through branch-free steps, so that mixed text does
// not pay for mispredicted branches. Path::Portable runs the same loops without SSE2, for tests.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace utf8kernel {

enum class Path { Fast, Portable };

// Which lead bytes start two- and three-byte sequences.
enum class Leads {
    Core,  // the string core: 194 to 223 start two bytes, 224 to 239 three
    File,  // the file decoder: 194 to 219 start two bytes, 224 to 255 three
};

// Bytes of `in` with each unit encoded on its own (one, two or three bytes).
size_t EncodedLength(const char16_t* in, size_t n) noexcept;

// Writes those bytes to `out`, which holds at least EncodedLength(in, n); returns their count.
size_t EncodeUnits(const char16_t* in, size_t n, uint8_t* out, Path path = Path::Fast) noexcept;

// Decodes by the lead byte alone; a sequence cut by the end ends the output, its lead included.
// `out` holds at least n units; returns the count written.
size_t DecodeLeads(const uint8_t* in, size_t n, char16_t* out, Leads leads, Path path = Path::Fast) noexcept;

// The transport form in one pass: the bytes EncodeUnits would write, each given as its code page
// 1252 character through `table` (ASCII bytes must map to themselves). Same count and room.
size_t EncodeImage(const char16_t* in, size_t n, char16_t* out, const std::array<char16_t, 256>& table,
                   Path path = Path::Fast) noexcept;

// DecodeLeads (core leads) of the bytes that `table` gives for each unit of a transport form
// (ASCII units must map to themselves).
size_t DecodeImage(const char16_t* in, size_t n, char16_t* out, const std::array<uint8_t, 65536>& table,
                   Path path = Path::Fast) noexcept;

}  // namespace utf8kernel
