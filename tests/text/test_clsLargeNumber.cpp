// Tests of clsLargeNumber: fixed cases and quirks, random operands against 128-bit integers, and
// identities on numbers of up to 20,000 digits.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

#include "RaisedError.h"
#include "common/CtlError.h"
#include "text/clsLargeNumber.h"

namespace {

const clsLargeNumber ln;

std::u16string u16(const std::string& s) {
    return std::u16string(s.begin(), s.end());
}

// Random digit string of exactly n digits with a non-zero first digit.
std::u16string randomNumber(std::mt19937_64& rng, size_t n) {
    std::uniform_int_distribution<int> digit(0, 9);
    std::u16string s(n, u'0');
    for (char16_t& c : s) c = static_cast<char16_t>(u'0' + digit(rng));
    if (n > 0 && s[0] == u'0') s[0] = u'7';
    return s;
}

#if defined(__SIZEOF_INT128__)
using u128 = unsigned __int128;

std::u16string toDecimal(u128 v) {
    if (v == 0) return u"0";
    std::u16string s;
    while (v != 0) {
        s.insert(s.begin(), static_cast<char16_t>(u'0' + static_cast<int>(v % 10)));
        v /= 10;
    }
    return s;
}

std::u16string toBase(u128 v, unsigned base) {
    static const char16_t* const kAlphabet = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz{|";
    std::u16string s;
    while (v != 0) {
        s.insert(s.begin(), kAlphabet[static_cast<int>(v % base)]);
        v /= base;
    }
    return s;
}

u128 powMod(u128 a, u128 e, u128 m) {
    u128 r = 1 % m;
    a %= m;
    while (e != 0) {
        if ((e & 1) != 0) r = r * a % m;
        a = a * a % m;
        e >>= 1;
    }
    return r;
}
#endif

}  // namespace

TEST(clsLargeNumber, FixedCasesAndKeptQuirks) {
    struct Case { const char* what; std::u16string got; std::u16string expected; };
    const Case cases[] = {
        {"add empty", ln.StrAdd(u"", u"5"), u"5"},
        {"add carry across a block", ln.StrAdd(u"99999999999999", u"1"), u"100000000000000"},
        {"add returns the other operand as given", ln.StrAdd(u"0", u"007"), u"007"},
        {"add trims otherwise", ln.StrAdd(u"00", u"007"), u"7"},
        {"add two empties", ln.StrAdd(u"", u""), u""},
        {"sub to zero", ln.StrSub(u"123", u"0123"), u"0"},
        {"negative difference wraps at 14 digits", ln.StrSub(u"1", u"2"), u"99999999999999"},
        {"negative difference wraps at 28 digits", ln.StrSub(u"5", u"100000000000000"),
         u"9999999999999900000000000005"},
        {"mult by zero", ln.StrMult(u"000", u"123"), u"0"},
        {"mult by empty", ln.StrMult(u"", u"123"), u"0"},
        {"div equal", ln.StrDiv(u"0042", u"42"), u"1"},
        // Quotient digits whose first estimate is one too large even after the two-limb check.
        {"div with a corrected estimate", ln.StrDiv(u"420000000000000086100000000000000000", u"600000000000000123999999999"),
         u"699999999"},
        {"mod with a corrected estimate", ln.StrMod(u"420000000000000086100000000000000000", u"600000000000000123999999999"),
         u"599999999300000124699999999"},
        {"div with a corrected estimate, longer",
         ln.StrDiv(u"420000000000000086100000000000000000000000000000000005",
                   u"600000000000000123999999999999999999999999999"),
         u"699999999"},
        {"mod with a corrected estimate, longer",
         ln.StrMod(u"420000000000000086100000000000000000000000000000000005",
                   u"600000000000000123999999999999999999999999999"),
         u"599999999300000124000000000000000000700000004"},
        {"div going on after a corrected estimate",
         ln.StrDiv(u"420000000000000086100000000000000000000000000000000005000000000000000000000000007",
                   u"600000000000000123999999999999999999999999999"),
         u"699999999999999998833333333333333574"},
        {"mod going on after a corrected estimate",
         ln.StrMod(u"420000000000000086100000000000000000000000000000000005000000000000000000000000007",
                   u"600000000000000123999999999999999999999999999"),
         u"266666667366636828999999998833333333333333581"},
        {"mod of a smaller number is the number as given", ln.StrMod(u"007", u"9"), u"007"},
        {"mod equal", ln.StrMod(u"42", u"42"), u"0"},
        {"pow 0", ln.StrPow(u"12", u"0"), u"1"},
        {"pow 1 gives the base as given", ln.StrPow(u"007", u"1"), u"007"},
        {"pow 01 goes through the product", ln.StrPow(u"007", u"01"), u"7"},
        {"zero to zero", ln.StrPow(u"0", u"0"), u"1"},
        {"zero to the fifth", ln.StrPow(u"0", u"5"), u"0"},
        {"inc keeps leading zeros", ln.StrInc(u"0099"), u"0100"},
        {"inc of empty", ln.StrInc(u""), u"1"},
        {"dec trims", ln.StrDec(u"0010"), u"9"},
        {"trim", ln.StrTrim(u"000"), u"0"},
        {"trim empty", ln.StrTrim(u""), u"0"},
        {"trim keeps the rest", ln.StrTrim(u"00100"), u"100"},
        {"half of one", ln.StrHalf(u"1"), u"0"},
        {"shl by 0", ln.StrShl(u"05", u"0"), u"5"},
        {"shr below", ln.StrShr(u"3", u"2"), u"0"},
        {"powmod exponent 0 is 1 even modulo 1", ln.StrPowMod(u"5", u"0", u"1"), u"1"},
        {"powmod exponent 00 is 1 mod c", ln.StrPowMod(u"5", u"00", u"1"), u"0"},
        {"powmod exponent 1 is StrMod", ln.StrPowMod(u"05", u"1", u"7"), u"05"},
        {"powmod exponent 1 reduces", ln.StrPowMod(u"15", u"1", u"7"), u"1"},
        {"conv of 0 is empty", ln.ConvFromBase10(u"0", u"16"), u""},
        {"conv of 00 gives one digit", ln.ConvFromBase10(u"00", u"16"), u"0"},
        {"conv of empty gives one digit", ln.ConvFromBase10(u"", u"16"), u"0"},
        {"base 64 top digit", ln.ConvFromBase10(u"4095", u"64"), u"||"},
        {"base 64", ln.ConvFromBase10(u"64", u"64"), u"10"},
        {"base 62 is case-sensitive", ln.ConvToBase10(u"zZ", u"62"), u"3817"},
        {"base 100: digit 65 has no character", ln.ConvFromBase10(u"6500", u"100"), u"0"},
        {"to base 10 of empty", ln.ConvToBase10(u"", u"16"), u"0"},
        {"to base 10 trims", ln.ConvToBase10(u"000F", u"16"), u"15"},
        {"digits beyond the base are not checked", ln.ConvToBase10(u"1G", u"16"), u"32"},
        {"convert", ln.ConvertBases(u"FF", u"16", u"2"), u"11111111"},
        {"convert zero", ln.ConvertBases(u"000", u"16", u"2"), u""},
        {"not ignores sB", ln.BooleanOperation(u"F", u"", u"NOT"), u"0"},
        {"not pads to sB", ln.BooleanOperation(u"1", u"ABC", u"NOT"), u"FFE"},
        {"and pads", ln.BooleanOperation(u"F0", u"3", u"AND"), u"00"},
        {"or pads", ln.BooleanOperation(u"F0", u"3", u"OR"), u"F3"},
        {"operator is exact", ln.BooleanOperation(u"12", u"34", u"xor"), u""},
        {"not beyond hex", ln.BooleanOperation(u"G", u"", u"NOT"), u"V"},
    };
    for (const Case& c : cases) EXPECT_EQ(c.got, c.expected) << c.what;

    struct Order { std::u16string a; std::u16string b; bool greater; };
    const Order orders[] = {
        {u"10", u"9", true}, {u"007", u"7", false}, {u"7", u"007", false}, {u"", u"0", false},
        {u"1", u"", true},   {u"123", u"124", false}, {u"124", u"123", true}, {u"0000", u"00", false},
    };
    for (const Order& o : orders) EXPECT_EQ(ln.StrGT(o.a, o.b), o.greater);
    struct Parity { std::u16string a; bool even; };
    for (const Parity& p : {Parity{u"0", true}, Parity{u"7", false}, Parity{u"1234", true}, Parity{u"", true},
                            Parity{u"99999999999999999999999", false}}) {
        EXPECT_EQ(ln.StrStraight(p.a), p.even);
    }
}

TEST(clsLargeNumber, Errors) {
    EXPECT_THAT(RaisedBy([] { ln.StrDec(u"0"); }), testing::EndsWith("|Cannot deal with negative numbers!|-2147221404"));
    EXPECT_EQ(RaisedNumber([] { ln.StrDec(u"000"); }), -2147221404);
    EXPECT_EQ(RaisedNumber([] { ln.StrDec(u""); }), -2147221404);
    EXPECT_EQ(RaisedNumber([] { ln.StrDiv(u"5", u"0"); }), 11);
    EXPECT_EQ(RaisedNumber([] { ln.StrMod(u"5", u"00"); }), 11);
    EXPECT_EQ(RaisedNumber([] { ln.StrPowMod(u"5", u"3", u"0"); }), 11);
    EXPECT_EQ(RaisedNumber([] { ln.ConvFromBase10(u"5", u"1"); }), 5);
    EXPECT_EQ(RaisedNumber([] { ln.ConvFromBase10(u"5", u"0"); }), 11);
    EXPECT_EQ(RaisedNumber([] { ln.StrPow(u"10", u"100000000"); }), 6);
    EXPECT_EQ(RaisedNumber([] { ln.StrPow(u"2", u"99999999999999999999999"); }), 6);
    // Huge exponents of 0 and 1 are no trouble.
    EXPECT_EQ(ln.StrPow(u"1", u"99999999999999999999999"), u"1");
    EXPECT_EQ(ln.StrPow(u"000", u"99999999999999999999999"), u"0");
}

TEST(clsLargeNumber, RandomSmallOperandsAgainst128BitIntegers) {
#if defined(__SIZEOF_INT128__)
    std::mt19937_64 rng(1554);
    std::uniform_int_distribution<int> bits(1, 62);
    for (int i = 0; i < 4000; ++i) {
        const uint64_t a = rng() >> (64 - bits(rng));
        const uint64_t b = (rng() >> (64 - bits(rng))) | 1u;
        const std::u16string sa = toDecimal(a);
        const std::u16string sb = toDecimal(b);
        const u128 wa = a;
        const u128 wb = b;
        ASSERT_EQ(ln.StrAdd(sa, sb), toDecimal(wa + wb)) << i;
        ASSERT_EQ(ln.StrMult(sa, sb), toDecimal(wa * wb)) << i;
        ASSERT_EQ(ln.StrDiv(sa, sb), toDecimal(wa / wb)) << i;
        if (a >= b) {
            ASSERT_EQ(ln.StrMod(sa, sb), toDecimal(wa % wb)) << i;
            ASSERT_EQ(ln.StrSub(sa, sb), toDecimal(wa - wb)) << i;
        }
        ASSERT_EQ(ln.StrGT(sa, sb), a > b) << i;
        ASSERT_EQ(ln.StrHalf(sa), toDecimal(wa / 2)) << i;
        ASSERT_EQ(ln.StrInc(sa), toDecimal(wa + 1)) << i;
        if (a > 0) {
            ASSERT_EQ(ln.StrDec(sa), toDecimal(wa - 1)) << i;
        }
        const unsigned shift = static_cast<unsigned>(i % 60);
        ASSERT_EQ(ln.StrShl(sa, toDecimal(shift)), toDecimal(wa << shift)) << i;
        ASSERT_EQ(ln.StrShr(sa, toDecimal(shift)), toDecimal(wa >> shift)) << i;
        const uint64_t m = (rng() >> 20) + 2;
        const uint64_t e = rng() >> (64 - bits(rng));
        if (e > 1) {
            ASSERT_EQ(ln.StrPowMod(sa, toDecimal(e), toDecimal(m)), toDecimal(powMod(a, e, m))) << i;
        }
        const unsigned base = 2 + static_cast<unsigned>(i % 63);
        if (a > 0) {
            ASSERT_EQ(ln.ConvFromBase10(sa, toDecimal(base)), toBase(a, base)) << i << " base " << base;
            ASSERT_EQ(ln.ConvToBase10(toBase(a, base), toDecimal(base)), sa) << i << " base " << base;
        }
        const unsigned small = static_cast<unsigned>(a % 1000);
        const unsigned exponent = static_cast<unsigned>(b % 12);
        u128 power = 1;
        for (unsigned k = 0; k < exponent; ++k) power *= small;
        if (exponent != 1) {
            ASSERT_EQ(ln.StrPow(toDecimal(small), toDecimal(exponent)), toDecimal(power)) << i;
        }
    }
#else
    GTEST_SKIP() << "no 128-bit integer on this compiler";
#endif
}

TEST(clsLargeNumber, BooleanOperationsAgainstMachineWords) {
    const auto hex15 = [](uint64_t v) {
        char text[20] = {};
        std::snprintf(text, sizeof text, "%015llX", static_cast<unsigned long long>(v & 0xFFFFFFFFFFFFFFFull));
        return u16(text);
    };
    std::mt19937_64 rng(16);
    for (int i = 0; i < 500; ++i) {
        const uint64_t a = rng() >> 4;
        const uint64_t b = rng() >> 4;
        ASSERT_EQ(ln.BooleanOperation(hex15(a), hex15(b), u"XOR"), hex15(a ^ b));
        ASSERT_EQ(ln.BooleanOperation(hex15(a), hex15(b), u"AND"), hex15(a & b));
        ASSERT_EQ(ln.BooleanOperation(hex15(a), hex15(b), u"OR"), hex15(a | b));
        ASSERT_EQ(ln.BooleanOperation(hex15(a), hex15(b), u"NOT"), hex15(~a));
    }
}

TEST(clsLargeNumber, IdentitiesOnLargeNumbers) {
    std::mt19937_64 rng(20000);
    const size_t sizes[] = {1, 9, 10, 17, 40, 200, 359, 360, 361, 720, 1000, 2500, 5000, 20000};
    for (const size_t na : sizes) {
        for (const size_t nb : sizes) {
            if (na * nb > 20000u * 5000u) continue;
            const std::u16string a = randomNumber(rng, na);
            const std::u16string b = randomNumber(rng, nb);
            const std::u16string product = ln.StrMult(a, b);
            ASSERT_TRUE(product.size() == na + nb || product.size() == na + nb - 1) << na << " x " << nb;
            ASSERT_EQ(ln.StrDiv(product, b), a) << na << " x " << nb;
            ASSERT_EQ(ln.StrMod(product, b), u"0") << na << " x " << nb;
            const std::u16string q = ln.StrDiv(a, b);
            const std::u16string r = ln.StrMod(a, b);
            ASSERT_TRUE(ln.StrGT(b, r)) << na << " / " << nb;
            ASSERT_EQ(ln.StrTrim(ln.StrAdd(ln.StrMult(q, b), r)), a) << na << " / " << nb;
            ASSERT_EQ(ln.StrSub(ln.StrAdd(a, b), b), a) << na << " + " << nb;
            // a × (b + 1) = a × b + a ties products of neighbouring sizes together.
            ASSERT_EQ(ln.StrMult(a, ln.StrInc(b)), ln.StrAdd(product, a)) << na << " x " << nb;
        }
    }
}

TEST(clsLargeNumber, ClosedFormsOfLargeResults) {
    // (10^k - 1)^2 = 10^2k - 2 × 10^k + 1: k - 1 nines, an 8, k - 1 zeros, a 1.
    for (const size_t k : {1u, 14u, 100u, 361u, 1000u, 4321u, 20000u}) {
        const std::u16string nines(k, u'9');
        const std::u16string expected = std::u16string(k - 1, u'9') + u"8" + std::u16string(k - 1, u'0') + u"1";
        EXPECT_EQ(ln.StrMult(nines, nines), expected) << k;
        EXPECT_EQ(ln.StrPow(nines, u"2"), expected) << k;
        // 10^k / 7 repeats 142857.
        const std::u16string power = u"1" + std::u16string(k, u'0');
        const std::u16string q = ln.StrDiv(power, u"7");
        for (size_t d = 0; d < q.size(); ++d) ASSERT_EQ(q[d], u"142857"[d % 6]) << k << " digit " << d;
    }
    // 2^1000 by squaring equals 2^1000 by doubling.
    std::u16string doubled = u"1";
    for (int i = 0; i < 1000; ++i) doubled = ln.StrAdd(doubled, doubled);
    EXPECT_EQ(ln.StrPow(u"2", u"1000"), doubled);
    EXPECT_EQ(ln.ConvFromBase10(doubled, u"16"), u"1" + std::u16string(250, u'0'));
    EXPECT_EQ(ln.ConvFromBase10(doubled, u"2"), u"1" + std::u16string(1000, u'0'));
    EXPECT_EQ(ln.ConvToBase10(u"1" + std::u16string(250, u'0'), u"16"), doubled);
    // Fermat: a^(p-1) mod p = 1 for the primes 2^89 - 1 and 2^127 - 1.
    for (const std::u16string p : {u"618970019642690137449562111", u"170141183460469231731687303715884105727"}) {
        for (const std::u16string a : {u"2", u"3", u"123456789123456789"}) {
            EXPECT_EQ(ln.StrPowMod(a, ln.StrDec(p), p), u"1");
        }
    }
    // Conversion round trips of a long number through several bases.
    std::mt19937_64 rng(64);
    const std::u16string big = randomNumber(rng, 3000);
    for (const std::u16string base : {u"2", u"7", u"16", u"36", u"37", u"63", u"64"}) {
        const std::u16string there = ln.ConvFromBase10(big, base);
        EXPECT_EQ(ln.ConvToBase10(there, base), big) << "base " << std::string(base.begin(), base.end());
        EXPECT_EQ(ln.ConvertBases(ln.ConvertBases(big, u"10", base), base, u"10"), big);
    }
    // Runs of zero digits inside long numbers, both ways: 16^2000 + 1 and 2^5000 + 2^17.
    const std::u16string sparseHex = u"1" + std::u16string(1999, u'0') + u"1";
    const std::u16string sparse = ln.StrInc(ln.StrPow(u"16", u"2000"));
    EXPECT_EQ(ln.ConvFromBase10(sparse, u"16"), sparseHex);
    EXPECT_EQ(ln.ConvToBase10(sparseHex, u"16"), sparse);
    const std::u16string sparseBinary = u"1" + std::u16string(4982, u'0') + u"1" + std::u16string(17, u'0');
    const std::u16string sparse2 = ln.StrAdd(ln.StrPow(u"2", u"5000"), ln.StrPow(u"2", u"17"));
    EXPECT_EQ(ln.ConvFromBase10(sparse2, u"2"), sparseBinary);
    EXPECT_EQ(ln.ConvToBase10(sparseBinary, u"2"), sparse2);
    // Bases beyond one limb: digits below 64 still have characters.
    EXPECT_EQ(ln.ConvFromBase10(u"5000000038", u"1000000007"), u"53");
    EXPECT_EQ(ln.ConvFromBase10(u"6222222222922222222292", u"98765432109876543210"), u"|{");
    EXPECT_EQ(ln.ConvToBase10(u"|{", u"98765432109876543210"), u"6222222222922222222292");
}
