#include "platform/SystemInfo.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <string>

namespace platform {
namespace {

std::u16string widenUtf8(const std::string& bytes) {
    std::u16string out;
    out.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size();) {
        const unsigned char lead = static_cast<unsigned char>(bytes[i]);
        uint32_t cp = 0xFFFD;
        size_t extra = 0;
        if (lead < 0x80) {
            cp = lead;
        } else if ((lead & 0xE0) == 0xC0) {
            cp = lead & 0x1F;
            extra = 1;
        } else if ((lead & 0xF0) == 0xE0) {
            cp = lead & 0x0F;
            extra = 2;
        } else if ((lead & 0xF8) == 0xF0) {
            cp = lead & 0x07;
            extra = 3;
        }
        if (extra != 0 && i + extra >= bytes.size()) break;
        for (size_t k = 1; k <= extra; ++k) cp = (cp << 6) | (static_cast<unsigned char>(bytes[i + k]) & 0x3F);
        i += extra + 1;
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out += static_cast<char16_t>(0xD800 + (cp >> 10));
            out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
        } else {
            out += static_cast<char16_t>(cp);
        }
    }
    return out;
}

}  // namespace

// Off Windows the library behaves as on a current NT system: the record that such a system
// reports to a program without a compatibility manifest (6.2, build 9200).
VersionRecord QueryVersionRecord() { return VersionRecord{true, 2, 6, 2, 9200}; }

std::u16string ModuleFileName() {
    std::string path(4096, '\0');
    const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size() - 1);
    if (length <= 0) return {};
    path.resize(static_cast<size_t>(length));
    return widenUtf8(path);
}

std::u16string CommandLine() {
    // Arguments joined by blanks, each quoted when it holds a blank, as a Windows command line.
    std::ifstream in("/proc/self/cmdline", std::ios::binary);
    const std::string raw((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::string line;
    size_t start = 0;
    while (start < raw.size()) {
        size_t end = raw.find('\0', start);
        if (end == std::string::npos) end = raw.size();
        std::string argument = raw.substr(start, end - start);
        if (!line.empty()) line += ' ';
        if (argument.find(' ') != std::string::npos) argument = '"' + argument + '"';
        line += argument;
        start = end + 1;
    }
    return widenUtf8(line);
}

}  // namespace platform
