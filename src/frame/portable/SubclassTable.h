// SubclassTable: the subclassing engine's per-window store of hook state and message clients.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace plumbing {

// A window handle and a window procedure address, as plain numbers: the table never calls them.
using WindowKey = std::uintptr_t;
using ProcAddress = std::uintptr_t;

// Items read 0 until written; writing 0 removes the item, and a window whose last item goes is
// dropped whole. Indexes of message clients count from 1. Every write reports whether it took.
class SubclassTable {
public:
    SubclassTable() = default;
    // One table per apartment; a copy would split the hook state of the same windows.
    SubclassTable(const SubclassTable&) = delete;
    SubclassTable& operator=(const SubclassTable&) = delete;

    int32_t WindowClientCount(WindowKey window) const noexcept;
    ProcAddress PreviousWindowProc(WindowKey window) const noexcept;
    int32_t MessageClientCount(WindowKey window, uint32_t message) const noexcept;
    void* MessageClient(WindowKey window, uint32_t message, int32_t index) const noexcept;
    int32_t MessageClientResponse(WindowKey window, uint32_t message, int32_t index) const noexcept;

    bool SetWindowClientCount(WindowKey window, int32_t value) noexcept;
    bool SetPreviousWindowProc(WindowKey window, ProcAddress value) noexcept;
    bool SetMessageClientCount(WindowKey window, uint32_t message, int32_t value) noexcept;
    bool SetMessageClient(WindowKey window, uint32_t message, int32_t index, void* value) noexcept;
    bool SetMessageClientResponse(WindowKey window, uint32_t message, int32_t index, int32_t value) noexcept;

    // Drops everything held for the window.
    void RemoveWindow(WindowKey window) noexcept;

    // Number of non-zero items held for one window, and windows held at all.
    size_t ItemCount(WindowKey window) const noexcept;
    size_t WindowCount() const noexcept { return m_windows.size(); }

    // Makes the n-th write from now (1 = the next one) fail once without changing anything, so
    // that the rollback of every step of an attachment can be exercised; 0 turns it off.
    void FailWriteNumber(int32_t n) noexcept { m_writesUntilFailure = n; }

    // The hot path of the window procedure: one lookup for the window, one for the message.
    struct ClientSlot {
        void* client = nullptr;
        int32_t response = 0;
    };
    struct MessageRecord {
        int32_t count = 0;
        std::vector<ClientSlot> slots;  // slots[i - 1] holds index i
    };
    struct WindowRecord {
        int32_t clientCount = 0;
        ProcAddress previous = 0;
        std::unordered_map<uint32_t, MessageRecord> messages;
    };
    const WindowRecord* FindWindow(WindowKey window) const noexcept;

private:
    bool writeAllowed() noexcept;
    const MessageRecord* findMessage(WindowKey window, uint32_t message) const noexcept;
    // Removes what has become empty after a write of 0.
    void prune(WindowKey window, uint32_t message) noexcept;
    void pruneWindow(WindowKey window) noexcept;

    std::unordered_map<WindowKey, WindowRecord> m_windows;
    int32_t m_writesUntilFailure = 0;
};

}  // namespace plumbing
