#include "text/Utf8Kernels.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "common/Utf8Convert.h"

namespace utf8kernel {
namespace {

template <bool kSimd>
inline uint32_t narrow16(const char16_t* in, uint8_t* out) noexcept {
    if constexpr (kSimd) {
        return asciiblock::Narrow(in, out);
    } else {
        return asciiblock::NarrowPortable(in, out);
    }
}

template <bool kSimd>
inline uint32_t widen16(const uint8_t* in, char16_t* out) noexcept {
    if constexpr (kSimd) {
        return asciiblock::Widen(in, out);
    } else {
        return asciiblock::WidenPortable(in, out);
    }
}

// A block step reads or writes up to three elements past the sixteen of the block (the tail of a
// sequence that starts in it, or the four bytes written for any unit); the loops keep that much
// input in hand and leave the rest to the careful tail.
constexpr ptrdiff_t kBlockReach = 16 + 3;

// Non-ASCII elements in a block up to which the fast loop steps over them one at a time and goes
// on in blocks; from there on the rest of the block goes through the branch-free steps.
constexpr int kSparse = 3;

// The UTF-8 bytes of one unit packed low byte first, and their count.
inline uint32_t packUnit(uint32_t c, uint32_t& len) noexcept {
    const uint32_t two = (0xC0u | (c >> 6)) | ((0x80u | (c & 63)) << 8);
    const uint32_t three = (0xE0u | (c >> 12)) | ((0x80u | ((c >> 6) & 63)) << 8) | ((0x80u | (c & 63)) << 16);
    // Selected by masks: compilers turn a conditional back into a branch, which mixed text
    // mispredicts half of the time.
    const uint32_t multi = 0u - static_cast<uint32_t>(c >= 0x80);
    const uint32_t wide = 0u - static_cast<uint32_t>(c >= 0x800);
    len = 1 + (c >= 0x80) + (c >= 0x800);
    return (c & ~multi) | (two & multi & ~wide) | (three & wide);
}

// Where encoded bytes go: as bytes, or as the code page 1252 image of the transport form.
struct ByteSink {
    using Unit = uint8_t;
    template <bool kSimd>
    uint32_t block(const char16_t* in, uint8_t* out) const noexcept {
        return narrow16<kSimd>(in, out);
    }
    // Always writes four elements (the caller has room); returns the position after `len`.
    uint8_t* put(uint8_t* out, uint32_t word, uint32_t len) const noexcept {
        if constexpr (std::endian::native == std::endian::little) {
            std::memcpy(out, &word, sizeof word);
        } else {
            for (int k = 0; k < 4; ++k) {
                out[k] = static_cast<uint8_t>(word >> (8 * k));
            }
        }
        return out + len;
    }
    uint8_t* putExact(uint8_t* out, uint32_t word, uint32_t len) const noexcept {
        for (uint32_t k = 0; k < len; ++k) {
            out[k] = static_cast<uint8_t>(word >> (8 * k));
        }
        return out + len;
    }
};

struct ImageSink {
    using Unit = char16_t;
    const std::array<char16_t, 256>& table;
    template <bool kSimd>
    uint32_t block(const char16_t* in, char16_t* out) const noexcept {
        // ASCII units are their own image.
        uint8_t scratch[16];
        const uint32_t mask = narrow16<kSimd>(in, scratch);
        std::memcpy(out, in, 16 * sizeof(char16_t));
        return mask;
    }
    char16_t* put(char16_t* out, uint32_t word, uint32_t len) const noexcept {
        for (int k = 0; k < 4; ++k) {
            out[k] = table[(word >> (8 * k)) & 0xFF];
        }
        return out + len;
    }
    char16_t* putExact(char16_t* out, uint32_t word, uint32_t len) const noexcept {
        for (uint32_t k = 0; k < len; ++k) {
            out[k] = table[(word >> (8 * k)) & 0xFF];
        }
        return out + len;
    }
};

template <bool kSimd, typename Sink>
size_t encode(const char16_t* in, size_t n, typename Sink::Unit* out, const Sink& sink) noexcept {
    const char16_t* const end = in + n;
    typename Sink::Unit* const begin = out;
    uint32_t len = 0;
    while (end - in >= kBlockReach) {
        const uint32_t mask = sink.template block<kSimd>(in, out);
        if (mask == 0) {
            in += 16;
            out += 16;
            continue;
        }
        const int ascii = asciiblock::FirstSet(mask);
        const char16_t* const blockEnd = in + 16;
        in += ascii;
        out += ascii;
        if (__builtin_popcount(mask) <= kSparse) {
            const uint32_t word = packUnit(*in++, len);
            out = sink.put(out, word, len);
            continue;
        }
        while (in < blockEnd) {
            const uint32_t word = packUnit(*in++, len);
            out = sink.put(out, word, len);
        }
    }
    while (in < end) {
        const uint32_t word = packUnit(*in++, len);
        out = sink.putExact(out, word, len);
    }
    return static_cast<size_t>(out - begin);
}

// Sequence length by lead byte: 1, 2 or 3.
struct LeadLengths {
    uint8_t length[256];
};

constexpr LeadLengths makeLengths(Leads leads) {
    LeadLengths t{};
    for (int b = 0; b < 256; ++b) {
        uint8_t len = 1;
        if (leads == Leads::Core) {
            len = (b >= 194 && b <= 223) ? 2 : (b >= 224 && b <= 239) ? 3 : 1;
        } else {
            len = (b >= 194 && b <= 219) ? 2 : (b >= 224) ? 3 : 1;
        }
        t.length[b] = len;
    }
    return t;
}

constexpr LeadLengths kCoreLengths = makeLengths(Leads::Core);
constexpr LeadLengths kFileLengths = makeLengths(Leads::File);

// The unit of a sequence of `len` bytes b0 b1 b2 (those past `len` are ignored).
inline char16_t unitOf(uint32_t len, uint32_t b0, uint32_t b1, uint32_t b2) noexcept {
    const uint32_t two = ((b0 & 31) << 6) | (b1 & 63);
    const uint32_t three = ((b0 & 15) << 12) | ((b1 & 63) << 6) | (b2 & 63);
    const uint32_t isOne = 0u - static_cast<uint32_t>(len == 1);
    const uint32_t isTwo = 0u - static_cast<uint32_t>(len == 2);
    const uint32_t isThree = 0u - static_cast<uint32_t>(len == 3);
    return static_cast<char16_t>((b0 & isOne) | (two & isTwo) | (three & isThree));
}

// Where decoded bytes come from: bytes, or the code page 1252 image of the transport form.
struct ByteSource {
    using Unit = uint8_t;
    template <bool kSimd>
    uint32_t block(const uint8_t* in, char16_t* out) const noexcept {
        return widen16<kSimd>(in, out);
    }
    uint32_t byte(const uint8_t* p) const noexcept { return *p; }
};

struct ImageSource {
    using Unit = char16_t;
    const std::array<uint8_t, 65536>& table;
    template <bool kSimd>
    uint32_t block(const char16_t* in, char16_t* out) const noexcept {
        // An ASCII unit is its own byte and decodes to itself.
        uint8_t scratch[16];
        const uint32_t mask = narrow16<kSimd>(in, scratch);
        std::memcpy(out, in, 16 * sizeof(char16_t));
        return mask;
    }
    uint32_t byte(const char16_t* p) const noexcept { return table[*p]; }
};

template <bool kSimd, typename Source>
size_t decode(const typename Source::Unit* in, size_t n, char16_t* out, const LeadLengths& leads,
              const Source& source) noexcept {
    const typename Source::Unit* const end = in + n;
    char16_t* const begin = out;
    // Never more units out than in: `out` stays behind `in`, so a block of sixteen always fits.
    while (end - in >= kBlockReach) {
        const uint32_t mask = source.template block<kSimd>(in, out);
        if (mask == 0) {
            in += 16;
            out += 16;
            continue;
        }
        const int ascii = asciiblock::FirstSet(mask);
        const typename Source::Unit* const blockEnd = in + 16;
        in += ascii;
        out += ascii;
        do {
            const uint32_t b0 = source.byte(in);
            const uint32_t len = leads.length[b0];
            *out++ = unitOf(len, b0, source.byte(in + 1), source.byte(in + 2));
            in += len;
        } while (__builtin_popcount(mask) > kSparse && in < blockEnd);
    }
    while (in < end) {
        const uint32_t b0 = source.byte(in);
        const uint32_t len = leads.length[b0];
        if (static_cast<size_t>(end - in) < len) {
            break;
        }
        *out++ = unitOf(len, b0, len > 1 ? source.byte(in + 1) : 0, len > 2 ? source.byte(in + 2) : 0);
        in += len;
    }
    return static_cast<size_t>(out - begin);
}

#if defined(TC_ASCII_SSE2)
// Adds to `length` one byte per unit from 128 and one more per unit from 2048, eight units per
// step; returns how many units it counted.
TC_ASCII_SSE2_FN size_t extraBytesSse2(const char16_t* in, size_t n, size_t& length) noexcept {
    const __m128i zero = _mm_setzero_si128();
    const __m128i two = _mm_set1_epi16(2);
    const __m128i ones = _mm_set1_epi16(1);
    const __m128i from128 = _mm_set1_epi16(static_cast<short>(0xFF80));
    const __m128i from2048 = _mm_set1_epi16(static_cast<short>(0xF800));
    size_t i = 0;
    while (n - i >= 8) {
        // Sixteen-bit counters gain at most 2 per step: 4096 steps stay far below overflow.
        __m128i counts = zero;
        const size_t steps = std::min<size_t>((n - i) / 8, 4096);
        for (size_t s = 0; s < steps; ++s, i += 8) {
            const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + i));
            const __m128i ascii = _mm_cmpeq_epi16(_mm_and_si128(v, from128), zero);
            const __m128i narrow = _mm_cmpeq_epi16(_mm_and_si128(v, from2048), zero);
            counts = _mm_add_epi16(counts, _mm_add_epi16(two, _mm_add_epi16(ascii, narrow)));
        }
        const __m128i sums = _mm_madd_epi16(counts, ones);
        alignas(16) int32_t lanes[4];
        _mm_store_si128(reinterpret_cast<__m128i*>(lanes), sums);
        length += static_cast<size_t>(lanes[0]) + static_cast<size_t>(lanes[1]) + static_cast<size_t>(lanes[2]) +
                  static_cast<size_t>(lanes[3]);
    }
    return i;
}
#endif

}  // namespace

