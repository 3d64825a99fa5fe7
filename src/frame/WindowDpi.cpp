#include "frame/WindowDpi.h"

#include "graphics/GdiRaii.h"

namespace {

template <class Function>
Function user32Entry(const char* name) noexcept {
    const HMODULE user32 = ::GetModuleHandleW(L"user32.dll");
    if (user32 == nullptr) return nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(user32, name)));
}

}  // namespace

int32_t WindowDpi(HWND hwnd) noexcept {
    using GetDpiForWindowFn = UINT(WINAPI*)(HWND);
    static const auto getDpiForWindow = user32Entry<GetDpiForWindowFn>("GetDpiForWindow");
    if (hwnd != nullptr && getDpiForWindow != nullptr) {
        const UINT dpi = getDpiForWindow(hwnd);
        if (dpi > 0) return static_cast<int32_t>(dpi);
    }
    const WindowDCGuard screen(nullptr);
    const int dpi = screen.get() != nullptr ? ::GetDeviceCaps(screen.get(), LOGPIXELSY) : 0;
    return dpi > 0 ? dpi : kDesignDpi;
}

int32_t ScaleToDpi(int32_t pixels, int32_t dpi) noexcept {
    if (dpi <= 0 || dpi == kDesignDpi) return pixels;
    return ::MulDiv(pixels, dpi, kDesignDpi);
}

bool DeclarePerMonitorDpiAwareness() noexcept {
    using SetContextFn = BOOL(WINAPI*)(HANDLE);
    const auto setContext = user32Entry<SetContextFn>("SetProcessDpiAwarenessContext");
    // DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2, spelled out: older headers lack it.
    const HANDLE perMonitorV2 = reinterpret_cast<HANDLE>(static_cast<intptr_t>(-4));
    return setContext != nullptr && setContext(perMonitorV2) != FALSE;
}
