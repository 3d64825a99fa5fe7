#include "frame/cUniTimer.h"

#include "frame/ThunkMemory.h"

#if !defined(_WIN64)
namespace {

// 32-bit x86 timer procedure: mode test, then owner->TimerProc(time - start, nID), then return
// popping the four arguments.
constexpr std::string_view kThunkHex =
    "EB0EE8xxxxx01x83F802741E85C0741D68xxxxx02x8B4424142Dxxxxx03x50B8xxxxx04x508B00FF501CC210008B4C240C5150E8xxxxx05xEBF0";
constexpr size_t kSlotID = 17;
constexpr size_t kSlotStart = 26;
constexpr size_t kSlotOwner = 32;
constexpr size_t kSlotKillTimer = 52;

}  // namespace
#endif

#if defined(_WIN64)
struct cUniTimer::ThunkData {
    cUniTimer* self;
};

void timerTick(cUniTimer& self, DWORD time) noexcept {
    if (self.m_owner == nullptr) return;
    try {
        self.m_owner->TimerProc(static_cast<LONG>(time - self.m_start), self.m_nID);
    } catch (...) {
        // The owner's failure must not unwind into the system's timer dispatch.
    }
}

namespace {

void CALLBACK thunkEntry(HWND, UINT, UINT_PTR idEvent, DWORD time, cUniTimer::ThunkData* data) noexcept {
    // A tick that outlived its object: stop the timer it belongs to.
    if (data->self == nullptr) {
        ::KillTimer(nullptr, idEvent);
        return;
    }
    timerTick(*data->self, time);
}

}  // namespace
#endif

cUniTimer::cUniTimer() {
#if defined(_WIN64)
    m_thunk = ThunkMemory::MakeBoundCall(reinterpret_cast<const void*>(&thunkEntry), m_data, m_thunkSize);
    if (m_thunk != nullptr) m_data->self = this;
#else
    m_thunk = ThunkMemory::AllocateHex(kThunkHex, m_thunkSize);
    if (m_thunk != nullptr) {
        ThunkMemory::PatchRelative(m_thunk, kSlotKillTimer,
                                   reinterpret_cast<const void*>(::GetProcAddress(::GetModuleHandleW(L"user32"), "KillTimer")));
    }
#endif
}

cUniTimer::~cUniTimer() {
    TmrStop();
#if defined(_WIN64)
    if (m_data != nullptr) m_data->self = nullptr;
#endif
}

bool cUniTimer::TmrStart(ITimerOwner* Owner, int32_t nInterval, int32_t nID) {
    if (m_timerID != 0 || m_thunk == nullptr || Owner == nullptr) return false;
    const DWORD start = ::GetTickCount();
#if defined(_WIN64)
    m_owner = Owner;
    m_nID = nID;
    m_start = start;
#else
    ThunkMemory::PatchAbsolute(m_thunk, kSlotID, static_cast<uint32_t>(nID));
    ThunkMemory::PatchAbsolute(m_thunk, kSlotStart, start);
    ThunkMemory::PatchAbsolute(m_thunk, kSlotOwner, static_cast<uint32_t>(reinterpret_cast<uintptr_t>(Owner)));
#endif
    // The interval goes to the system as it is, 0 included.
    m_timerID = ::SetTimer(nullptr, 0, static_cast<UINT>(nInterval), reinterpret_cast<TIMERPROC>(m_thunk));
    return m_timerID != 0;
}

bool cUniTimer::TmrStop() {
    if (m_timerID == 0) return true;
    if (!::KillTimer(nullptr, m_timerID)) return false;
    m_timerID = 0;
    return true;
}
