#include "frame/IPAOHook.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<IPAOHookStruct*>& liveHooks() {
    thread_local std::vector<IPAOHookStruct*> hooks;
    return hooks;
}

void forget(IPAOHookStruct* record) noexcept {
    std::vector<IPAOHookStruct*>& hooks = liveHooks();
    hooks.erase(std::remove(hooks.begin(), hooks.end(), record), hooks.end());
}

IPAOHookStruct* self(void* record) noexcept { return static_cast<IPAOHookStruct*>(record); }

// After RemoveHook the record may still be held by the host; its calls then find no object.
template <class Call>
HRESULT forward(void* record, Call&& call) {
    IOleInPlaceActiveObject* const original = self(record)->pOriginal;
    return original == nullptr ? E_UNEXPECTED : call(original);
}

HRESULT STDMETHODCALLTYPE hookQueryInterface(void* record, REFIID riid, void** object) {
    if (object == nullptr) return E_POINTER;
    if (IsEqualGUID(riid, IPAOHook::kIID_IOleInPlaceActiveObject)) {
        *object = self(record)->pThis;
        if (self(record)->pOriginal) self(record)->pOriginal->AddRef();
        return S_OK;
    }
    *object = nullptr;
    return forward(record, [&](IOleInPlaceActiveObject* o) { return o->QueryInterface(riid, object); });
}
ULONG STDMETHODCALLTYPE hookAddRef(void* record) {
    IOleInPlaceActiveObject* const original = self(record)->pOriginal;
    return original ? original->AddRef() : 1;
}
ULONG STDMETHODCALLTYPE hookRelease(void* record) {
    IOleInPlaceActiveObject* const original = self(record)->pOriginal;
    return original ? original->Release() : 1;
}
HRESULT STDMETHODCALLTYPE hookGetWindow(void* record, HWND* window) {
    return forward(record, [&](IOleInPlaceActiveObject* o) { return o->GetWindow(window); });
}
HRESULT STDMETHODCALLTYPE hookContextSensitiveHelp(void* record, BOOL enter) {
    return forward(record,
                   [&](IOleInPlaceActiveObject* o) { return o->ContextSensitiveHelp(enter); });
}
HRESULT STDMETHODCALLTYPE hookTranslateAccelerator(void* record, MSG* msg) {
    IPAOHookControl* const control = self(record)->pControl;
    if (control != nullptr && msg != nullptr) {
        bool handled = false;
        try {
            handled = control->pvTranslateAccelerator(*msg);
        } catch (...) {
            // A failing filter leaves the key to the host.
        }
        if (handled) return S_OK;
    }
    return forward(record, [&](IOleInPlaceActiveObject* o) { return o->TranslateAccelerator(msg); });
}
HRESULT STDMETHODCALLTYPE hookOnFrameWindowActivate(void* record, BOOL active) {
    return forward(record,
                   [&](IOleInPlaceActiveObject* o) { return o->OnFrameWindowActivate(active); });
}
HRESULT STDMETHODCALLTYPE hookOnDocWindowActivate(void* record, BOOL active) {
    return forward(record,
                   [&](IOleInPlaceActiveObject* o) { return o->OnDocWindowActivate(active); });
}
HRESULT STDMETHODCALLTYPE hookResizeBorder(void* record, LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) {
    return forward(record,
                   [&](IOleInPlaceActiveObject* o) { return o->ResizeBorder(border, window, frame); });
}
HRESULT STDMETHODCALLTYPE hookEnableModeless(void* record, BOOL enable) {
    return forward(record, [&](IOleInPlaceActiveObject* o) { return o->EnableModeless(enable); });
}

