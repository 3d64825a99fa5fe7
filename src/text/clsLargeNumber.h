// clsLargeNumber: exact arithmetic on non-negative whole numbers held as decimal digit strings.
#pragma once

#include <string>

// Every method takes digit strings and gives a string; the object holds no state. An empty
// string counts as 0; characters other than digits give an undefined (but returned) result.
class clsLargeNumber {
public:
    // The digit alphabet of base conversion: digit value d at index d.
    static constexpr char16_t kDigitAlphabet[] = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz{|";

    std::u16string StrAdd(const std::u16string& sA, const std::u16string& sB) const;
    // A result below zero is not defined; it comes out as the ten's complement of the padded width.
    std::u16string StrSub(const std::u16string& sA, const std::u16string& sB) const;
    std::u16string StrMult(const std::u16string& sA, const std::u16string& sB) const;
    // A divisor of 0 raises the division by zero error (11).
    std::u16string StrDiv(const std::u16string& sA, const std::u16string& sB) const;
    std::u16string StrMod(const std::u16string& sA, const std::u16string& sB) const;
    // A result of more than kMaxPowerDigits digits raises the overflow error (6).
    std::u16string StrPow(const std::u16string& sA, const std::u16string& sB) const;
    std::u16string StrInc(const std::u16string& sA) const;
    // StrDec("0") raises -2147221404, "Cannot deal with negative numbers!".
    std::u16string StrDec(const std::u16string& sA) const;
    bool StrGT(const std::u16string& sA, const std::u16string& sB) const;
    std::u16string StrTrim(const std::u16string& sA) const;
    std::u16string StrPowMod(const std::u16string& sA, const std::u16string& sB, const std::u16string& sC) const;
    std::u16string StrShl(const std::u16string& sA, const std::u16string& sB) const;
    std::u16string StrShr(const std::u16string& sA, const std::u16string& sB) const;
    std::u16string StrHalf(const std::u16string& sA) const;
    bool StrStraight(const std::u16string& sA) const;
    // Digit-wise "XOR", "AND", "OR" or "NOT" (a XOR 15) of alphabet digit strings.
    std::u16string BooleanOperation(const std::u16string& sA, const std::u16string& sB,
                                    const std::u16string& Operator) const;
    // A base of 0 raises error 11, a base of 1 error 5 (its digits would never end).
    std::u16string ConvFromBase10(const std::u16string& sA, const std::u16string& ToBase) const;
    std::u16string ConvToBase10(const std::u16string& sA, const std::u16string& FromBase) const;
    std::u16string ConvertBases(const std::u16string& sA, const std::u16string& FromBase,
                                const std::u16string& ToBase) const;

    // Beyond this a power is refused rather than computed for minutes.
    static constexpr double kMaxPowerDigits = 1.0e7;
};
