// The ANSI code page of Windows: GetACP and the system's own conversions.
#include "platform/CodePage.h"

#include "platform/win32/WinApi.h"

namespace platform {

namespace {

// The conversion calls count in int; longer text goes in pieces. A piece never ends between
// the two halves of a surrogate pair.
constexpr size_t kWidePiece = static_cast<size_t>(1) << 28;

}  // namespace

uint32_t AnsiCodePage() noexcept {
    return ::GetACP();
}

std::vector<uint8_t> WideToAnsi(std::u16string_view text) {
    std::vector<uint8_t> out;
    size_t pos = 0;
    while (pos < text.size()) {
        size_t count = text.size() - pos;
        if (count > kWidePiece) {
            count = kWidePiece;
            const char16_t last = text[pos + count - 1];
            if (last >= 0xD800 && last <= 0xDBFF) {
                --count;
            }
        }
        const wchar_t* const src = reinterpret_cast<const wchar_t*>(text.data() + pos);
        const int srcLen = static_cast<int>(count);
        const int need = ::WideCharToMultiByte(CP_ACP, 0, src, srcLen, nullptr, 0, nullptr, nullptr);
        if (need > 0) {
            const size_t base = out.size();
            out.resize(base + static_cast<size_t>(need));
            const int done = ::WideCharToMultiByte(CP_ACP, 0, src, srcLen, reinterpret_cast<char*>(out.data() + base),
                                                   need, nullptr, nullptr);
            out.resize(base + static_cast<size_t>(done > 0 ? done : 0));
        }
        pos += count;
    }
    return out;
}

std::u16string AnsiToWide(std::span<const uint8_t> bytes) {
    std::u16string out;
    const UINT codePage = ::GetACP();
    size_t pos = 0;
    while (pos < bytes.size()) {
        size_t count = bytes.size() - pos;
        if (count > kWidePiece) {
            // Back off to a byte that cannot be the first half of a double-byte character.
            count = kWidePiece;
            while (count > 1 && ::IsDBCSLeadByteEx(codePage, bytes[pos + count - 1])) {
                --count;
            }
        }
        const char* const src = reinterpret_cast<const char*>(bytes.data() + pos);
        const int srcLen = static_cast<int>(count);
        const int need = ::MultiByteToWideChar(CP_ACP, 0, src, srcLen, nullptr, 0);
        if (need > 0) {
            const size_t base = out.size();
            out.resize(base + static_cast<size_t>(need));
            const int done =
                ::MultiByteToWideChar(CP_ACP, 0, src, srcLen, reinterpret_cast<wchar_t*>(out.data() + base), need);
            out.resize(base + static_cast<size_t>(done > 0 ? done : 0));
        }
        pos += count;
    }
    return out;
}

}  // namespace platform
