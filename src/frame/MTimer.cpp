#include "frame/MTimer.h"

#include <array>

#include "common/CtlError.h"
#include "frame/CTimer.h"

namespace {

struct TimerTable {
    std::array<CTimer*, MTimer::kPlaces> places{};
    int16_t highWaterMark = 0;
};

// Timers tick on the thread that started them, so each thread has its own table.
TimerTable& table() noexcept {
    thread_local TimerTable instance;
    return instance;
}

}  // namespace

namespace MTimer {

bool CreateTimer(CTimer& timer) {
    const UINT interval = static_cast<UINT>(timer.Interval());
    timer.TimerID(::SetTimer(nullptr, 0, interval, &TimerProc));
    if (timer.TimerID() == 0) {
        timer.Interval(0);
        return false;
    }
    TimerTable& state = table();
    for (int32_t place = 1; place <= kPlaces; ++place) {
        CTimer*& slot = state.places[static_cast<size_t>(place - 1)];
        if (slot != nullptr) continue;
        slot = &timer;
        if (place > state.highWaterMark) state.highWaterMark = static_cast<int16_t>(place);
        return true;
    }
    // The table is full. The system timer stays as it is, with the instance's identifier and
    // interval: its ticks reach the shared procedure, which finds no place and drops them, and
    // stopping the instance finds no place either, so the timer runs until the thread ends.
    throw CtlError::Plumbing(13651, u"No more than 10 timers allowed per class");
}

bool DestroyTimer(CTimer& timer) noexcept {
    TimerTable& state = table();
    for (int32_t place = 1; place <= state.highWaterMark; ++place) {
        CTimer*& slot = state.places[static_cast<size_t>(place - 1)];
        if (slot != nullptr && slot->TimerID() == timer.TimerID()) {
            ::KillTimer(nullptr, timer.TimerID());
            slot = nullptr;
            timer.TimerID(0);
            return true;
        }
    }
    return false;
}

void CALLBACK TimerProc(HWND, UINT, UINT_PTR idEvent, DWORD) noexcept {
    TimerTable& state = table();
    for (int32_t place = 1; place <= state.highWaterMark; ++place) {
        CTimer* const timer = state.places[static_cast<size_t>(place - 1)];
        if (timer != nullptr && timer->TimerID() == idEvent) {
            try {
                timer->PulseTimer();
            } catch (...) {
                // A failing handler must not unwind into the system's timer dispatch.
            }
            return;
        }
    }
}

int16_t HighWaterMark() noexcept { return table().highWaterMark; }

int32_t PlaceOf(const CTimer& timer) noexcept {
    const TimerTable& state = table();
    for (int32_t place = 1; place <= kPlaces; ++place) {
        if (state.places[static_cast<size_t>(place - 1)] == &timer) return place;
    }
    return 0;
}

}  // namespace MTimer
