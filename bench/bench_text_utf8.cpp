// Benchmark: UTF-16 to UTF-8 and back on 64 MiB of text, StringToUTF8Bytes and UTF8BytesToString
// against the C library's iconv, measured in the same run. Two texts: mostly ASCII, and mixed
// (one, two and three bytes per code unit). Surrogates are left out because iconv refuses lone ones.
#include <iconv.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "bench_text_timing.h"
#include "text/UniStringCore.h"

namespace {

constexpr size_t kBytes = size_t{64} << 20;

std::u16string makeText(bool mixed) {
    std::mt19937 rng(8);
    std::u16string text(kBytes / 2, u'a');
    std::uniform_int_distribution<int> pick(0, 99);
    for (char16_t& c : text) {
        const int p = pick(rng);
        if (!mixed) {
            c = p < 97 ? static_cast<char16_t>(u' ' + p % 90) : static_cast<char16_t>(0xE0 + p % 20);
        } else if (p < 55) {
            c = static_cast<char16_t>(u' ' + p % 90);
        } else if (p < 80) {
            c = static_cast<char16_t>(0x400 + (p * 37) % 0x300);   // Cyrillic and around: two bytes
        } else {
            c = static_cast<char16_t>(0x4E00 + (p * 911) % 0x5000);  // CJK: three bytes
        }
    }
    return text;
}

size_t iconvRun(iconv_t cd, const char* in, size_t inLen, char* out, size_t outCap) {
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    char* inPtr = const_cast<char*>(in);
    char* outPtr = out;
    size_t inLeft = inLen;
    size_t outLeft = outCap;
    if (iconv(cd, &inPtr, &inLeft, &outPtr, &outLeft) == static_cast<size_t>(-1)) {
        std::fprintf(stderr, "iconv failed\n");
        std::exit(1);
    }
    return outCap - outLeft;
}

void runOne(const char* name, bool mixed) {
    const std::u16string text = makeText(mixed);
    const std::vector<uint8_t> utf8 = StringToUTF8Bytes(text);
    if (UTF8BytesToString(utf8) != text) {
        std::fprintf(stderr, "round trip failed\n");
        std::exit(1);
    }
    iconv_t toUtf8 = iconv_open("UTF-8", "UTF-16LE");
    iconv_t fromUtf8 = iconv_open("UTF-16LE", "UTF-8");
    std::vector<char> utf8Out(text.size() * 3);
    std::vector<char> utf16Out(utf8.size() * 2 + 16);
    size_t sink = 0;
    // iconv writes into buffers allocated once; the library calls allocate their results each time.
    const std::vector<double> encode = benchtiming::bestOf(5, {
        [&] { sink += StringToUTF8Bytes(text).size(); },
        [&] {
            sink += iconvRun(toUtf8, reinterpret_cast<const char*>(text.data()), text.size() * 2, utf8Out.data(),
                             utf8Out.size());
        },
    });
    const std::vector<double> decode = benchtiming::bestOf(5, {
        [&] { sink += UTF8BytesToString(utf8).size(); },
        [&] {
            sink += iconvRun(fromUtf8, reinterpret_cast<const char*>(utf8.data()), utf8.size(), utf16Out.data(),
                             utf16Out.size());
        },
    });
    iconv_close(toUtf8);
    iconv_close(fromUtf8);
    const double mib = static_cast<double>(kBytes) / (1 << 20);
    std::printf("%-6s encode 64 MiB UTF-16 -> %zu bytes UTF-8: library %.1f ms (%.0f MiB/s), iconv %.1f ms, ratio %.2f\n",
                name, utf8.size(), encode[0] * 1e3, mib / encode[0], encode[1] * 1e3, encode[0] / encode[1]);
    std::printf("%-6s decode %zu bytes UTF-8 -> UTF-16:     library %.1f ms (%.0f MiB/s), iconv %.1f ms, ratio %.2f\n",
                name, utf8.size(), decode[0] * 1e3, static_cast<double>(utf8.size()) / (1 << 20) / decode[0],
                decode[1] * 1e3, decode[0] / decode[1]);
    if (sink == 0) {
        std::printf("(nothing converted)\n");
    }
}

}  // namespace

int main() {
    std::printf("ratio = library time / iconv time (below 1: the library is faster)\n");
    runOne("ascii", false);
    runOne("mixed", true);
    return 0;
}
