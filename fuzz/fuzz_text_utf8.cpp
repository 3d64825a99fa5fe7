// Fuzzes UTF8BytesToString against a plain reference decoder and checks that its output survives
// a round trip through StringToUTF8Bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "text/UniStringCore.h"

namespace {

// The lead-byte table written out one case at a time.
std::u16string referenceDecode(const uint8_t* p, size_t n) {
    std::u16string out;
    size_t i = 0;
    while (i < n) {
        const unsigned b = p[i];
        size_t need = 1;
        if (b >= 194 && b <= 223) {
            need = 2;
        } else if (b >= 224 && b <= 239) {
            need = 3;
        }
        if (i + need > n) {
            break;
        }
        if (need == 1) {
            out += static_cast<char16_t>(b);
        } else if (need == 2) {
            out += static_cast<char16_t>(((b & 0x1F) << 6) | (p[i + 1] & 0x3F));
        } else {
            out += static_cast<char16_t>(((b & 0x0F) << 12) | ((p[i + 1] & 0x3F) << 6) | (p[i + 2] & 0x3F));
        }
        i += need;
    }
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::u16string decoded = UTF8BytesToString(data, size);
    if (decoded != referenceDecode(data, size)) {
        std::abort();
    }
    if (UTF8BytesToString(StringToUTF8Bytes(decoded)) != decoded) {
        std::abort();
    }
    // The same bytes carried as a code page 1252 image.
    std::u16string image;
    for (size_t i = 0; i < size; ++i) {
        image += static_cast<char16_t>(data[i]);
    }
    const std::u16string text = UTF8toStr(image);
    if (IsUTF8String(StrToUTF8(text)) != true || text.size() > size) {
        std::abort();
    }
    return 0;
}
