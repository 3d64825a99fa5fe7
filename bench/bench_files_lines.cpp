// Reads a 64 MiB UTF-8 file line by line with ReadUTF8Line against std::getline plus a UTF-8
// decode, and writes it back with WriteUTF8Line against std::ofstream; prints both ratios.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "text/clsUniFile.h"

namespace {

constexpr size_t kTargetBytes = size_t{64} << 20;
constexpr int kRounds = 3;

// A plain UTF-8 decoder for the baseline (the data holds no supplementary characters).
void decodeUtf8(const std::string& in, std::u16string& out) {
    out.clear();
    out.reserve(in.size());
    size_t i = 0;
    while (i < in.size()) {
        const unsigned char b = static_cast<unsigned char>(in[i]);
        if (b < 0x80) {
            out += static_cast<char16_t>(b);
            i += 1;
        } else if (b < 0xE0 && i + 1 < in.size()) {
            out += static_cast<char16_t>(((b & 0x1F) << 6) | (in[i + 1] & 0x3F));
            i += 2;
        } else if (i + 2 < in.size()) {
            out += static_cast<char16_t>(((b & 0x0F) << 12) | ((in[i + 1] & 0x3F) << 6) | (in[i + 2] & 0x3F));
            i += 3;
        } else {
            break;
        }
    }
}

void encodeUtf8(const std::u16string& in, std::string& out) {
    for (const char16_t c : in) {
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
}

// The write baseline, also used to make the input file.
void writeWithOfstream(const std::string& path, const std::vector<std::u16string>& lines) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    std::string buffer;
    for (const auto& line : lines) {
        buffer.clear();
        encodeUtf8(line, buffer);
        buffer += "\r\n";
        out.write(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    }
}

std::u16string libraryPath(const std::string& host) {
    std::u16string out;
    for (const char c : host) out += c == '/' ? u'\\' : static_cast<char16_t>(c);
    return out;
}

template <class F>
double bestSeconds(F&& run) {
    double best = 1e30;
    for (int r = 0; r < kRounds; ++r) {
        const auto start = std::chrono::steady_clock::now();
        run();
        const double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (s < best) best = s;
    }
    return best;
}

}  // namespace

int main() {
    const std::string source = "/tmp/tc_bench_files_lines_in.txt";
    const std::string target = "/tmp/tc_bench_files_lines_out.txt";

    // Lines of 1 to 120 characters drawn from Latin, Greek, Cyrillic, Han and Devanagari.
    const std::u16string alphabet = u"abcdefghijklmnopqrstuvwxyz ABC 0123456789 \u00E9\u00FC\u00DF"
                                    u"\u03B1\u03B2\u03B3\u0436\u0444\u044F\u4E2D\u6587\u5B57\u0915\u093F\u0928";
    std::vector<std::u16string> lines;
    size_t bytes = 0;
    uint32_t seed = 12345;
    std::string encoded;
    while (bytes < kTargetBytes) {
        seed = seed * 1103515245u + 12345u;
        const size_t length = 1 + (seed >> 16) % 120;
        std::u16string line;
        for (size_t k = 0; k < length; ++k) {
            seed = seed * 1103515245u + 12345u;
            line += alphabet[(seed >> 16) % alphabet.size()];
        }
        encoded.clear();
        encodeUtf8(line, encoded);
        bytes += encoded.size() + 2;
        lines.push_back(std::move(line));
    }
    writeWithOfstream(source, lines);

    size_t baselineUnits = 0;
    const double readBaseline = bestSeconds([&] {
        baselineUnits = 0;
        std::ifstream in(source, std::ios::binary);
        std::string raw;
        std::u16string line;
        while (std::getline(in, raw)) {
            if (!raw.empty() && raw.back() == '\r') raw.pop_back();
            decodeUtf8(raw, line);
            baselineUnits += line.size();
        }
    });
    size_t libraryUnits = 0;
    const double readLibrary = bestSeconds([&] {
        libraryUnits = 0;
        clsUniFile f;
        if (!f.OpenFileRead(libraryPath(source))) return;
        std::u16string line;
        while (f.ReadUTF8Line(line)) libraryUnits += line.size();
    });

    const double writeBaseline = bestSeconds([&] { writeWithOfstream(target, lines); });
    bool writeOk = true;
    const double writeLibrary = bestSeconds([&] {
        clsUniFile f;
        writeOk = f.OpenFileWrite(libraryPath(target));
        for (const auto& line : lines) writeOk = f.WriteUTF8Line(line) && writeOk;
    });
    std::ifstream a(source, std::ios::binary);
    std::ifstream b(target, std::ios::binary);
    const bool same = std::string(std::istreambuf_iterator<char>(a), {}) == std::string(std::istreambuf_iterator<char>(b), {});

    std::printf("file: %zu bytes, %zu lines\n", bytes, lines.size());
    std::printf("read  baseline getline+decode %.3f s, ReadUTF8Line %.3f s, ratio %.2f (units %zu vs %zu)\n",
                readBaseline, readLibrary, readLibrary / readBaseline, baselineUnits, libraryUnits);
    std::printf("write baseline ofstream       %.3f s, WriteUTF8Line %.3f s, ratio %.2f (output %s)\n", writeBaseline,
                writeLibrary, writeLibrary / writeBaseline, same && writeOk ? "identical" : "DIFFERS");
    std::remove(source.c_str());
    std::remove(target.c_str());
    return baselineUnits == libraryUnits && same && writeOk ? 0 : 1;
}
