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

// A character not in the alphabet has no defined value; it counts as 0.
uint32_t digitValueOrZero(char16_t c) noexcept {
    const int32_t v = alphabetValue(c);
    return v < 0 ? 0u : static_cast<uint32_t>(v);
}

// Below this many limbs a number is converted digit chunk by digit chunk; above it the work is
// split at a power of the base, so that long numbers cost products rather than n^2 steps.
constexpr size_t kPlainConversionLimbs = 40;

// The digits of numbers in a base of one limb (2 to 999,999,999).
class SmallBaseDigits {
public:
    explicit SmallBaseDigits(uint32_t base) : m_base(base) {
        uint64_t chunk = base;
        while (chunk * base <= UINT32_MAX) {
            chunk *= base;
            ++m_chunkDigits;
        }
        m_chunk = static_cast<uint32_t>(chunk);
    }

    // Appends the digits of n, most significant first: exactly width digits when width isn't 0,
    // otherwise without leading zeros.
    void write(const dn::Limbs& n, size_t width, std::vector<uint32_t>& out) {
        if (n.size() <= kPlainConversionLimbs) {
            writePlain(n, width, out);
            return;
        }
        // The largest square of squares of the chunk no longer than half the number.
        size_t level = 0;
        while (power(level + 1).size() * 2 <= n.size()) {
            ++level;
        }
        const size_t lowDigits = m_chunkDigits << level;
        dn::Limbs q;
        dn::Limbs r;
        dn::DivMod(n, power(level), q, r);
        write(q, width > lowDigits ? width - lowDigits : 0, out);
        write(r, lowDigits, out);
    }

private:
    const dn::Limbs& power(size_t level) {
        if (m_powers.empty()) {
            m_powers.push_back(dn::FromUint64(m_chunk));
        }
        while (m_powers.size() <= level) {
            m_powers.push_back(dn::Mul(m_powers.back(), m_powers.back()));
        }
        return m_powers[level];
    }

    void writePlain(const dn::Limbs& n, size_t width, std::vector<uint32_t>& out) const {
        std::vector<uint32_t> reversed;
        dn::Limbs m = n;
        while (!m.empty()) {
            uint32_t r = dn::DivSmall(m, m_chunk);
            for (size_t k = 0; k < m_chunkDigits; ++k) {
                reversed.push_back(r % m_base);
                r /= m_base;
            }
        }
        while (!reversed.empty() && reversed.back() == 0) {
            reversed.pop_back();
        }
        while (reversed.size() < width) {
            reversed.push_back(0);
        }
        out.insert(out.end(), reversed.rbegin(), reversed.rend());
    }

    uint32_t m_base = 2;
    uint32_t m_chunk = 2;
    size_t m_chunkDigits = 1;
    std::vector<dn::Limbs> m_powers;  // chunk, chunk^2, chunk^4, ...
};

// The value of a digit string in a base of one limb (2 to 999,999,999). Digits at or above the
// base are not checked: the value is the sum of digit × base^position all the same.
class SmallBaseValue {
public:
    explicit SmallBaseValue(uint32_t base) : m_base(base) {}

    dn::Limbs valueOf(const char16_t* digits, size_t count) {
        if (count <= kPlainConversionLimbs * dn::kDigitsPerLimb) {
            return valuePlain(digits, count);
        }
        // The low part takes the largest power-of-two length below the count.
        size_t level = 0;
        while ((static_cast<size_t>(2) << level) < count) {
            ++level;
        }
        const size_t lowCount = static_cast<size_t>(1) << level;
        const dn::Limbs high = valueOf(digits, count - lowCount);
        const dn::Limbs low = valueOf(digits + (count - lowCount), lowCount);
        return dn::Add(dn::Mul(high, power(level)), low);
    }

private:
    // base^(2^level)
    const dn::Limbs& power(size_t level) {
        if (m_powers.empty()) {
            m_powers.push_back(dn::FromUint64(m_base));
        }
        while (m_powers.size() <= level) {
            m_powers.push_back(dn::Mul(m_powers.back(), m_powers.back()));
        }
        return m_powers[level];
    }

    // Horner's rule; digits gather in a machine word while it holds them.
    dn::Limbs valuePlain(const char16_t* digits, size_t count) const {
        dn::Limbs sum;
        uint64_t pending = 0;
        uint64_t scale = 1;
        for (size_t i = 0; i < count; ++i) {
            const uint32_t d = digitValueOrZero(digits[i]);
            if (d >= m_base) {
                dn::MulSmallAdd(sum, static_cast<uint32_t>(scale), static_cast<uint32_t>(pending));
                dn::MulSmallAdd(sum, m_base, d);
                pending = 0;
                scale = 1;
                continue;
            }
            if (scale * m_base > UINT32_MAX) {
                dn::MulSmallAdd(sum, static_cast<uint32_t>(scale), static_cast<uint32_t>(pending));
                pending = 0;
                scale = 1;
            }
            pending = pending * m_base + d;
            scale *= m_base;
        }
        dn::MulSmallAdd(sum, static_cast<uint32_t>(scale), static_cast<uint32_t>(pending));
        return sum;
    }

    uint32_t m_base = 2;
    std::vector<dn::Limbs> m_powers;  // base, base^2, base^4, ...
};

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
    return dn::ToDecimal(dn::Div(dn::FromDecimal(sA), b));
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
    // Digit values, most significant first; a value of 64 and above has no character.
    std::vector<uint32_t> digits;
    if (base.size() == 1) {
        SmallBaseDigits(base[0]).write(number, 0, digits);
    } else {
        dn::Limbs q;
        dn::Limbs r;
        std::vector<uint32_t> reversed;
        while (!number.empty()) {
            dn::DivMod(number, base, q, r);
            const bool small = r.size() <= 1 && (r.empty() || r[0] < 64);
            reversed.push_back(small ? (r.empty() ? 0u : r[0]) : 64u);
            number.swap(q);
        }
        digits.assign(reversed.rbegin(), reversed.rend());
    }
    std::u16string out;
    out.reserve(digits.size());
    for (const uint32_t d : digits) {
        if (d < 64) {
            out += kDigitAlphabet[d];
        }
    }
    return out;
}

std::u16string clsLargeNumber::ConvToBase10(const std::u16string& sA, const std::u16string& FromBase) const {
    if (sA.empty()) {
        return u"0";
    }
    const dn::Limbs base = dn::FromDecimal(FromBase);
    if (base.size() == 1 && base[0] >= 2) {
        return dn::ToDecimal(SmallBaseValue(base[0]).valueOf(sA.data(), sA.size()));
    }
    // Base 0 keeps the last digit, base 1 adds the digits up; bases beyond one limb go by Horner.
    dn::Limbs sum;
    for (const char16_t c : sA) {
        const uint32_t d = digitValueOrZero(c);
        if (base.size() <= 1) {
            dn::MulSmallAdd(sum, base.empty() ? 0u : base[0], d);
        } else {
            sum = dn::Add(dn::Mul(sum, base), dn::FromUint64(d));
        }
    }
    return dn::ToDecimal(sum);
}

std::u16string clsLargeNumber::ConvertBases(const std::u16string& sA, const std::u16string& FromBase,
                                            const std::u16string& ToBase) const {
    return ConvFromBase10(ConvToBase10(sA, FromBase), ToBase);
}
