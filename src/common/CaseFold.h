// Simple case folding of UTF-16 code units for case-insensitive keys.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Folds one code unit to lower case: ASCII, Latin-1, Latin Extended-A, Greek, Cyrillic and the
// full-width Latin letters. Code units outside those blocks are returned unchanged.
char16_t FoldCaseUnit(char16_t c) noexcept;

std::u16string FoldCase(const std::u16string& text);

bool EqualsIgnoreCase(const std::u16string& a, const std::u16string& b) noexcept;

// Hash and equality for unordered containers keyed case-insensitively.
struct CaseInsensitiveHash {
    size_t operator()(const std::u16string& key) const noexcept;
};
struct CaseInsensitiveEqual {
    bool operator()(const std::u16string& a, const std::u16string& b) const noexcept {
        return EqualsIgnoreCase(a, b);
    }
};
