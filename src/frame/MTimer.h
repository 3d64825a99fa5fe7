// MTimer: the shared timer procedure of CTimer and its per-thread table of 100 places.
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

class CTimer;

namespace MTimer {

constexpr int32_t kPlaces = 100;

// Starts the system timer and takes a place for the instance. False when the system refuses;
// raises 13651 when every place is taken, the system timer left running without a place.
bool CreateTimer(CTimer& timer);
// Kills the instance's system timer and frees its place; false when it holds none.
bool DestroyTimer(CTimer& timer) noexcept;
// The shared timer procedure: pulses the instance whose identifier matches, ignores others.
void CALLBACK TimerProc(HWND window, UINT message, UINT_PTR idEvent, DWORD time) noexcept;

// The highest place ever used, counted from 1; never lowered. 0 before the first timer.
int16_t HighWaterMark() noexcept;
// The place (from 1) that holds the instance, 0 when none.
int32_t PlaceOf(const CTimer& timer) noexcept;

}  // namespace MTimer
