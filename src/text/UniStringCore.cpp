#include "text/UniStringCore.h"

#include <array>
#include <cstring>
#include <new>

#include "common/CtlError.h"
#include "platform/CodePage.h"
#include "text/WindowsVersion.h"
#include "text/clsBase64.h"

namespace {

CtlError invalidProcedureCall(const char16_t* source) {
    return CtlError(source, u"Invalid procedure call or argument", CtlError::kInvalidProcedureCall);
}

// Code page 1252 in the direction character to byte, for every code unit at once.
const std::array<uint8_t, 65536>& cp1252ByteTable() {
    static const std::array<uint8_t, 65536> table = [] {
        std::array<uint8_t, 65536> t{};
        for (size_t c = 0; c < t.size(); ++c) {
            t[c] = platform::Cp1252UnitToByte(static_cast<char16_t>(c));
        }
        return t;
    }();
    return table;
}

// Eight bytes at once are ASCII when no high bit is set.
inline bool eightAscii(const uint8_t* p) noexcept {
    uint64_t v = 0;
    std::memcpy(&v, p, sizeof v);
    return (v & 0x8080808080808080ull) == 0;
}

inline bool fourAsciiUnits(const char16_t* p) noexcept {
    uint64_t v = 0;
    std::memcpy(&v, p, sizeof v);
    return (v & 0xFF80FF80FF80FF80ull) == 0;
}

// Writes the UTF-8 bytes of one code unit; returns the position after them.
inline uint8_t* putCodeUnit(uint8_t* out, uint32_t c) noexcept {
    if (c < 128) {
        *out++ = static_cast<uint8_t>(c);
    } else if (c < 2048) {
        *out++ = static_cast<uint8_t>(((c / 64) & 31) + 192);
        *out++ = static_cast<uint8_t>((c & 63) + 128);
    } else {
        *out++ = static_cast<uint8_t>(((c / 4096) & 15) + 224);
        *out++ = static_cast<uint8_t>(((c / 64) & 63) + 128);
        *out++ = static_cast<uint8_t>((c & 63) + 128);
    }
    return out;
}

}  // namespace

void AppendUTF8Bytes(std::vector<uint8_t>& out, const std::u16string& text) {
    const size_t start = out.size();
    out.resize(start + text.size() * 3);
    const char16_t* in = text.data();
    const char16_t* const end = in + text.size();
    uint8_t* const begin = out.data() + start;
    uint8_t* next = begin;
    while (in < end) {
        if (end - in >= 4 && fourAsciiUnits(in)) {
            next[0] = static_cast<uint8_t>(in[0]);
            next[1] = static_cast<uint8_t>(in[1]);
            next[2] = static_cast<uint8_t>(in[2]);
            next[3] = static_cast<uint8_t>(in[3]);
            in += 4;
            next += 4;
            continue;
        }
        next = putCodeUnit(next, *in++);
    }
    out.resize(start + static_cast<size_t>(next - begin));
}

std::vector<uint8_t> StringToUTF8Bytes(const std::u16string& text) {
    // Like every step of the transport layer, a failure to allocate gives an empty result rather
    // than an error.
    std::vector<uint8_t> bytes;
    try {
        AppendUTF8Bytes(bytes, text);
    } catch (const std::bad_alloc&) {
        return std::vector<uint8_t>();
    }
    return bytes;
}

std::u16string UTF8BytesToString(const uint8_t* data, size_t length) {
    if (data == nullptr || length == 0) {
        return std::u16string();
    }
    // Never more code units than bytes: one buffer, cut once at the end.
    std::u16string text;
    try {
        text.resize(length);
    } catch (const std::bad_alloc&) {
        return std::u16string();
    }
    char16_t* const begin = text.data();
    char16_t* out = begin;
    size_t i = 0;
    while (i < length) {
        if (length - i >= 8 && eightAscii(data + i)) {
            for (size_t k = 0; k < 8; ++k) {
                out[k] = data[i + k];
            }
            out += 8;
            i += 8;
            continue;
        }
        const uint32_t b = data[i];
        if (b >= 194 && b <= 223) {
            if (length - i < 2) {
                break;
            }
            *out++ = static_cast<char16_t>((b & 31) * 64 + (data[i + 1] & 63));
            i += 2;
        } else if (b >= 224 && b <= 239) {
            if (length - i < 3) {
                break;
            }
            *out++ = static_cast<char16_t>((b & 15) * 4096 + (data[i + 1] & 63) * 64 + (data[i + 2] & 63));
            i += 3;
        } else {
            // ASCII, stray continuation bytes, 192, 193 and the four-byte leads 240 to 255 all
            // stand for themselves.
            *out++ = static_cast<char16_t>(b);
            ++i;
        }
    }
    text.resize(static_cast<size_t>(out - begin));
    return text;
}

