#include "text/clsLargeNumber.h"

#include <cmath>
#include <cstdint>
#include <vector>

#include "common/CtlError.h"
#include "text/DecimalNatural.h"

namespace dn = decimal_natural;

namespace {

constexpr int32_t kNegativeResultNumber = -2147221404;  // object error 100
constexpr int32_t kDivisionByZeroNumber = 11;
constexpr size_t kBlockDigits = 14;                      // the width a negative difference wraps at

CtlError divisionByZero(const char16_t* source) {
    return CtlError(source, u"Division by zero", kDivisionByZeroNumber);
}

bool isZeroOrEmpty(const std::u16string& s) {
    return s.empty() || s == u"0";
}

// Value of an alphabet character; -1 when it is not in the alphabet.
int32_t alphabetValue(char16_t c) noexcept {
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    if (c >= u'A' && c <= u'Z') {
        return 10 + (c - u'A');
    }
    if (c >= u'a' && c <= u'z') {
        return 36 + (c - u'a');
    }
    if (c == u'{') {
        return 62;
    }
    if (c == u'|') {
        return 63;
    }
    return -1;
}

// Index of the first character that isn't "0".
size_t firstNonZero(const std::u16string& s) noexcept {
    size_t i = 0;
    while (i < s.size() && s[i] == u'0') {
        ++i;
    }
    return i;
}

// The exponent's binary digits, least significant first.
std::vector<bool> binaryDigits(dn::Limbs value) {
    std::vector<bool> bits;
    constexpr uint32_t kChunk = 1u << 30;
    while (!value.empty()) {
        uint32_t piece = dn::DivSmall(value, kChunk);
        const size_t count = value.empty() ? 0 : 30;
        size_t produced = 0;
        while (piece != 0 || produced < count) {
            bits.push_back((piece & 1u) != 0);
            piece >>= 1;
            ++produced;
        }
    }
    return bits;
}

}  // namespace

std::u16string clsLargeNumber::StrTrim(const std::u16string& sA) const {
    const size_t start = firstNonZero(sA);
    return start == sA.size() ? std::u16string(u"0") : sA.substr(start);
}

bool clsLargeNumber::StrGT(const std::u16string& sA, const std::u16string& sB) const {
    // Compared as text after trimming: the longer is greater, then the first differing character.
    size_t a = firstNonZero(sA);
    size_t b = firstNonZero(sB);
    const size_t lenA = a == sA.size() ? 1 : sA.size() - a;
    const size_t lenB = b == sB.size() ? 1 : sB.size() - b;
    if (lenA != lenB) {
        return lenA > lenB;
    }
    for (size_t k = 0; k < lenA; ++k) {
        const char16_t ca = a == sA.size() ? u'0' : sA[a + k];
        const char16_t cb = b == sB.size() ? u'0' : sB[b + k];
        if (ca != cb) {
            return ca > cb;
        }
    }
    return false;
}

std::u16string clsLargeNumber::StrAdd(const std::u16string& sA, const std::u16string& sB) const {
    if (isZeroOrEmpty(sA)) {
        return sB;
    }
    if (isZeroOrEmpty(sB)) {
        return sA;
    }
    return dn::ToDecimal(dn::Add(dn::FromDecimal(sA), dn::FromDecimal(sB)));
}

std::u16string clsLargeNumber::StrSub(const std::u16string& sA, const std::u16string& sB) const {
    const dn::Limbs a = dn::FromDecimal(sA);
    const dn::Limbs b = dn::FromDecimal(sB);
    if (dn::Compare(a, b) >= 0) {
        return dn::ToDecimal(dn::Sub(a, b));
    }
    // The last borrow has nowhere to go: what remains is the difference from the next power of
    // ten above the padded blocks.
    const size_t longer = sA.size() > sB.size() ? sA.size() : sB.size();
    const size_t width = (longer + kBlockDigits - 1) / kBlockDigits * kBlockDigits;
    return dn::ToDecimal(dn::Sub(dn::PowerOfTen(width), dn::Sub(b, a)));
}

std::u16string clsLargeNumber::StrMult(const std::u16string& sA, const std::u16string& sB) const {
    return dn::ToDecimal(dn::Mul(dn::FromDecimal(sA), dn::FromDecimal(sB)));
}

std::u16string clsLargeNumber::StrDiv(const std::u16string& sA, const std::u16string& sB) const {
    if (StrGT(sB, sA)) {
        return u"0";
    }
    const dn::Limbs b = dn::FromDecimal(sB);
    if (b.empty()) {
        throw divisionByZero(u"clsLargeNumber.StrDiv");
    }
    dn::Limbs q;
    dn::Limbs r;
    dn::DivMod(dn::FromDecimal(sA), b, q, r);
    return dn::ToDecimal(q);
}

