#include "text/DecimalNatural.h"

#include <algorithm>
#include <utility>

namespace decimal_natural {

namespace {

// Below this many limbs in the shorter operand, the schoolbook product is faster than splitting.
constexpr size_t kKaratsubaThreshold = 40;

// A 64-bit column takes 16 products of two limbs (each below 10^18) plus a carry before it must
// be normalised: 16 × 10^18 + 10^10 is below 2^64.
constexpr size_t kRowsBetweenCarries = 16;

void trim(Limbs& v) noexcept {
    while (!v.empty() && v.back() == 0) {
        v.pop_back();
    }
}

// Carries columns [from, to) into limbs and on upwards while a carry remains.
void carryColumns(uint64_t* acc, size_t size, size_t from, size_t to) noexcept {
    uint64_t carry = 0;
    size_t k = from;
    for (; k < to; ++k) {
        const uint64_t t = acc[k] + carry;
        carry = t / kBase;
        acc[k] = t % kBase;
    }
    for (; carry != 0 && k < size; ++k) {
        const uint64_t t = acc[k] + carry;
        carry = t / kBase;
        acc[k] = t % kBase;
    }
}

// r[0, na + nb) = a × b; r may hold anything before.
void mulSchool(const uint32_t* a, size_t na, const uint32_t* b, size_t nb, uint32_t* r) {
    if (na > nb) {
        std::swap(a, b);
        std::swap(na, nb);
    }
    const size_t size = na + nb;
    uint64_t small[2 * kKaratsubaThreshold + 2] = {};
    std::vector<uint64_t> large;
    uint64_t* acc = small;
    if (size > sizeof small / sizeof small[0]) {
        large.assign(size, 0);
        acc = large.data();
    }
    size_t batchStart = 0;
    for (size_t i = 0; i < na; ++i) {
        const uint64_t ai = a[i];
        if (ai != 0) {
            uint64_t* const row = acc + i;
            for (size_t j = 0; j < nb; ++j) {
                row[j] += ai * b[j];
            }
        }
        if (i + 1 - batchStart == kRowsBetweenCarries) {
            carryColumns(acc, size, batchStart, i + nb);
            batchStart = i + 1;
        }
    }
    carryColumns(acc, size, batchStart, size);
    for (size_t k = 0; k < size; ++k) {
        r[k] = static_cast<uint32_t>(acc[k]);
    }
}

// r[0, rn) += x[0, xn); a carry out of r is dropped (callers know it is zero).
void addInto(uint32_t* r, size_t rn, const uint32_t* x, size_t xn) noexcept {
    uint32_t carry = 0;
    size_t k = 0;
    const size_t both = std::min(rn, xn);
    for (; k < both; ++k) {
        uint32_t t = r[k] + x[k] + carry;
        carry = t >= kBase ? 1 : 0;
        r[k] = carry ? t - kBase : t;
    }
    for (; carry != 0 && k < rn; ++k) {
        uint32_t t = r[k] + carry;
        carry = t >= kBase ? 1 : 0;
        r[k] = carry ? t - kBase : t;
    }
}

// r[0, rn) -= x[0, xn) for r >= x.
void subInto(uint32_t* r, size_t rn, const uint32_t* x, size_t xn) noexcept {
    uint32_t borrow = 0;
    size_t k = 0;
    const size_t both = std::min(rn, xn);
    for (; k < both; ++k) {
        const uint32_t sub = x[k] + borrow;
        if (r[k] >= sub) {
            r[k] -= sub;
            borrow = 0;
        } else {
            r[k] = r[k] + kBase - sub;
            borrow = 1;
        }
    }
    for (; borrow != 0 && k < rn; ++k) {
        if (r[k] >= 1) {
            r[k] -= 1;
            borrow = 0;
        } else {
            r[k] = kBase - 1;
        }
    }
}

// Sum of two limb runs, one limb longer than the longer of them.
std::vector<uint32_t> sumOf(const uint32_t* a, size_t na, const uint32_t* b, size_t nb) {
    std::vector<uint32_t> s(std::max(na, nb) + 1, 0);
    std::copy(a, a + na, s.begin());
    addInto(s.data(), s.size(), b, nb);
    return s;
}

// r[0, na + nb) = a × b; r may hold anything before.
void mulKaratsuba(const uint32_t* a, size_t na, const uint32_t* b, size_t nb, uint32_t* r) {
    if (na < nb) {
        std::swap(a, b);
        std::swap(na, nb);
    }
    if (nb < kKaratsubaThreshold) {
        mulSchool(a, na, b, nb, r);
        return;
    }
    if (na >= 2 * nb) {
        // Far apart in size: slices of the longer operand, each as long as the shorter one.
        std::fill(r, r + na + nb, 0u);
        std::vector<uint32_t> part(2 * nb);
        for (size_t off = 0; off < na; off += nb) {
            const size_t len = std::min(nb, na - off);
            mulKaratsuba(a + off, len, b, nb, part.data());
            addInto(r + off, na + nb - off, part.data(), len + nb);
        }
        return;
    }
    const size_t m = na / 2;
    mulKaratsuba(a, m, b, m, r);                               // low halves into r[0, 2m)
    mulKaratsuba(a + m, na - m, b + m, nb - m, r + 2 * m);     // high halves into r[2m, na + nb)
    const std::vector<uint32_t> sa = sumOf(a, m, a + m, na - m);
    const std::vector<uint32_t> sb = sumOf(b, m, b + m, nb - m);
    std::vector<uint32_t> middle(sa.size() + sb.size());
    mulKaratsuba(sa.data(), sa.size(), sb.data(), sb.size(), middle.data());
    subInto(middle.data(), middle.size(), r, 2 * m);
    subInto(middle.data(), middle.size(), r + 2 * m, na + nb - 2 * m);
    addInto(r + m, na + nb - m, middle.data(), middle.size());
}

}  // namespace

Limbs FromDecimal(std::u16string_view digits) {
    Limbs value;
    value.reserve(digits.size() / kDigitsPerLimb + 1);
    size_t end = digits.size();
    while (end > 0) {
        const size_t start = end >= kDigitsPerLimb ? end - kDigitsPerLimb : 0;
        uint32_t limb = 0;
        for (size_t i = start; i < end; ++i) {
            const char16_t c = digits[i];
            const uint32_t d = (c >= u'0' && c <= u'9') ? static_cast<uint32_t>(c - u'0') : 0u;
            limb = limb * 10 + d;
        }
        value.push_back(limb);
        end = start;
    }
    trim(value);
    return value;
}

std::u16string ToDecimal(const Limbs& value) {
    if (value.empty()) {
        return u"0";
    }
    char16_t top[kDigitsPerLimb] = {};
    size_t topLen = 0;
    for (uint32_t v = value.back(); v != 0; v /= 10) {
        top[topLen++] = static_cast<char16_t>(u'0' + v % 10);
    }
    std::u16string text(topLen + (value.size() - 1) * kDigitsPerLimb, u'0');
    for (size_t i = 0; i < topLen; ++i) {
        text[i] = top[topLen - 1 - i];
    }
    size_t pos = text.size();
    for (size_t k = 0; k + 1 < value.size(); ++k) {
        uint32_t v = value[k];
        for (size_t d = 0; d < kDigitsPerLimb; ++d) {
            text[--pos] = static_cast<char16_t>(u'0' + v % 10);
            v /= 10;
        }
    }
    return text;
}

int Compare(const Limbs& a, const Limbs& b) noexcept {
    if (a.size() != b.size()) {
        return a.size() < b.size() ? -1 : 1;
    }
    for (size_t k = a.size(); k-- > 0;) {
        if (a[k] != b[k]) {
            return a[k] < b[k] ? -1 : 1;
        }
    }
    return 0;
}

Limbs Add(const Limbs& a, const Limbs& b) {
    Limbs s = sumOf(a.data(), a.size(), b.data(), b.size());
    trim(s);
    return s;
}

Limbs Sub(const Limbs& a, const Limbs& b) {
    Limbs d = a;
    subInto(d.data(), d.size(), b.data(), b.size());
    trim(d);
    return d;
}

Limbs Mul(const Limbs& a, const Limbs& b) {
    if (a.empty() || b.empty()) {
        return Limbs();
    }
    Limbs r(a.size() + b.size());
    mulKaratsuba(a.data(), a.size(), b.data(), b.size(), r.data());
    trim(r);
    return r;
}

uint32_t DivSmall(Limbs& a, uint32_t d) noexcept {
    uint64_t rem = 0;
    for (size_t k = a.size(); k-- > 0;) {
        const uint64_t cur = rem * kBase + a[k];
        a[k] = static_cast<uint32_t>(cur / d);
        rem = cur % d;
    }
    trim(a);
    return static_cast<uint32_t>(rem);
}

void MulSmallAdd(Limbs& a, uint32_t m, uint32_t add) {
    uint64_t carry = add;
    for (uint32_t& limb : a) {
        const uint64_t t = static_cast<uint64_t>(limb) * m + carry;
        limb = static_cast<uint32_t>(t % kBase);
        carry = t / kBase;
    }
    while (carry != 0) {
        a.push_back(static_cast<uint32_t>(carry % kBase));
        carry /= kBase;
    }
    trim(a);
}

// Long division, one quotient limb per step. Without `remainder` the remainder is not scaled
// back (a division by a small number per limb, worth saving when only the quotient is asked).
static void knuthDivMod(const Limbs& a, const Limbs& b, Limbs& quotient, Limbs* remainder) {
    if (Compare(a, b) < 0) {
        quotient.clear();
        if (remainder) *remainder = a;
        return;
    }
    if (b.size() == 1) {
        quotient = a;
        const uint32_t rem = DivSmall(quotient, b[0]);
        if (remainder) *remainder = rem != 0 ? Limbs{rem} : Limbs();
        return;
    }
    // Long division with estimated quotient limbs, after scaling so that the divisor's top limb
    // is at least half the base; the estimate is then at most two too large.
    const size_t n = b.size();
    const size_t m = a.size() - n;
    const uint32_t scale = static_cast<uint32_t>(kBase / (static_cast<uint64_t>(b.back()) + 1));
    Limbs u = a;
    Limbs v = b;
    u.push_back(0);
    {
        uint64_t carry = 0;
        for (uint32_t& limb : u) {
            const uint64_t t = static_cast<uint64_t>(limb) * scale + carry;
            limb = static_cast<uint32_t>(t % kBase);
            carry = t / kBase;
        }
        carry = 0;
        for (uint32_t& limb : v) {
            const uint64_t t = static_cast<uint64_t>(limb) * scale + carry;
            limb = static_cast<uint32_t>(t % kBase);
            carry = t / kBase;
        }
    }
    const uint64_t vTop = v[n - 1];
    const uint64_t vNext = v[n - 2];
    quotient.assign(m + 1, 0);
    for (size_t j = m + 1; j-- > 0;) {
        const uint64_t num = static_cast<uint64_t>(u[j + n]) * kBase + u[j + n - 1];
        uint64_t qhat = num / vTop;
        uint64_t rhat = num % vTop;
        while (qhat >= kBase || qhat * vNext > rhat * kBase + u[j + n - 2]) {
            --qhat;
            rhat += vTop;
            if (rhat >= kBase) {
                break;
            }
        }
        uint64_t carry = 0;
        int64_t borrow = 0;
        for (size_t i = 0; i < n; ++i) {
            const uint64_t p = qhat * v[i] + carry;
            carry = p / kBase;
            int64_t t = static_cast<int64_t>(u[i + j]) - static_cast<int64_t>(p % kBase) - borrow;
            borrow = t < 0 ? 1 : 0;
            if (t < 0) {
                t += kBase;
            }
            u[i + j] = static_cast<uint32_t>(t);
        }
        int64_t top = static_cast<int64_t>(u[j + n]) - static_cast<int64_t>(carry) - borrow;
        if (top < 0) {
            // The estimate was one too large: add the divisor back once.
            --qhat;
            uint32_t c = 0;
            for (size_t i = 0; i < n; ++i) {
                uint32_t t = u[i + j] + v[i] + c;
                c = t >= kBase ? 1 : 0;
                u[i + j] = c ? t - kBase : t;
            }
            top += c;
        }
        u[j + n] = static_cast<uint32_t>(top);
        quotient[j] = static_cast<uint32_t>(qhat);
    }
    trim(quotient);
    if (remainder) {
        u.resize(n);
        trim(u);
        DivSmall(u, scale);
        *remainder = std::move(u);
    }
}

namespace {

// Divisors of at least this many limbs are divided recursively (the two halves of the quotient
// each from a division of half the size and one product); below it long division costs less.
constexpr size_t kRecursiveThreshold = 40;

Limbs shiftedUp(const Limbs& v, size_t limbs) {
    if (v.empty()) {
        return v;
    }
    Limbs r(limbs, 0);
    r.insert(r.end(), v.begin(), v.end());
    return r;
}

Limbs shiftedDown(const Limbs& v, size_t limbs) {
    if (limbs >= v.size()) {
        return Limbs();
    }
    return Limbs(v.begin() + static_cast<std::ptrdiff_t>(limbs), v.end());
}

// v mod base^limbs.
Limbs lowLimbs(const Limbs& v, size_t limbs) {
    Limbs r(v.begin(), v.begin() + static_cast<std::ptrdiff_t>(std::min(limbs, v.size())));
    trim(r);
    return r;
}

// hi × base^limbs + lo, for lo below base^limbs.
Limbs joined(const Limbs& hi, const Limbs& lo, size_t limbs) {
    if (hi.empty()) {
        return lo;
    }
    Limbs r(limbs, 0);
    std::copy(lo.begin(), lo.end(), r.begin());
    r.insert(r.end(), hi.begin(), hi.end());
    return r;
}

void divide2By1(const Limbs& a, const Limbs& b, size_t n, Limbs& q, Limbs& r);

// a / b for b of 2k limbs whose top limb is at least half the base, and a below b × base^k: the
// quotient (k limbs) estimated from the top halves, then put right by at most two steps.
void divide3By2(const Limbs& a, const Limbs& b, size_t k, Limbs& q, Limbs& r) {
    const Limbs b1 = shiftedDown(b, k);
    const Limbs b2 = lowLimbs(b, k);
    const Limbs a12 = shiftedDown(a, k);
    Limbs r1;
    if (Compare(shiftedDown(a, 2 * k), b1) < 0) {
        divide2By1(a12, b1, k, q, r1);
    } else {
        // The top halves would give base^k or more: take base^k - 1, whose remainder is
        // a12 - b1 × base^k + b1.
        q.assign(k, kBase - 1);
        r1 = Sub(Add(a12, b1), shiftedUp(b1, k));
    }
    const Limbs d = Mul(q, b2);
    Limbs x = joined(r1, lowLimbs(a, k), k);
    const Limbs one{1};
    while (Compare(x, d) < 0) {
        x = Add(x, b);
        q = Sub(q, one);
    }
    r = Sub(x, d);
}

// a / b for b of n limbs whose top limb is at least half the base, and a below b × base^n.
void divide2By1(const Limbs& a, const Limbs& b, size_t n, Limbs& q, Limbs& r) {
    // A short quotient (the top block of a long dividend) costs little in long division.
    if (n % 2 != 0 || n < kRecursiveThreshold || a.size() < n + kRecursiveThreshold / 2) {
        knuthDivMod(a, b, q, &r);
        return;
    }
    const size_t k = n / 2;
    Limbs q1;
    Limbs r1;
    divide3By2(shiftedDown(a, k), b, k, q1, r1);
    Limbs q2;
    divide3By2(joined(r1, lowLimbs(a, k), k), b, k, q2, r);
    q = joined(q1, q2, k);
}

// a / b for b of at least kRecursiveThreshold limbs. b is padded with low zero limbs to a length
// that halves down evenly to below the threshold, and both are scaled so that b's top limb is at
// least half the base; a is then taken n limbs at a time from the top.
void divModRecursive(const Limbs& a, const Limbs& b, Limbs& quotient, Limbs* remainder) {
    size_t halvings = 0;
    while ((b.size() + (size_t{1} << halvings) - 1) >> halvings >= kRecursiveThreshold) {
        ++halvings;
    }
    const size_t n = ((b.size() + (size_t{1} << halvings) - 1) >> halvings) << halvings;
    const size_t pad = n - b.size();
    const uint32_t scale = static_cast<uint32_t>(kBase / (static_cast<uint64_t>(b.back()) + 1));
    Limbs bs = b;
    Limbs as = a;
    MulSmallAdd(bs, scale, 0);
    MulSmallAdd(as, scale, 0);
    bs = shiftedUp(bs, pad);
    as = shiftedUp(as, pad);
    // Blocks of n limbs; the top block has fewer than n limbs, so it is below b.
    const size_t blocks = std::max<size_t>(2, (as.size() + 1 + n - 1) / n);
    auto block = [&](size_t i) {
        const size_t from = std::min(as.size(), i * n);
        const size_t to = std::min(as.size(), from + n);
        Limbs v(as.begin() + static_cast<std::ptrdiff_t>(from), as.begin() + static_cast<std::ptrdiff_t>(to));
        trim(v);
        return v;
    };
    Limbs z = joined(block(blocks - 1), block(blocks - 2), n);
    Limbs q(n * (blocks - 1), 0);
    Limbs r;
    for (size_t i = blocks - 1; i-- > 0;) {
        Limbs qi;
        divide2By1(z, bs, n, qi, r);
        std::copy(qi.begin(), qi.end(), q.begin() + static_cast<std::ptrdiff_t>(i * n));
        if (i > 0) {
            z = joined(r, block(i - 1), n);
        }
    }
    trim(q);
    quotient = std::move(q);
    if (remainder) {
        r = shiftedDown(r, pad);
        DivSmall(r, scale);
        *remainder = std::move(r);
    }
}

void divide(const Limbs& a, const Limbs& b, Limbs& quotient, Limbs* remainder) {
    if (Compare(a, b) < 0 || b.size() < kRecursiveThreshold || a.size() - b.size() < kRecursiveThreshold) {
        knuthDivMod(a, b, quotient, remainder);
        return;
    }
    divModRecursive(a, b, quotient, remainder);
}

}  // namespace

void DivMod(const Limbs& a, const Limbs& b, Limbs& quotient, Limbs& remainder) {
    divide(a, b, quotient, &remainder);
}

Limbs Div(const Limbs& a, const Limbs& b) {
    Limbs quotient;
    divide(a, b, quotient, nullptr);
    return quotient;
}

Limbs PowerOfTen(size_t exponent) {
    Limbs value(exponent / kDigitsPerLimb, 0);
    uint32_t top = 1;
    for (size_t i = 0; i < exponent % kDigitsPerLimb; ++i) {
        top *= 10;
    }
    value.push_back(top);
    return value;
}

uint64_t ToUint64(const Limbs& value, bool& ok) noexcept {
    ok = false;
    uint64_t result = 0;
    for (size_t k = value.size(); k-- > 0;) {
        uint64_t shifted = 0;
        if (__builtin_mul_overflow(result, static_cast<uint64_t>(kBase), &shifted) ||
            __builtin_add_overflow(shifted, static_cast<uint64_t>(value[k]), &result)) {
            return 0;
        }
    }
    ok = true;
    return result;
}

Limbs FromUint64(uint64_t value) {
    Limbs limbs;
    while (value != 0) {
        limbs.push_back(static_cast<uint32_t>(value % kBase));
        value /= kBase;
    }
    return limbs;
}

}  // namespace decimal_natural
