#include "common/CaseFold.h"

char16_t FoldCaseUnit(char16_t c) noexcept {
    if (c < 0x80) {
        return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 0x20) : c;
    }
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return static_cast<char16_t>(c + 0x20);
    // Latin Extended-A pairs upper/lower at even/odd code points, except the I and the dotless i
    // (0x130, 0x131) and the range 0x139..0x148 and 0x179..0x17E that pair odd/even.
    if (c >= 0x100 && c <= 0x17F && c != 0x130 && c != 0x131 && c != 0x138 && c != 0x149 && c != 0x17F) {
        const bool oddUpper = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
        if (oddUpper) return (c & 1) ? static_cast<char16_t>(c + 1) : c;
        return (c & 1) ? c : static_cast<char16_t>(c + 1);
    }
    if (c == 0x178) return 0xFF;
    if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return static_cast<char16_t>(c + 0x20);
    if (c >= 0x386 && c <= 0x38F) {
        switch (c) {
            case 0x386: return 0x3AC;
            case 0x388: return 0x3AD;
            case 0x389: return 0x3AE;
            case 0x38A: return 0x3AF;
            case 0x38C: return 0x3CC;
            case 0x38E: return 0x3CD;
            case 0x38F: return 0x3CE;
            default: return c;
        }
    }
    if (c >= 0x410 && c <= 0x42F) return static_cast<char16_t>(c + 0x20);
    if (c >= 0x400 && c <= 0x40F) return static_cast<char16_t>(c + 0x50);
    if (c >= 0xFF21 && c <= 0xFF3A) return static_cast<char16_t>(c + 0x20);
    return c;
}

std::u16string FoldCase(const std::u16string& text) {
    std::u16string out(text);
    for (char16_t& c : out) c = FoldCaseUnit(c);
    return out;
}

bool EqualsIgnoreCase(const std::u16string& a, const std::u16string& b) noexcept {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && FoldCaseUnit(a[i]) != FoldCaseUnit(b[i])) return false;
    }
    return true;
}

size_t CaseInsensitiveHash::operator()(const std::u16string& key) const noexcept {
    // FNV-1a over the folded code units.
    uint64_t hash = 1469598103934665603ull;
    for (const char16_t c : key) {
        hash ^= FoldCaseUnit(c);
        hash *= 1099511628211ull;
    }
    return static_cast<size_t>(hash);
}
