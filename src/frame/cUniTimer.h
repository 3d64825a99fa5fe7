// cUniTimer: a public window-less timer whose ticks go straight to its owner through a thunk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "frame/ITimerOwner.h"

class cUniTimer {
public:
    cUniTimer();
    // Stops the timer; the thunk's block stays so that a tick already queued finds code.
    ~cUniTimer();
    // The system timer calls this object's thunk.
    cUniTimer(const cUniTimer&) = delete;
    cUniTimer& operator=(const cUniTimer&) = delete;

    bool InIDE() const noexcept { return false; }
    // False, changing nothing, while a timer runs. Owner receives TimerProc(elapsed ms, nID).
    bool TmrStart(ITimerOwner* Owner, int32_t nInterval, int32_t nID = 0);
    // True when no timer runs afterwards; false when the system would not kill it.
    bool TmrStop();
    bool IsActive() const noexcept { return m_timerID != 0; }

    std::span<const uint8_t> ThunkBytes() const noexcept { return {m_thunk, m_thunkSize}; }

#if defined(_WIN64)
    struct ThunkData;
#endif

private:
#if defined(_WIN64)
    friend void timerTick(cUniTimer& self, DWORD time) noexcept;
    ThunkData* m_data = nullptr;
    ITimerOwner* m_owner = nullptr;
    int32_t m_nID = 0;
    DWORD m_start = 0;
#endif
    UINT_PTR m_timerID = 0;
    uint8_t* m_thunk = nullptr;
    size_t m_thunkSize = 0;
};
