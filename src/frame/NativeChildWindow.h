// NativeChildWindow: a control's own Unicode child window, created directly and re-created on style changes.
#pragma once

#include <utility>
#include <vector>

#include "common/CtlTypes.h"
#include "frame/SubclassAttachments.h"

// The controls' direct-creation pattern: a child of the control's window, the control's font,
// the text put back after a re-creation, and the child's messages attached to the control.
// Styles such as ES_ and LBS_ cannot change on a live window, so changing one re-creates it.
class NativeChildWindow {
public:
    struct Message {
        UINT message;
        EMsgResponse3 response;
    };

    explicit NativeChildWindow(ISubclass* client) noexcept : m_attachments(client) {}
    // Detaches the messages before the window goes.
    ~NativeChildWindow() { Destroy(); }
    // Owns a window and its attachments.
    NativeChildWindow(const NativeChildWindow&) = delete;
    NativeChildWindow& operator=(const NativeChildWindow&) = delete;

    // Creates the window (destroying one made before, keeping its text and edit selection).
    // WS_CHILD and WS_VISIBLE are always added. Returns 0 when the system refuses; the control
    // then goes on without the window. Raises only when attaching the messages fails.
    HWND Create(HWND parent, const CtlString& className, DWORD style, DWORD exStyle, const CTL_RECT& bounds,
                HFONT font, std::vector<Message> messages, UINT_PTR id = 0);
    // Same parent, class, bounds, font and messages; new styles.
    HWND Recreate(DWORD style, DWORD exStyle);
    // WM_SETFONT now and for every later re-creation.
    void SetFont(HFONT font) noexcept;
    void Destroy() noexcept;

    HWND Handle() const noexcept { return m_hWnd; }
    CtlString Text() const;

private:
    struct SavedState {
        CtlString text;
        DWORD selectionStart = 0;
        DWORD selectionEnd = 0;
        bool hasSelection = false;
    };
    SavedState saveState() const;

    SubclassAttachments m_attachments;
    HWND m_hWnd = nullptr;
    HWND m_parent = nullptr;
    CtlString m_className;
    CTL_RECT m_bounds;
    HFONT m_font = nullptr;
    UINT_PTR m_id = 0;
    std::vector<Message> m_messages;
};