// The layout of IOleInPlaceActiveObject's table: IUnknown, IOleWindow, then its own five.
struct HookTable {
    HRESULT(STDMETHODCALLTYPE* QueryInterface)(void*, REFIID, void**);
    ULONG(STDMETHODCALLTYPE* AddRef)(void*);
    ULONG(STDMETHODCALLTYPE* Release)(void*);
    HRESULT(STDMETHODCALLTYPE* GetWindow)(void*, HWND*);
    HRESULT(STDMETHODCALLTYPE* ContextSensitiveHelp)(void*, BOOL);
    HRESULT(STDMETHODCALLTYPE* TranslateAccelerator)(void*, MSG*);
    HRESULT(STDMETHODCALLTYPE* OnFrameWindowActivate)(void*, BOOL);
    HRESULT(STDMETHODCALLTYPE* OnDocWindowActivate)(void*, BOOL);
    HRESULT(STDMETHODCALLTYPE* ResizeBorder)(void*, LPCRECT, IOleInPlaceUIWindow*, BOOL);
    HRESULT(STDMETHODCALLTYPE* EnableModeless)(void*, BOOL);
};

constexpr HookTable kHookTable = {
    &hookQueryInterface,       &hookAddRef,
    &hookRelease,              &hookGetWindow,
    &hookContextSensitiveHelp, &hookTranslateAccelerator,
    &hookOnFrameWindowActivate, &hookOnDocWindowActivate,
    &hookResizeBorder,         &hookEnableModeless,
};

template <class T>
struct Released {
    T* pointer = nullptr;
    ~Released() {
        if (pointer) pointer->Release();
    }
};

}  // namespace

IPAOHookStruct::~IPAOHookStruct() { forget(this); }

namespace IPAOHook {

void InstallHook(IPAOHookStruct& record, IOleInPlaceActiveObject* original, IPAOHookControl* control) noexcept {
    record.pOriginal = original;
    record.pControl = control;
    record.lpVTable = &kHookTable;
    record.pThis = &record;
    forget(&record);
    try {
        if (control != nullptr) liveHooks().push_back(&record);
    } catch (...) {
        // Without the list entry only C++ hosts miss the filter; the OLE path still works.
    }
}

void RemoveHook(IPAOHookStruct& record) noexcept {
    record.pOriginal = nullptr;
    record.pControl = nullptr;
    forget(&record);
}

IOleInPlaceActiveObject* AsInterface(IPAOHookStruct& record) noexcept {
    return reinterpret_cast<IOleInPlaceActiveObject*>(&record);
}

void ActivateHook(IPAOHookStruct& record, IOleObject* control, HWND controlWindow) noexcept {
    if (control == nullptr) return;
    Released<IOleClientSite> clientSite;
    if (FAILED(control->GetClientSite(&clientSite.pointer)) || clientSite.pointer == nullptr) return;
    Released<IOleInPlaceSite> site;
    if (FAILED(clientSite.pointer->QueryInterface(IID_IOleInPlaceSite, reinterpret_cast<void**>(&site.pointer))) ||
        site.pointer == nullptr) {
        return;
    }
    Released<IOleInPlaceFrame> frame;
    Released<IOleInPlaceUIWindow> document;
    RECT position{};
    RECT clip{};
    OLEINPLACEFRAMEINFO frameInfo{};
    frameInfo.cb = sizeof frameInfo;  // 20 on 32-bit Windows, 32 on 64-bit
    site.pointer->GetWindowContext(&frame.pointer, &document.pointer, &position, &clip, &frameInfo);
    if (frame.pointer) frame.pointer->SetActiveObject(AsInterface(record), nullptr);
    if (controlWindow != nullptr) {
        control->DoVerb(OLEIVERB_UIACTIVATE, nullptr, clientSite.pointer, 0, controlWindow, &position);
    }
    if (document.pointer) document.pointer->SetActiveObject(AsInterface(record), nullptr);
}

bool PreTranslateMessage(const MSG& msg) noexcept {
    if (msg.message != WM_KEYDOWN && msg.message != WM_KEYUP && msg.message != WM_IME_KEYDOWN &&
        msg.message != WM_IME_KEYUP) {
        return false;
    }
    // The innermost hooked control that holds the window with the key.
    for (HWND window = msg.hwnd; window != nullptr; window = ::GetParent(window)) {
        for (IPAOHookStruct* record : liveHooks()) {
            IPAOHookControl* const control = record->pControl;
            if (control == nullptr || control->HookWindow() != window) continue;
            try {
                return control->pvTranslateAccelerator(msg);
            } catch (...) {
                return false;
            }
        }
    }
    return false;
}

}  // namespace IPAOHook
