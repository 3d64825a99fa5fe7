#include "frame/SubclassAttachments.h"

#include <algorithm>

#include "frame/MSubclass.h"

void SubclassAttachments::Attach(HWND window, UINT message, EMsgResponse3 response) {
    const std::pair<HWND, UINT> entry{window, message};
    if (std::find(m_attached.begin(), m_attached.end(), entry) != m_attached.end()) return;
    m_attached.reserve(m_attached.size() + 1);  // so that recording below cannot fail after attaching
    MSubclass::AttachClient(m_client, window, message, response);
    m_attached.push_back(entry);
}

void SubclassAttachments::Detach(HWND window, UINT message) noexcept {
    const auto found = std::find(m_attached.begin(), m_attached.end(), std::pair<HWND, UINT>{window, message});
    if (found == m_attached.end()) return;
    MSubclass::DetachClient(m_client, window, message);
    m_attached.erase(found);
}

void SubclassAttachments::DetachAll(HWND window) noexcept {
    // Reverse order: the engine restores a window's procedure on its last detachment.
    for (auto it = m_attached.rbegin(); it != m_attached.rend(); ++it) {
        if (window == nullptr || it->first == window) MSubclass::DetachClient(m_client, it->first, it->second);
    }
    std::erase_if(m_attached, [window](const std::pair<HWND, UINT>& entry) { return window == nullptr || entry.first == window; });
}
