// UTF-16 <-> UTF-8 for host interfaces: file names, diagnostics and the system's byte strings.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>

// How a lone surrogate is written. Replace gives U+FFFD (text meant to be read); Keep writes its
// three-byte form so that a name with one still reaches the system and comes back unchanged.
enum class LoneSurrogates { Replace, Keep };

std::string Utf16ToUtf8(const std::u16string& text, LoneSurrogates lone = LoneSurrogates::Replace);

// Each byte that starts no valid sequence (stray continuation, overlong form, truncated sequence,
// value above U+10FFFF) becomes U+FFFD and decoding resumes at the next byte. The three-byte form
// of a surrogate is accepted, so the Keep encoding round-trips.
std::u16string Utf8ToUtf16(const std::string& bytes);

// ---- ASCII blocks: the fast path of every converter ----
// Sixteen code units (or bytes) per step. The SSE2 forms serve x86-64 and both Windows targets;
// the portable forms use plain 64-bit words. Both stay built so that tests can hold one against
// the other. Each returns a mask with bit k set when element k is 128 or above, after writing all
// sixteen elements converted (a caller keeps only the ASCII prefix it counts, so the output must
// have room for sixteen).
#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define TC_ASCII_SSE2 1
#define TC_ASCII_SSE2_FN inline
#elif defined(__GNUC__) && defined(__i386__)
// The 32-bit Windows target is compiled for the plain 386 instruction set, but every processor
// that runs it has SSE2; these functions alone are compiled for it.
#include <emmintrin.h>
#define TC_ASCII_SSE2 1
#define TC_ASCII_SSE2_FN __attribute__((target("sse2"))) inline
#endif

namespace asciiblock {

inline uint32_t NarrowPortable(const char16_t* in, uint8_t* out) noexcept {
    uint64_t w[4];
    std::memcpy(w, in, sizeof w);
    for (int k = 0; k < 16; ++k) {
        out[k] = static_cast<uint8_t>(in[k]);
    }
    if (((w[0] | w[1] | w[2] | w[3]) & 0xFF80FF80FF80FF80ull) == 0) {
        return 0;
    }
    uint32_t mask = 0;
    for (int k = 0; k < 16; ++k) {
        mask |= static_cast<uint32_t>(in[k] >= 0x80) << k;
    }
    return mask;
}

inline uint32_t WidenPortable(const uint8_t* in, char16_t* out) noexcept {
    uint64_t w[2];
    std::memcpy(w, in, sizeof w);
    for (int k = 0; k < 16; ++k) {
        out[k] = in[k];
    }
    if (((w[0] | w[1]) & 0x8080808080808080ull) == 0) {
        return 0;
    }
    uint32_t mask = 0;
    for (int k = 0; k < 16; ++k) {
        mask |= static_cast<uint32_t>(in[k] >> 7) << k;
    }
    return mask;
}

#if defined(TC_ASCII_SSE2)
TC_ASCII_SSE2_FN uint32_t NarrowSse2(const char16_t* in, uint8_t* out) noexcept {
    const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 8));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(a, b));
    const __m128i high = _mm_set1_epi16(static_cast<short>(0xFF80));
    const __m128i zero = _mm_setzero_si128();
    // 0xFFFF per ASCII unit, packed to one byte each; the inverted sign bits are the mask.
    const __m128i asciiA = _mm_cmpeq_epi16(_mm_and_si128(a, high), zero);
    const __m128i asciiB = _mm_cmpeq_epi16(_mm_and_si128(b, high), zero);
    return ~static_cast<uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(asciiA, asciiB))) & 0xFFFFu;
}

TC_ASCII_SSE2_FN uint32_t WidenSse2(const uint8_t* in, char16_t* out) noexcept {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    const __m128i zero = _mm_setzero_si128();
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(v, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_unpackhi_epi8(v, zero));
    return static_cast<uint32_t>(_mm_movemask_epi8(v));
}

inline uint32_t Narrow(const char16_t* in, uint8_t* out) noexcept { return NarrowSse2(in, out); }
inline uint32_t Widen(const uint8_t* in, char16_t* out) noexcept { return WidenSse2(in, out); }
#else
inline uint32_t Narrow(const char16_t* in, uint8_t* out) noexcept { return NarrowPortable(in, out); }
inline uint32_t Widen(const uint8_t* in, char16_t* out) noexcept { return WidenPortable(in, out); }
#endif

// Index of the lowest set bit of a non-zero mask.
inline int FirstSet(uint32_t mask) noexcept { return __builtin_ctz(mask); }

}  // namespace asciiblock
