// cUniSubclass: hooks one window for one owner through a per-instance thunk, with message tables.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "frame/ISubclassOwner.h"
#include "frame/PreviousProcCall.h"

class cUniSubclass {
public:
    cUniSubclass();
    // Unhooks; the thunk's block stays allocated so that a late message still finds code.
    ~cUniSubclass();
    // The thunk holds this object's tables and the window holds the thunk.
    cUniSubclass(const cUniSubclass&) = delete;
    cUniSubclass& operator=(const cUniSubclass&) = delete;

    // When: 2 the before-table, 1 the after-table, 3 both. uMsg -1 stands for all messages.
    void AddMsg(int32_t uMsg, int32_t When);
    // 0 when no window is hooked.
    LRESULT CallOrigWndProc(UINT uMsg, WPARAM wParam, LPARAM lParam);
    void DelMsg(int32_t uMsg, int32_t When);
    bool InIDE() const noexcept { return false; }
    // False, changing nothing, when a window is hooked already.
    bool Subclass(HWND Hwnd, ISubclassOwner* Owner);
    // False when no window was hooked.
    bool UnSubclass();

    // The thunk as it stands; on 32-bit x86 the patched machine code.
    std::span<const uint8_t> ThunkBytes() const noexcept { return {m_thunk, m_thunkSize}; }
    // The message tables as the thunk sees them (count -1: all messages).
    int32_t TableCount(bool before) const noexcept { return before ? m_before.count : m_after.count; }
    std::span<const int32_t> TableEntries(bool before) const noexcept;

#if defined(_WIN64)
    struct ThunkData;
#endif

private:
    struct MessageTable {
        std::vector<int32_t> entries;
        int32_t count = 0;
    };
    void addTo(MessageTable& table, bool before, int32_t message);
    void delFrom(MessageTable& table, bool before, int32_t message) noexcept;
    void patchTable(const MessageTable& table, bool before) noexcept;
    void patchCount(bool before, int32_t count) noexcept;
#if defined(_WIN64)
    friend LRESULT hookedMessage(cUniSubclass& self, HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    bool passTo(const MessageTable& table, bool before, VARIANT_BOOL& stop, LRESULT& result, HWND& hwnd, UINT& message,
                WPARAM& wParam, LPARAM& lParam) noexcept;
    ThunkData* m_data = nullptr;
    ISubclassOwner* m_owner = nullptr;
    PreviousProcCall m_caller;
#endif

    HWND m_hWnd = nullptr;
    WNDPROC m_previous = nullptr;
    uint8_t* m_thunk = nullptr;
    size_t m_thunkSize = 0;
    MessageTable m_before;
    MessageTable m_after;
};
