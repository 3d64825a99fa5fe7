// The server as a script host reaches it: registered per machine with regsvr32, created by ProgID
// from JScript under cscript, and asserted on the lines the scripts print.
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "ComTestSupport.h"

namespace {

using comtest::Server;

// A process handle that closes itself.
class ProcessHandle {
public:
    explicit ProcessHandle(HANDLE handle) noexcept : m_handle(handle) {}
    ~ProcessHandle() {
        if (m_handle) ::CloseHandle(m_handle);
    }
    // Closes on destruction: a copy would close it twice.
    ProcessHandle(const ProcessHandle&) = delete;
    ProcessHandle& operator=(const ProcessHandle&) = delete;
    HANDLE get() const noexcept { return m_handle; }

private:
    HANDLE m_handle;
};

std::wstring FolderOf(HMODULE module) {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(module, path, MAX_PATH);
    std::wstring text(path);
    return text.substr(0, text.rfind(L'\\') + 1);
}

std::wstring SystemFolder() {
    wchar_t path[MAX_PATH] = {};
    ::GetSystemDirectoryW(path, MAX_PATH);
    return std::wstring(path) + L"\\";
}

struct RunResult {
    DWORD exitCode = static_cast<DWORD>(-1);
    std::string output;
};

// Runs a command line to its end (at most 60 s), with its standard output read through a pipe.
RunResult RunToEnd(std::wstring commandLine) {
    RunResult result;
    SECURITY_ATTRIBUTES inherit{sizeof(inherit), nullptr, TRUE};
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (!::CreatePipe(&readEnd, &writeEnd, &inherit, 0)) return result;
    ProcessHandle reader(readEnd);
    ::SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = writeEnd;
    startup.hStdError = writeEnd;
    startup.hStdInput = nullptr;
    PROCESS_INFORMATION info{};
    const BOOL started = ::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                          nullptr, nullptr, &startup, &info);
    ::CloseHandle(writeEnd);
    if (!started) return result;
    ProcessHandle process(info.hProcess);
    ProcessHandle thread(info.hThread);
    char buffer[4096];
    DWORD count = 0;
    // The pipe ends when the process and every child holding its write end have gone.
    while (::ReadFile(readEnd, buffer, sizeof(buffer), &count, nullptr) && count > 0) {
        result.output.append(buffer, count);
    }
    if (::WaitForSingleObject(process.get(), 60000) == WAIT_OBJECT_0) {
        ::GetExitCodeProcess(process.get(), &result.exitCode);
    }
    return result;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty()) lines.push_back(line);
    }
    return lines;
}

class ComScripts : public testing::Test {
protected:
    static void SetUpTestSuite() {
        s_dll = FolderOf(Server::Instance().Module()) + L"TarnwickControls30.dll";
        const RunResult run = RunToEnd(L"\"" + SystemFolder() + L"regsvr32.exe\" /s \"" + s_dll + L"\"");
        s_registered = run.exitCode == 0;
        s_registration = "regsvr32 exit code " + std::to_string(run.exitCode) + ": " + run.output;
    }
    static void TearDownTestSuite() {
        if (s_registered) RunToEnd(L"\"" + SystemFolder() + L"regsvr32.exe\" /u /s \"" + s_dll + L"\"");
    }

    // Runs one script and expects exactly the named checks to pass, and nothing to fail.
    static void ExpectScriptPasses(const wchar_t* script, const std::set<std::string>& checks) {
        ASSERT_TRUE(s_registered) << s_registration;
        const std::wstring path = FolderOf(nullptr) + L"scripts\\" + script;
        const RunResult run = RunToEnd(L"\"" + SystemFolder() + L"cscript.exe\" //nologo \"" + path + L"\"");
        EXPECT_EQ(0u, run.exitCode) << run.output;
        std::set<std::string> passed;
        for (const std::string& line : Lines(run.output)) {
            if (line.rfind("PASS ", 0) == 0) {
                passed.insert(line.substr(5));
            } else {
                ADD_FAILURE() << line;
            }
        }
        EXPECT_EQ(checks, passed) << run.output;
    }

    static inline std::wstring s_dll;
    static inline bool s_registered = false;
    static inline std::string s_registration;
};

TEST_F(ComScripts, EveryCreatableClassByProgId) {
    ExpectScriptPasses(L"creatable.js",
                       {"cStringBuilder2", "clsUniFile", "clsFileIni", "clsFileIniEx", "clsSearchFiles", "clsCollection",
                        "clsMEMDC", "clsDIBSection", "clsFontHDC", "clsGdiHandle", "clsCommonWrapper", "cUniSubclass",
                        "cUniTimer", "cUniWindow", "clsLargeNumber"});
}

TEST_F(ComScripts, LargeNumberArithmetic) {
    ExpectScriptPasses(L"largenumber.js",
                       {"StrAdd", "StrMult", "StrPow", "StrDiv", "StrMod", "ConvertBases", "StrGT"});
}

TEST_F(ComScripts, ErrorsShowNumberAndDescription) {
    ExpectScriptPasses(L"errors.js", {"NotALocalPath", "LoadFirst", "NeedAFile"});
}

TEST_F(ComScripts, SearchResultWalksWithAnEnumerator) {
    ExpectScriptPasses(L"search.js", {"Enumerator", "Count", "Item", "Cleanup"});
}

TEST_F(ComScripts, UnicodeThroughTheHexEnvelope) {
    ExpectScriptPasses(L"hexenvelope.js", {"Envelope", "RoundTrip"});
}

}  // namespace
