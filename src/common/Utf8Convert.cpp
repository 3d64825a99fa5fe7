#include "common/Utf8Convert.h"

#include <cstddef>
#include <cstdint>

namespace {

bool isHighSurrogate(uint32_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(uint32_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

void appendUtf8(std::string& out, uint32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

}  // namespace

std::string Utf16ToUtf8(const std::u16string& text, LoneSurrogates lone) {
    std::string out;
    out.reserve(text.size());
    uint8_t block[16];
    for (size_t i = 0; i < text.size(); ++i) {
        while (text.size() - i >= 16) {
            const uint32_t mask = asciiblock::Narrow(text.data() + i, block);
            const size_t ascii = mask == 0 ? 16 : static_cast<size_t>(asciiblock::FirstSet(mask));
            out.append(reinterpret_cast<const char*>(block), ascii);
            i += ascii;
            if (mask != 0) {
                break;
            }
        }
        if (i == text.size()) {
            break;
        }
        uint32_t cp = text[i];
        if (isHighSurrogate(cp) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
            ++i;
        } else if (lone == LoneSurrogates::Replace && (isHighSurrogate(cp) || isLowSurrogate(cp))) {
            cp = 0xFFFD;
        }
        appendUtf8(out, cp);
    }
    return out;
}

std::u16string Utf8ToUtf16(const std::string& bytes) {
    std::u16string out;
    out.reserve(bytes.size());
    size_t i = 0;
    char16_t block[16];
    while (i < bytes.size()) {
        if (bytes.size() - i >= 16) {
            const uint32_t mask = asciiblock::Widen(reinterpret_cast<const uint8_t*>(bytes.data()) + i, block);
            const size_t ascii = mask == 0 ? 16 : static_cast<size_t>(asciiblock::FirstSet(mask));
            out.append(block, ascii);
            i += ascii;
            if (ascii != 0) {
                continue;
            }
        }
        const unsigned char lead = static_cast<unsigned char>(bytes[i]);
        if (lead < 0x80) {
            out += static_cast<char16_t>(lead);
            ++i;
            continue;
        }
        size_t extra = 0;
        uint32_t cp = 0;
        uint32_t minimum = 0;
        if ((lead & 0xE0) == 0xC0) {
            extra = 1;
            cp = lead & 0x1Fu;
            minimum = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            extra = 2;
            cp = lead & 0x0Fu;
            minimum = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            extra = 3;
            cp = lead & 0x07u;
            minimum = 0x10000;
        }
        bool valid = extra != 0 && i + extra < bytes.size();
        for (size_t k = 1; valid && k <= extra; ++k) {
            const unsigned char next = static_cast<unsigned char>(bytes[i + k]);
            valid = (next & 0xC0) == 0x80;
            cp = (cp << 6) | (next & 0x3Fu);
        }
        if (!valid || cp < minimum || cp > 0x10FFFF) {
            out += u'\xFFFD';
            ++i;
            continue;
        }
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out += static_cast<char16_t>(0xD800 + (cp >> 10));
            out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
        } else {
            out += static_cast<char16_t>(cp);
        }
        i += extra + 1;
    }
    return out;
}
