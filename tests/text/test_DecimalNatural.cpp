// Division of long numbers against a plain digit-by-digit long division, and on quotients and
// remainders built to be known: divisors of every shape the recursive division treats apart
// (padded lengths, small top limbs, all nines so that the top halves estimate base^k - 1, the
// largest remainder, none).
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "text/DecimalNatural.h"

namespace dn = decimal_natural;

namespace {

std::string stripped(std::string s) {
    const size_t first = s.find_first_not_of('0');
    return first == std::string::npos ? "0" : s.substr(first);
}

bool notBelow(const std::string& a, const std::string& b) {
    return a.size() != b.size() ? a.size() > b.size() : a >= b;
}

// a - b for a >= b, both without leading zeros.
std::string minus(const std::string& a, const std::string& b) {
    std::string r = a;
    int borrow = 0;
    for (size_t i = 0; i < r.size(); ++i) {
        const size_t ia = r.size() - 1 - i;
        int d = (r[ia] - '0') - borrow - (i < b.size() ? b[b.size() - 1 - i] - '0' : 0);
        borrow = d < 0 ? 1 : 0;
        r[ia] = static_cast<char>('0' + (d < 0 ? d + 10 : d));
    }
    return stripped(r);
}

// Schoolbook: one decimal digit of the quotient per digit of a, by repeated subtraction.
void referenceDivide(const std::string& a, const std::string& b, std::string& q, std::string& r) {
    q.clear();
    r = "0";
    for (const char d : a) {
        r = stripped(r + d);
        int count = 0;
        while (notBelow(r, b)) {
            r = minus(r, b);
            ++count;
        }
        q += static_cast<char>('0' + count);
    }
    q = stripped(q);
}

std::string narrow(const std::u16string& s) { return std::string(s.begin(), s.end()); }
std::u16string wide(const std::string& s) { return std::u16string(s.begin(), s.end()); }

std::string randomDigits(std::mt19937_64& rng, size_t n) {
    std::string s(n, '0');
    for (char& c : s) c = static_cast<char>('0' + rng() % 10);
    s[0] = static_cast<char>('1' + rng() % 9);
    return s;
}

}  // namespace

TEST(DecimalNatural, DivisionAgainstDigitByDigitLongDivision) {
    std::mt19937_64 rng(18);
    // Divisors from below the recursive size to several halvings above it.
    const size_t divisors[] = {300, 359, 360, 361, 500, 727, 1000, 1441};
    for (const size_t nb : divisors) {
        for (const size_t extra : {size_t{1}, size_t{200}, nb - 1, nb, nb + 17, 2 * nb + 5}) {
            const std::string a = randomDigits(rng, nb + extra);
            const std::string b = randomDigits(rng, nb);
            std::string q;
            std::string r;
            referenceDivide(a, b, q, r);
            dn::Limbs lq;
            dn::Limbs lr;
            dn::DivMod(dn::FromDecimal(wide(a)), dn::FromDecimal(wide(b)), lq, lr);
            ASSERT_EQ(narrow(dn::ToDecimal(lq)), q) << nb << " + " << extra;
            ASSERT_EQ(narrow(dn::ToDecimal(lr)), r) << nb << " + " << extra;
            ASSERT_EQ(narrow(dn::ToDecimal(dn::Div(dn::FromDecimal(wide(a)), dn::FromDecimal(wide(b))))), q);
        }
    }
}

TEST(DecimalNatural, DivisionGivesBackQuotientsAndRemaindersBuiltToBeKnown) {
    std::mt19937_64 rng(81);
    const std::string allNines = std::string(9 * 160, '9');
    const struct {
        const char* what;
        std::string b;
    } divisors[] = {
        {"all nines", allNines},
        {"top limb 1", "1" + randomDigits(rng, 9 * 97)},
        {"power of ten", "1" + std::string(9 * 200, '0')},
        {"padded length", randomDigits(rng, 9 * 83 + 4)},
        {"long", randomDigits(rng, 6000)},
    };
    for (const auto& d : divisors) {
        const dn::Limbs b = dn::FromDecimal(wide(d.b));
        const dn::Limbs bMinusOne = dn::Sub(b, dn::Limbs{1});
        const std::string nines(d.b.size() + 40, '9');
        for (const std::string& qText : {nines, randomDigits(rng, d.b.size() / 2), randomDigits(rng, 2 * d.b.size() + 9)}) {
            const dn::Limbs q = dn::FromDecimal(wide(qText));
            for (const dn::Limbs& r : {dn::Limbs(), bMinusOne, dn::FromDecimal(wide(randomDigits(rng, d.b.size() - 3)))}) {
                const dn::Limbs a = dn::Add(dn::Mul(q, b), r);
                dn::Limbs gotQ;
                dn::Limbs gotR;
                dn::DivMod(a, b, gotQ, gotR);
                ASSERT_EQ(gotQ, q) << d.what << ", quotient of " << qText.size() << " digits";
                ASSERT_EQ(gotR, r) << d.what << ", quotient of " << qText.size() << " digits";
            }
        }
    }
}
