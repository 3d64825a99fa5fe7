// Natural numbers in limbs of nine decimal digits: the exact arithmetic behind clsLargeNumber.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace decimal_natural {

// Least significant limb first, each below kBase, no zero limb at the top; zero is empty.
using Limbs = std::vector<uint32_t>;

inline constexpr uint32_t kBase = 1000000000u;
inline constexpr size_t kDigitsPerLimb = 9;

// Characters other than "0" to "9" count as the digit 0.
Limbs FromDecimal(std::u16string_view digits);
// Without leading zeros; "0" for zero.
std::u16string ToDecimal(const Limbs& value);

// -1, 0 or 1.
int Compare(const Limbs& a, const Limbs& b) noexcept;
Limbs Add(const Limbs& a, const Limbs& b);
// a - b for a >= b.
Limbs Sub(const Limbs& a, const Limbs& b);
Limbs Mul(const Limbs& a, const Limbs& b);
// b must not be zero.
void DivMod(const Limbs& a, const Limbs& b, Limbs& quotient, Limbs& remainder);
// The quotient alone (saves scaling the remainder back); b must not be zero.
Limbs Div(const Limbs& a, const Limbs& b);

// In place: a = a / d, returning a mod d; d from 1 to 2^32 - 1.
uint32_t DivSmall(Limbs& a, uint32_t d) noexcept;
// In place: a = a × m + add.
void MulSmallAdd(Limbs& a, uint32_t m, uint32_t add);

Limbs PowerOfTen(size_t exponent);
// The value if it fits in 64 bits; ok false otherwise.
uint64_t ToUint64(const Limbs& value, bool& ok) noexcept;
Limbs FromUint64(uint64_t value);

}  // namespace decimal_natural
