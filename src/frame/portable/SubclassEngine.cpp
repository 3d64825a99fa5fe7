#include "frame/portable/SubclassEngine.h"

#include "common/CtlError.h"

namespace plumbing {

namespace {

// Errors of the language runtime carry neither source nor description.
[[noreturn]] void raiseWriteFailure() { throw CtlError(u"", u"", CtlError::kInvalidProcedureCall); }

}  // namespace

void SubclassEngine::clearNewEntry(WindowKey window, uint32_t message, int32_t index, int32_t oldCount) noexcept {
    m_table.SetMessageClientResponse(window, message, index, 0);
    m_table.SetMessageClient(window, message, index, nullptr);
    m_table.SetMessageClientCount(window, message, oldCount);
}

void SubclassEngine::AttachClient(void* client, WindowKey window, uint32_t message, int32_t response) {
    if (!m_system.IsWindow(window)) throw CtlError::Plumbing(kErrorInvalidWindow, u"Invalid window");
    if (!m_system.IsOwnProcess(window)) throw CtlError::Plumbing(kErrorExternalWindow, u"Can't modify external window");
    // An empty client could never be told apart from an empty entry.
    if (client == nullptr) raiseWriteFailure();

    const int32_t count = m_table.MessageClientCount(window, message);
    for (int32_t index = 1; index <= count; ++index) {
        if (m_table.MessageClient(window, message, index) == client) {
            throw CtlError::Plumbing(kErrorAlreadyHandled, u"Message already handled by another class");
        }
    }

    const int32_t index = count + 1;
    if (!m_table.SetMessageClientCount(window, message, index)) raiseWriteFailure();
    if (!m_table.SetMessageClient(window, message, index, client)) {
        m_table.SetMessageClientCount(window, message, count);
        raiseWriteFailure();
    }
    if (response == 0 || !m_table.SetMessageClientResponse(window, message, index, response)) {
        clearNewEntry(window, message, index, count);
        raiseWriteFailure();
    }

    const int32_t windowClients = m_table.WindowClientCount(window);
    ProcAddress installed = 0;
    if (windowClients == 0) {
        installed = m_system.InstallHook(window);
        if (installed == 0) {
            clearNewEntry(window, message, index, count);
            throw CtlError::Plumbing(kErrorCantSubclass, u"Can't subclass window");
        }
        if (!m_table.SetPreviousWindowProc(window, installed)) {
            m_system.RestoreProc(window, installed);
            clearNewEntry(window, message, index, count);
            raiseWriteFailure();
        }
    }
    if (!m_table.SetWindowClientCount(window, windowClients + 1)) {
        clearNewEntry(window, message, index, count);
        if (m_table.WindowClientCount(window) == 0) {
            const ProcAddress previous = m_table.PreviousWindowProc(window);
            if (previous != 0) m_system.RestoreProc(window, previous);
            m_table.SetPreviousWindowProc(window, 0);
        }
        raiseWriteFailure();
    }
}

void SubclassEngine::DetachClient(void* client, WindowKey window, uint32_t message) noexcept {
    if (!m_system.IsWindow(window) || !m_system.IsOwnProcess(window)) return;
    const int32_t count = m_table.MessageClientCount(window, message);
    if (count <= 0) return;
    int32_t found = 0;
    for (int32_t index = 1; index <= count; ++index) {
        if (m_table.MessageClient(window, message, index) == client) {
            found = index;
            break;
        }
    }
    if (found == 0) return;

    for (int32_t index = found; index < count; ++index) {
        m_table.SetMessageClient(window, message, index, m_table.MessageClient(window, message, index + 1));
        m_table.SetMessageClientResponse(window, message, index, m_table.MessageClientResponse(window, message, index + 1));
    }
    m_table.SetMessageClient(window, message, count, nullptr);
    m_table.SetMessageClientResponse(window, message, count, 0);
    m_table.SetMessageClientCount(window, message, count - 1);

    const int32_t windowClients = m_table.WindowClientCount(window);
    if (windowClients == 1) {
        const ProcAddress previous = m_table.PreviousWindowProc(window);
        if (previous != 0) m_system.RestoreProc(window, previous);
        m_table.SetPreviousWindowProc(window, 0);
    }
    m_table.SetWindowClientCount(window, windowClients - 1);
}

intptr_t SubclassEngine::CallPreviousWindowProc(WindowKey window, uint32_t message, uintptr_t wParam,
                                                intptr_t lParam) noexcept {
    const ProcAddress previous = m_table.PreviousWindowProc(window);
    if (previous == 0) return 0;
    return m_system.CallProc(previous, window, message, wParam, lParam);
}

void SubclassEngine::emergencyRelease(WindowKey window) noexcept {
    if (m_table.WindowClientCount(window) <= 0) return;
    const ProcAddress previous = m_table.PreviousWindowProc(window);
    if (previous != 0) m_system.RestoreProc(window, previous);
    m_table.RemoveWindow(window);
}

intptr_t SubclassEngine::Dispatch(WindowKey window, uint32_t message, uintptr_t wParam, intptr_t lParam) noexcept {
    const SubclassTable::WindowRecord* const record = m_table.FindWindow(window);
    if (record == nullptr || record->previous == 0) return 0;
    // Read once: a client may unhook the window while it runs, and the message must still reach
    // the procedure that was in place when it arrived.
    const ProcAddress previous = record->previous;

    const auto message_found = record->messages.find(message);
    const int32_t count = message_found == record->messages.end() ? 0 : message_found->second.count;
    if (count <= 0) {
        if (message == kMessageDestroy) emergencyRelease(window);
        const intptr_t result = m_system.CallProc(previous, window, message, wParam, lParam);
        // A client of WM_DESTROY that never detached would leave the dead handle in the table,
        // where a new window reusing the handle would find it.
        if (message == kMessageNcDestroy) m_table.RemoveWindow(window);
        return result;
    }

    bool called = false;
    bool reached = false;
    intptr_t lReturn = 0;
    int32_t response = 0;
    // Entries are read back from the table at every index: a client may attach or detach others
    // while it runs.
    for (int32_t index = count; index >= 1; --index) {
        void* const client = m_table.MessageClient(window, message, index);
        if (client == nullptr) continue;
        reached = true;
        response = m_table.MessageClientResponse(window, message, index);
        if (index == 1 && response == kResponseAfter && !called) {
            lReturn = m_system.CallProc(previous, window, message, wParam, lParam);
            called = true;
        }
        bool bStopMsg = false;
        m_system.CallClient(client, !called, bStopMsg, lReturn, window, message, wParam, lParam);
        if (bStopMsg) called = true;
    }
    if (reached && !called && response == kResponseBefore) {
        lReturn = m_system.CallProc(previous, window, message, wParam, lParam);
    }
    if (message == kMessageNcDestroy) m_table.RemoveWindow(window);
    return lReturn;
}

}  // namespace plumbing