std::u16string clsLargeNumber::StrMod(const std::u16string& sA, const std::u16string& sB) const {
    if (StrGT(sB, sA)) {
        return sA;  // as given, untrimmed
    }
    const dn::Limbs b = dn::FromDecimal(sB);
    if (b.empty()) {
        throw divisionByZero(u"clsLargeNumber.StrMod");
    }
    dn::Limbs q;
    dn::Limbs r;
    dn::DivMod(dn::FromDecimal(sA), b, q, r);
    return dn::ToDecimal(r);
}

std::u16string clsLargeNumber::StrPow(const std::u16string& sA, const std::u16string& sB) const {
    if (sB == u"0") {
        return u"1";
    }
    if (sB == u"1") {
        return sA;
    }
    const dn::Limbs exponent = dn::FromDecimal(sB);
    dn::Limbs base = dn::FromDecimal(sA);
    if (exponent.empty()) {
        return u"1";
    }
    if (base.empty()) {
        return u"0";
    }
    if (base.size() == 1 && base[0] == 1) {
        return u"1";
    }
    bool fits = false;
    const uint64_t e = dn::ToUint64(exponent, fits);
    const double topLimbs = static_cast<double>(base.back()) +
                            (base.size() > 1 ? static_cast<double>(base[base.size() - 2]) / dn::kBase : 0.0);
    const double digitsPerPower = static_cast<double>((base.size() - 1) * dn::kDigitsPerLimb) + std::log10(topLimbs);
    if (!fits || static_cast<double>(e) * digitsPerPower > kMaxPowerDigits) {
        throw CtlError(u"clsLargeNumber.StrPow", u"Overflow", CtlError::kOverflow);
    }
    dn::Limbs result{1};
    for (int bit = 63; bit >= 0; --bit) {
        result = dn::Mul(result, result);
        if (((e >> bit) & 1u) != 0) {
            result = dn::Mul(result, base);
        }
    }
    return dn::ToDecimal(result);
}

std::u16string clsLargeNumber::StrInc(const std::u16string& sA) const {
    std::u16string s = sA;
    for (size_t k = s.size(); k-- > 0;) {
        if (s[k] == u'9') {
            s[k] = u'0';
            continue;
        }
        // A character that isn't a digit counts as 0.
        s[k] = (s[k] >= u'0' && s[k] < u'9') ? static_cast<char16_t>(s[k] + 1) : u'1';
        return s;
    }
    return u"1" + s;
}

std::u16string clsLargeNumber::StrDec(const std::u16string& sA) const {
    std::u16string s = sA;
    for (size_t k = s.size(); k-- > 0;) {
        if (s[k] >= u'1' && s[k] <= u'9') {
            s[k] = static_cast<char16_t>(s[k] - 1);
            return StrTrim(s);
        }
        s[k] = u'9';
    }
    throw CtlError(u"clsLargeNumber.StrDec", u"Cannot deal with negative numbers!", kNegativeResultNumber);
}

std::u16string clsLargeNumber::StrPowMod(const std::u16string& sA, const std::u16string& sB,
                                         const std::u16string& sC) const {
    if (sB == u"1") {
        return StrMod(sA, sC);
    }
    if (sB == u"0") {
        return u"1";
    }
    const dn::Limbs modulus = dn::FromDecimal(sC);
    if (modulus.empty()) {
        throw divisionByZero(u"clsLargeNumber.StrMod");
    }
    dn::Limbs q;
    dn::Limbs base;
    dn::DivMod(dn::FromDecimal(sA), modulus, q, base);
    const bool modulusIsOne = modulus.size() == 1 && modulus[0] == 1;
    dn::Limbs result = modulusIsOne ? dn::Limbs() : dn::Limbs{1};
    const std::vector<bool> bits = binaryDigits(dn::FromDecimal(sB));
    for (size_t k = bits.size(); k-- > 0;) {
        dn::DivMod(dn::Mul(result, result), modulus, q, result);
        if (bits[k]) {
            dn::DivMod(dn::Mul(result, base), modulus, q, result);
        }
    }
    return dn::ToDecimal(result);
}

std::u16string clsLargeNumber::StrShl(const std::u16string& sA, const std::u16string& sB) const {
    return StrMult(sA, StrPow(u"2", sB));
}

std::u16string clsLargeNumber::StrShr(const std::u16string& sA, const std::u16string& sB) const {
    return StrDiv(sA, StrPow(u"2", sB));
}

std::u16string clsLargeNumber::StrHalf(const std::u16string& sA) const {
    dn::Limbs a = dn::FromDecimal(sA);
    dn::DivSmall(a, 2);
    return dn::ToDecimal(a);
}

bool clsLargeNumber::StrStraight(const std::u16string& sA) const {
    // Digits share their parity with their character codes.
    return sA.empty() || (sA.back() & 1) == 0;
}

