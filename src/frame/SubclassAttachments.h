// SubclassAttachments: the messages one client holds in the engine, detached when it goes.
#pragma once

#include <utility>
#include <vector>

#include "frame/ISubclass.h"

// A control keeps one of these beside its windows: whatever it attached is detached in the
// destructor, so the engine can never call a client that has died.
class SubclassAttachments {
public:
    explicit SubclassAttachments(ISubclass* client) noexcept : m_client(client) {}
    ~SubclassAttachments() { DetachAll(); }
    // The engine holds the client by address; a copy would detach the same messages twice.
    SubclassAttachments(const SubclassAttachments&) = delete;
    SubclassAttachments& operator=(const SubclassAttachments&) = delete;

    // Raises as MSubclass::AttachClient does; a message already attached for this window is ignored.
    void Attach(HWND window, UINT message, EMsgResponse3 response = emr3AttachBefore);
    void Detach(HWND window, UINT message) noexcept;
    // Detaches every message of one window, or of all windows when none is named.
    void DetachAll(HWND window = nullptr) noexcept;
    size_t Count() const noexcept { return m_attached.size(); }

private:
    ISubclass* m_client;
    std::vector<std::pair<HWND, UINT>> m_attached;
};
