// Benchmark: Base64 of 64 MiB, EncodeB64 and DecodeB64 against a straightforward table codec
// (three bytes to four table lookups and back, no checks) measured in the same run.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "bench_text_timing.h"
#include "text/clsBase64.h"

namespace {

constexpr size_t kBytes = size_t{64} << 20;

const char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::vector<uint8_t> plainEncode(const std::vector<uint8_t>& in) {
    std::vector<uint8_t> out((in.size() + 2) / 3 * 4);
    size_t o = 0;
    size_t i = 0;
    for (; i + 3 <= in.size(); i += 3) {
        out[o++] = static_cast<uint8_t>(kAlphabet[in[i] >> 2]);
        out[o++] = static_cast<uint8_t>(kAlphabet[((in[i] & 3) << 4) | (in[i + 1] >> 4)]);
        out[o++] = static_cast<uint8_t>(kAlphabet[((in[i + 1] & 15) << 2) | (in[i + 2] >> 6)]);
        out[o++] = static_cast<uint8_t>(kAlphabet[in[i + 2] & 63]);
    }
    if (i < in.size()) {
        const uint8_t b1 = i + 1 < in.size() ? in[i + 1] : 0;
        out[o++] = static_cast<uint8_t>(kAlphabet[in[i] >> 2]);
        out[o++] = static_cast<uint8_t>(kAlphabet[((in[i] & 3) << 4) | (b1 >> 4)]);
        out[o++] = i + 1 < in.size() ? static_cast<uint8_t>(kAlphabet[(b1 & 15) << 2]) : '=';
        out[o++] = '=';
    }
    return out;
}

std::vector<uint8_t> plainDecode(const std::vector<uint8_t>& in, const uint8_t* table) {
    size_t pad = 0;
    if (!in.empty() && in.back() == '=') {
        pad = in.size() >= 2 && in[in.size() - 2] == '=' ? 2 : 1;
    }
    std::vector<uint8_t> out(in.size() / 4 * 3 - pad);
    size_t o = 0;
    for (size_t i = 0; i + 4 <= in.size(); i += 4) {
        const uint32_t v = (table[in[i]] << 18) | (table[in[i + 1]] << 12) | (table[in[i + 2]] << 6) | table[in[i + 3]];
        const uint8_t bytes[3] = {static_cast<uint8_t>(v >> 16), static_cast<uint8_t>(v >> 8), static_cast<uint8_t>(v)};
        for (int k = 0; k < 3 && o < out.size(); ++k) {
            out[o++] = bytes[k];
        }
    }
    return out;
}

}  // namespace

int main() {
    std::mt19937 rng(64);
    std::vector<uint8_t> data(kBytes + 1);  // not a multiple of 3: the padded tail is in the run
    for (uint8_t& b : data) {
        b = static_cast<uint8_t>(rng());
    }
    uint8_t table[256] = {};
    for (int i = 0; i < 64; ++i) {
        table[static_cast<uint8_t>(kAlphabet[i])] = static_cast<uint8_t>(i);
    }
    const clsBase64& codec = ThreadBase64();
    std::vector<uint8_t> text;
    codec.EncodeB64(data, text);
    std::vector<uint8_t> back;
    codec.DecodeB64(text, back);
    if (text != plainEncode(data) || back != data || plainDecode(text, table) != data) {
        std::fprintf(stderr, "codecs disagree\n");
        return 1;
    }
    size_t sink = 0;
    const std::vector<double> encode = benchtiming::bestOf(5, {
        [&] {
            std::vector<uint8_t> out;
            codec.EncodeB64(data, out);
            sink += out.size();
        },
        [&] { sink += plainEncode(data).size(); },
    });
    const std::vector<double> decode = benchtiming::bestOf(5, {
        [&] {
            std::vector<uint8_t> out;
            codec.DecodeB64(text, out);
            sink += out.size();
        },
        [&] { sink += plainDecode(text, table).size(); },
    });
    std::printf("ratio = library time / plain table codec time\n");
    std::printf("encode 64 MiB: library %.1f ms, plain %.1f ms, ratio %.2f\n", encode[0] * 1e3, encode[1] * 1e3,
                encode[0] / encode[1]);
    std::printf("decode %zu bytes: library %.1f ms, plain %.1f ms, ratio %.2f\n", text.size(), decode[0] * 1e3,
                decode[1] * 1e3, decode[0] / decode[1]);
    return sink == 0 ? 1 : 0;
}
