// Benchmark: StrMult and StrDiv of numbers of 1,000 to 40,000 digits against GMP, measured in the
// same run. The GMP baseline reads and writes decimal strings as the library does (mpz_set_str,
// the operation, mpz_get_str); the time of the bare GMP operation is printed beside it. The
// growth exponent of the library between neighbouring sizes is printed too.
#include <gmp.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "bench_text_timing.h"
#include "text/clsLargeNumber.h"

namespace {

std::string randomDigits(std::mt19937_64& rng, size_t n) {
    std::string s(n, '0');
    for (char& c : s) {
        c = static_cast<char>('0' + rng() % 10);
    }
    s[0] = static_cast<char>('1' + rng() % 9);
    return s;
}

std::u16string wide(const std::string& s) {
    return std::u16string(s.begin(), s.end());
}

struct Row {
    size_t digits;
    double library;
    double gmpStrings;
    double gmpBare;
};

// Best seconds per call of each candidate: each is repeated so that one timed round lasts
// about 30 ms, and the rounds of all candidates are interleaved.
std::vector<double> perCall(const std::vector<std::function<void()>>& candidates) {
    std::vector<int> reps;
    std::vector<std::function<void()>> rounds;
    for (const std::function<void()>& f : candidates) {
        const double once = benchtiming::secondsOf(f);
        const int n = static_cast<int>(std::min(100000.0, std::max(1.0, 0.03 / std::max(once, 1e-9))));
        reps.push_back(n);
        rounds.push_back([f, n] {
            for (int r = 0; r < n; ++r) {
                f();
            }
        });
    }
    std::vector<double> best = benchtiming::bestOf(7, rounds);
    for (size_t i = 0; i < best.size(); ++i) {
        best[i] /= reps[i];
    }
    return best;
}

void report(const char* what, const std::vector<Row>& rows) {
    std::printf("%s (ratio = library / GMP with string conversion)\n", what);
    for (size_t i = 0; i < rows.size(); ++i) {
        const Row& r = rows[i];
        std::printf("  %6zu digits: library %10.1f us, GMP+strings %9.1f us, GMP bare %8.1f us, ratio %6.2f",
                    r.digits, r.library * 1e6, r.gmpStrings * 1e6, r.gmpBare * 1e6, r.library / r.gmpStrings);
        if (i > 0) {
            const double exponent = std::log(r.library / rows[i - 1].library) /
                                    std::log(static_cast<double>(r.digits) / static_cast<double>(rows[i - 1].digits));
            std::printf(", growth n^%.2f", exponent);
        }
        std::printf("\n");
    }
}

}  // namespace

int main() {
    const size_t sizes[] = {1000, 2000, 5000, 10000, 20000, 40000};
    std::mt19937_64 rng(1554);
    const clsLargeNumber ln;
    std::vector<Row> mult;
    std::vector<Row> div;
    size_t sink = 0;
    for (const size_t n : sizes) {
        const std::string a = randomDigits(rng, n);
        const std::string b = randomDigits(rng, n);
        const std::string half = randomDigits(rng, n / 2);
        const std::u16string wa = wide(a);
        const std::u16string wb = wide(b);
        const std::u16string wHalf = wide(half);

        mpz_t x, y, z;
        mpz_inits(x, y, z, nullptr);
        mpz_set_str(x, a.c_str(), 10);
        mpz_set_str(y, b.c_str(), 10);
        mpz_mul(z, x, y);
        std::vector<char> buffer(2 * n + 10);
        mpz_get_str(buffer.data(), 10, z);
        if (wide(buffer.data()) != ln.StrMult(wa, wb)) {
            std::fprintf(stderr, "products differ at %zu digits\n", n);
            return 1;
        }
        const std::vector<double> m = perCall({
            [&] { sink += ln.StrMult(wa, wb).size(); },
            [&] {
                mpz_set_str(x, a.c_str(), 10);
                mpz_set_str(y, b.c_str(), 10);
                mpz_mul(z, x, y);
                mpz_get_str(buffer.data(), 10, z);
                sink += static_cast<size_t>(buffer[0]);
            },
            [&] {
                mpz_mul(z, x, y);
                sink += mpz_size(z);
            },
        });
        mult.push_back({n, m[0], m[1], m[2]});

        mpz_set_str(y, half.c_str(), 10);
        mpz_tdiv_q(z, x, y);
        mpz_get_str(buffer.data(), 10, z);
        if (wide(buffer.data()) != ln.StrDiv(wa, wHalf)) {
            std::fprintf(stderr, "quotients differ at %zu digits\n", n);
            return 1;
        }
        const std::vector<double> d = perCall({
            [&] { sink += ln.StrDiv(wa, wHalf).size(); },
            [&] {
                mpz_set_str(x, a.c_str(), 10);
                mpz_set_str(y, half.c_str(), 10);
                mpz_tdiv_q(z, x, y);
                mpz_get_str(buffer.data(), 10, z);
                sink += static_cast<size_t>(buffer[0]);
            },
            [&] {
                mpz_tdiv_q(z, x, y);
                sink += mpz_size(z);
            },
        });
        div.push_back({n, d[0], d[1], d[2]});
        mpz_clears(x, y, z, nullptr);
    }
    report("StrMult, n digits x n digits", mult);
    report("StrDiv, n digits / n/2 digits", div);
    return sink == 0 ? 1 : 0;
}