std::u16string clsLargeNumber::BooleanOperation(const std::u16string& sA, const std::u16string& sB,
                                                const std::u16string& Operator) const {
    enum class Op { Xor, And, Or, Not };
    Op op = Op::Xor;
    if (Operator == u"XOR") {
        op = Op::Xor;
    } else if (Operator == u"AND") {
        op = Op::And;
    } else if (Operator == u"OR") {
        op = Op::Or;
    } else if (Operator == u"NOT") {
        op = Op::Not;
    } else {
        return std::u16string();  // every digit is empty
    }
    const size_t len = sA.size() > sB.size() ? sA.size() : sB.size();
    const size_t padA = len - sA.size();
    const size_t padB = len - sB.size();
    std::u16string out;
    out.reserve(len);
    for (size_t k = 0; k < len; ++k) {
        const int32_t a = k < padA ? 0 : alphabetValue(sA[k - padA]);
        const int32_t b = k < padB ? 0 : alphabetValue(sB[k - padB]);
        int32_t r = 0;
        switch (op) {
        case Op::Xor:
            r = a ^ b;
            break;
        case Op::And:
            r = a & b;
            break;
        case Op::Or:
            r = a | b;
            break;
        case Op::Not:
            r = a ^ 15;
            break;
        }
        // Outside the alphabet (from characters that aren't in it) the digit is empty.
        if (r >= 0 && r < 64) {
            out += kDigitAlphabet[r];
        }
    }
    return out;
}

std::u16string clsLargeNumber::ConvFromBase10(const std::u16string& sA, const std::u16string& ToBase) const {
    if (sA == u"0") {
        return std::u16string();
    }
    const dn::Limbs base = dn::FromDecimal(ToBase);
    if (base.empty()) {
        throw divisionByZero(u"clsLargeNumber.ConvFromBase10");
    }
    if (base.size() == 1 && base[0] == 1) {
        throw CtlError(u"clsLargeNumber.ConvFromBase10", u"Invalid procedure call or argument",
                       CtlError::kInvalidProcedureCall);
    }
    dn::Limbs number = dn::FromDecimal(sA);
    if (number.empty()) {
        return u"0";  // "00" or "": one round of the loop, digit 0
    }
    // Digit values, least significant first; -1 for a value with no character (64 and above).
    std::vector<int32_t> digits;
    if (base.size() == 1) {
        const uint32_t b = base[0];
        uint64_t chunk = b;
        size_t perChunk = 1;
        while (chunk * b <= UINT32_MAX) {
            chunk *= b;
            ++perChunk;
        }
        while (!number.empty()) {
            uint32_t r = dn::DivSmall(number, static_cast<uint32_t>(chunk));
            for (size_t k = 0; k < perChunk && (r != 0 || !number.empty()); ++k) {
                const uint32_t d = r % b;
                digits.push_back(d < 64 ? static_cast<int32_t>(d) : -1);
                r /= b;
            }
        }
    } else {
        dn::Limbs q;
        dn::Limbs r;
        while (!number.empty()) {
            dn::DivMod(number, base, q, r);
            const uint32_t low = r.empty() ? 0u : r[0];
            digits.push_back(r.size() <= 1 && low < 64 ? static_cast<int32_t>(low) : -1);
            number.swap(q);
        }
    }
    std::u16string out;
    out.reserve(digits.size());
    for (size_t k = digits.size(); k-- > 0;) {
        if (digits[k] >= 0) {
            out += kDigitAlphabet[digits[k]];
        }
    }
    return out;
}

std::u16string clsLargeNumber::ConvToBase10(const std::u16string& sA, const std::u16string& FromBase) const {
    if (sA.empty()) {
        return u"0";
    }
    const dn::Limbs base = dn::FromDecimal(FromBase);
    dn::Limbs sum;
    if (base.size() <= 1) {
        const uint32_t b = base.empty() ? 0 : base[0];
        // Digits gather in a machine word while it holds them, then go in with one multiplication.
        uint64_t pending = 0;
        uint64_t scale = 1;
        for (const char16_t c : sA) {
            const int32_t v = alphabetValue(c);
            const uint32_t d = v < 0 ? 0u : static_cast<uint32_t>(v);  // not in the alphabet: undefined, taken as 0
            if (d >= b || b < 2) {
                dn::MulSmallAdd(sum, static_cast<uint32_t>(scale), static_cast<uint32_t>(pending));
                dn::MulSmallAdd(sum, b, d);
                pending = 0;
                scale = 1;
                continue;
            }
            if (scale * b > UINT32_MAX) {
                dn::MulSmallAdd(sum, static_cast<uint32_t>(scale), static_cast<uint32_t>(pending));
                pending = 0;
                scale = 1;
            }
            pending = pending * b + d;
            scale *= b;
        }
        dn::MulSmallAdd(sum, static_cast<uint32_t>(scale), static_cast<uint32_t>(pending));
    } else {
        for (const char16_t c : sA) {
            const int32_t v = alphabetValue(c);
            sum = dn::Add(dn::Mul(sum, base), dn::FromUint64(v < 0 ? 0u : static_cast<uint64_t>(v)));
        }
    }
    return dn::ToDecimal(sum);
}

std::u16string clsLargeNumber::ConvertBases(const std::u16string& sA, const std::u16string& FromBase,
                                            const std::u16string& ToBase) const {
    return ConvFromBase10(ConvToBase10(sA, FromBase), ToBase);
}
