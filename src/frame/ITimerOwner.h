// ITimerOwner: the object that receives the ticks of a cUniTimer.
#pragma once

#include "platform/win32/WinApi.h"

#include <ole2.h>

// {D5B8A053-E6A1-C641-B028-BB20174F355B}
inline constexpr GUID IID_ITimerOwner = {0xD5B8A053, 0xE6A1, 0xC641, {0xB0, 0x28, 0xBB, 0x20, 0x17, 0x4F, 0x35, 0x5B}};

// TimerProc is the eighth entry of the virtual table, right behind IDispatch. The elapsed time
// is the plain 32-bit difference of tick counts and wraps with them. The result is ignored.
struct ITimerOwner : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE TimerProc(LONG lElapsedMS, LONG nID) = 0;
};
