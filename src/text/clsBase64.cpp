#include "text/clsBase64.h"

#include <array>
#include <utility>

#include "common/CtlError.h"
#include "platform/CodePage.h"

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Flags in the widened table of the decoding loop: a byte beyond the decode table, a byte to skip.
constexpr uint16_t kBeyondTable = 0x8000;
constexpr uint16_t kSkipped = 0x4000;

bool isSkippedInBase64(uint8_t b) noexcept {
    return b == 13 || b == 10 || b == 32 || b == 9;
}

bool isSkippedInBase64(char16_t c) noexcept {
    return c == 13 || c == 10 || c == 32 || c == 9;
}

// n × 0.75 rounded as the floating-point conversion does: half to even.
size_t threeQuartersRounded(size_t n) noexcept {
    const size_t a = n / 4;
    switch (n % 4) {
    case 1:
        return 3 * a + 1;
    case 2: {
        const size_t low = 3 * a + 1;
        return (low % 2 == 0) ? low : low + 1;
    }
    case 3:
        return 3 * a + 2;
    default:
        return 3 * a;
    }
}

CtlError subscriptError() {
    return CtlError(u"clsBase64.DecodeB64", u"Subscript out of range", CtlError::kSubscriptOutOfRange);
}

}  // namespace

clsBase64::clsBase64() {
    for (size_t i = 0; i < 64; ++i) {
        m_aEncode[i] = static_cast<uint8_t>(kAlphabet[i]);
    }
    for (size_t i = 0; i < kDecodeTableSize; ++i) {
        m_aDecode[i] = 255;
    }
    for (size_t i = 0; i < 64; ++i) {
        m_aDecode[m_aEncode[i]] = static_cast<uint8_t>(i);
    }
    m_aDecode[kPad] = 64;
}

void clsBase64::EncodeB64(std::span<const uint8_t> aIn, std::vector<uint8_t>& aOut) const {
    aOut.clear();
    const size_t n = aIn.size();
    if (n == 0) {
        return;
    }
    aOut.resize((n / 3 + (n % 3 != 0 ? 1 : 0)) * 4);
    const uint8_t* in = aIn.data();
    uint8_t* out = aOut.data();
    const uint8_t* const enc = m_aEncode;
    const size_t whole = n / 3;
    for (size_t g = 0; g < whole; ++g) {
        const uint32_t v = (static_cast<uint32_t>(in[0]) << 16) | (static_cast<uint32_t>(in[1]) << 8) | in[2];
        out[0] = enc[v >> 18];
        out[1] = enc[(v >> 12) & 63];
        out[2] = enc[(v >> 6) & 63];
        out[3] = enc[v & 63];
        in += 3;
        out += 4;
    }
    const size_t rest = n % 3;
    if (rest != 0) {
        const uint32_t v = (static_cast<uint32_t>(in[0]) << 16) | (rest == 2 ? static_cast<uint32_t>(in[1]) << 8 : 0u);
        out[0] = enc[v >> 18];
        out[1] = enc[(v >> 12) & 63];
        out[2] = rest == 2 ? enc[(v >> 6) & 63] : kPad;
        out[3] = kPad;
    }
}

void clsBase64::AnsiStr2ByteArray(const std::u16string& sText, std::vector<uint8_t>& aOut) const {
    aOut = platform::WideToAnsi(sText);
}

void clsBase64::ByteArray2AnsiStr(std::span<const uint8_t> aIn, std::u16string& sOut) const {
    sOut = platform::AnsiToWide(aIn);
}

void clsBase64::UnicodeStr2ByteArray(const std::u16string& sText, std::vector<uint8_t>& aOut) const {
    aOut.resize(sText.size() * 2);
    for (size_t i = 0; i < sText.size(); ++i) {
        aOut[2 * i] = static_cast<uint8_t>(sText[i] & 0xFF);
        aOut[2 * i + 1] = static_cast<uint8_t>(sText[i] >> 8);
    }
}

void clsBase64::ByteArray2UnicodeStr(std::span<const uint8_t> aIn, std::u16string& sOut) const {
    const size_t units = aIn.size() / 2;
    sOut.assign(units, u'\0');
    for (size_t i = 0; i < units; ++i) {
        sOut[i] = static_cast<char16_t>(aIn[2 * i] | (aIn[2 * i + 1] << 8));
    }
}

void clsBase64::Span(int32_t lLineLength, std::span<const uint8_t> aIn, std::vector<uint8_t>& aOut) const {
    if (lLineLength < 1) {
        throw CtlError(u"clsBase64.Span", u"Invalid procedure call or argument", CtlError::kInvalidProcedureCall);
    }
    const size_t n = aIn.size();
    const size_t line = static_cast<size_t>(lLineLength);
    aOut.clear();
    aOut.reserve(n + 2 * (n / line + 1) + 1);
    for (size_t pos = 0; pos < n; pos += line) {
        const size_t take = (n - pos < line) ? n - pos : line;
        aOut.insert(aOut.end(), aIn.begin() + static_cast<std::ptrdiff_t>(pos),
                    aIn.begin() + static_cast<std::ptrdiff_t>(pos + take));
        if (take == line) {
            aOut.push_back(13);
            aOut.push_back(10);
        }
    }
}

void clsBase64::Unspan(const std::u16string& sText, std::vector<uint8_t>& aOut) const {
    std::u16string kept;
    kept.reserve(sText.size());
    for (const char16_t c : sText) {
        if (!isSkippedInBase64(c)) {
            kept += c;
        }
    }
    aOut = platform::WideToAnsi(kept);
}

