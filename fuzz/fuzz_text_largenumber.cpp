// Fuzzes clsLargeNumber: on digit strings the results must satisfy the identities of whole-number
// arithmetic; on arbitrary characters every call must simply return (or raise a CtlError).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "common/CtlError.h"
#include "text/clsLargeNumber.h"

namespace {

// Keeps each run of the fuzz test short under the sanitizers.
constexpr size_t kMaxDigits = 200;
// Long enough for both quotient and divisor to pass 80 limbs of nine digits.
constexpr size_t kStretchedDigits = 1600;

bool stretchAllowed() {
    static const bool allowed = std::getenv("TC_FUZZ_LONG") != nullptr;
    return allowed;
}

std::u16string decimalText(unsigned value) {
    const std::string s = std::to_string(value);
    return std::u16string(s.begin(), s.end());
}

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void digitIdentities(const clsLargeNumber& ln, const std::u16string& a, const std::u16string& b, uint8_t pick) {
    const std::u16string ta = ln.StrTrim(a);
    const std::u16string tb = ln.StrTrim(b);
    const std::u16string sum = ln.StrAdd(ta, tb);
    require(ln.StrTrim(ln.StrSub(sum, tb)) == ta);
    require(ln.StrGT(sum, ta) == (tb != u"0"));
    require(!(ln.StrGT(a, b) && ln.StrGT(b, a)));
    const std::u16string product = ln.StrMult(a, b);
    require(ln.StrMult(b, a) == product);
    if (tb != u"0") {
        require(ln.StrDiv(product, b) == ta);
        const std::u16string q = ln.StrDiv(a, b);
        const std::u16string r = ln.StrTrim(ln.StrMod(a, b));
        require(ln.StrGT(tb, r));
        require(ln.StrTrim(ln.StrAdd(ln.StrMult(q, b), r)) == ta);
    }
    require(ln.StrTrim(ln.StrAdd(ln.StrMult(ln.StrHalf(a), u"2"), ln.StrStraight(a) ? u"0" : u"1")) == ta);
    require(ln.StrDec(ln.StrInc(ta)) == ta);
    const std::u16string base = decimalText(2u + pick % 63u);
    const std::u16string converted = ln.ConvFromBase10(ta, base);
    require(ta == u"0" ? converted.empty() : ln.ConvToBase10(converted, base) == ta);
    const std::u16string shift = decimalText(pick % 70u);
    require(ln.StrShr(ln.StrShl(ta, shift), shift) == ta);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2) {
        return 0;
    }
    const clsLargeNumber ln;
    const uint8_t mode = data[0];
    const uint8_t pick = data[1];
    data += 2;
    size -= 2;
    const size_t split = size / 2;
    const size_t lenA = split < kMaxDigits ? split : kMaxDigits;
    const size_t lenB = size - split < kMaxDigits ? size - split : kMaxDigits;
    std::u16string a(lenA, u'0');
    std::u16string b(lenB, u'0');
    const bool digitsOnly = (mode & 1) == 0;
    for (size_t i = 0; i < lenA; ++i) {
        a[i] = digitsOnly ? static_cast<char16_t>(u'0' + data[i] % 10) : static_cast<char16_t>(data[i]);
    }
    for (size_t i = 0; i < lenB; ++i) {
        b[i] = digitsOnly ? static_cast<char16_t>(u'0' + data[split + i] % 10) : static_cast<char16_t>(data[split + i]);
    }
    if (digitsOnly) {
        if (stretchAllowed() && pick >= 0xFC && !a.empty() && !b.empty()) {
            // Now and then stretch the operands past the size where division turns recursive.
            // Slow under the sanitizers, so only in long sessions (TC_FUZZ_LONG set), not in the
            // short runs of the test suite.
            const size_t wantA = kStretchedDigits + static_cast<size_t>(mode & 0x0E) * 97;
            const size_t wantB = kStretchedDigits / 2 + static_cast<size_t>(mode >> 4) * 131;
            std::u16string longA;
            std::u16string longB;
            while (longA.size() < wantA) {
                longA += a;
            }
            while (longB.size() < wantB) {
                longB += b;
            }
            digitIdentities(ln, longA, longB, pick);
            return 0;
        }
        digitIdentities(ln, a, b, pick);
        return 0;
    }
    // Anything at all: each call must come back.
    const std::u16string shortB = b.substr(0, 3);
    const auto attempt = [](auto&& call) {
        try {
            call();
        } catch (const CtlError&) {
        }
    };
    attempt([&] { ln.StrAdd(a, b); });
    attempt([&] { ln.StrSub(a, b); });
    attempt([&] { ln.StrMult(a, b); });
    attempt([&] { ln.StrDiv(a, b); });
    attempt([&] { ln.StrMod(a, b); });
    attempt([&] { ln.StrPow(a.substr(0, 50), shortB); });
    attempt([&] { ln.StrPowMod(a.substr(0, 50), b.substr(0, 50), a); });
    attempt([&] { ln.StrInc(a); });
    attempt([&] { ln.StrDec(a); });
    attempt([&] { ln.StrShl(a, shortB); });
    attempt([&] { ln.StrShr(a, shortB); });
    attempt([&] { ln.BooleanOperation(a, b, pick % 2 ? u"XOR" : u"NOT"); });
    attempt([&] { ln.ConvFromBase10(a, shortB); });
    attempt([&] { ln.ConvToBase10(a, shortB); });
    attempt([&] { ln.ConvertBases(a, shortB, b.substr(0, 2)); });
    return 0;
}