size_t EncodedLength(const char16_t* in, size_t n) noexcept {
    size_t length = n;
    size_t i = 0;
#if defined(TC_ASCII_SSE2)
    i = extraBytesSse2(in, n, length);
#endif
    for (; i < n; ++i) {
        length += static_cast<size_t>(in[i] >= 0x80) + static_cast<size_t>(in[i] >= 0x800);
    }
    return length;
}

size_t EncodeUnits(const char16_t* in, size_t n, uint8_t* out, Path path) noexcept {
    const ByteSink sink;
    return path == Path::Fast ? encode<true>(in, n, out, sink) : encode<false>(in, n, out, sink);
}

size_t EncodeImage(const char16_t* in, size_t n, char16_t* out, const std::array<char16_t, 256>& table,
                   Path path) noexcept {
    const ImageSink sink{table};
    return path == Path::Fast ? encode<true>(in, n, out, sink) : encode<false>(in, n, out, sink);
}

size_t DecodeLeads(const uint8_t* in, size_t n, char16_t* out, Leads leads, Path path) noexcept {
    const LeadLengths& lengths = leads == Leads::Core ? kCoreLengths : kFileLengths;
    const ByteSource source;
    return path == Path::Fast ? decode<true>(in, n, out, lengths, source) : decode<false>(in, n, out, lengths, source);
}

size_t DecodeImage(const char16_t* in, size_t n, char16_t* out, const std::array<uint8_t, 65536>& table,
                   Path path) noexcept {
    const ImageSource source{table};
    return path == Path::Fast ? decode<true>(in, n, out, kCoreLengths, source)
                              : decode<false>(in, n, out, kCoreLengths, source);
}

}  // namespace utf8kernel