void clsBase64::DecodeB64(const std::u16string& sText, std::vector<uint8_t>& aOut) const {
    aOut.clear();
    if (sText.empty()) {
        return;
    }
    std::vector<uint8_t> clean;
    Unspan(sText, clean);
    DecodeB64(clean, aOut);
}

void clsBase64::DecodeB64(std::span<const uint8_t> aIn, std::vector<uint8_t>& aOut) const {
    aOut.clear();
    // Most text carries no line breaks: decode it as it stands, and clean it only when the
    // decoding met a byte that has to be skipped.
    if (decodeClean(aIn, aOut)) {
        return;
    }
    std::vector<uint8_t> clean;
    clean.reserve(aIn.size());
    for (const uint8_t b : aIn) {
        if (!isSkippedInBase64(b)) {
            clean.push_back(b);
        }
    }
    decodeClean(clean, aOut);
}

bool clsBase64::decodeClean(std::span<const uint8_t> text, std::vector<uint8_t>& aOut) const {
    aOut.clear();
    const size_t n = text.size();
    if (n == 0) {
        return true;
    }
    size_t padding = 0;
    if (text[n - 1] == kPad) {
        padding = (n >= 2 && text[n - 2] == kPad) ? 2 : 1;
    }
    const size_t rounded = threeQuartersRounded(n);
    if (rounded <= padding) {
        // Only texts of up to three bytes get here.
        for (const uint8_t b : text) {
            if (isSkippedInBase64(b)) {
                return false;
            }
        }
        return true;
    }
    // The output length comes from the text length alone, so a text whose length isn't a
    // multiple of 4 loses its last bytes, and padding always shortens the last group.
    const size_t outLen = rounded - padding;

    // Values are not checked: 255 of a non-alphabet byte and 64 of "=" go into the arithmetic
    // and each output byte keeps the low eight bits. The widened table flags the bytes beyond
    // the decode table and the ones to skip.
    std::array<uint16_t, 256> table{};
    for (size_t i = 0; i < 256; ++i) {
        table[i] = i < kDecodeTableSize ? m_aDecode[i] : kBeyondTable;
    }
    for (const uint8_t skipped : {uint8_t{13}, uint8_t{10}, uint8_t{32}, uint8_t{9}}) {
        table[skipped] = static_cast<uint16_t>(table[skipped] | kSkipped);
    }

    std::vector<uint8_t> out(outLen);
    uint32_t seen = 0;
    const uint8_t* in = text.data();
    uint8_t* dst = out.data();
    // Groups whose three bytes all fit, with all four characters present.
    size_t fastGroups = n / 4;
    if (fastGroups * 3 > outLen) {
        fastGroups = outLen / 3;
    }
    for (size_t g = 0; g < fastGroups; ++g) {
        const uint32_t a = table[in[0]];
        const uint32_t b = table[in[1]];
        const uint32_t c = table[in[2]];
        const uint32_t d = table[in[3]];
        seen |= a | b | c | d;
        dst[0] = static_cast<uint8_t>(a * 4 + ((b / 16) & 3));
        dst[1] = static_cast<uint8_t>(b * 16 + ((c / 4) & 15));
        dst[2] = static_cast<uint8_t>(c * 64 + d);
        in += 4;
        dst += 3;
    }
    // The rest: characters past the end count as 0, bytes past the output length are dropped.
    for (size_t pos = fastGroups * 4; pos < n; pos += 4) {
        uint32_t v[4] = {0, 0, 0, 0};
        for (size_t k = 0; k < 4 && pos + k < n; ++k) {
            v[k] = table[text[pos + k]];
            seen |= v[k];
        }
        const uint8_t bytes[3] = {
            static_cast<uint8_t>(v[0] * 4 + ((v[1] / 16) & 3)),
            static_cast<uint8_t>(v[1] * 16 + ((v[2] / 4) & 15)),
            static_cast<uint8_t>(v[2] * 64 + v[3]),
        };
        const size_t at = pos / 4 * 3;
        for (size_t k = 0; k < 3 && at + k < outLen; ++k) {
            out[at + k] = bytes[k];
        }
    }
    if ((seen & kSkipped) != 0) {
        return false;
    }
    if ((seen & kBeyondTable) != 0) {
        throw subscriptError();
    }
    aOut = std::move(out);
    return true;
}

std::u16string clsBase64::GetEncodedB64String(const std::u16string& sText, bool bUnicode) const {
    try {
        std::vector<uint8_t> bytes;
        if (bUnicode) {
            UnicodeStr2ByteArray(sText, bytes);
        } else {
            AnsiStr2ByteArray(sText, bytes);
        }
        std::vector<uint8_t> encoded;
        EncodeB64(bytes, encoded);
        // The alphabet is ASCII, the same in every ANSI code page.
        return std::u16string(encoded.begin(), encoded.end());
    } catch (...) {
        return std::u16string();
    }
}

std::u16string clsBase64::GetDecodedB64String(const std::u16string& sText, bool bUnicode) const {
    try {
        std::vector<uint8_t> bytes;
        DecodeB64(sText, bytes);
        std::u16string result;
        if (bUnicode) {
            ByteArray2UnicodeStr(bytes, result);
        } else {
            ByteArray2AnsiStr(bytes, result);
        }
        return result;
    } catch (...) {
        return std::u16string();
    }
}

clsBase64& ThreadBase64() {
    thread_local clsBase64 codec;
    return codec;
}
