// Away from Windows the ANSI code page is 1252, the page of locale 1033.
#include "platform/CodePage.h"

namespace platform {

uint32_t AnsiCodePage() noexcept {
    return 1252;
}

std::vector<uint8_t> WideToAnsi(std::u16string_view text) {
    std::vector<uint8_t> out(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        out[i] = Cp1252UnitToByte(text[i]);
    }
    return out;
}

std::u16string AnsiToWide(std::span<const uint8_t> bytes) {
    std::u16string out(bytes.size(), u'\0');
    for (size_t i = 0; i < bytes.size(); ++i) {
        out[i] = Cp1252ByteToUnit(bytes[i]);
    }
    return out;
}

}  // namespace platform
