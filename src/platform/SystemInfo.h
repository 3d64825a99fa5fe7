// Operating-system facts the portable core asks for: version record, module path, command line.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

// What GetVersionExA reports (a 148-byte record on Windows); ok is false when the call failed.
struct VersionRecord {
    bool ok = false;
    uint32_t platformId = 0;
    uint32_t major = 0;
    uint32_t minor = 0;
    uint32_t build = 0;
};

VersionRecord QueryVersionRecord();

// Full path of the running executable; empty when it cannot be had.
std::u16string ModuleFileName();

// The whole command line as the process received it.
std::u16string CommandLine();

}  // namespace platform
