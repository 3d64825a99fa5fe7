#include "frame/cUniSubclass.h"

#include "frame/PreviousProcCall.h"
#include "frame/ThunkMemory.h"

namespace {

constexpr int32_t kAllMessages = -1;
constexpr int32_t kFreePlace = -1;
constexpr int32_t kWhenBefore = 2;
constexpr int32_t kWhenAfter = 1;

#if !defined(_WIN64)
// The wide entry points come from the layer for Unicode when it is loaded, else from the system.
FARPROC wideEntry(const char* name) noexcept {
    HMODULE module = ::GetModuleHandleW(L"unicows");
    FARPROC entry = module ? ::GetProcAddress(module, name) : nullptr;
    if (entry == nullptr) entry = ::GetProcAddress(::GetModuleHandleW(L"user32"), name);
    return entry;
}

// 32-bit x86: frame, mode test, before-pass, stop test, previous procedure, after-pass, with the
// message values addressed on the caller's stack so that the owner can change them in place.
constexpr std::string_view kThunkHex =
    "5589E583C4F85731C08945FC8945F8EB0EE8xxxxx01x83F802742185C07424E830000000837DF800750AE838000000E84D0000005F8B45FCC9"
    "C21000E826000000EBF168xxxxx02x6AFCFF7508E8xxxxx03xEBE031D24ABFxxxxx04xB9xxxxx05xE82D000000C3FF7514FF7510FF750CFF"
    "750868xxxxx06xE8xxxxx07x8945FCC331D2BFxxxxx08xB9xxxxx09xE801000000C3E32F09C978078B450CF2AF75248D4514508D451050"
    "8D450C508D4508508D45FC508D45F85052B8xxxxx0Ax508B00FF501CC3";
constexpr size_t kSlotPrevious1 = 68;
constexpr size_t kSlotSetWindowLong = 78;
constexpr size_t kSlotBeforeTable = 88;
constexpr size_t kSlotBeforeCount = 93;
constexpr size_t kSlotPrevious2 = 116;
constexpr size_t kSlotCallWindowProc = 121;
constexpr size_t kSlotAfterTable = 132;
constexpr size_t kSlotAfterCount = 137;
constexpr size_t kSlotOwner = 186;

uint32_t asSlot(const void* address) noexcept { return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(address)); }
#endif

}  // namespace

#if defined(_WIN64)
struct cUniSubclass::ThunkData {
    cUniSubclass* self;
    // Kept after the object is gone, so that a late message still reaches the old procedure.
    WNDPROC previous;
};

LRESULT hookedMessage(cUniSubclass& self, HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    VARIANT_BOOL stop = VARIANT_FALSE;
    LRESULT result = 0;
    self.passTo(self.m_before, true, stop, result, hwnd, message, wParam, lParam);
    if (stop != VARIANT_FALSE) return result;
    result = self.m_caller(hwnd, message, wParam, lParam);
    self.passTo(self.m_after, false, stop, result, hwnd, message, wParam, lParam);
    return result;
}

namespace {

LRESULT thunkEntry(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, cUniSubclass::ThunkData* data) noexcept {
    if (data->self == nullptr) {
        return data->previous ? ::CallWindowProcW(data->previous, hwnd, message, wParam, lParam)
                              : ::DefWindowProcW(hwnd, message, wParam, lParam);
    }
    return hookedMessage(*data->self, hwnd, message, wParam, lParam);
}

}  // namespace

bool cUniSubclass::passTo(const MessageTable& table, bool before, VARIANT_BOOL& stop, LRESULT& result, HWND& hwnd,
                          UINT& message, WPARAM& wParam, LPARAM& lParam) noexcept {
    if (table.count == 0 || m_owner == nullptr) return false;
    if (table.count > 0) {
        bool found = false;
        const size_t count = static_cast<size_t>(table.count);
        for (size_t i = 0; i < count && i < table.entries.size(); ++i) {
            if (static_cast<UINT>(table.entries[i]) == message) {
                found = true;
                break;
            }
        }
        if (!found) return false;
    }
    try {
        m_owner->WindowProc(before ? VARIANT_TRUE : VARIANT_FALSE, &stop, &result, &hwnd, &message, &wParam, &lParam);
    } catch (...) {
        // The owner's failure stays with the owner; the window goes on.
    }
    return true;
}
#endif

cUniSubclass::cUniSubclass() {
#if defined(_WIN64)
    m_thunk = ThunkMemory::MakeBoundCall(reinterpret_cast<const void*>(&thunkEntry), m_data, m_thunkSize);
    if (m_thunk != nullptr) {
        m_data->self = this;
        m_data->previous = nullptr;
    }
#else
    m_thunk = ThunkMemory::AllocateHex(kThunkHex, m_thunkSize);
    if (m_thunk != nullptr) {
        ThunkMemory::PatchRelative(m_thunk, kSlotSetWindowLong, reinterpret_cast<const void*>(wideEntry("SetWindowLongW")));
        ThunkMemory::PatchRelative(m_thunk, kSlotCallWindowProc, reinterpret_cast<const void*>(wideEntry("CallWindowProcW")));
        ThunkMemory::PatchAbsolute(m_thunk, kSlotBeforeCount, 0);
        ThunkMemory::PatchAbsolute(m_thunk, kSlotAfterCount, 0);
    }
#endif
}

