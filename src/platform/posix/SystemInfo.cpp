#include "platform/SystemInfo.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <string>

#include "common/Utf8Convert.h"

namespace platform {

// Off Windows the library behaves as on a current NT system: the record that such a system
// reports to a program without a compatibility manifest (6.2, build 9200).
VersionRecord QueryVersionRecord() { return VersionRecord{true, 2, 6, 2, 9200}; }

std::u16string ModuleFileName() {
    std::string path(4096, '\0');
    const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size() - 1);
    if (length <= 0) return {};
    path.resize(static_cast<size_t>(length));
    return Utf8ToUtf16(path);
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
    return Utf8ToUtf16(line);
}

}  // namespace platform
