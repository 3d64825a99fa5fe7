// Benchmark: UTF-16 to UTF-8 and back on 64 MiB of text against the C library's iconv, measured in
// the same run. Two texts: mostly ASCII, and mixed (one, two and three bytes per code unit).
// Surrogates are left out because iconv refuses lone ones. Each conversion is measured twice,
// under the same conditions for both sides: returning a new result (fresh memory, whose page
// faults cost as much as the conversion on some machines) and writing into a reused buffer.
#include <iconv.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "bench_text_timing.h"
#include "text/UniStringCore.h"
#include "text/Utf8Kernels.h"

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

// iconv into a buffer allocated for this call alone, as a function returning its result must do:
// large blocks come fresh from the system, and each page written first costs a page fault.
size_t iconvFresh(iconv_t cd, const char* in, size_t inLen, size_t outCap) {
    char* out = static_cast<char*>(std::malloc(outCap));
    const size_t n = iconvRun(cd, in, inLen, out, outCap);
    std::free(out);
    return n;
}

struct Row {
    const char* what;
    double library;
    double iconv;
};

void print(const char* name, const Row& row, double mib) {
    std::printf("%-6s %-32s library %7.1f ms (%5.0f MiB/s), iconv %7.1f ms, ratio %.2f\n", name, row.what,
                row.library * 1e3, mib / row.library, row.iconv * 1e3, row.library / row.iconv);
}

void runOne(const char* name, bool mixed) {
    const std::u16string text = makeText(mixed);
    const std::vector<uint8_t> utf8 = StringToUTF8Bytes(text);
    if (UTF8BytesToString(utf8) != text) {
        std::fprintf(stderr, "round trip failed\n");
        std::exit(1);
    }
    // The transport form: the same bytes, one code unit each.
    const std::u16string image = StrToUTF8(text);
    if (UTF8toStr(image) != text) {
        std::fprintf(stderr, "transport round trip failed\n");
        std::exit(1);
    }
    iconv_t toUtf8 = iconv_open("UTF-8", "UTF-16LE");
    iconv_t fromUtf8 = iconv_open("UTF-16LE", "UTF-8");
    const char* const units = reinterpret_cast<const char*>(text.data());
    const char* const bytes = reinterpret_cast<const char*>(utf8.data());
    std::vector<char> utf8Out(text.size() * 3);
    std::vector<char> utf16Out(utf8.size() * 2 + 16);
    std::vector<uint8_t> reusedBytes;
    std::u16string reusedUnits(utf8.size(), u'\0');
    size_t sink = 0;
    const std::vector<double> t = benchtiming::bestOf(5, {
        // Results allocated per call on both sides.
        [&] { sink += StringToUTF8Bytes(text).size(); },
        [&] { sink += iconvFresh(toUtf8, units, text.size() * 2, utf8Out.size()); },
        [&] { sink += UTF8BytesToString(utf8).size(); },
        [&] { sink += iconvFresh(fromUtf8, bytes, utf8.size(), utf16Out.size()); },
        [&] { sink += StrToUTF8(text).size(); },
        [&] { sink += UTF8toStr(image).size(); },
        // Buffers written before, reused (what the line writer and reader do).
        [&] {
            reusedBytes.clear();
            AppendUTF8Bytes(reusedBytes, text);
            sink += reusedBytes.size();
        },
        [&] { sink += iconvRun(toUtf8, units, text.size() * 2, utf8Out.data(), utf8Out.size()); },
        [&] {
            sink += utf8kernel::DecodeLeads(utf8.data(), utf8.size(), reusedUnits.data(), utf8kernel::Leads::Core);
        },
        [&] { sink += iconvRun(fromUtf8, bytes, utf8.size(), utf16Out.data(), utf16Out.size()); },
    });
    iconv_close(toUtf8);
    iconv_close(fromUtf8);
    const double unitsMib = static_cast<double>(text.size() * 2) / (1 << 20);
    std::printf("%-6s 64 MiB of UTF-16, %zu bytes of UTF-8 (MiB/s: UTF-16 converted per second)\n", name, utf8.size());
    print(name, {"encode, new result", t[0], t[1]}, unitsMib);
    print(name, {"decode, new result", t[2], t[3]}, unitsMib);
    print(name, {"StrToUTF8, new result", t[4], t[1]}, unitsMib);
    print(name, {"UTF8toStr, new result", t[5], t[3]}, unitsMib);
    print(name, {"encode, reused buffer", t[6], t[7]}, unitsMib);
    print(name, {"decode, reused buffer", t[8], t[9]}, unitsMib);
    if (sink == 0) {
        std::printf("(nothing converted)\n");
    }
}

}  // namespace

int main() {
    std::printf("ratio = library time / iconv time (below 1: the library is faster); StrToUTF8 and UTF8toStr\n"
                "(which also map the bytes through code page 1252) are held against iconv's plain conversion\n");
    runOne("ascii", false);
    runOne("mixed", true);
    return 0;
}
