// CTimer: a window-less timer of the library that raises ThatTime on the thread's message loop.
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

class CTimerEvents {
public:
    virtual void ThatTime() = 0;

protected:
    ~CTimerEvents() = default;
};

class CTimer {
public:
    CTimer() = default;
    // Stops the timer, which takes the instance out of the shared table.
    ~CTimer();
    // The shared table and the system timer hold this instance's address.
    CTimer(const CTimer&) = delete;
    CTimer& operator=(const CTimer&) = delete;

    int32_t Interval() const noexcept { return m_lInterval; }
    // 1 or more starts or restarts the timer (the same value again leaves it alone); below 1
    // stops it. Raises 13652 when the system gives no timer and 13651 when the table is full.
    void Interval(int32_t value);

    // One tick: raises ThatTime.
    void PulseTimer();

    // The receiver of ThatTime; held unowned.
    void SetEventSink(CTimerEvents* sink) noexcept { m_sink = sink; }

    // The identifier the system gave, 0 for none; library-internal.
    UINT_PTR TimerID() const noexcept { return m_lTimerID; }
    void TimerID(UINT_PTR value) noexcept { m_lTimerID = value; }

private:
    int32_t m_lInterval = 0;
    UINT_PTR m_lTimerID = 0;
    CTimerEvents* m_sink = nullptr;
};
