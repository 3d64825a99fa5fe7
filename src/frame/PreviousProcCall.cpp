#include "frame/PreviousProcCall.h"

bool PreviousProcCall::IsPlainCode(WNDPROC proc) noexcept {
    if (proc == nullptr) return false;
    MEMORY_BASIC_INFORMATION info{};
    if (::VirtualQuery(reinterpret_cast<const void*>(proc), &info, sizeof info) == 0) return false;
    constexpr DWORD kExecutable = PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    return info.State == MEM_COMMIT && (info.Protect & kExecutable) != 0 && (info.Protect & PAGE_GUARD) == 0;
}
