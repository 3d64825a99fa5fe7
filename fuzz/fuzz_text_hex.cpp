// Fuzzes the hex envelope: HextoStr on any UTF-16 text returns, leaves non-envelopes unchanged,
// and every string survives StrToHex followed by HextoStr.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "text/UniStringCore.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::u16string text(size / 2, u'\0');
    for (size_t i = 0; i < text.size(); ++i) {
        text[i] = static_cast<char16_t>(data[2 * i] | (data[2 * i + 1] << 8));
    }
    // Half of the inputs get a valid frame around them, so that the decoder inside is reached.
    if (size % 2 == 1 && text.size() >= 1) {
        text = u"0X" + text + GetStringChecksum(text);
    }
    const std::u16string plain = HextoStr(text);
    if (!IsHexString(text) && plain != text) {
        std::abort();
    }
    const std::u16string envelope = StrToHex(text);
    if (!text.empty() && !IsHexString(envelope)) {
        std::abort();
    }
    if (HextoStr(envelope) != text) {
        std::abort();
    }
    return 0;
}