std::u16string UTF8BytesToString(std::span<const uint8_t> bytes) {
    return UTF8BytesToString(bytes.data(), bytes.size());
}

std::u16string UTF8BytesToString(const std::vector<uint8_t>& bytes) {
    return UTF8BytesToString(bytes.data(), bytes.size());
}

std::u16string StrToUTF8(const std::u16string& Text) {
    if (Text.empty()) {
        return std::u16string();
    }
    const std::vector<uint8_t> bytes = StringToUTF8Bytes(Text);
    std::u16string image(bytes.size(), u'\0');
    for (size_t i = 0; i < bytes.size(); ++i) {
        image[i] = platform::Cp1252ByteToUnit(bytes[i]);
    }
    return image;
}

std::u16string UTF8toStr(const std::u16string& Text) {
    if (Text.empty()) {
        return std::u16string();
    }
    const std::array<uint8_t, 65536>& toByte = cp1252ByteTable();
    std::vector<uint8_t> bytes(Text.size());
    for (size_t i = 0; i < Text.size(); ++i) {
        bytes[i] = toByte[Text[i]];
    }
    return UTF8BytesToString(bytes);
}

bool IsUnicodeString(const std::u16string& s) {
    for (const char16_t c : s) {
        if (c >= 256) {
            return true;
        }
    }
    return false;
}

bool IsUTF16String(const std::u16string& s) {
    return IsUnicodeString(s);
}

bool IsUTF8String(const std::u16string& sText) {
    // A pure round trip on purpose: it accepts exactly what the encoder itself would produce.
    return StrToUTF8(UTF8toStr(sText)) == sText;
}

std::u16string GetStringChecksum(const std::u16string& s) {
    uint32_t x = 0;
    for (const char16_t c : s) {
        x ^= static_cast<uint32_t>(c & 0xFF) ^ static_cast<uint32_t>(c >> 8);
    }
    constexpr char16_t kHex[] = u"0123456789ABCDEF";
    return std::u16string{kHex[(x >> 4) & 15], kHex[x & 15]};
}

bool IsHexString(const std::u16string& s) {
    if (s.size() < 4 || s[0] != u'0' || s[1] != u'X') {
        return false;
    }
    const std::u16string body = s.substr(2, s.size() - 4);
    return s.compare(s.size() - 2, 2, GetStringChecksum(body)) == 0;
}

std::u16string StrToHex(const std::u16string& Text) {
    if (Text.empty()) {
        return std::u16string();
    }
    const std::u16string body = ThreadBase64().GetEncodedB64String(Text, true);
    return u"0X" + body + GetStringChecksum(body);
}

std::u16string HextoStr(const std::u16string& Text) {
    if (!IsHexString(Text)) {
        return Text;
    }
    return ThreadBase64().GetDecodedB64String(Text.substr(2, Text.size() - 4), true);
}

bool IsCodePage1252() {
    return platform::AnsiCodePage() == 1252;
}

bool CanUseAnsiForString(const std::u16string& s) {
    if (!IsUnicodeSystem()) {
        return true;
    }
    return IsCodePage1252() && !IsUnicodeString(s);
}

int32_t AscW(const std::u16string& c) {
    if (c.empty()) {
        throw invalidProcedureCall(u"AscW");
    }
    // The code unit read as unsigned is already the signed value plus 65536 where negative.
    return static_cast<int32_t>(c[0]);
}

std::u16string ChrW(int32_t l) {
    const int64_t value = l < 0 ? static_cast<int64_t>(l) + 65536 : l;
    if (value < 0 || value > 65535) {
        throw invalidProcedureCall(u"ChrW");
    }
    return std::u16string(1, static_cast<char16_t>(value));
}
