// Test helpers of the window plumbing: a call log, recording windows, owner stubs and message pumping.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/win32/WinApi.h"
#include "support/WindowMessageCounter.h"

#include <ole2.h>

namespace plumbing_test {

// The private message the ordering tests send; far from anything the system sends by itself.
constexpr UINT kProbe = WM_APP + 17;

// Calls in the order they happened, compared as one line so that a mismatch prints both lists.
class CallLog {
public:
    void Add(std::string entry) { m_entries.push_back(std::move(entry)); }
    void Clear() { m_entries.clear(); }
    std::string Text() const {
        std::string out;
        for (const std::string& entry : m_entries) out += (out.empty() ? "" : " ") + entry;
        return out;
    }

private:
    std::vector<std::string> m_entries;
};

inline std::string messageName(UINT message) {
    switch (message) {
        case WM_DESTROY: return "destroy";
        case WM_KEYDOWN: return "keydown";
        case kProbe: return "probe";
        default: return std::to_string(message);
    }
}

// A window of a class registered on first use (a second registration fails harmlessly).
inline HWND CreateClassWindow(const wchar_t* className, WNDPROC proc, HWND parent = nullptr, void* param = nullptr) {
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.lpfnWndProc = proc;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.lpszClassName = className;
    ::RegisterClassExW(&wc);
    return ::CreateWindowExW(0, className, L"", parent ? WS_CHILD : WS_OVERLAPPED, 0, 0, 100, 100, parent, nullptr,
                             wc.hInstance, param);
}

// A window whose own procedure writes "prev:<message>" to its log for the probe, WM_DESTROY and
// WM_KEYDOWN, and answers the probe with 42.
class RecordingWindow {
public:
    explicit RecordingWindow(CallLog* log, HWND parent = nullptr)
        : m_log(log), m_window(CreateClassWindow(L"PlumbingRecordingWindow", &recordingProc, parent, this)) {}
    ~RecordingWindow() {
        if (::IsWindow(m_window)) ::DestroyWindow(m_window);
    }
    // The window procedure holds this object's address.
    RecordingWindow(const RecordingWindow&) = delete;
    RecordingWindow& operator=(const RecordingWindow&) = delete;

    HWND Handle() const { return m_window; }
    static WNDPROC OriginalProc() { return &recordingProc; }
    // Written inside the window's own WM_DESTROY: which procedure the window had at that moment.
    LONG_PTR procAtDestroy = 0;

private:
    static LRESULT CALLBACK recordingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_NCCREATE) {
            const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
            ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
        }
        auto* self = reinterpret_cast<RecordingWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self != nullptr && (message == kProbe || message == WM_DESTROY || message == WM_KEYDOWN)) {
            if (self->m_log) self->m_log->Add("prev:" + messageName(message));
            if (message == WM_DESTROY) self->procAtDestroy = ::GetWindowLongPtrW(window, GWLP_WNDPROC);
            if (message == kProbe) return 42;
        }
        return ::DefWindowProcW(window, message, wParam, lParam);
    }

    CallLog* m_log;
    HWND m_window;
};

// The IDispatch half of an owner interface, answered trivially: the hooks call only the owner's
// own entry behind it. Reference counts are not counted; owners live on the caller's stack.
template <class Interface, const GUID& kInterfaceId>
class DispatchStub : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool known = riid == IID_IUnknown || riid == IID_IDispatch || IsEqualGUID(riid, kInterfaceId);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
};

// Runs the thread's message loop until the condition holds or the time is up.
template <class Condition>
bool PumpUntil(Condition&& done, DWORD timeoutMs = 3000) {
    const ULONGLONG start = ::GetTickCount64();
    while (!done()) {
        if (::GetTickCount64() - start > timeoutMs) return false;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        testsupport::PumpMessages();
    }
    return true;
}

// Offsets of a thunk's bytes that differ from the reference text (two hex digits a byte), skipping
// the four-byte slots that are patched per instance.
inline std::vector<size_t> ThunkMismatches(std::span<const uint8_t> bytes, std::string_view reference,
                                           std::initializer_list<size_t> slots) {
    std::vector<size_t> mismatches;
    for (size_t i = 0; i < bytes.size(); ++i) {
        bool inSlot = false;
        for (const size_t slot : slots) inSlot = inSlot || (i >= slot && i < slot + 4);
        if (!inSlot && bytes[i] != std::stoul(std::string(reference.substr(i * 2, 2)), nullptr, 16)) {
            mismatches.push_back(i);
        }
    }
    return mismatches;
}

}  // namespace plumbing_test
