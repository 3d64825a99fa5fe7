#include "text/modLongPath.h"

#include "common/CtlError.h"
#include "platform/FileSystem.h"
#include "platform/SystemInfo.h"
#include "text/Utf8Kernels.h"
#include "text/WindowsVersion.h"

namespace {

constexpr char16_t kLongPrefix[] = u"\\\\?\\";

// The same as ufu_NoBackSlash and ufu_OneBackSlash, which cannot raise here: ufu_FilePath has
// refused forward slashes before it gets this far.
std::u16string withoutFinalBackSlashes(std::u16string s) {
    while (!s.empty() && s.back() == u'\\') s.pop_back();
    return s;
}

// A hosted design mode would answer true and take the host's application path first; this
// library never runs inside one, but the seam stays.
bool InIDE() noexcept { return false; }

// The host runtime's application path: not Unicode-safe there, never empty. Here the folder the
// process runs in stands for it.
std::u16string hostAppPath() { return withoutFinalBackSlashes(platform::CurrentFolder()); }

}  // namespace

std::u16string MakeLongPath(const std::u16string& sPath) {
    if (GetWindowsVersion() < ctl_ewt_WinNt4) return sPath;
    if (sPath.size() >= 2 && sPath[0] == u'\\' && sPath[1] == u'\\') return sPath;
    return kLongPrefix + sPath;
}

std::u16string ufu_FilePath(const std::u16string& sPathFileName, bool bFinalBackSlash) {
    if (sPathFileName.find(u'/') != std::u16string::npos) {
        throw CtlError(u"ufu_FilePath", u"Not a local path");
    }
    const size_t slash = sPathFileName.rfind(u'\\');
    const std::u16string folder =
        withoutFinalBackSlashes(slash == std::u16string::npos ? std::u16string() : sPathFileName.substr(0, slash + 1));
    if (bFinalBackSlash && !folder.empty()) return folder + u'\\';
    return folder;
}

std::u16string UniAppPath() {
    if (InIDE()) return hostAppPath();
    // The module path is cut to 2048 characters, the buffer the system call is given.
    std::u16string module = platform::LibraryPath(platform::ModuleFileName());
    if (module.size() > 2048) module.resize(2048);
    std::u16string folder;
    if (module.find(u'/') == std::u16string::npos) folder = ufu_FilePath(module, false);
    if (folder.empty()) folder = hostAppPath();
    return folder;
}

std::u16string ufu_UTF8BytesToString(const uint8_t* data, size_t length) {
    std::u16string out;
    if (data == nullptr || length == 0) return out;
    out.resize(length);
    out.resize(utf8kernel::DecodeLeads(data, length, out.data(), utf8kernel::Leads::File));
    return out;
}

std::u16string ufu_UTF8BytesToString(const std::vector<uint8_t>& bytes) {
    return ufu_UTF8BytesToString(bytes.data(), bytes.size());
}
