// ControlTimer: a control's timer child with Interval and Enabled, ticking on its thread's loop.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/win32/WinApi.h"

// It runs while Enabled is true and Interval is above 0. Setting either (even to the value it
// has) while it runs starts the wait afresh, so `Enabled(true)` is how a control restarts it.
// Ticks arrive as WM_TIMER of one hidden message-only window per thread, shared by all timers
// of that thread and destroyed with the last of them; a tick may destroy its own timer.
class ControlTimer {
public:
    using TickHandler = std::function<void()>;

    explicit ControlTimer(TickHandler onTick = {}, int32_t interval = 0, bool enabled = false);
    // Stops the timer; a tick already queued finds no timer and is dropped.
    ~ControlTimer();
    // Registered with the thread's timer window by address.
    ControlTimer(const ControlTimer&) = delete;
    ControlTimer& operator=(const ControlTimer&) = delete;

    int32_t Interval() const noexcept { return m_interval; }
    // Milliseconds; 0 or less stops the timer (stored as given).
    void Interval(int32_t milliseconds);
    bool Enabled() const noexcept { return m_bEnabled; }
    void Enabled(bool value);
    void OnTick(TickHandler handler) { m_onTick = std::move(handler); }
    // True while a system timer runs for it.
    bool IsRunning() const noexcept { return m_bRunning; }

    // The thread's timer window, nullptr while no ControlTimer exists on the thread.
    static HWND ThreadTimerWindow() noexcept;

private:
    friend struct ControlTimerHost;
    void restart();
    void tick();

    TickHandler m_onTick;
    int32_t m_interval = 0;
    bool m_bEnabled = false;
    bool m_bRunning = false;
    UINT_PTR m_id = 0;
};
