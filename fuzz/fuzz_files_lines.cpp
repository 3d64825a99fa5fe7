// Arbitrary bytes as a file: every line reader must end, agree with and without the cache, and
// never touch memory it doesn't own.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "text/clsUniFile.h"

namespace {

// Uncached reads cost a system call per byte; longer inputs are compared on their cached reads alone.
constexpr size_t kDirectReadLimit = 1024;

const std::string& scratchHostPath() {
    static const std::string host = "/tmp/tc_fuzz_files_lines_" + std::to_string(::getpid()) + ".bin";
    return host;
}

const std::u16string& scratchPath() {
    static const std::u16string path = [] {
        const std::string& host = scratchHostPath();
        std::u16string out;
        for (const char c : host) out += c == '/' ? u'\\' : static_cast<char16_t>(c);
        return out;
    }();
    return path;
}

std::vector<std::u16string> readAll(int32_t enc, bool cache, size_t size) {
    std::vector<std::u16string> lines;
    clsUniFile f;
    f.UseCache(cache);
    if (!f.OpenFileRead(scratchPath())) std::abort();
    std::u16string line;
    bool more = true;
    while (more) {
        // Every line that ends in a line feed uses up at least one byte.
        if (lines.size() > size + 1) std::abort();
        more = f.ReadLine(line, enc);
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    {
        scratchPath();
        std::FILE* out = std::fopen(scratchHostPath().c_str(), "wb");
        if (!out) return 0;
        std::fwrite(data, 1, size, out);
        std::fclose(out);
    }
    for (const int32_t enc : {fe_ANSI, fe_UTF16LE, fe_UTF8}) {
        const std::vector<std::u16string> cached = readAll(enc, true, size);
        if (size > kDirectReadLimit) continue;
        const std::vector<std::u16string> direct = readAll(enc, false, size);
        // A one-byte file is the case the cache leaves unread on purpose.
        if (size != 1 && cached != direct) std::abort();
    }
    {
        clsUniFile f;
        if (!f.OpenFileRead(scratchPath())) std::abort();
        f.ReadBOM();
        std::u16string s;
        for (int k = 0; k < 64 && !f.Eof(); ++k) {
            if (!f.ReadNumCharsAndString(s, k % 3)) break;
        }
    }
    // Removed each time: libFuzzer leaves without running exit handlers.
    std::remove(scratchHostPath().c_str());
    return 0;
}
