// clsFileIniEx.Load of a 5 MB INI file and a read of every key, against Python's configparser
// doing the same on the same file; both best of five, measured in one run.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "platform/FileSystem.h"
#include "text/UniFileUtils.h"
#include "text/clsFileIniEx.h"

namespace {

constexpr int kRepeats = 5;

// Sections of 25 keys with a comment every tenth line; blanks around the separator as people
// write them. Stays just under the 5,242,880-byte load limit.
std::string makeIni(size_t& keys) {
    std::mt19937 random(12345);
    std::string text;
    keys = 0;
    const size_t limit = 5242880 - 256;
    for (int section = 0; text.size() < limit; ++section) {
        text += "[section" + std::to_string(section) + "]\r\n";
        for (int key = 0; key < 25 && text.size() < limit; ++key) {
            if (key % 10 == 9) text += "; a comment about the next key\r\n";
            std::string value(10 + random() % 50, ' ');
            for (char& c : value) c = static_cast<char>('a' + random() % 26);
            text += "key" + std::to_string(key) + " = " + value + "\r\n";
            ++keys;
        }
    }
    return text;
}

double seconds(std::chrono::steady_clock::duration d) { return std::chrono::duration<double>(d).count(); }

}  // namespace

int main() {
    size_t keys = 0;
    const std::string text = makeIni(keys);
    std::u16string path = ufu_GetTempPath() + u"tc_bench_ini.ini";
    std::string hostPath;
    for (const char16_t c : path) hostPath += c == u'\\' ? '/' : static_cast<char>(c);
    {
        std::ofstream out(hostPath, std::ios::binary);
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
    }
    std::printf("INI file: %zu bytes, %zu keys\n", text.size(), keys);

    double best = 1e9;
    size_t values = 0;
    size_t chars = 0;
    for (int run = 0; run < kRepeats; ++run) {
        const auto start = std::chrono::steady_clock::now();
        clsFileIniEx ini;
        if (!ini.Load(path)) {
            std::printf("Load failed\n");
            return 1;
        }
        values = 0;
        chars = 0;
        std::vector<std::u16string> names;
        std::vector<std::u16string> rows;
        ini.GetSectionNames(names);
        for (const std::u16string& name : names) {
            ini.GetSectionRows(name, rows);
            for (size_t i = 0; i < rows.size(); ++i) {
                const std::u16string key = ini.GetSectionRowKey(rows, static_cast<int32_t>(i));
                if (key.empty()) continue;
                chars += ini.GetString(name, key).size();
                ++values;
            }
        }
        best = std::min(best, seconds(std::chrono::steady_clock::now() - start));
    }
    std::printf("clsFileIniEx.Load + every key: %.3f s (%zu values, %zu characters)\n", best, values, chars);

    const std::string command =
        "python3 \"" TC_BENCH_INI_SCRIPT "\" \"" + hostPath + "\" " + std::to_string(kRepeats);
    FILE* pipe = ::popen(command.c_str(), "r");
    double baseline = 0;
    unsigned long baseValues = 0;
    unsigned long baseChars = 0;
    const int read = pipe ? std::fscanf(pipe, "%lf %lu %lu", &baseline, &baseValues, &baseChars) : 0;
    if (pipe) ::pclose(pipe);
    ufu_RmFile(path);
    if (read != 3 || baseline <= 0) {
        std::printf("baseline (python3 configparser) did not run\n");
        return 1;
    }
    std::printf("configparser read + every key:  %.3f s (%lu values, %lu characters)\n", baseline, baseValues,
                baseChars);
    if (baseValues != values || baseChars != chars) std::printf("warning: the two read different data\n");
    std::printf("ratio clsFileIniEx / configparser: %.2f (below 1 is faster)\n", best / baseline);
    return 0;
}
