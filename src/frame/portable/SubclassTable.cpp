#include "frame/portable/SubclassTable.h"

#include <new>

namespace plumbing {

namespace {

bool isEmpty(const SubclassTable::ClientSlot& slot) noexcept { return slot.client == nullptr && slot.response == 0; }

}  // namespace

const SubclassTable::WindowRecord* SubclassTable::FindWindow(WindowKey window) const noexcept {
    const auto found = m_windows.find(window);
    return found == m_windows.end() ? nullptr : &found->second;
}

const SubclassTable::MessageRecord* SubclassTable::findMessage(WindowKey window, uint32_t message) const noexcept {
    const WindowRecord* const record = FindWindow(window);
    if (record == nullptr) return nullptr;
    const auto found = record->messages.find(message);
    return found == record->messages.end() ? nullptr : &found->second;
}

int32_t SubclassTable::WindowClientCount(WindowKey window) const noexcept {
    const WindowRecord* const record = FindWindow(window);
    return record ? record->clientCount : 0;
}

ProcAddress SubclassTable::PreviousWindowProc(WindowKey window) const noexcept {
    const WindowRecord* const record = FindWindow(window);
    return record ? record->previous : 0;
}

int32_t SubclassTable::MessageClientCount(WindowKey window, uint32_t message) const noexcept {
    const MessageRecord* const record = findMessage(window, message);
    return record ? record->count : 0;
}

void* SubclassTable::MessageClient(WindowKey window, uint32_t message, int32_t index) const noexcept {
    const MessageRecord* const record = findMessage(window, message);
    if (record == nullptr || index < 1 || static_cast<size_t>(index) > record->slots.size()) return nullptr;
    return record->slots[static_cast<size_t>(index) - 1].client;
}

int32_t SubclassTable::MessageClientResponse(WindowKey window, uint32_t message, int32_t index) const noexcept {
    const MessageRecord* const record = findMessage(window, message);
    if (record == nullptr || index < 1 || static_cast<size_t>(index) > record->slots.size()) return 0;
    return record->slots[static_cast<size_t>(index) - 1].response;
}

bool SubclassTable::writeAllowed() noexcept {
    if (m_writesUntilFailure <= 0) return true;
    --m_writesUntilFailure;
    return m_writesUntilFailure != 0;
}

bool SubclassTable::SetWindowClientCount(WindowKey window, int32_t value) noexcept {
    if (!writeAllowed()) return false;
    try {
        if (value == 0) {
            const auto found = m_windows.find(window);
            if (found == m_windows.end()) return true;
            found->second.clientCount = 0;
            pruneWindow(window);
            return true;
        }
        m_windows[window].clientCount = value;
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool SubclassTable::SetPreviousWindowProc(WindowKey window, ProcAddress value) noexcept {
    if (!writeAllowed()) return false;
    try {
        if (value == 0) {
            const auto found = m_windows.find(window);
            if (found == m_windows.end()) return true;
            found->second.previous = 0;
            pruneWindow(window);
            return true;
        }
        m_windows[window].previous = value;
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool SubclassTable::SetMessageClientCount(WindowKey window, uint32_t message, int32_t value) noexcept {
    if (!writeAllowed()) return false;
    try {
        if (value == 0) {
            const auto found = m_windows.find(window);
            if (found == m_windows.end()) return true;
            const auto message_found = found->second.messages.find(message);
            if (message_found == found->second.messages.end()) return true;
            message_found->second.count = 0;
            prune(window, message);
            return true;
        }
        m_windows[window].messages[message].count = value;
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool SubclassTable::SetMessageClient(WindowKey window, uint32_t message, int32_t index, void* value) noexcept {
    if (index < 1) return false;
    if (!writeAllowed()) return false;
    try {
        const size_t position = static_cast<size_t>(index) - 1;
        if (value == nullptr) {
            const auto found = m_windows.find(window);
            if (found == m_windows.end()) return true;
            const auto message_found = found->second.messages.find(message);
            if (message_found == found->second.messages.end()) return true;
            std::vector<ClientSlot>& slots = message_found->second.slots;
            if (position < slots.size()) slots[position].client = nullptr;
            prune(window, message);
            return true;
        }
        std::vector<ClientSlot>& slots = m_windows[window].messages[message].slots;
        if (position >= slots.size()) slots.resize(position + 1);
        slots[position].client = value;
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool SubclassTable::SetMessageClientResponse(WindowKey window, uint32_t message, int32_t index, int32_t value) noexcept {
    if (index < 1) return false;
    if (!writeAllowed()) return false;
    try {
        const size_t position = static_cast<size_t>(index) - 1;
        if (value == 0) {
            const auto found = m_windows.find(window);
            if (found == m_windows.end()) return true;
            const auto message_found = found->second.messages.find(message);
            if (message_found == found->second.messages.end()) return true;
            std::vector<ClientSlot>& slots = message_found->second.slots;
            if (position < slots.size()) slots[position].response = 0;
            prune(window, message);
            return true;
        }
        std::vector<ClientSlot>& slots = m_windows[window].messages[message].slots;
        if (position >= slots.size()) slots.resize(position + 1);
        slots[position].response = value;
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void SubclassTable::prune(WindowKey window, uint32_t message) noexcept {
    const auto found = m_windows.find(window);
    if (found == m_windows.end()) return;
    const auto message_found = found->second.messages.find(message);
    if (message_found != found->second.messages.end()) {
        std::vector<ClientSlot>& slots = message_found->second.slots;
        while (!slots.empty() && isEmpty(slots.back())) slots.pop_back();
        if (slots.empty() && message_found->second.count == 0) found->second.messages.erase(message_found);
    }
    pruneWindow(window);
}

void SubclassTable::pruneWindow(WindowKey window) noexcept {
    const auto found = m_windows.find(window);
    if (found == m_windows.end()) return;
    const WindowRecord& record = found->second;
    if (record.clientCount == 0 && record.previous == 0 && record.messages.empty()) m_windows.erase(found);
}

void SubclassTable::RemoveWindow(WindowKey window) noexcept { m_windows.erase(window); }

size_t SubclassTable::ItemCount(WindowKey window) const noexcept {
    const WindowRecord* const record = FindWindow(window);
    if (record == nullptr) return 0;
    size_t items = (record->clientCount != 0 ? 1 : 0) + (record->previous != 0 ? 1 : 0);
    for (const auto& [message, entry] : record->messages) {
        items += entry.count != 0 ? 1 : 0;
        for (const ClientSlot& slot : entry.slots) items += (slot.client != nullptr ? 1 : 0) + (slot.response != 0 ? 1 : 0);
    }
    return items;
}

}  // namespace plumbing
