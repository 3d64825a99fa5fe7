#include "frame/ControlTimer.h"

#include <unordered_map>

#include "frame/modcUniWindow.h"

namespace {

constexpr wchar_t kClassName[] = L"TarnwickTimerChild";

}  // namespace

// The message-only window of one thread and the timers it ticks, by timer id.
struct ControlTimerHost {
    HWND window = nullptr;
    std::unordered_map<UINT_PTR, ControlTimer*> timers;
    UINT_PTR nextId = 1;

    static LRESULT CALLBACK windowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    bool ensureWindow() noexcept;
    void add(ControlTimer& timer);
    void remove(ControlTimer& timer) noexcept;
};

namespace {

thread_local ControlTimerHost t_host;

}  // namespace

LRESULT CALLBACK ControlTimerHost::windowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_TIMER) return ::DefWindowProcW(hwnd, message, wParam, lParam);
    const auto found = t_host.timers.find(static_cast<UINT_PTR>(wParam));
    if (found == t_host.timers.end()) {
        ::KillTimer(hwnd, wParam);  // its timer is gone; this tick was already queued
        return 0;
    }
    try {
        found->second->tick();
    } catch (...) {
        // A tick handler's failure must not unwind into the message loop.
    }
    return 0;
}

bool ControlTimerHost::ensureWindow() noexcept {
    if (window != nullptr) return true;
    const HINSTANCE instance = modcUniWindow::LibraryInstance();
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.lpfnWndProc = &ControlTimerHost::windowProc;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = kClassName;
    if (::RegisterClassExW(&windowClass) == 0 && ::GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
    window = ::CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, instance, nullptr);
    return window != nullptr;
}

void ControlTimerHost::add(ControlTimer& timer) {
    while (nextId == 0 || timers.count(nextId) != 0) ++nextId;
    timer.m_id = nextId++;
    timers.emplace(timer.m_id, &timer);
}

void ControlTimerHost::remove(ControlTimer& timer) noexcept {
    timers.erase(timer.m_id);
    if (!timers.empty() || window == nullptr) return;
    ::DestroyWindow(window);
    window = nullptr;
    // The class names this module's procedure: unregistered, so that a later load of the library at
    // another address registers its own.
    ::UnregisterClassW(kClassName, modcUniWindow::LibraryInstance());
}

ControlTimer::ControlTimer(TickHandler onTick, int32_t interval, bool enabled)
    : m_onTick(std::move(onTick)), m_interval(interval), m_bEnabled(enabled) {
    t_host.add(*this);
    restart();
}

ControlTimer::~ControlTimer() {
    if (m_bRunning && t_host.window != nullptr) ::KillTimer(t_host.window, m_id);
    t_host.remove(*this);
}

void ControlTimer::Interval(int32_t milliseconds) {
    m_interval = milliseconds;
    restart();
}

void ControlTimer::Enabled(bool value) {
    m_bEnabled = value;
    restart();
}

HWND ControlTimer::ThreadTimerWindow() noexcept { return t_host.window; }

void ControlTimer::restart() {
    if (m_bRunning) {
        ::KillTimer(t_host.window, m_id);
        m_bRunning = false;
    }
    if (!m_bEnabled || m_interval <= 0 || !t_host.ensureWindow()) return;
    // SetTimer with the same id replaces a running timer and starts its wait again.
    m_bRunning = ::SetTimer(t_host.window, m_id, static_cast<UINT>(m_interval), nullptr) != 0;
}

void ControlTimer::tick() {
    // The handler may destroy this timer: nothing of it is touched afterwards.
    if (m_onTick) {
        const TickHandler handler = m_onTick;
        handler();
    }
}
