#include "frame/NativeChildWindow.h"

#include <cwctype>

#include "frame/modcUniWindow.h"

namespace {

bool isEditClass(const CtlString& name) {
    CtlString lower;
    for (const char16_t c : name) lower += static_cast<char16_t>(std::towlower(static_cast<wint_t>(c)));
    return lower == u"edit" || lower.starts_with(u"richedit");
}

}  // namespace

CtlString NativeChildWindow::Text() const {
    if (m_hWnd == nullptr) return {};
    const int length = ::GetWindowTextLengthW(m_hWnd);
    if (length <= 0) return {};
    std::u16string text(static_cast<size_t>(length) + 1, u'\0');
    const int copied = ::GetWindowTextW(m_hWnd, reinterpret_cast<wchar_t*>(text.data()), length + 1);
    text.resize(static_cast<size_t>(copied > 0 ? copied : 0));
    return text;
}

NativeChildWindow::SavedState NativeChildWindow::saveState() const {
    SavedState state;
    if (m_hWnd == nullptr || !::IsWindow(m_hWnd)) return state;
    state.text = Text();
    if (isEditClass(m_className)) {
        ::SendMessageW(m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&state.selectionStart),
                       reinterpret_cast<LPARAM>(&state.selectionEnd));
        state.hasSelection = true;
    }
    return state;
}

HWND NativeChildWindow::Create(HWND parent, const CtlString& className, DWORD style, DWORD exStyle,
                               const CTL_RECT& bounds, HFONT font, std::vector<Message> messages, UINT_PTR id) {
    const SavedState saved = saveState();
    Destroy();
    m_parent = parent;
    m_className = className;
    m_bounds = bounds;
    m_font = font;
    m_id = id;
    m_messages = std::move(messages);

    m_hWnd = ::CreateWindowExW(exStyle, AsWide(className), L"", style | WS_CHILD | WS_VISIBLE, bounds.left, bounds.top,
                               bounds.right - bounds.left, bounds.bottom - bounds.top, parent,
                               reinterpret_cast<HMENU>(id), modcUniWindow::LibraryInstance(), nullptr);
    if (m_hWnd == nullptr) return nullptr;
    if (m_font != nullptr) ::SendMessageW(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
    if (!saved.text.empty()) ::SetWindowTextW(m_hWnd, AsWide(saved.text));
    if (saved.hasSelection) ::SendMessageW(m_hWnd, EM_SETSEL, saved.selectionStart, static_cast<LPARAM>(saved.selectionEnd));
    try {
        for (const Message& entry : m_messages) m_attachments.Attach(m_hWnd, entry.message, entry.response);
    } catch (...) {
        // Half-attached windows are not left behind.
        Destroy();
        throw;
    }
    return m_hWnd;
}

HWND NativeChildWindow::Recreate(DWORD style, DWORD exStyle) {
    if (m_parent == nullptr) return nullptr;
    std::vector<Message> messages = m_messages;
    const CtlString className = m_className;
    return Create(m_parent, className, style, exStyle, m_bounds, m_font, std::move(messages), m_id);
}

void NativeChildWindow::SetFont(HFONT font) noexcept {
    m_font = font;
    if (m_hWnd != nullptr) ::SendMessageW(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void NativeChildWindow::Destroy() noexcept {
    if (m_hWnd == nullptr) return;
    m_attachments.DetachAll(m_hWnd);
    if (::IsWindow(m_hWnd)) ::DestroyWindow(m_hWnd);
    m_hWnd = nullptr;
}
