// SubclassEngine: attaching and detaching message clients and the dispatch order of hooked windows.
#pragma once

#include <cstdint>

#include "frame/portable/SubclassTable.h"

namespace plumbing {

// How a client attaches to a message (the values of EMsgResponse3).
constexpr int32_t kResponseBefore = 9;
constexpr int32_t kResponseAfter = 10;
constexpr int32_t kResponseInsteadOf = 11;

constexpr uint32_t kMessageDestroy = 2;     // WM_DESTROY
constexpr uint32_t kMessageNcDestroy = 130;  // WM_NCDESTROY

// Error numbers of the engine; they reach the host combined with the plumbing base.
constexpr int32_t kErrorCantSubclass = 13081;
constexpr int32_t kErrorAlreadyHandled = 13082;
constexpr int32_t kErrorInvalidWindow = 13083;
constexpr int32_t kErrorExternalWindow = 13084;

// What the engine needs of the window system; the clients are opaque to it and reached through
// CallClient, so the same engine serves real windows and the tests' fake ones.
class WindowSystem {
public:
    virtual bool IsWindow(WindowKey window) = 0;
    virtual bool IsOwnProcess(WindowKey window) = 0;
    // Puts the engine's procedure in place; returns the procedure it replaced, 0 on failure.
    virtual ProcAddress InstallHook(WindowKey window) = 0;
    virtual void RestoreProc(WindowKey window, ProcAddress previous) = 0;
    virtual intptr_t CallProc(ProcAddress proc, WindowKey window, uint32_t message, uintptr_t wParam,
                              intptr_t lParam) = 0;
    // Must not throw: a failing client is the client's fault and must not break the walk.
    virtual void CallClient(void* client, bool bBefore, bool& bStopMsg, intptr_t& lReturn, WindowKey window,
                            uint32_t message, uintptr_t wParam, intptr_t lParam) noexcept = 0;

protected:
    ~WindowSystem() = default;
};

class SubclassEngine {
public:
    explicit SubclassEngine(WindowSystem& system) noexcept : m_system(system) {}
    // The engine owns hooks on live windows; a copy would restore them twice.
    SubclassEngine(const SubclassEngine&) = delete;
    SubclassEngine& operator=(const SubclassEngine&) = delete;

    // Raises CtlError (13081 to 13084, or 5 when the table refuses a write); a failed attachment
    // leaves the table and the window's procedure as they were.
    void AttachClient(void* client, WindowKey window, uint32_t message, int32_t response);
    // Silent on every failure.
    void DetachClient(void* client, WindowKey window, uint32_t message) noexcept;
    intptr_t CallPreviousWindowProc(WindowKey window, uint32_t message, uintptr_t wParam, intptr_t lParam) noexcept;

    // The engine's window procedure for one message to a hooked window.
    intptr_t Dispatch(WindowKey window, uint32_t message, uintptr_t wParam, intptr_t lParam) noexcept;

    SubclassTable& Table() noexcept { return m_table; }
    const SubclassTable& Table() const noexcept { return m_table; }

private:
    void emergencyRelease(WindowKey window) noexcept;
    void clearNewEntry(WindowKey window, uint32_t message, int32_t index, int32_t oldCount) noexcept;

    WindowSystem& m_system;
    SubclassTable m_table;
};

}  // namespace plumbing