cUniSubclass::~cUniSubclass() {
    UnSubclass();
#if defined(_WIN64)
    if (m_data != nullptr) m_data->self = nullptr;
#endif
}

std::span<const int32_t> cUniSubclass::TableEntries(bool before) const noexcept {
    const MessageTable& table = before ? m_before : m_after;
    return {table.entries.data(), table.entries.size()};
}

void cUniSubclass::patchCount([[maybe_unused]] bool before, [[maybe_unused]] int32_t count) noexcept {
#if !defined(_WIN64)
    if (m_thunk) ThunkMemory::PatchAbsolute(m_thunk, before ? kSlotBeforeCount : kSlotAfterCount, static_cast<uint32_t>(count));
#endif
}

void cUniSubclass::patchTable([[maybe_unused]] const MessageTable& table, [[maybe_unused]] bool before) noexcept {
#if !defined(_WIN64)
    if (m_thunk == nullptr) return;
    ThunkMemory::PatchAbsolute(m_thunk, before ? kSlotBeforeTable : kSlotAfterTable, asSlot(table.entries.data()));
#endif
    patchCount(before, table.count);
}

void cUniSubclass::addTo(MessageTable& table, bool before, int32_t message) {
    if (message == kAllMessages) {
        table.count = kAllMessages;
        patchTable(table, before);
        return;
    }
    // With "all messages" in force the count is negative and the walk sees no entries: the
    // message goes to entry 1 and from then on only the listed messages reach the owner.
    if (table.count < 0) table.count = 0;
    for (int32_t i = 0; i < table.count; ++i) {
        int32_t& entry = table.entries[static_cast<size_t>(i)];
        if (entry == kFreePlace) {
            entry = message;
            return;
        }
        if (entry == message) return;
    }
    // Zero the count slot while the array may move, so that a message arriving meanwhile (the
    // owner may send one from its own code) never scans freed memory.
    patchCount(before, 0);
    table.entries.resize(static_cast<size_t>(table.count));
    table.entries.push_back(message);
    table.count = static_cast<int32_t>(table.entries.size());
    patchTable(table, before);
}

void cUniSubclass::delFrom(MessageTable& table, bool before, int32_t message) noexcept {
    if (message == kAllMessages) {
        table.count = 0;
        patchCount(before, 0);
        return;
    }
    for (int32_t i = 0; i < table.count; ++i) {
        int32_t& entry = table.entries[static_cast<size_t>(i)];
        if (entry == message) {
            entry = kFreePlace;
            return;
        }
    }
}

void cUniSubclass::AddMsg(int32_t uMsg, int32_t When) {
    if ((When & kWhenBefore) != 0) addTo(m_before, true, uMsg);
    if ((When & kWhenAfter) != 0) addTo(m_after, false, uMsg);
}

void cUniSubclass::DelMsg(int32_t uMsg, int32_t When) {
    if ((When & kWhenBefore) != 0) delFrom(m_before, true, uMsg);
    if ((When & kWhenAfter) != 0) delFrom(m_after, false, uMsg);
}

LRESULT cUniSubclass::CallOrigWndProc(UINT uMsg, WPARAM wParam, LPARAM lParam) {
    if (m_hWnd == nullptr || m_previous == nullptr) return 0;
    return ::CallWindowProcW(m_previous, m_hWnd, uMsg, wParam, lParam);
}

bool cUniSubclass::Subclass(HWND Hwnd, ISubclassOwner* Owner) {
    if (m_hWnd != nullptr || m_thunk == nullptr || Owner == nullptr || !::IsWindow(Hwnd)) return false;
    const auto old = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(Hwnd, GWLP_WNDPROC));
#if defined(_WIN64)
    m_owner = Owner;
    m_previous = old;
    m_caller = PreviousProcCall(old);
    m_data->previous = old;
#else
    ThunkMemory::PatchAbsolute(m_thunk, kSlotPrevious1, asSlot(reinterpret_cast<const void*>(old)));
    ThunkMemory::PatchAbsolute(m_thunk, kSlotPrevious2, asSlot(reinterpret_cast<const void*>(old)));
    ThunkMemory::PatchAbsolute(m_thunk, kSlotOwner, asSlot(Owner));
    m_previous = old;
#endif
    m_hWnd = Hwnd;
    const auto replaced = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(Hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_thunk)));
    if (replaced == nullptr) {
        m_hWnd = nullptr;
        return false;
    }
    m_previous = replaced;
#if defined(_WIN64)
    m_caller = PreviousProcCall(replaced);
    m_data->previous = replaced;
#endif
    return true;
}

bool cUniSubclass::UnSubclass() {
    if (m_hWnd == nullptr) return false;
    // Counts first: a message in flight then finds no client.
    patchCount(true, 0);
    patchCount(false, 0);
    m_before.count = 0;
    m_after.count = 0;
    if (::IsWindow(m_hWnd)) ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_previous));
    m_hWnd = nullptr;
    return true;
}
