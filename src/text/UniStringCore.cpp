#include "text/UniStringCore.h"

#include <array>
#include <cstring>
#include <new>

#include "common/CtlError.h"
#include "platform/CodePage.h"
#include "text/Utf8Kernels.h"
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

// Code page 1252 in the direction byte to character.
const std::array<char16_t, 256>& cp1252UnitTable() {
    static const std::array<char16_t, 256> table = [] {
        std::array<char16_t, 256> t{};
        for (size_t b = 0; b < t.size(); ++b) {
            t[b] = platform::Cp1252ByteToUnit(static_cast<uint8_t>(b));
        }
        return t;
    }();
    return table;
}

}  // namespace

void AppendUTF8Bytes(std::vector<uint8_t>& out, const std::u16string& text) {
    // Sized exactly: a result three times too large costs more in fresh pages than the count.
    const size_t start = out.size();
    out.resize(start + utf8kernel::EncodedLength(text.data(), text.size()));
    utf8kernel::EncodeUnits(text.data(), text.size(), out.data() + start);
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
    text.resize(utf8kernel::DecodeLeads(data, length, text.data(), utf8kernel::Leads::Core));
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
    // One character per UTF-8 byte, written in one pass without the bytes in between.
    std::u16string image;
    try {
        image.resize(utf8kernel::EncodedLength(Text.data(), Text.size()));
    } catch (const std::bad_alloc&) {
        return std::u16string();
    }
    utf8kernel::EncodeImage(Text.data(), Text.size(), image.data(), cp1252UnitTable());
    return image;
}

std::u16string UTF8toStr(const std::u16string& Text) {
    if (Text.empty()) {
        return std::u16string();
    }
    std::u16string text;
    try {
        text.resize(Text.size());
    } catch (const std::bad_alloc&) {
        return std::u16string();
    }
    text.resize(utf8kernel::DecodeImage(Text.data(), Text.size(), text.data(), cp1252ByteTable()));
    return text;
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
