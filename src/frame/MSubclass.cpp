#include "frame/MSubclass.h"

#include <utility>
#include <vector>

#include "frame/PreviousProcCall.h"
#include "frame/portable/SubclassEngine.h"

namespace {

LRESULT CALLBACK engineWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

HWND asWindow(plumbing::WindowKey key) noexcept { return reinterpret_cast<HWND>(key); }
plumbing::WindowKey asKey(HWND window) noexcept { return reinterpret_cast<plumbing::WindowKey>(window); }

class Win32Windows final : public plumbing::WindowSystem {
public:
    bool IsWindow(plumbing::WindowKey window) override { return ::IsWindow(asWindow(window)) != FALSE; }

    bool IsOwnProcess(plumbing::WindowKey window) override {
        DWORD process = 0;
        ::GetWindowThreadProcessId(asWindow(window), &process);
        return process == ::GetCurrentProcessId();
    }

    plumbing::ProcAddress InstallHook(plumbing::WindowKey window) override {
        return static_cast<plumbing::ProcAddress>(::SetWindowLongPtrW(
            asWindow(window), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&engineWindowProc)));
    }

    void RestoreProc(plumbing::WindowKey window, plumbing::ProcAddress previous) override {
        ::SetWindowLongPtrW(asWindow(window), GWLP_WNDPROC, static_cast<LONG_PTR>(previous));
    }

    intptr_t CallProc(plumbing::ProcAddress proc, plumbing::WindowKey window, uint32_t message, uintptr_t wParam,
                      intptr_t lParam) override {
        return PreviousProcCall(reinterpret_cast<WNDPROC>(proc))(asWindow(window), message, wParam, lParam);
    }

    void CallClient(void* client, bool bBefore, bool& bStopMsg, intptr_t& lReturn, plumbing::WindowKey window,
                    uint32_t message, uintptr_t wParam, intptr_t lParam) noexcept override {
        try {
            LRESULT result = lReturn;
            static_cast<ISubclass*>(client)->WindowProc(bBefore, bStopMsg, result, asWindow(window), message, wParam,
                                                        lParam);
            lReturn = result;
        } catch (...) {
            // An error of one client must not cross into the window system nor keep the
            // remaining clients from their message.
        }
    }
};

// One apartment, one engine: windows belong to the thread that created them.
struct EngineState {
    Win32Windows system;
    plumbing::SubclassEngine engine{system};
};

plumbing::SubclassEngine& engine() noexcept {
    thread_local EngineState state;
    return state.engine;
}

LRESULT CALLBACK engineWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return engine().Dispatch(asKey(window), message, wParam, lParam);
}

}  // namespace

namespace MSubclass {

void AttachClient(ISubclass* client, HWND window, UINT message, EMsgResponse3 response) {
    engine().AttachClient(client, asKey(window), message, response);
}

void DetachClient(ISubclass* client, HWND window, UINT message) noexcept {
    engine().DetachClient(client, asKey(window), message);
}

LRESULT CallPreviousWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return engine().CallPreviousWindowProc(asKey(window), message, wParam, lParam);
}

const plumbing::SubclassTable& Table() noexcept { return engine().Table(); }

}  // namespace MSubclass
